#include <QAccessible>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
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

TEST(Dialogs, closingAQuestionMeansCancel) {
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

TEST(Dialogs, anExportWritesTheWholeFileOrLeavesTheOldOne) {
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

TEST(Menus, offerTheItemsAndChooseThemAsTheyAreNow) {
  Published<int> generation{0};
  std::vector<std::string> chosen;
  Stage stage(scene([&] {
    const auto item = [&, now = std::to_string(generation.get())](std::string title) -> MenuItem {
      return {.title = verbatimText(title), .symbol = "cpu", .action = [&, now, title] {
                chosen.push_back(title + now);
              }};
    };
    const std::vector<MenuItem> items{item("a"), {.title = {}, .isSeparator = true}, item("b & c")};
    return vstack(0, HorizontalAlignment::leading, views(menu(verbatim("more"), items)));
  }));
  const auto open = [&] { return stage.host.findChild<QMenu*>(); };
  QTest::mouseClick(stage.surface("more"), Qt::LeftButton);
  ASSERT_NE(open(), nullptr);
  const auto actions = open()->actions();
  ASSERT_EQ(actions.size(), 3);
  EXPECT_TRUE(actions[1]->isSeparator());
  EXPECT_EQ(actions[2]->text(), "b && c");
  EXPECT_FALSE(actions[2]->icon().isNull());
  generation.set(1);
  stage.nextFrame();
  actions[2]->trigger();
  EXPECT_EQ(chosen, std::vector<std::string>{"b & c1"});
  stage.nextFrame();
  EXPECT_EQ(open(), nullptr) << "closed and deleted";
}

}  // namespace
}  // namespace kestrune::ui::qt
