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
#include <string_view>
#include <vector>

#include "platform/Folders.h"
#include "platform/linux/files/UniqueFd.h"

namespace kestrune::platform {

// Which directory it is, whatever path leads to it.
struct DirectoryId {
  std::uint64_t device = 0;
  std::uint64_t inode = 0;

  friend auto operator<=>(const DirectoryId&, const DirectoryId&) = default;
};

// The roots of the mounts that one measure has come into. Each is entered once, so that mounts of one thing
// in several places, or in itself, can't multiply the way. Any thread.
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

// A walk through a directory and all below it that adds up its files, deepest first, one directory a step. It
// holds a bounded number of descriptors and no path, however deep the tree; what it keeps of a directory is
// the names of the directories in it that are still to come. Anything but a directory is never opened, and a
// directory only if it still is one. One thread at a time.
class SubtreeWalk {
 public:
  // What the walk shares with others. All of it outlives the walk.
  struct Surroundings {
    const std::atomic<bool>& isCancelled;  // either flag ends the walk at the next entry
    const std::atomic<bool>& isClosing;
    std::atomic<std::uint64_t>& entries;  // is counted up, by this walk alone
    MountRoots& mounts;
    std::span<char> buffer;  // for reading directories; aligned like allocated memory
  };

  // A directory whose own entries have been counted.
  struct Level {
    UniqueFd directory;  // none: closed for the time being
    DirectoryId id;
    std::uint64_t mount = 0;
    std::string names;          // of the directories in it, each closed by a zero byte
    std::size_t next = 0;       // in `names`: where the first one begins that is still to come
    std::size_t nameInUpper{};  // where its own name begins in the names of the level above
  };

  explicit SubtreeWalk(const Surroundings& surroundings) : around_(surroundings) {}

  // Takes in the directory itself, package or not. A link or a file is nothing, and so is what lies in a file
  // system of the kernel's own.
  void begin(const FileLocation& folder);
  // Goes on with what another walk has given away.
  void begin(Level part);

  // Takes in one directory more. False: there is none left, or the walk is to end.
  bool step();

  // Takes away part of what is still to come, as far up in the tree as possible, for another walk to begin
  // with. Absent: there isn't enough for two.
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
  std::size_t unfinished_ = 0;  // levels with names still to come
  FolderMeasure found_;
};

}  // namespace kestrune::platform
