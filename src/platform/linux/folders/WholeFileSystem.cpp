#include "platform/linux/folders/WholeFileSystem.h"

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/storage/MountInfo.h"

namespace kestrune::platform {
namespace {

// The machine's initial pid namespace, whose number is fixed in the kernel.
constexpr const char* initialPidNamespace = "pid:[4026531836]";

// Programs started from a Snap inherit SNAP; only those installed in the Snap are confined to it.
bool isSnap(const std::string& root, ProcessEnvironment& environment) {
  const auto snap = environment.variable("SNAP");
  return snap && snap->starts_with('/') && readLink(below(root, "proc/self/exe")).starts_with(*snap + "/");
}

}  // namespace

bool seesWholeFileSystem(const std::string& root, ProcessEnvironment& environment) {
  if (exists(below(root, ".flatpak-info")) || exists(below(root, "run/.containerenv"))) return false;
  if (isSnap(root, environment)) return false;
  const std::string pidNamespace = readLink(below(root, "proc/self/ns/pid"));
  if (!pidNamespace.empty() && pidNamespace != initialPidNamespace) return false;
  const auto mounts = readFile(below(root, "proc/self/mountinfo"));
  return !mounts || findMount(*mounts, "/").has_value();
}

}  // namespace kestrune::platform
