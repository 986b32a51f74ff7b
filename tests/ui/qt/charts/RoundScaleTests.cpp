#include <gtest/gtest.h>

#include "ui/qt/charts/DayChartLeaf.h"

namespace kestrune::ui::qt {
namespace {

TEST(DayChart, scalesEndAboveAtRoundFigures) {
  EXPECT_EQ(roundScale(0, 1), (std::vector<double>{0, 1}));
  EXPECT_EQ(roundScale(100, 1), (std::vector<double>{0, 50, 100}));
  EXPECT_EQ(roundScale(101, 1), (std::vector<double>{0, 50, 100, 150}));
  for (const double highest : {1e-9, 3.0, 39.0, 1024.0, 2.5e12}) {
    const auto scale = roundScale(highest, 0.1);
    EXPECT_GE(scale.back(), highest * (1 - 1e-9));
    EXPECT_LE(scale.size(), 6U) << highest;
  }
}

}  // namespace
}  // namespace kestrune::ui::qt
