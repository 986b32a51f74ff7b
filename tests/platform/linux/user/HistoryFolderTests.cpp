#include <gmock/gmock.h>
#include <sys/stat.h>

#include "platform/linux/user/LinuxHistoryFolder.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using testing::Optional;

class HistoryFolderTest : public testing::Test {
 protected:
  fs::perms permissions(const std::string& name) const { return fs::status(folder / name).permissions(); }
  auto files() const { return std::distance(fs::directory_iterator(history), {}); }

  test::TemporaryFolder folder;
  const std::string history = folder / "share/Kestrune/history";
  LinuxHistoryFolder storage{folder / "share"};
};

TEST_F(HistoryFolderTest, keepsPrivateFiles) {
  EXPECT_EQ(storage.read("a.json"), std::nullopt);
  EXPECT_FALSE(folder.has("share")) << "reading creates nothing";
  const std::string content("first\0line\n\xFF", 12);
  EXPECT_EQ(storage.write("a.json", content), std::nullopt);
  EXPECT_EQ(storage.read("a.json"), content);
  EXPECT_EQ(folder.read("share/Kestrune/history/a.json"), content);
  EXPECT_EQ(permissions("share/Kestrune"), fs::perms::owner_all);
  EXPECT_EQ(permissions("share/Kestrune/history"), fs::perms::owner_all);
  EXPECT_EQ(permissions("share/Kestrune/history/a.json"), fs::perms::owner_read | fs::perms::owner_write);

  EXPECT_EQ(storage.write("a.json", "second"), std::nullopt);
  EXPECT_EQ(storage.read("a.json"), "second");
  EXPECT_EQ(files(), 1);
}

TEST_F(HistoryFolderTest, readsRegularFilesOnly) {
  ASSERT_EQ(storage.write("real", "content"), std::nullopt);
  fs::create_directory(history + "/folder");
  ASSERT_EQ(mkfifo((history + "/fifo").c_str(), 0600), 0);
  for (const auto& [name, target] :
       {std::pair("dangling", "nowhere"), {"loop", "loop"}, {"endless", "/dev/zero"}, {"link", "real"}}) {
    fs::create_symlink(target, history + "/" + name);
  }
  ASSERT_EQ(storage.write("huge", ""), std::nullopt);
  fs::resize_file(history + "/huge", (64ULL << 20U) + 1);
  for (const auto* name : {"folder", "fifo", "dangling", "loop", "endless", "huge", "absent", "real/child"}) {
    EXPECT_EQ(storage.read(name), std::nullopt) << name;
  }
  EXPECT_EQ(storage.read("link"), "content");
}

TEST_F(HistoryFolderTest, describesFailures) {
  folder.write("share/Kestrune/history", "a file in place of the folder");
  EXPECT_THAT(storage.write("a.json", "x"), Optional(std::string("Not a directory")));
  EXPECT_EQ(storage.read("a.json"), std::nullopt);
  fs::remove(history);
  fs::create_directories(history + "/a.json/child");
  EXPECT_THAT(storage.write("a.json", "x"), Optional(std::string("Is a directory")));
  EXPECT_EQ(files(), 1);
}

}  // namespace
}  // namespace kestrune::platform
