#include <limits>

#include <gmock/gmock.h>

#include "ui/ViewFixture.h"
#include "ui/components/SandboxFeatureBanner.h"
#include "ui/components/Sparkline.h"

namespace kestrune::ui {
namespace {

using test::MountedViews;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(SparklineHeights, ScaledToTheirOwnRangeOrReadAsFractions) {
  EXPECT_THAT(sparklineHeights({}, true), IsEmpty());
  EXPECT_THAT(sparklineHeights({4}, true), ElementsAre(0.5));
  EXPECT_THAT(sparklineHeights({4, 4}, true), ElementsAre(0.5, 0.5));
  EXPECT_THAT(sparklineHeights({10, 30, 15, -10}, true), ElementsAre(0.5, 1, 0.625, 0));
  EXPECT_THAT(sparklineHeights({1.7, 0.25, -0.2}, false), ElementsAre(1, 0.25, 0));
}

TEST(SparklineHeights, StayDrawableWhateverTheValues) {
  EXPECT_THAT(sparklineHeights({notANumber, infinite, -infinite, 0.5}, false), ElementsAre(0, 1, 0, 0.5));
  EXPECT_THAT(sparklineHeights({notANumber, infinite, -infinite, 10, 20}, true), ElementsAre(0, 1, 0, 0, 1));
  EXPECT_THAT(sparklineHeights({notANumber, infinite}, true), ElementsAre(0.5, 0.5));
  constexpr double most = std::numeric_limits<double>::max();
  EXPECT_THAT(sparklineHeights({-most, most}, true),
              testing::Each(testing::AllOf(testing::Ge(0), testing::Le(1))));

  const auto dual = dualSparklineHeights({notANumber, infinite, 1}, {-infinite, 2});
  EXPECT_THAT(dual.primary, ElementsAre(0, 1, 0.5));
  EXPECT_THAT(dual.secondary, ElementsAre(0, 1));
}

TEST(DualSparklineHeights, ShareOneScaleFromZero) {
  const auto heights = dualSparklineHeights({5, 10}, {2, -1, 20});
  EXPECT_THAT(heights.primary, ElementsAre(0.25, 0.5));
  EXPECT_THAT(heights.secondary, ElementsAre(0.1, 0, 1));
  EXPECT_THAT(dualSparklineHeights({0, 0}, {}).primary, ElementsAre(0, 0));
}

TEST(SandboxFeatureBanner, DismissHidesEveryBannerForGood) {
  test::ScriptedPreferences storage;
  Preferences preferences(storage);
  class Page final : public Component {
   public:
    explicit Page(Preferences& shared) : preferences_(shared) {}
    View body() override { return SandboxFeatureBanner("Title", "Description", preferences_); }

   private:
    Preferences& preferences_;
  };
  const auto page = [&] { return component<Page>([&] { return std::make_shared<Page>(preferences); }); };
  MountedViews one(page());
  MountedViews other(page());
  EXPECT_THAT(one.texts(), ElementsAre("Title", "Description", "Dismiss"));

  one.press("Dismiss");
  other.update();
  EXPECT_THAT(one.all(), IsEmpty());
  EXPECT_THAT(other.all(), IsEmpty());
  EXPECT_EQ(storage.stored.at("ui.sandbox.showHints"), platform::PreferenceValue(false));
}

}  // namespace
}  // namespace kestrune::ui
