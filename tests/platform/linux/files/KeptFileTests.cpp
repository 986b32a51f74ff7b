#include <filesystem>

#include <gtest/gtest.h>

#include "platform/linux/files/KeptFile.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

class KeptFileTest : public testing::Test {
 protected:
  std::string read() { return std::string(file.read().value_or("failed")); }

  test::TemporaryFolder root;
  KeptFile file{root / "file"};
};

TEST_F(KeptFileTest, readsTheWholeTextAgainEachTime) {
  EXPECT_EQ(read(), "failed") << "no such file";
  for (const std::string& text : {std::string(10000, 'a'), std::string("b"), std::string(4096, 'c')}) {
    root.write("file", text);
    EXPECT_EQ(read(), text);
  }
}

TEST_F(KeptFileTest, reopensTheFileAfterAFailedRead) {
  root.write("file", "old");
  EXPECT_EQ(read(), "old");
  root.write("file", std::string(5U << 20U, 'x'));
  EXPECT_EQ(read(), "failed") << "too long";
  root.write("file", "old");
  EXPECT_EQ(read(), "old");

  root.write("file", std::string(5U << 20U, 'x'));
  root.write("other", "new");
  std::filesystem::rename(root / "other", root / "file");
  EXPECT_EQ(read(), "new");
}

}  // namespace
}  // namespace kestrune::platform
