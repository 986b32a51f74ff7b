#include "platform/linux/folders/FolderTree.h"

#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrune::test {

using platform::UniqueFd;

FolderTree::~FolderTree() {
  // The library's own way needs a descriptor for each level.
  const std::string command = "chmod -R u+rwx " + path() + " 2>/dev/null; rm -rf " + path() + "/*";
  EXPECT_EQ(std::system(command.c_str()), 0);
}

void FolderTree::file(std::string_view name, std::size_t bytes) const {
  folder_.write(name, std::string(bytes, 'x'));
}

void FolderTree::directory(std::string_view name) const {
  std::filesystem::create_directories(folder_ / name);
}

void FolderTree::link(std::string_view name, const std::string& target) const {
  std::filesystem::create_symlink(target, folder_ / name);
}

std::string FolderTree::chain(int levels, const std::string& name,
                              const std::function<void(int, int)>& each) const {
  std::string deepest = path();
  UniqueFd at(open(path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  for (int level = 0; level < levels; ++level) {
    EXPECT_EQ(mkdirat(at.get(), name.c_str(), 0755), 0);
    at = UniqueFd(openat(at.get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    deepest += "/" + name;
    if (each) each(level, at.get());
  }
  return deepest;
}

void makeFile(int directory, const std::string& name, std::size_t bytes) {
  const UniqueFd file(openat(directory, name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
  EXPECT_EQ(ftruncate(file.get(), static_cast<off_t>(bytes)), 0) << name;
}

platform::FolderMeasure measured(const std::string& path) {
  DrivenWalk driven;
  auto walk = driven.walk();
  walk.begin(platform::FileLocation(path));
  while (walk.step()) {
  }
  return walk.found();
}

std::size_t openDescriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

}  // namespace kestrune::test
