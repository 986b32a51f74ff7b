#include "platform/linux/folders/WholeFileSystem.h"

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/storage/MountInfo.h"

namespace kestrune::platform {
namespace {

// The machine's own namespace of processes; the kernel gives it this number at all times.
constexpr const char* machinesProcesses = "pid:[4026531836]";

// Programs that a Snap starts inherit its variable; only what lies in the Snap is confined to it.
bool isSnap(const std::string& root, ProcessEnvironment& environment) {
  const auto snap = environment.variable("SNAP");
  return snap && snap->starts_with('/') && readLink(below(root, "proc/self/exe")).starts_with(*snap + "/");
}

}  // namespace

bool seesWholeFileSystem(const std::string& root, ProcessEnvironment& environment) {
  if (exists(below(root, ".flatpak-info")) || exists(below(root, "run/.containerenv"))) return false;
  if (isSnap(root, environment)) return false;
  const std::string processes = readLink(below(root, "proc/self/ns/pid"));
  if (!processes.empty() && processes != machinesProcesses) return false;
  const auto mounts = readFile(below(root, "proc/self/mountinfo"));
  return !mounts || findMount(*mounts, "/").has_value();
}

}  // namespace kestrune::platform
