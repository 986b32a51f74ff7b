#include <gmock/gmock.h>

#include "ui/NetworkTab.h"
#include "ui/ViewFixture.h"

namespace kestrune::ui {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class NetworkTabTest : public test::ViewFixture {
 protected:
  NetworkTabTest() { computer.networkInterfaces.setLink("en0", 2048, 1024); }
  test::MountedViews networkTab() {
    auto views = tab<NetworkTab>();
    computer.settle();
    views.update();
    return views;
  }
  std::map<std::string, NetworkSSIDStat>& today() { return env->recorder->current.networkSSIDs; }
};

TEST_F(NetworkTabTest, showsTheConnectionAndItsInterfaces) {
  computer.networkInterfaces.list->addresses = {{"en0", "10.0.0.5"}};
  const auto tab = networkTab();
  EXPECT_THAT(tab.texts(),
              ElementsAre("Upload", "0 B/s", "Download", "0 B/s", "I/O history  (last 60 s)",   //
                          "Current Connection", "Ethernet", "10.0.0.5", "Reload",               //
                          "Today's Networks", "No network activity recorded yet today",         //
                          "Throughput history", "60s ago", "Now", "Download", "Upload",         //
                          "Interfaces", "Interface", "Type", "IP Address", "Sent", "Received",  //
                          "en0", "Ethernet", "10.0.0.5", "1 KB", "2 KB"));
  EXPECT_THAT(tab.symbols(), Contains("cable.connector"));
}

TEST_F(NetworkTabTest, saysWhereAPermissionIsMissing) {
  computer.wifi.interface = platform::WiFiInterface{.name = "wlan0", .isStation = true, .ssid = {}};
  computer.location.authorization = platform::LocationAuthorization::denied;
  auto tab = networkTab();
  EXPECT_TRUE(tab.hasText("Wi-Fi"));
  EXPECT_THAT(tab.symbols(), Contains("wifi"));
  tab.press("Allow location for Wi-Fi name");
  EXPECT_THAT(
      computer.workspace.opened,
      ElementsAre("x-apple.systempreferences:com.apple.preference.security?Privacy_LocationServices"));
}

TEST_F(NetworkTabTest, reloadingLooksAgain) {
  auto tab = networkTab();
  computer.networkInterfaces.list->links.clear();
  computer.networkInterfaces.setLink("gif0", 1, 1);
  tab.press("Reload");
  update(tab);
  EXPECT_TRUE(tab.hasText("Not connected"));
  EXPECT_TRUE(tab.hasText("No active interfaces"));
  EXPECT_THAT(tab.symbols(), Contains("wifi.slash"));
  EXPECT_THAT(tab.symbols(), Not(Contains("number")));
}

TEST_F(NetworkTabTest, networksOfTodayCanBeFiltered) {
  context();
  today() = {{"Ethernet", {.uploadBytes = 1024, .downloadBytes = 0}}};
  auto tab = networkTab();
  EXPECT_THAT(tab.menuItems(), IsEmpty()) << "nothing to choose from";
  today()["Home"] = {.uploadBytes = 5 << 20, .downloadBytes = 1 << 20};
  computer.advance(1s);
  update(tab);
  EXPECT_THAT(tab.menuItems(), ElementsAre("All", "Home", "Ethernet")) << "most traffic first";
  tab.chooseMenuItem("Ethernet");
  EXPECT_FALSE(tab.hasText("5 MB"));
  today().erase("Ethernet");
  today()["Other"] = {};
  computer.advance(1s);
  update(tab);
  EXPECT_TRUE(tab.hasText("5 MB")) << "what was chosen is not there any more";
}

TEST_F(NetworkTabTest, theChartReachesAsFarAsChosen) {
  auto tab = networkTab();
  computer.advance(90s);
  update(tab);
  const auto points = [&] {
    return tab.kind<LineChartContent>().back().view->as<LineChartContent>()->lines.at(0).heights.size();
  };
  EXPECT_EQ(points(), 60U);
  tab.choose("5m");
  EXPECT_EQ(points(), 90U);
  EXPECT_TRUE(tab.hasText("5m ago"));
}

}  // namespace
}  // namespace kestrune::ui
