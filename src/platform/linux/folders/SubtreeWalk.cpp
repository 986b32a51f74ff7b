#include "platform/linux/folders/SubtreeWalk.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include "platform/linux/files/OpenDirectory.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

// How many of the deepest levels keep their directory open (the root always does).
constexpr std::size_t openLevels = 8;

constexpr std::uint64_t maxBytes = std::numeric_limits<std::uint64_t>::max();

constexpr std::array<std::string_view, 9> packageExtensions{
    "app", "appdir", "appex", "bundle", "framework", "kext", "plugin", "prefpane", "xpc"};

constexpr std::array<std::uint32_t, 25> kernelFileSystems{
    AAFS_MAGIC, AUTOFS_SUPER_MAGIC, BINDERFS_SUPER_MAGIC, BINFMTFS_MAGIC, BPF_FS_MAGIC, CGROUP2_SUPER_MAGIC,
    CGROUP_SUPER_MAGIC, DEBUGFS_MAGIC, DEVPTS_SUPER_MAGIC, EFIVARFS_MAGIC, NSFS_MAGIC, OPENPROM_SUPER_MAGIC,
    PROC_SUPER_MAGIC, PSTOREFS_MAGIC, RDTGROUP_SUPER_MAGIC, SECURITYFS_MAGIC, SELINUX_MAGIC, SMACK_MAGIC,
    SYSFS_MAGIC, TRACEFS_MAGIC, XENFS_SUPER_MAGIC,
    // Not in the kernel's public header.
    0x62656570,  // configfs
    0x65735543,  // fusectl
    0x19800202,  // mqueue
    0x67596969,  // rpc_pipefs
};

// Whether a directory of that name is a package, which users see as a single item. Packages are recognised by
// their extension, in upper or lower case: application bundles (app, appdir), their extensions (appex,
// bundle, framework, kext, plugin, prefpane) and their services (xpc).
bool isPackage(std::string_view directoryName) {
  const auto dot = directoryName.rfind('.');
  // ".app" is a hidden name without an extension.
  if (dot == std::string_view::npos || dot == 0) return false;
  const std::string_view extension = directoryName.substr(dot + 1);
  return std::ranges::any_of(packageExtensions, [&](std::string_view known) {
    return std::ranges::equal(extension, known, {}, lowerCase);
  });
}

// Whether a file system of that type, as returned by statfs(2), shows the kernel's state rather than files.
// Includes automount points that aren't mounted yet.
bool isKernelFileSystem(std::uint32_t type) {
  return std::ranges::find(kernelFileSystems, type) != kernelFileSystems.end();
}

DirectoryId idOf(const struct statx& info) {
  return {.device = (std::uint64_t{info.stx_dev_major} << 32U) | info.stx_dev_minor, .inode = info.stx_ino};
}

// Kernels before 5.8 don't report the mount; the device has to do there.
std::uint64_t mountOf(const struct statx& info) {
  return (info.stx_mask & STATX_MNT_ID) != 0 ? info.stx_mnt_id : idOf(info).device;
}

// Only the owner of a directory may read it without changing its access time.
UniqueFd openForReading(int directory, const char* name, bool isOwn) {
  constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  UniqueFd opened(openat(directory, name, flags | (isOwn ? O_NOATIME : 0)));
  if (!opened && isOwn) opened = UniqueFd(openat(directory, name, flags));
  return opened;
}

// Checks the type of the file system before reading from it. O_DIRECTORY would trigger an automount here.
UniqueFd openRootOfMount(int directory, const char* name, bool isOwn) {
  const UniqueFd root(openat(directory, name, O_PATH | O_NOFOLLOW | O_CLOEXEC));
  struct statfs info {};
  if (!root || fstatfs(root.get(), &info) != 0) return {};
  if (isKernelFileSystem(static_cast<std::uint32_t>(info.f_type))) return {};
  return openForReading(root.get(), ".", isOwn);
}

bool isOwn(const struct statx& info) {
  const uid_t user = geteuid();
  return user == 0 || info.stx_uid == user;
}

}  // namespace

void SubtreeWalk::begin(const FileLocation& folder) {
  const UniqueFd parent = openDirectory(folder.parent().path(), O_PATH);
  if (!parent) return;
  const std::string name(folder.path() == "/" ? "." : folder.name());
  auto level = opened(parent.get(), name.c_str(), std::nullopt);
  if (!level) return;
  readEntries(*level);
  push(*std::move(level));
}

void SubtreeWalk::begin(Level part) {
  push(std::move(part));
}

bool SubtreeWalk::step() {
  while (unfinished_ > 0 && levels_.back().next == levels_.back().names.size()) leave();
  if (unfinished_ == 0 || isStopped()) return false;
  Level& top = levels_.back();
  const std::size_t nameAt = top.next;
  top.next = top.names.find('\0', nameAt) + 1;
  if (top.next == top.names.size()) --unfinished_;
  enter(top, nameAt);
  return unfinished_ > 0;
}

bool SubtreeWalk::isStopped() const {
  return around_.isCancelled.load(std::memory_order_relaxed) ||
         around_.isClosing.load(std::memory_order_relaxed);
}

void SubtreeWalk::push(Level level) {
  if (level.next == level.names.size()) return;
  ++unfinished_;
  levels_.push_back(std::move(level));
  const std::size_t top = levels_.size() - 1;
  if (top > openLevels) levels_[top - openLevels].directory = UniqueFd();
}

void SubtreeWalk::enter(const Level& upper, std::size_t nameAt) {
  auto level = opened(upper.directory.get(), &upper.names[nameAt], upper.mount);
  if (!level) return;
  level->nameInUpper = nameAt;
  readEntries(*level);
  push(*std::move(level));
}

// Absent: not a directory, or one that must not be entered.
std::optional<SubtreeWalk::Level> SubtreeWalk::opened(int upper, const char* name,
                                                      std::optional<std::uint64_t> mountOfUpper) {
  constexpr unsigned mask = STATX_TYPE | STATX_UID | STATX_INO | STATX_MNT_ID;
  const auto info = statEntry(upper, name, mask);
  if (!info || !S_ISDIR(info->stx_mode)) return std::nullopt;
  Level level;
  level.id = idOf(*info);
  level.mount = mountOf(*info);
  if (level.mount == mountOfUpper) {
    level.directory = openForReading(upper, name, isOwn(*info));
  } else if (around_.mounts.enter(level.id)) {
    level.directory = openRootOfMount(upper, name, isOwn(*info));
  }
  return level.directory ? std::optional(std::move(level)) : std::nullopt;
}

void SubtreeWalk::readEntries(Level& level) {
  const int directory = level.directory.get();
  forEachEntry(directory, around_.buffer, [&](const char* name, unsigned char type) {
    around_.entries.store(around_.entries.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    if (isStopped()) return false;
    add(directory, name, type, level.names);
    return true;
  });
}

void SubtreeWalk::add(int directory, const char* name, unsigned char type, std::string& names) {
  bool isDirectory = type == DT_DIR;
  if (type == DT_REG || type == DT_UNKNOWN) {
    const auto info = statEntry(directory, name, STATX_TYPE | STATX_SIZE);
    if (!info) return;
    isDirectory = type == DT_UNKNOWN && S_ISDIR(info->stx_mode);
    if (S_ISREG(info->stx_mode) && info->stx_size > 0) {
      ++found_.files;
      found_.bytes += std::min<std::uint64_t>(info->stx_size, maxBytes - found_.bytes);
    }
  }
  if (isDirectory && !isPackage(name)) (names += name) += '\0';
}

// Leaves the deepest level, which is finished.
void SubtreeWalk::leave() {
  const Level child = std::move(levels_.back());
  levels_.pop_back();
  Level& top = levels_.back();
  if (top.directory) return;
  top.directory = reopened(levels_.size() - 1, child.directory);
  if (!top.directory) drop(top);
}

// Reopens the level through its child's "..", which is cheaper than from the top but leads elsewhere if the
// child has been moved.
UniqueFd SubtreeWalk::reopened(std::size_t level, const UniqueFd& child) const {
  constexpr int flags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
  const auto isLevel = [&](const UniqueFd& directory) {
    struct statx info {};
    return directory && statx(directory.get(), "", AT_EMPTY_PATH, STATX_INO, &info) == 0 &&
           idOf(info) == levels_[level].id;
  };
  if (child) {
    UniqueFd parent(openat(child.get(), "..", flags));
    if (isLevel(parent)) return parent;
  }
  std::size_t upper = level;
  while (!levels_[upper].directory) --upper;  // the root is always open
  UniqueFd at;
  for (std::size_t i = upper + 1; i <= level; ++i) {
    const int from = at ? at.get() : levels_[upper].directory.get();
    at = UniqueFd(openat(from, &levels_[i - 1].names[levels_[i].nameInUpper], flags));
    if (!at) return {};
  }
  return isLevel(at) ? std::move(at) : UniqueFd();
}

// Skips the rest of a level that can't be reached any more.
void SubtreeWalk::drop(Level& level) {
  if (level.next == level.names.size()) return;
  level.next = level.names.size();
  --unfinished_;
}

std::optional<SubtreeWalk::Level> SubtreeWalk::split() {
  const std::size_t count = levels_.size();
  const std::size_t firstOpen = count > openLevels ? count - openLevels : 1;
  const auto take = [&](std::size_t index) {
    Level& level = levels_[index];
    const bool hasNames = level.directory && level.next < level.names.size();
    return hasNames ? takeHalf(level, unfinished_ > 1) : std::nullopt;
  };
  if (count == 0) return std::nullopt;
  auto part = take(0);
  for (std::size_t i = firstOpen; i < count && !part; ++i) part = take(i);
  return part;
}

std::optional<SubtreeWalk::Level> SubtreeWalk::takeHalf(Level& level, bool mayTakeAll) {
  const std::size_t middle = level.next + (level.names.size() - level.next) / 2;
  std::size_t cut = level.names.find('\0', middle) + 1;
  if (cut == level.names.size()) {
    // The middle is in the last name: give that name away, or everything if it is the only one.
    cut = level.names.rfind('\0', cut - 2) + 1;  // npos + 1 is 0
    cut = std::max(cut, level.next);
    if (cut == level.next && !mayTakeAll) return std::nullopt;
  }
  Level part{.directory = UniqueFd(fcntl(level.directory.get(), F_DUPFD_CLOEXEC, 0)),
             .id = level.id,
             .mount = level.mount,
             .names = level.names.substr(cut)};
  if (!part.directory) return std::nullopt;
  level.names.resize(cut);
  if (level.next == cut) --unfinished_;
  return part;
}

}  // namespace kestrune::platform
