#include <gtest/gtest.h>

#include "texts/LocaleFormats.h"

namespace kestrune {
namespace {

TEST(LocaleFormats, percentagesFollowTheLocale) {
  LocaleFormats english("en_US.UTF-8");
  EXPECT_EQ(english.percent(1, 0), "100%");
  EXPECT_EQ(english.percent(9.99, 1), "999.0%");
  EXPECT_EQ(english.percent(0.125, 0), "12%");
  EXPECT_EQ(english.percent(0.135, 0), "14%");

  LocaleFormats spanish("es_ES.UTF-8");
  EXPECT_EQ(spanish.percent(0.334, 1), "33,4\u00a0%");
  EXPECT_EQ(LocaleFormats("de_DE@euro").percent(0.334, 1), "33,4\u00a0%");
}

TEST(LocaleFormats, daysAndTimesFollowTheLocale) {
  LocaleFormats english("en_US");
  EXPECT_EQ(english.day("2026-05-09"), "May 9, 2026");
  EXPECT_EQ(english.shortDay("2026-05-09"), "May 9");
  EXPECT_EQ(english.shortDay("2026-13-09"), "2026-13-09");
  LocaleFormats spanish("es_ES");
  EXPECT_EQ(spanish.day("2026-05-09"), "may 9, 2026");
  EXPECT_EQ(spanish.shortDay("2026-05-09"), "9 may");
  EXPECT_EQ(spanish.time(50732), "14:05:32");
  EXPECT_EQ(spanish.time(50732, LocaleFormats::Detail::minutes), "14:05");
}

TEST(LocaleFormats, unknownLocalesReadAsEnglish) {
  for (const char* name : {"", "C", "C.UTF-8", "POSIX", "garbage", "xx_YY", "!?", "@euro", ".UTF-8"}) {
    EXPECT_EQ(LocaleFormats(name).percent(12.345, 1), "1,234.5%") << name;
  }
}

}  // namespace
}  // namespace kestrune
