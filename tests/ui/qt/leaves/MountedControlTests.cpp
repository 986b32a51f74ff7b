#include <QAccessible>
#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"
#include "ui/qt/leaves/LeafAccessibility.h"
#include "ui/qt/leaves/SliderLeaf.h"
#include "ui/qt/leaves/SwitchLeaf.h"

namespace kestrune::ui::qt {
namespace {

TEST(Switch, followsTheProgramAndReportsTheUser) {
  Published<bool> isOn{false};
  int changes = 0;
  Stage stage(scene([&] {
    return toggle(verbatimText("Alerts"), isOn.get(), [&](bool now) {
      ++changes;
      isOn.set(now);
    });
  }));
  SwitchLeaf& leaf = *stage.shown<SwitchLeaf>().first();
  QTest::mouseClick(&leaf, Qt::LeftButton);
  stage.nextFrame();
  EXPECT_TRUE(isOn.get() && leaf.isOn());
  isOn.set(false);
  stage.nextFrame();
  EXPECT_FALSE(leaf.isOn());
  EXPECT_EQ(changes, 1);
}

TEST(Slider, movesInStepsWithinItsLimits) {
  installLeafAccessibility();
  std::vector<double> chosen;
  Stage stage(scene([&] {
    return slider(verbatimText("Threshold"),
                  {.value = 82, .min = 50, .max = 99, .step = 5, .onChange = [&](double value) {
                     chosen.push_back(value);
                   }});
  }));
  SliderLeaf& leaf = *stage.shown<SliderLeaf>().first();
  QTest::keyClick(&leaf, Qt::Key_Right);
  QTest::keyClick(&leaf, Qt::Key_End);
  QTest::keyClick(&leaf, Qt::Key_Right);
  QTest::mouseClick(&leaf, Qt::LeftButton, {}, QPoint(0, leaf.height() / 2));
  EXPECT_EQ(chosen, (std::vector<double>{85, 95, 50}));
  QAccessibleValueInterface* value = QAccessible::queryAccessibleInterface(&leaf)->valueInterface();
  EXPECT_EQ(value->maximumValue().toDouble(), 95);
  value->setCurrentValue(71);
  EXPECT_EQ(chosen.back(), 70);
}

}  // namespace
}  // namespace kestrune::ui::qt
