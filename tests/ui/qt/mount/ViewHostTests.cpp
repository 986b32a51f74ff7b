#include <QAccessible>
#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"
#include "ui/qt/mount/Breathing.h"
#include "ui/view/RandomViews.h"

namespace kestrune::ui::qt {
namespace {

View row(
    const std::string& name, std::function<void()> action = [] {}) {
  return hstack(0, VerticalAlignment::center, views(verbatim(name))).onTap(std::move(action)).withKey(name);
}

TEST(ViewHost, evaluatesOnlyReadersOfAChangeOncePerFrame) {
  Published<int> outer{0};
  Published<int> inner{0};
  int outerRuns = 0;
  int innerRuns = 0;
  Stage stage(scene([&] {
    ++outerRuns;
    View innerScene = scene([&] {
      ++innerRuns;
      return verbatim(std::to_string(inner.get()));
    });
    return page(verbatim(std::to_string(outer.get())), std::move(innerScene));
  }));
  const auto leaves = stage.shown<Leaf>();
  ASSERT_EQ(leaves.size(), 2);

  inner.set(1);
  inner.set(2);
  EXPECT_EQ(innerRuns, 1) << "not before the frame is over";
  stage.nextFrame();
  EXPECT_EQ(innerRuns, 2);
  EXPECT_EQ(outerRuns, 1);

  outer.set(1);
  inner.set(3);
  stage.nextFrame();
  EXPECT_EQ(outerRuns, 2);
  EXPECT_EQ(innerRuns, 3);
  EXPECT_EQ(stage.shown<Leaf>(), leaves) << "the widgets stay";
  EXPECT_EQ(leaves[0]->accessibleName(), "1");
  EXPECT_EQ(leaves[1]->accessibleName(), "3");
}

TEST(ViewHost, evaluatesNothingWhileHiddenAndCatchesUpWhenShown) {
  Published<int> value{0};
  int runs = 0;
  Stage stage(scene([&] {
    ++runs;
    return verbatim(std::to_string(value.get()));
  }));
  value.set(9);  // its frame is still to come
  stage.host.hide();
  for (int i = 1; i <= 5; ++i) {
    value.set(i);
    stage.nextFrame();
  }
  EXPECT_EQ(runs, 1);
  stage.host.show();
  settle();
  EXPECT_EQ(runs, 2);
  EXPECT_EQ(stage.shown<Leaf>().first()->accessibleName(), "5");
}

TEST(ViewHost, keepsFocusOnAMovedRowAndTabOrderInTheOrderOfTheViews) {
  Published<std::vector<std::string>> names{{"a", "b", "c"}};
  Stage stage(scene([&] {
    std::vector<View> rows;
    for (const auto& name : names.get()) rows.push_back(row(name));
    return vstack(4, HorizontalAlignment::leading, std::move(rows));
  }));
  stage.host.activateWindow();
  Surface* b = stage.surface("b");
  b->setFocus();
  ASSERT_EQ(QApplication::focusWidget(), b);

  names.set({"c", "new", "b", "a"});
  stage.nextFrame();
  EXPECT_EQ(QApplication::focusWidget(), b);
  EXPECT_EQ(stage.surface("b"), b);
  EXPECT_LT(stage.surface("new")->y(), b->y());
  QTest::keyClick(b, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), stage.surface("a"));
  QTest::keyClick(stage.surface("a"), Qt::Key_Up);
  EXPECT_EQ(QApplication::focusWidget(), b) << "the arrows move between rows";

  names.set({"a"});
  stage.nextFrame();
  EXPECT_EQ(stage.shown<Surface>().size(), 1);
}

TEST(ViewHost, callsTheLatestCallbackWhichMayRemoveItsOwnView) {
  Published<int> generation{0};
  std::vector<int> pressed;
  Stage stage(scene([&] {
    const int now = generation.get();
    if (now == 2) return page();
    return page(button(verbatim("go"), [&, now] {
      pressed.push_back(now);
      generation.set(now + 1);
    }));
  }));
  for (int i = 0; i < 2; ++i) {
    Surface* go = stage.surface("go");
    ASSERT_NE(go, nullptr);
    QTest::mouseClick(go, Qt::LeftButton);
    stage.nextFrame();
  }
  EXPECT_EQ(pressed, (std::vector{0, 1}));
  EXPECT_EQ(stage.surface("go"), nullptr);
}

TEST(ViewHost, keepsAComponentsStateWhileItStays) {
  struct Counter final : Component {
    Published<int> presses{0};
    View body() override {
      return button(verbatim(std::to_string(presses.get())), [this] { presses.set(presses.get() + 1); });
    }
  };
  Published<bool> shows{true};
  Published<int> other{0};
  Stage stage(scene([&] {
    View counter = shows.get() ? component<Counter>([] { return std::make_shared<Counter>(); }) : View();
    return page(verbatim("other " + std::to_string(other.get())), std::move(counter));
  }));
  QTest::mouseClick(stage.surface("0"), Qt::LeftButton);
  other.set(1);
  stage.nextFrame();
  EXPECT_NE(stage.surface("1"), nullptr);
  shows.set(false);
  stage.nextFrame();
  shows.set(true);
  stage.nextFrame();
  EXPECT_NE(stage.surface("0"), nullptr);
}

TEST(ViewHost, showsElementsRowsAndButtonsToAssistiveTools) {
  installSurfaceAccessibility();
  int taps = 0;
  View gauge = hstack(0, VerticalAlignment::center, views(verbatim("C1"), verbatim("42%")))
                   .accessibilityElement(verbatimText("core, 42 percent"));
  Stage stage(page(std::move(gauge), row("Memory", [&] { ++taps; }).selected(true)));

  QAccessibleInterface* element = QAccessible::queryAccessibleInterface(stage.surface("core, 42 percent"));
  ASSERT_NE(element, nullptr);
  EXPECT_EQ(element->childCount(), 0);
  EXPECT_EQ(element->text(QAccessible::Name), "core, 42 percent");
  QAccessibleInterface* memory = QAccessible::queryAccessibleInterface(stage.surface("Memory"));
  ASSERT_NE(memory, nullptr);
  EXPECT_EQ(memory->role(), QAccessible::ListItem);
  EXPECT_TRUE(memory->state().selected);
  memory->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(taps, 1);
}

TEST(ViewHost, showsHelpAsToolTipAndNamesBareSymbolsByIt) {
  Stage stage(page(verbatim("leaf").help(verbatimText("<b>")),
                   button(symbol("cpu"), [] {}).help(verbatimText("Processor"))));
  EXPECT_EQ(stage.shown<Leaf>().first()->toolTip(), "<span>&lt;b&gt;</span>");
  ASSERT_NE(stage.surface("Processor"), nullptr);
  EXPECT_EQ(stage.surface("Processor")->toolTip(), "Processor");
}

TEST(ViewHost, everyWindowFollowsAChangeOfTheFont) {
  Stage stage(verbatim("text"));
  ViewHost other(stage.test.loop, stage.theme, verbatim("text"));
  other.resize(stage.host.size());
  other.show();
  settle();
  const auto widths = [&] {
    return std::pair(stage.host.findChild<Leaf*>()->width(), other.findChild<Leaf*>()->width());
  };
  const auto before = widths();
  const QFont font = QApplication::font();
  QFont larger = font;
  larger.setStretch(200);
  QApplication::setFont(larger);
  settle();
  EXPECT_GT(widths().first, before.first);
  EXPECT_GT(widths().second, before.second);
  QApplication::setFont(font);
  settle();
  EXPECT_EQ(widths(), before);
}

TEST(Breathing, movesOnlyWhileItIsSeen) {
  Breathing all;
  double opacity = 0;
  auto breath = std::make_unique<Breath>(all, Pulse{.from = 0.2, .to = 1, .seconds = 0.5},
                                         [&opacity](double now) { opacity = now; });
  const double start = AnimationDriver::now();
  EXPECT_FALSE(all.isRunning());
  all.setActive(true);
  EXPECT_TRUE(all.isRunning());
  for (const auto& [seconds, expected] : {std::pair{0.25, 0.6}, {0.5, 1.0}, {0.75, 0.6}, {1.0, 0.2}}) {
    breath->advance(start + seconds);
    EXPECT_NEAR(opacity, expected, 0.05) << seconds;
  }
  all.setActive(false);
  EXPECT_FALSE(all.isRunning());
  all.setActive(true);
  breath.reset();
  EXPECT_FALSE(all.isRunning()) << "no breath is left";
}

// What is on screen, as text: each view's kind and what its widget is and shows.
void describe(const MountedView& mounted, const std::string& indent, std::string& out) {
  out += indent + std::to_string(mounted.view().content.index());
  if (const QWidget* widget = mounted.widget()) {
    if (widget->isHidden()) {
      out += " hidden\n";
      return;
    }
    const QRect rect(widget->mapTo(widget->window(), QPoint()), widget->size());
    out += " [" + std::to_string(rect.x()) + "," + std::to_string(rect.y()) + " " +
           std::to_string(rect.width()) + "x" + std::to_string(rect.height()) + "] " +
           widget->accessibleName().toStdString() + "|" + widget->toolTip().toStdString() +
           (widget->isEnabled() ? "" : " disabled");
  }
  out += "\n";
  for (const auto& child : mounted.children()) describe(*child, indent + " ", out);
}

struct Picture {
  std::string tree;
  QImage image;
};

Picture pictureOf(Stage& stage) {
  Picture picture;
  describe(stage.host.mounted(), "", picture.tree);
  picture.image = stage.host.grab().toImage();
  return picture;
}

// A window that was patched from one value to the next must look like one that was built with the last.
TEST(Patching, agreesWithBuildingFromScratch) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    test::RandomViews patches(seed, {0, 3, 8, 40, 150});
    test::RandomViews sameAgain = patches;
    Stage patched(patches.any(5));
    sameAgain.any(5);
    for (int step = 0; step < 6; ++step) {
      patched.host.setView(patches.any(5));
      patched.nextFrame();
      Stage built(sameAgain.any(5));
      const Picture left = pictureOf(patched);
      const Picture right = pictureOf(built);
      ASSERT_EQ(left.tree, right.tree) << "seed " << seed << ", step " << step;
      ASSERT_EQ(left.image, right.image) << "seed " << seed << ", step " << step;
    }
  }
}

}  // namespace
}  // namespace kestrune::ui::qt
