#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/linux/folders/SubtreeWalk.h"
#include "support/TemporaryFolder.h"

namespace kestrune::test {

// A temporary folder that is taken apart whatever its depth and its rights.
class FolderTree {
 public:
  FolderTree() = default;
  ~FolderTree();
  FolderTree(const FolderTree&) = delete;
  FolderTree& operator=(const FolderTree&) = delete;

  const std::string& path() const { return folder_.path(); }
  std::string operator/(std::string_view name) const { return folder_ / name; }
  void file(std::string_view name, std::size_t bytes) const;
  void directory(std::string_view name) const;
  void link(std::string_view name, const std::string& target) const;

  // Makes a chain of so many directories of that name, and calls `each(level, descriptor)` in each of them.
  // The path of the deepest one.
  std::string chain(int levels, const std::string& name,
                    const std::function<void(int, int)>& each = {}) const;

 private:
  TemporaryFolder folder_;
};

// Makes an entry in an open directory.
void makeFile(int directory, const std::string& name, std::size_t bytes);

// A walk that a test drives by hand.
class DrivenWalk {
 public:
  platform::SubtreeWalk walk() {
    return platform::SubtreeWalk({isCancelled, isClosing, entries, mounts, buffer_});
  }

  std::atomic<bool> isCancelled = false;
  std::atomic<bool> isClosing = false;
  std::atomic<std::uint64_t> entries = 0;
  platform::MountRoots mounts;

 private:
  alignas(16) std::array<char, 4096> buffer_{};
};

// The whole of a folder, in this thread.
platform::FolderMeasure measured(const std::string& path);

// How many descriptors the process has.
std::size_t openDescriptors();

}  // namespace kestrune::test
