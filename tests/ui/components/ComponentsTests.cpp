#include <limits>

#include <gmock/gmock.h>

#include "ui/components/CoreBar.h"
#include "ui/components/Formatters.h"
#include "ui/components/Sparkline.h"
#include "ui/components/Trends.h"

namespace kestrune::ui {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(SparklineHeights, scaleToTheirRangeOrAreFractions) {
  EXPECT_THAT(sparklineHeights({}, true), IsEmpty());
  EXPECT_THAT(sparklineHeights({4}, true), ElementsAre(0.5));
  EXPECT_THAT(sparklineHeights({4, 4}, true), ElementsAre(0.5, 0.5));
  EXPECT_THAT(sparklineHeights({10, 30, 15, -10}, true), ElementsAre(0.5, 1, 0.625, 0));
  EXPECT_THAT(sparklineHeights({1.7, 0.25, -0.2}, false), ElementsAre(1, 0.25, 0));
}

TEST(SparklineHeights, stayDrawableForAnyValue) {
  EXPECT_THAT(sparklineHeights({notANumber, infinite, -infinite, 0.5}, false), ElementsAre(0, 1, 0, 0.5));
  EXPECT_THAT(sparklineHeights({notANumber, infinite, -infinite, 10, 20}, true), ElementsAre(0, 1, 0, 0, 1));
  EXPECT_THAT(sparklineHeights({notANumber, infinite}, true), ElementsAre(0.5, 0.5));
  constexpr double max = std::numeric_limits<double>::max();
  EXPECT_THAT(sparklineHeights({-max, max}, true),
              testing::Each(testing::AllOf(testing::Ge(0), testing::Le(1))));
  const auto dual = dualSparklineHeights({notANumber, infinite, 1}, {-infinite, 2});
  EXPECT_THAT(dual.primary, ElementsAre(0, 1, 0.5));
  EXPECT_THAT(dual.secondary, ElementsAre(0, 1));
}

TEST(DualSparklineHeights, shareOneScaleFromZero) {
  const auto heights = dualSparklineHeights({5, 10}, {2, -1, 20});
  EXPECT_THAT(heights.primary, ElementsAre(0.25, 0.5));
  EXPECT_THAT(heights.secondary, ElementsAre(0.1, 0, 1));
  EXPECT_THAT(dualSparklineHeights({0, 0}, {}).primary, ElementsAre(0, 0));
}

TEST(CoreBars, areNamedByTheirKind) {
  const auto labels = [](int effCores, std::size_t cores) {
    CPUSnapshot snapshot;
    snapshot.coreUsages.resize(cores);
    std::vector<std::string> found;
    for (const auto& bar : coreBars(snapshot, {"", 0, 1, effCores}, HistoryRing<CPUSnapshot>(1))) {
      EXPECT_EQ(bar.isPerformance, bar.label.front() == 'P');
      found.push_back(bar.label);
    }
    return found;
  };
  EXPECT_THAT(labels(2, 4), ElementsAre("E1", "E2", "P1", "P2"));
  EXPECT_THAT(labels(0, 3), ElementsAre("C1", "C2", "C3"));
  EXPECT_THAT(labels(-1, 2), ElementsAre("C1", "C2"));
  EXPECT_THAT(labels(4, 2), ElementsAre("E1", "E2"));
}

TEST(CoreBars, skipSamplesWithoutTheCore) {
  HistoryRing<CPUSnapshot> history(3);
  for (const auto& usages : std::vector<std::vector<double>>{{99, 99}, {}, {10}, {20, 40}}) {
    history.append({{}, {.usagePercent = 0, .coreUsages = usages, .topProcesses = {}}});
  }
  const CPUSnapshot now{.usagePercent = 0, .coreUsages = {20, 40, 60}, .topProcesses = {}};
  const auto bars = coreBars(now, {}, history);
  EXPECT_THAT(bars.at(0).history, ElementsAre(0.1, 0.2));
  EXPECT_THAT(bars.at(1).history, ElementsAre(0.4));
  EXPECT_THAT(bars.at(2).history, IsEmpty());
}

TEST(ThinnedSeries, hasAtMost120Points) {
  const auto series = [](std::size_t count, std::size_t samples) {
    HistoryRing<double> ring(200);
    for (std::size_t i = 0; i < count; ++i) ring.append({{}, static_cast<double>(i)});
    return thinnedSeries(ring, samples, 100).values;
  };
  EXPECT_THAT(series(0, 300), IsEmpty());
  EXPECT_THAT(series(2, 300), ElementsAre(0, 0.01));
  EXPECT_EQ(series(90, 300).size(), 90U);
  EXPECT_EQ(series(90, 60).size(), 60U);
  EXPECT_EQ(series(90, 60).front(), 0.30);

  const auto thinned = series(121, 300);
  ASSERT_EQ(thinned.size(), 120U);
  EXPECT_EQ(thinned.front(), 0);
  EXPECT_EQ(thinned.at(118), 1.18);  // 118 · 120 / 119 is 118.99
  EXPECT_EQ(thinned.back(), 1.20);
  const auto wrapped = series(350, 300);  // the ring holds the last 200
  EXPECT_EQ(wrapped.front(), 1.50);
  EXPECT_EQ(wrapped.at(60), 2.50);  // 60 · 199 / 119 is 100.3
}

TEST(Formatters, writeBinaryUnits) {
  EXPECT_EQ(formatBytes(0), "0 KB");
  EXPECT_EQ(formatBytes(1023), "1 KB");
  EXPECT_EQ(formatBytes((1U << 20U) - 1), "1024 KB");
  EXPECT_EQ(formatBytes(1U << 20U), "1 MB");
  EXPECT_EQ(formatBytes(1U << 30U), "1.0 GB");
  EXPECT_EQ(formatBytes(std::numeric_limits<std::uint64_t>::max()), "17179869184.0 GB");
  EXPECT_EQ(formatRate(-5), "0 B/s");
  EXPECT_EQ(formatRate(notANumber), "0 B/s");
  EXPECT_EQ(formatRate(1023), "1023 B/s");
  EXPECT_EQ(formatRate(1024), "1.0 KB/s");
  EXPECT_EQ(formatRate(1048575), "1024.0 KB/s");
  EXPECT_EQ(formatRate(1.5 * 1048576), "1.5 MB/s");
  EXPECT_EQ(formatRate(1.25 * 1073741824), "1.25 GB/s");
}

TEST(Formatters, wholePercentTruncates) {
  EXPECT_EQ(wholePercent(99.99), 99);
  EXPECT_EQ(wholePercent(notANumber), 0);
  EXPECT_EQ(wholePercent(infinite), 1000000000);
}

}  // namespace
}  // namespace kestrune::ui
