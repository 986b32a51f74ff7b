#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"

namespace kestrune::ui::qt {
namespace {

TEST(Dialogs, closingAQuestionMeansCancel) {
  Published<bool> asks{false};
  std::vector<std::string> answers;
  Stage stage(scene([&] {
    if (!asks.get()) return page(verbatim("page"));
    const auto answer = [&](std::string what) {
      return [&, what = std::move(what)] {
        answers.push_back(what);
        asks.set(false);
      };
    };
    AlertContent question{verbatimText("Sure?"), verbatimText("Really."), {}};
    question.choices = {{.title = verbatimText("Do"), .action = answer("do")},
                        {.title = verbatimText("Don't"), .isCancel = true, .action = answer("cancel")}};
    return page(verbatim("page"), View(std::move(question)));
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
    if (!exports.get()) return page(verbatim("page"));
    FileExportContent file{"days.csv", verbatimText("Table"), "csv", "a,b\n\xC3\xB1", {}};
    file.onEnd = [&] { exports.set(false); };
    return page(verbatim("page"), View(std::move(file)));
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
    return page(menu(verbatim("more"), items));
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
