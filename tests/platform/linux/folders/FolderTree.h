#pragma once

#include <array>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/folders/SubtreeWalk.h"
#include "support/TemporaryFolder.h"

namespace kestrune::test {

// Creates an entry in an open directory.
inline void makeFile(int directory, const std::string& name, std::size_t bytes) {
  const platform::UniqueFd file(openat(directory, name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
  EXPECT_EQ(ftruncate(file.get(), static_cast<off_t>(bytes)), 0) << name;
}

// A temporary folder that can be removed whatever its depth and permissions.
class FolderTree : public TemporaryFolder {
 public:
  ~FolderTree() {
    // std::filesystem::remove_all needs a descriptor for each level.
    const std::string command = "chmod -R u+rwx " + path() + " 2>/dev/null; rm -rf " + path() + "/*";
    EXPECT_EQ(std::system(command.c_str()), 0);
  }

  void file(std::string_view name, std::size_t bytes) const { write(name, std::string(bytes, 'x')); }
  void directory(std::string_view name) const { std::filesystem::create_directories(*this / name); }
  void fifo(std::string_view name) const { EXPECT_EQ(mkfifo((*this / name).c_str(), 0600), 0); }

  // Creates that many nested directories of that name and calls `each` with a descriptor of each. Returns the
  // path of the deepest one.
  std::string chain(int levels, const std::string& name, const std::function<void(int)>& each) const {
    std::string deepest = path();
    platform::UniqueFd at(open(path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int level = 0; level < levels; ++level) {
      EXPECT_EQ(mkdirat(at.get(), name.c_str(), 0755), 0);
      at = platform::UniqueFd(openat(at.get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
      deepest += "/" + name;
      each(at.get());
    }
    return deepest;
  }
};

// A walk that a test drives step by step.
class DrivenWalk {
 public:
  // Begun at a folder or at what another walk has split off.
  template <class Start>
  platform::SubtreeWalk walk(Start start) {
    platform::SubtreeWalk walk({isCancelled, isClosing, entries, mounts, buffer_});
    walk.begin(std::move(start));
    return walk;
  }

  std::atomic<bool> isCancelled = false;
  std::atomic<bool> isClosing = false;
  std::atomic<std::uint64_t> entries = 0;
  platform::MountRoots mounts;

 private:
  alignas(16) std::array<char, 4096> buffer_{};
};

// Finishes the walk.
inline platform::FolderMeasure finished(platform::SubtreeWalk& walk) {
  while (walk.step()) {
  }
  return walk.found();
}

// Measures a folder in this thread.
inline platform::FolderMeasure measured(const std::string& path) {
  DrivenWalk driven;
  auto walk = driven.walk(platform::FileLocation(path));
  return finished(walk);
}

// How many descriptors the process has open.
inline std::size_t openDescriptors() {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

}  // namespace kestrune::test
