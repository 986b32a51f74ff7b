#include <limits>

#include <gmock/gmock.h>

#include "ui/Card.h"
#include "ui/Effects.h"
#include "ui/Gauges.h"
#include "ui/SandboxFeatureBanner.h"
#include "ui/Sparkline.h"
#include "ui/StatusColors.h"
#include "ui/ViewFixture.h"

namespace kestrune::ui {
namespace {

using test::MountedViews;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(SparklineHeights, ScaledToTheirOwnRange) {
  EXPECT_THAT(sparklineHeights({}, true), IsEmpty());
  EXPECT_THAT(sparklineHeights({4}, true), ElementsAre(0.5));
  EXPECT_THAT(sparklineHeights({4, 4}, true), ElementsAre(0.5, 0.5));
  EXPECT_THAT(sparklineHeights({10, 30, 15, -10}, true), ElementsAre(0.5, 1, 0.625, 0));
}

TEST(SparklineHeights, ReadAsFractions) {
  EXPECT_THAT(sparklineHeights({}, false), IsEmpty());
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
  auto heights = dualSparklineHeights({5, 10}, {2, -1, 20});
  EXPECT_THAT(heights.primary, ElementsAre(0.25, 0.5));
  EXPECT_THAT(heights.secondary, ElementsAre(0.1, 0, 1));

  heights = dualSparklineHeights({0, 0}, {0, 0});
  EXPECT_THAT(heights.primary, ElementsAre(0, 0));
  EXPECT_THAT(heights.secondary, ElementsAre(0, 0));

  heights = dualSparklineHeights({}, {1, 4});
  EXPECT_THAT(heights.primary, IsEmpty());
  EXPECT_THAT(heights.secondary, ElementsAre(0.25, 1));
}

TEST(Sparkline, ChartsAreOneNamedElement) {
  const View single = SparklineView{{0, 2, 1}, ColorRole::red, true, "Trend"};
  ASSERT_NE(single.as<LineChartContent>(), nullptr);
  EXPECT_EQ(*single.as<LineChartContent>(), (LineChartContent{{{{0, 1, 0.5}, ColorRole::red}}, 1.5}));
  EXPECT_TRUE(single.traits->isAccessibilityElement);
  EXPECT_EQ(single.traits->accessibilityLabel, key("Trend"));

  // The secondary line lies at the back, and is fainter.
  const View dual = DualSparklineView{{1, 2}, {4, 0}, ColorRole::green, ColorRole::orange, "Rates"};
  ASSERT_NE(dual.as<LineChartContent>(), nullptr);
  EXPECT_EQ(
      *dual.as<LineChartContent>(),
      (LineChartContent{{{{1, 0}, Color(ColorRole::orange, 0.75)}, {{0.25, 0.5}, ColorRole::green}}, 1.5}));
  EXPECT_EQ(dual.traits->accessibilityLabel, key("Rates"));
}

TEST(Gauges, FillWithinTheirBounds) {
  const auto bar = [](double fraction) {
    const View view = ThinBar{fraction, statusGoodColor};
    EXPECT_EQ(view.as<FrameContent>()->height.fixed, 5);
    return *view.children.front().as<BarContent>();
  };
  EXPECT_EQ(bar(0.4),
            (BarContent{0.4, Color(ColorRole::primary, 0.06), statusGoodColor.withOpacity(0.85), 3, 0.4}));
  EXPECT_EQ(bar(1.4).fraction, 1);
  EXPECT_EQ(bar(-0.1).fraction, 0);
  EXPECT_EQ(bar(notANumber).fraction, 0);

  const auto ring = [](double fraction) {
    const View view = DonutRing{fraction, 6, ColorRole::accent};
    return *view.as<RingContent>();
  };
  EXPECT_EQ(ring(0.4), (RingContent{0.4, 6, Color(ColorRole::primary, 0.07), ColorRole::accent, 0.5}));
  EXPECT_EQ(ring(2).fraction, 1);
  EXPECT_EQ(ring(-1).fraction, 0);
}

TEST(Card, SurfaceAroundThePaddedContent) {
  const View card = Card{text("Inside")};
  ASSERT_NE(card.as<BackgroundContent>(), nullptr);
  EXPECT_EQ(*card.as<BackgroundContent>(),
            (BackgroundContent{ColorRole::controlBackground, 10, Color(ColorRole::primary, 0.07), 0.5,
                               Color(ColorRole::black, 0.06), 4, 1}));
  const View& padded = card.children.front();
  EXPECT_EQ(padded.as<PaddingContent>()->insets, (Insets{14, 14, 14, 14}));
  EXPECT_EQ(*padded.children.front().as<TextContent>(), key("Inside"));
}

TEST(HoverHighlight, FollowsThePointerAndItsContent) {
  Published<std::string> shown{"before"};
  class Around final : public Component {
   public:
    explicit Around(Published<std::string>& shownText) : shown_(shownText) {}
    View body() override { return hoverHighlight(verbatim(shown_.get())); }

   private:
    Published<std::string>& shown_;
  };
  MountedViews views(component<Around>([&] { return std::make_shared<Around>(shown); }));
  const auto fill = [&] {
    return views.kind<BackgroundContent>().front().view->as<BackgroundContent>()->fill;
  };
  const auto point = [&](bool inside) {
    views.kind<BackgroundContent>().front().view->traits->onHover(inside);
    views.update();
  };

  EXPECT_EQ(fill(), Color(ColorRole::clear));
  point(true);
  EXPECT_EQ(fill(), Color(ColorRole::accent, 0.15));
  shown.set("after");
  views.update();
  EXPECT_THAT(views.texts(), ElementsAre("after"));
  EXPECT_EQ(fill(), Color(ColorRole::accent, 0.15));
  point(false);
  EXPECT_EQ(fill(), Color(ColorRole::clear));
}

TEST(PulsingOpacity, BreathesFromItsDelayOn) {
  const View pulsing = PulsingOpacity{.delay = 0.14}.body(text("Loading"));
  EXPECT_EQ(pulsing.traits->pulse, (Pulse{0.4, 1.0, 0.85, 0.14}));
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
  EXPECT_EQ(one.text("Title").font, (Font{13, FontWeight::semibold, false}));
  EXPECT_EQ(one.text("Description").foreground, Color(ColorRole::secondary));
  EXPECT_EQ(one.text("Dismiss").foreground, Color(ColorRole::tertiary));
  EXPECT_EQ(one.kind<SymbolContent>().front().foreground, Color(ColorRole::orange));

  one.press("Dismiss");
  other.update();
  EXPECT_THAT(one.all(), IsEmpty());
  EXPECT_THAT(other.all(), IsEmpty());
  EXPECT_EQ(storage.stored.at("ui.sandbox.showHints"), platform::PreferenceValue(false));
}

}  // namespace
}  // namespace kestrune::ui
