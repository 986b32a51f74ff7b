// Every page of a machine whose figures are all different, against the tables in tests/fixtures/pages.

#include <fstream>
#include <sstream>

#include "ui/ViewFixture.h"

namespace kestrune::ui {
namespace {

class PagesTest : public test::ViewFixture {
 protected:
  static std::string table(std::string_view name) {
    std::ifstream file(std::string(KESTRUNE_FIXTURES "/pages/").append(name) + ".txt");
    std::ostringstream content;
    content << file.rdbuf();
    return "\n" + content.str();
  }
  void expectPage(MainTab tab, std::string_view name) {
    test::MountedViews views(entry(tab).page(context()));
    update(views);
    EXPECT_EQ(transcriptOf(views), table(name)) << name;
  }
};

TEST_F(PagesTest, everyFigureStandsWithItsLabel) {
  computer.folders.addFile("/home/test/README", 100 << 10);
  computer.folders.addFile("/home/test/a.txt", 3 << 20);
  computer.folders.addFile("/home/test/Big/one.zip", 1 << 20);
  computer.folders.addDirectory("/home/test/Big");
  keepDay(1, test::sampleDay());
  keepDayFile(3, "{}");
  keepDay(7, test::sampleDay());
  showSample();
  for (const MainTabEntry& tab : mainTabs) expectPage(tab.tab, tab.title);
  EXPECT_TRUE(computer.preferences.stored.empty()) << "looking stores nothing";
  env->shiftSelectedDate(-1);
  expectPage(MainTab::overview, "Overview of yesterday");
  env->shiftSelectedDate(-1);
  expectPage(MainTab::overview, "Overview without a record");
}

}  // namespace
}  // namespace kestrune::ui
