#include <gtest/gtest.h>

#include "platform/FileLocation.h"

namespace kestrune::platform {
namespace {

TEST(FileLocation, hasANameAndAParent) {
  const FileLocation file("/home/u/a.txt");
  EXPECT_EQ(file.parent().path(), "/home/u");
  EXPECT_EQ(FileLocation("/home").parent().path(), "/");
  EXPECT_EQ(FileLocation("/").parent(), FileLocation());
  EXPECT_EQ(FileLocation("/").name(), "/");
  EXPECT_EQ(FileLocation("/").child("home"), FileLocation("/home"));
}

TEST(FileLocation, dropsTrailingSlashes) {
  EXPECT_EQ(FileLocation("/home/u//").path(), "/home/u");
  EXPECT_EQ(FileLocation("///").path(), "/");
  EXPECT_EQ(FileLocation("/a//b").parent(), FileLocation("/a"));
}

TEST(FileLocation, keepsBytesAndShowsValidText) {
  const FileLocation odd("/tmp/a\nb\xFF\t\u00e9");
  EXPECT_EQ(odd.name(), "a\nb\xFF\t\u00e9");
  EXPECT_EQ(odd.shownName(), "a\uFFFDb\uFFFD\uFFFD\u00e9");
  EXPECT_EQ(FileLocation().shownName(), "/");
}

}  // namespace
}  // namespace kestrune::platform
