#pragma once

#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "platform/Folders.h"
#include "platform/linux/files/UniqueFd.h"

namespace kestrune::platform {

// Identifies a directory regardless of its path.
struct DirectoryId {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;

  friend auto operator<=>(const DirectoryId&, const DirectoryId&) = default;
};

// The roots of the mounts that one measure has entered. Each is entered once, so that bind mounts of one
// directory, or of a directory in itself, don't multiply the work. Any thread.
class MountRoots {
 public:
  // True the first time.
  bool enter(const DirectoryId& root) {
    const std::lock_guard lock(mutex_);
    return entered_.insert(root).second;
  }

 private:
  std::mutex mutex_;
  std::set<DirectoryId> entered_;
};

// Walks through a directory and everything below it and adds up the files, depth first, one directory a step.
// It holds a bounded number of descriptors and no path, however deep the tree; of each directory it keeps the
// names of the subdirectories still to be visited. Nothing but directories is ever opened. One thread at a
// time.
class SubtreeWalk {
 public:
  // State shared with other threads. All of it outlives the walk.
  struct Surroundings {
    const std::atomic<bool>& isCancelled;  // either flag stops the walk at the next entry
    const std::atomic<bool>& isClosing;
    std::atomic<std::uint64_t>& entries;  // incremented by this walk only
    MountRoots& mounts;
    std::span<char> buffer;  // for reading directories; aligned like allocated memory
  };

  // A directory whose own entries have been counted.
  struct Level {
    UniqueFd directory;  // none: closed for now
    DirectoryId id;
    std::uint64_t mount = 0;
    std::string names;          // of its subdirectories, each terminated by a NUL
    std::size_t next = 0;       // offset in `names` of the first one still to be visited
    std::size_t nameInUpper{};  // offset of this directory's own name in `names` of the level above
  };

  explicit SubtreeWalk(const Surroundings& surroundings) : around_(surroundings) {}

  // Starts at the folder, even if it is a package. Links, files and the kernel's own file systems count as
  // nothing.
  void begin(const FileLocation& folder);
  // Starts with the part that another walk has split off.
  void begin(Level part);

  // Visits one more directory. False: there is none left, or the walk has been stopped.
  bool step();

  // Splits off part of the remaining work, as high up in the tree as possible, for another walk. Absent:
  // there is too little to share.
  std::optional<Level> split();

  const FolderMeasure& found() const { return found_; }

 private:
  bool isStopped() const;
  void push(Level level);
  void enter(const Level& upper, std::size_t nameAt);
  std::optional<Level> opened(int upper, const char* name, std::optional<std::uint64_t> mountOfUpper);
  void readEntries(Level& level);
  void add(int directory, const char* name, unsigned char type, std::string& names);
  void leave();
  UniqueFd reopened(std::size_t level, const UniqueFd& child) const;
  void drop(Level& level);
  std::optional<Level> takeHalf(Level& level, bool mayTakeAll);

  Surroundings around_;
  std::vector<Level> levels_;
  std::size_t unfinished_ = 0;  // number of levels with names left
  FolderMeasure found_;
};

}  // namespace kestrune::platform
