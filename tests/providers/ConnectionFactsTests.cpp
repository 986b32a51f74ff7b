#include <gmock/gmock.h>

#include "providers/ConnectionFacts.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using platform::LocationAuthorization;
using testing::ElementsAre;
using testing::IsEmpty;

class ConnectionFactsTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  ConnectionFactsTest() {
    question.wifiName = "wlan0";
    question.stationMode = true;
    question.wifiNames = {"wlan0"};
    question.authStatus = LocationAuthorization::authorizedAlways;
  }
  ConnectionFacts facts() { return findConnectionFacts(question, networkInterfaces, wifi); }

  ConnectionQuestion question;
};

TEST_F(ConnectionFactsTest, aKnownNetworkNameNeedsNoSearch) {
  question.wifiSSID = "Home";
  networkInterfaces.setLink("en0", 5, 5);
  networkInterfaces.list->addresses = {{"en0", "10.0.0.2"}, {"wlan0", "10.0.0.3"}, {"wlan0", "10.0.0.4"}};
  const auto found = facts();
  EXPECT_EQ(found.label, "Wi-Fi") << "wins over a wired port";
  EXPECT_EQ(found.ssid, "Home");
  EXPECT_EQ(found.ipAddress, "10.0.0.3") << "the first of several";
  EXPECT_THAT(wifi.searches, IsEmpty());
}

TEST_F(ConnectionFactsTest, aMissingNetworkNameIsSearchedFor) {
  wifi.foundName = "Net";
  EXPECT_EQ(facts().ssid, "Net");
  EXPECT_THAT(wifi.searches, ElementsAre("wlan0"));
}

TEST_F(ConnectionFactsTest, needsLocationOnlyForAMissingName) {
  using enum LocationAuthorization;
  for (const auto status : {notDetermined, restricted, denied, authorizedAlways, authorizedWhenInUse}) {
    question.authStatus = status;
    EXPECT_EQ(facts().needsLocation, status != authorizedAlways && status != authorizedWhenInUse);
  }
  question.authStatus = denied;
  question.wifiSSID = "Home";
  EXPECT_FALSE(facts().needsLocation);
  question.wifiSSID.reset();
  question.stationMode = false;
  EXPECT_FALSE(facts().needsLocation);
}

TEST_F(ConnectionFactsTest, connectsThroughTheWiredPortThatReceived) {
  question.stationMode = false;
  question.wifiNames = {"en0"};
  networkInterfaces.setLink("en0", 50, 50);  // Wi-Fi
  networkInterfaces.setLink("en1", 0, 50);
  networkInterfaces.setLink("utun0", 50, 50);
  EXPECT_EQ(facts().label, "Not connected");
  networkInterfaces.setLink("eth7", 1, 0);
  networkInterfaces.list->addresses = {{"eth7", "10.0.0.9"}};
  EXPECT_EQ(facts().label, "Ethernet");
  EXPECT_EQ(facts().ipAddress, "10.0.0.9");
  networkInterfaces.list.reset();
  EXPECT_EQ(facts().label, "Not connected");
}

TEST_F(ConnectionFactsTest, tableListsInterfacesOfKnownKindWithTraffic) {
  question.wifiNames = {"en0", "wlp3s0"};
  for (const auto* name :
       {"utun4", "en5", "en10", "gif0", "wlp3s0", "tun0", "eth0", "docker0", "bridge0", "lo"}) {
    networkInterfaces.setLink(name, 7, 9);
  }
  networkInterfaces.setLink("ipsec0", 0, 0);
  networkInterfaces.setLink("en1", 0, 3);
  networkInterfaces.list->links.push_back({.name = "en2", .counters = {}});
  networkInterfaces.list->addresses = {{"en5", "10.0.0.1"}, {"en5", "10.0.0.2"}, {"eth0", ""}};
  std::vector<std::string> rows;
  for (const auto& row : facts().interfaces) {
    rows.push_back(row.id + " " + row.kind + " " + row.ipAddress.value_or("-"));
  }
  EXPECT_THAT(rows, ElementsAre("en1 Ethernet -", "en10 Ethernet -", "en5 Ethernet 10.0.0.2",
                                "eth0 Ethernet -", "tun0 VPN -", "utun4 VPN -", "wlp3s0 Wi-Fi -"));
  EXPECT_EQ(facts().interfaces[1].totalSent, 9U);
  EXPECT_EQ(facts().interfaces[1].totalRecv, 7U);
}

}  // namespace
}  // namespace kestrune
