#include "platform/linux/folders/LinuxFolders.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include "platform/linux/files/Directory.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/OpenDirectory.h"
#include "platform/linux/program/ThreadPriority.h"
#include "platform/linux/storage/MountInfo.h"

namespace kestrune::platform {
namespace {

// Each thread holds about ten directories open; the usual limit is 1,024 descriptors a process.
constexpr unsigned maxThreads = 32;
constexpr unsigned maxStalled = 16;

constexpr std::size_t listingBuffer = 65536;

MeasurePool::Settings poolSettings() {
  const unsigned threads = std::clamp(std::thread::hardware_concurrency(), 1U, maxThreads);
  return {.prepare = slowDownThread, .threads = threads, .maxThreads = threads + maxStalled};
}

DirectoryEntry entryOf(int directory, const FileLocation& folder, const char* name, unsigned char type) {
  DirectoryEntry entry{.location = folder.child(name), .size = {}};
  entry.isDirectory = type == DT_DIR;
  entry.isLink = type == DT_LNK;
  if (type != DT_REG && type != DT_UNKNOWN) return entry;
  const auto info = statEntry(directory, name, STATX_TYPE | STATX_SIZE);
  if (!info) return entry;
  entry.isDirectory = S_ISDIR(info->stx_mode);
  entry.isLink = S_ISLNK(info->stx_mode);
  constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();
  if (S_ISREG(info->stx_mode))
    entry.size = static_cast<std::int64_t>(std::min<std::uint64_t>(info->stx_size, largest));
  return entry;
}

// The machine's initial pid namespace, whose number is fixed in the kernel.
constexpr const char* initialPidNamespace = "pid:[4026531836]";

// Programs started from a Snap inherit SNAP; only those installed in the Snap are confined to it.
bool isSnap(const std::string& root, ProcessEnvironment& environment) {
  const auto snap = environment.variable("SNAP");
  return snap && snap->starts_with('/') && readLink(below(root, "proc/self/exe")).starts_with(*snap + "/");
}

// Whether the program sees the machine's whole file system, as far as it can tell: it isn't in a container
// (which would have its own pid namespace or leave a marker file), in a Flatpak or a confined Snap, or in a
// chroot. Read from proc/ and marker files below `root`.
bool seesWholeMachine(const std::string& root, ProcessEnvironment& environment) {
  if (exists(below(root, ".flatpak-info")) || exists(below(root, "run/.containerenv"))) return false;
  if (isSnap(root, environment)) return false;
  const std::string pidNamespace = readLink(below(root, "proc/self/ns/pid"));
  if (!pidNamespace.empty() && pidNamespace != initialPidNamespace) return false;
  const auto mounts = readFile(below(root, "proc/self/mountinfo"));
  return !mounts || findMount(*mounts, "/").has_value();
}

}  // namespace

LinuxFolders::LinuxFolders(ProcessEnvironment& environment, std::string root)
    : environment_(environment), root_(std::move(root)), pool_(poolSettings()) {}

FileLocation LinuxFolders::homeDirectory() {
  const auto home = environment_.variable("HOME");
  if (home && home->starts_with('/')) return FileLocation(*home);
  std::vector<char> texts(16384);
  passwd entry{};
  passwd* found = nullptr;
  const bool isKnown =
      getpwuid_r(geteuid(), &entry, texts.data(), texts.size(), &found) == 0 && found != nullptr;
  const std::string path = isKnown && found->pw_dir != nullptr ? found->pw_dir : "";
  return path.starts_with('/') ? FileLocation(path) : FileLocation();
}

bool LinuxFolders::seesWholeFileSystem() {
  return seesWholeMachine(root_, environment_);
}

std::optional<std::vector<DirectoryEntry>> LinuxFolders::contents(const FileLocation& folder,
                                                                  bool skipsHidden) {
  const UniqueFd directory = openDirectory(folder.path(), O_RDONLY);
  if (!directory) return std::nullopt;
  std::vector<DirectoryEntry> entries;
  std::vector<char> buffer(listingBuffer);
  const auto end = forEachEntry(directory.get(), buffer, [&](const char* name, unsigned char type) {
    const bool isHidden = name[0] == '.';
    if (!(skipsHidden && isHidden)) entries.push_back(entryOf(directory.get(), folder, name, type));
    return true;
  });
  return end == ReadEnd::complete ? std::optional(std::move(entries)) : std::nullopt;
}

void LinuxFolders::measure(std::vector<FileLocation> folders, CancellationFlag isCancelled,
                           MeasureDone done) {
  pool_.measure(std::move(folders), std::move(isCancelled), std::move(done));
}

}  // namespace kestrune::platform
