#include <QAccessible>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"
#include "ui/qt/charts/DayChartLeaf.h"
#include "ui/qt/leaves/LeafAccessibility.h"
#include "ui/qt/leaves/SliderLeaf.h"
#include "ui/qt/leaves/SwitchLeaf.h"

namespace kestrune::ui::qt {
namespace {

TEST(Switch, TurnsOverByMouseKeyboardAndAssistiveTools) {
  installLeafAccessibility();
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
  EXPECT_TRUE(isOn.get());
  QTest::keyClick(&leaf, Qt::Key_Space);
  EXPECT_FALSE(isOn.get());
  QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&leaf);
  EXPECT_EQ(spoken->text(QAccessible::Name), "Alerts");
  spoken->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_TRUE(spoken->state().checked);
  EXPECT_EQ(changes, 3);
  isOn.set(false);
  stage.nextFrame();
  EXPECT_FALSE(leaf.isOn());
  EXPECT_EQ(changes, 3) << "the program's own changes are not reported";
}

TEST(Slider, MovesInStepsWithinItsLimits) {
  installLeafAccessibility();
  std::vector<double> chosen;
  Stage stage(scene([&] {
    return slider(verbatimText("Threshold"),
                  {.value = 82, .least = 50, .most = 99, .step = 5, .onChange = [&](double value) {
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

TEST(DayChart, ScalesEndAboveAtRoundFigures) {
  EXPECT_EQ(roundScale(0, 1), (std::vector<double>{0, 1}));
  EXPECT_EQ(roundScale(100, 1), (std::vector<double>{0, 50, 100}));
  EXPECT_EQ(roundScale(101, 1), (std::vector<double>{0, 50, 100, 150}));
  for (const double highest : {1e-9, 3.0, 39.0, 1024.0, 2.5e12}) {
    const auto scale = roundScale(highest, 0.1);
    EXPECT_GE(scale.back(), highest * (1 - 1e-9));
    EXPECT_LE(scale.size(), 6U) << highest;
  }
}

TEST(Dialogs, AQuestionIsAnsweredOnceAndClosingItMeansCancel) {
  Published<bool> asks{false};
  std::vector<std::string> answers;
  Stage stage(scene([&] {
    if (!asks.get()) return vstack(0, HorizontalAlignment::leading, views(verbatim("page")));
    const auto answer = [&](std::string what) {
      return [&, what = std::move(what)] {
        answers.push_back(what);
        asks.set(false);
      };
    };
    AlertContent question{
        .title = verbatimText("Sure?"),
        .message = verbatimText("Really."),
        .choices = {{.title = verbatimText("Do"), .action = answer("do")},
                    {.title = verbatimText("Don't"), .isCancel = true, .action = answer("cancel")}}};
    return vstack(0, HorizontalAlignment::leading, views(verbatim("page"), View(std::move(question))));
  }));
  const auto ask = [&] {
    asks.set(true);
    stage.nextFrame();
    return stage.host.findChild<QMessageBox*>();
  };
  ask()->close();
  stage.nextFrame();
  for (QAbstractButton* button : ask()->buttons()) {
    if (button->text() == "Do") button->click();
  }
  stage.nextFrame();
  EXPECT_EQ(answers, (std::vector<std::string>{"cancel", "do"}));
  EXPECT_EQ(stage.host.findChild<QMessageBox*>(), nullptr);
}

TEST(Dialogs, AnExportWritesTheWholeFileOrLeavesTheOldOne) {
  const QTemporaryDir folder;
  Published<bool> exports{false};
  Stage stage(scene([&] {
    if (!exports.get()) return vstack(0, HorizontalAlignment::leading, views(verbatim("page")));
    FileExportContent file{.fileName = "days.csv",
                           .fileKind = verbatimText("Table"),
                           .extension = "csv",
                           .content = "a,b\n\xC3\xB1",
                           .onEnd = [&] { exports.set(false); }};
    return vstack(0, HorizontalAlignment::leading, views(verbatim("page"), View(std::move(file))));
  }));
  const auto finish = [&](const QString& directory, int result) {
    exports.set(true);
    stage.nextFrame();
    auto* dialog = stage.host.findChild<QFileDialog*>();
    dialog->setDirectory(directory);
    dialog->selectFile("days.csv");
    static_cast<QDialog*>(dialog)->done(result);
    stage.nextFrame();
    EXPECT_FALSE(exports.get());
  };
  const QString path = folder.filePath("days.csv");
  finish(folder.path(), QDialog::Rejected);
  EXPECT_FALSE(QFile::exists(path));
  finish(folder.path(), QDialog::Accepted);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), QByteArray("a,b\n\xC3\xB1"));
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

}  // namespace
}  // namespace kestrune::ui::qt
