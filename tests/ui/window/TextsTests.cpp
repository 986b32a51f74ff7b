#include <limits>

#include <gtest/gtest.h>

#include "texts/LocaleFormats.h"
#include "ui/components/Formatters.h"

namespace kestrune::ui {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(Formatters, BytesInBinaryUnits) {
  EXPECT_EQ(formatBytes(0), "0 KB");
  EXPECT_EQ(formatBytes(1023), "1 KB");
  EXPECT_EQ(formatBytes((1U << 20U) - 1), "1024 KB");
  EXPECT_EQ(formatBytes(1U << 20U), "1 MB");
  EXPECT_EQ(formatBytes(1U << 30U), "1.0 GB");
  EXPECT_EQ(formatBytes(std::numeric_limits<std::uint64_t>::max()), "17179869184.0 GB");
}

TEST(Formatters, RatesInBinaryUnits) {
  EXPECT_EQ(formatRate(-5), "0 B/s");
  EXPECT_EQ(formatRate(notANumber), "0 B/s");
  EXPECT_EQ(formatRate(1023), "1023 B/s");
  EXPECT_EQ(formatRate(1024), "1.0 KB/s");
  EXPECT_EQ(formatRate(1048575), "1024.0 KB/s");
  EXPECT_EQ(formatRate(1.5 * 1048576), "1.5 MB/s");
}

TEST(Formatters, WholePercentCutsOff) {
  EXPECT_EQ(wholePercent(99.99), 99);
  EXPECT_EQ(wholePercent(notANumber), 0);
  EXPECT_EQ(wholePercent(std::numeric_limits<double>::infinity()), 1000000000);
}

TEST(LocaleFormats, PercentagesAsTheLocaleWritesThem) {
  LocaleFormats english("en_US.UTF-8");
  EXPECT_EQ(english.percent(1, 0), "100%");
  EXPECT_EQ(english.percent(9.99, 1), "999.0%");
  EXPECT_EQ(english.percent(0.125, 0), "12%");
  EXPECT_EQ(english.percent(0.135, 0), "14%");

  LocaleFormats spanish("es_ES.UTF-8");
  EXPECT_EQ(spanish.percent(0.334, 1), "33,4\u00a0%");
  EXPECT_EQ(LocaleFormats("de_DE@euro").percent(0.334, 1), "33,4\u00a0%");
}

TEST(LocaleFormats, DaysAndTimesAsTheLocaleWritesThem) {
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

TEST(LocaleFormats, AnUnknownLocaleReadsAsEnglish) {
  for (const char* name : {"", "C", "C.UTF-8", "POSIX", "garbage", "xx_YY", "!?", "@euro", ".UTF-8"}) {
    EXPECT_EQ(LocaleFormats(name).percent(12.345, 1), "1,234.5%") << name;
  }
}

}  // namespace
}  // namespace kestrune::ui
