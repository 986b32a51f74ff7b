#include <gtest/gtest.h>

#include "texts/TextFormat.h"

namespace kestrune {
namespace {

TEST(TextFormatTest, fillsPlaceholders) {
  EXPECT_EQ(formatText("%@: core %d of %d", {"CPU", std::int64_t{3}, std::int64_t{16}}), "CPU: core 3 of 16");
  EXPECT_EQ(formatText("%.1f of %.0f – %.2f", {12.34, 15.5, -0.005}), "12.3 of 16 – -0.01");
  EXPECT_EQ(formatText("%2$.1f GB: %1$@, %1$@", {"80%d", 40.25}), "40.2 GB: 80%d, 80%d")
      << "another order, and no argument is a format";
  EXPECT_EQ(formatText("100 %% of %@%%", {"it"}), "100 % of it%");
  EXPECT_EQ(formatText("", {"unused"}), "");
}

TEST(TextFormatTest, badFormatsAreHarmless) {
  EXPECT_EQ(formatText("%@ %@ %3$d", {"one"}), "one %@ %3$d") << "too few arguments";
  EXPECT_EQ(formatText("%d %@ %@ %.1f", {"text", std::int64_t{7}, 2.5, std::int64_t{9}}), "text 7 2 9")
      << "other kinds than the format says";
  for (const char* format : {"%", "50% off", "%s %n %p", "%1$", "%1", "%0$@", "%.f", "%.", "%.10f", "%-5d",
                             "%99999999999999999999$@", "%.99999999999999999999f"}) {
    EXPECT_EQ(formatText(format, {"argument"}), format);
  }
}

}  // namespace
}  // namespace kestrune
