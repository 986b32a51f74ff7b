#include <filesystem>
#include <limits>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/folders/FolderTree.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using test::DrivenWalk;
using test::measured;

struct SubtreeWalkTest : testing::Test {
  test::FolderTree tree;
};

TEST_F(SubtreeWalkTest, countsNonEmptyFilesAtAnyDepth) {
  tree.file("a", 100);
  tree.file(".hidden", 20);
  tree.file("sub/.deep/er/b", 3);
  tree.file("sub/empty", 0);
  tree.file("line\nbreak/\xFF/" + std::string(255, 'n'), 4);
  tree.link("link", tree / "a");
  tree.link("loop", tree.path());
  fs::create_hard_link(tree / "a", tree / "sub/again");
  tree.fifo("fifo");
  EXPECT_EQ(measured(tree.path()), (FolderMeasure{227, 5}));
  EXPECT_EQ(measured(tree / "sub"), (FolderMeasure{103, 2}));
}

TEST_F(SubtreeWalkTest, onlyDirectoriesAreMeasured) {
  tree.file("file", 5);
  tree.link("link", tree.path());
  for (const auto& path : {tree / "file", tree / "link", tree / "missing", tree / "file/below"}) {
    EXPECT_EQ(measured(path), FolderMeasure{}) << path;
  }
}

TEST_F(SubtreeWalkTest, skipsPackagesBelow) {
  tree.file("Editor.app/Contents/program", 50);
  tree.file("Editor.app/Contents/Plug.plugin/code", 7);
  tree.file("Tool.AppDir/usr/bin/tool", 60);
  tree.file("libs/Some.FRAMEWORK/code", 70);
  tree.file("file.app", 1);
  tree.file(".app/settings", 2);
  tree.file("plain.apple/text", 4);
  EXPECT_EQ(measured(tree.path()), (FolderMeasure{7, 3}));
  EXPECT_EQ(measured(tree / "Editor.app"), (FolderMeasure{50, 1}));
  EXPECT_EQ(measured(tree / "libs"), FolderMeasure{});
}

TEST_F(SubtreeWalkTest, keepsAccessTimesOfOwnDirectories) {
  tree.directory("sub");
  const timespec longAgo{.tv_sec = 1000, .tv_nsec = 0};
  const timespec times[] = {longAgo, {.tv_sec = 2000, .tv_nsec = 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, (tree / "sub").c_str(), times, 0), 0);
  measured(tree.path());
  struct stat info {};
  ASSERT_EQ(stat((tree / "sub").c_str(), &info), 0);
  EXPECT_EQ(info.st_atim.tv_sec, longAgo.tv_sec);
}

constexpr int siblings = 10;

// Directories beside the next level, with a file of one byte each.
void addSiblings(int directory) {
  for (int i = 0; i < siblings; ++i) {
    const std::string name = "s" + std::to_string(i);
    ASSERT_EQ(mkdirat(directory, name.c_str(), 0755), 0);
    test::makeFile(directory, name + "/file", 1);
  }
}

TEST_F(SubtreeWalkTest, depthTakesNoDescriptors) {
  constexpr int levels = 100;
  tree.chain(levels, "d", addSiblings);
  DrivenWalk driven;
  auto walk = driven.walk(FileLocation(tree.path()));
  const std::size_t before = test::openDescriptors();
  std::size_t peak = 0;
  for (int steps = 0; walk.step(); ++steps) {
    if (steps % 50 == 0) peak = std::max(peak, test::openDescriptors());
  }
  EXPECT_EQ(walk.found(), (FolderMeasure{levels * siblings, levels * siblings}));
  EXPECT_LE(peak, before + 10);
  EXPECT_EQ(driven.entries, levels * (2 * siblings + 1)) << "each entry is read once";
}

TEST_F(SubtreeWalkTest, skipsBranchesMovedAway) {
  constexpr int levels = 40;
  test::FolderTree elsewhere;
  tree.chain(levels, "d", addSiblings);
  tree.file("last/file", 1);
  DrivenWalk driven;
  auto walk = driven.walk(FileLocation(tree.path()));
  while (driven.entries < 20 * (siblings + 1)) ASSERT_TRUE(walk.step());
  fs::rename(tree / "d/d/d/d", elsewhere / "moved");
  fs::rename(tree / "d/d", elsewhere / "moved too");
  tree.link("d/d", elsewhere / "moved too");
  test::finished(walk);
  EXPECT_LE(walk.found().files, levels * siblings + 1U);
  EXPECT_GE(walk.found().files, (levels - 3) * siblings + 1U) << "all but the rest of three levels";
}

TEST_F(SubtreeWalkTest, skipsDirectoriesReplacedMeanwhile) {
  test::FolderTree outside;
  outside.file("secret", 1000);
  for (const auto* name : {"link", "file", "fifo", "gone"}) tree.file(std::string(name) + "/content", 10);
  DrivenWalk driven;
  auto walk = driven.walk(FileLocation(tree.path()));
  for (const auto* name : {"link", "file", "fifo", "gone"}) fs::remove_all(tree / name);
  tree.link("link", outside.path());
  tree.file("file", 500);
  tree.fifo("fifo");
  EXPECT_FALSE(walk.step() && walk.step() && walk.step() && walk.step());
  EXPECT_EQ(walk.found(), FolderMeasure{});
}

TEST_F(SubtreeWalkTest, stopsAtTheNextEntryWhenEitherFlagIsSet) {
  for (int i = 0; i < 100; ++i) tree.file(std::to_string(i) + "/file", 1);
  for (auto DrivenWalk::*flag : {&DrivenWalk::isCancelled, &DrivenWalk::isClosing}) {
    DrivenWalk driven;
    auto walk = driven.walk(FileLocation(tree.path()));
    EXPECT_TRUE(walk.step());
    driven.*flag = true;
    const std::uint64_t entries = driven.entries;
    EXPECT_FALSE(walk.step());
    EXPECT_EQ(driven.entries, entries);
    EXPECT_EQ(walk.found(), (FolderMeasure{1, 1})) << "what was found so far";
  }
}

// Splits off parts whenever possible, also parts of parts.
FolderMeasure measuredInParts(const std::string& path, int& parts) {
  DrivenWalk driven;
  std::vector<std::unique_ptr<SubtreeWalk>> walks;
  walks.push_back(std::make_unique<SubtreeWalk>(driven.walk(FileLocation(path))));
  FolderMeasure sum;
  for (std::size_t turn = 0; !walks.empty(); ++turn) {
    const std::size_t index = turn % walks.size();
    if (!walks[index]->step()) {
      sum.bytes += walks[index]->found().bytes;
      sum.files += walks[index]->found().files;
      walks.erase(walks.begin() + static_cast<std::ptrdiff_t>(index));
    } else if (auto part = walks.size() < 8 ? walks[index]->split() : std::nullopt) {
      ++parts;
      walks.push_back(std::make_unique<SubtreeWalk>(driven.walk(*std::move(part))));
    }
  }
  return sum;
}

TEST_F(SubtreeWalkTest, partsAddUpToTheWhole) {
  for (int i = 0; i < 500; ++i) tree.file("wide/" + std::to_string(i) + "/file", 1);
  for (int i = 0; i < 3; ++i) tree.file("few/" + std::to_string(i) + "/sub/file", 100);
  tree.chain(60, "d", addSiblings);
  int parts = 0;
  EXPECT_EQ(measuredInParts(tree.path(), parts),
            (FolderMeasure{500 + 300 + 60 * siblings, 503 + 60 * siblings}));
  EXPECT_GT(parts, 50);
}

}  // namespace
}  // namespace kestrune::platform
