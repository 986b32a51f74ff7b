#include <gmock/gmock.h>

#include "providers/NetworkProvider.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using platform::LocationAuthorization;

class NetworkProviderTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  void tickAfter(Duration time) {
    clock.setContinuous(clock.continuousNow() + time);
    provider->tick();
  }
  const NetworkSnapshot& now() const { return *provider->current; }

  std::shared_ptr<NetworkProvider> provider = std::make_shared<NetworkProvider>(
      loop, NetworkProvider::Services{networkInterfaces, wifi, location, *lane});
};

TEST_F(NetworkProviderTest, firstRateIsOverAWholeInterval) {
  networkInterfaces.setLink("en0", 1000000, 5000);
  provider->start(1s);
  EXPECT_EQ(location.requests, 1);
  networkInterfaces.setLink("en0", 1000300, 5100);
  advance(1s);
  EXPECT_EQ(now().downloadBytesPerSec, 300.0);
  EXPECT_EQ(now().uploadBytesPerSec, 100.0);
  EXPECT_EQ(now().interfaceName, "Ethernet");
  advance(60s);
  EXPECT_EQ(provider->history->size(), 60U);
  EXPECT_EQ(provider->uploadHistory->size(), 61U);
}

TEST_F(NetworkProviderTest, countsWhatNothingElseCounts) {
  const std::vector<std::string> counted = {"en5", "anpi0", "wlan0", "wwan0"};
  const std::vector<std::string> uncounted = {"lo0",  "utun3", "awdl0",  "llw0",   "bridge100",
                                              "p2p0", "lo",    "ipsec1", "docker0"};
  provider->start(1s);
  for (const auto& name : uncounted) networkInterfaces.setLink(name, 1000, 1000);
  networkInterfaces.setLink("stacked", 1000, 1000);
  networkInterfaces.list->links.back().isCarriedByAnother = true;
  tickAfter(1s);
  EXPECT_EQ(now().downloadBytesPerSec, 0.0);
  EXPECT_EQ(provider->history->size(), 1U);
  for (const auto& name : counted) networkInterfaces.setLink(name, 10, 1);
  networkInterfaces.list->links.push_back({.name = "en6", .counters = {}});
  tickAfter(1s);
  EXPECT_EQ(now().downloadBytesPerSec, 40.0);
  EXPECT_EQ(now().uploadBytesPerSec, 4.0);
}

TEST_F(NetworkProviderTest, readingsTooCloseRepeatTheRatesAndUseUpTheBytes) {
  networkInterfaces.setLink("en0", 0, 0);
  provider->start(1s);
  networkInterfaces.setLink("en0", 0, 700);
  tickAfter(1s);
  networkInterfaces.setLink("en0", 0, 1700);
  tickAfter(50ms);
  EXPECT_EQ(now().uploadBytesPerSec, 700.0);
  EXPECT_EQ(provider->history->size(), 2U);
  networkInterfaces.setLink("en0", 0, 1800);
  tickAfter(1s);
  EXPECT_EQ(now().uploadBytesPerSec, 100.0);
}

TEST_F(NetworkProviderTest, aFailedReadSkipsTheTick) {
  networkInterfaces.list.reset();
  provider->start(1s);
  tickAfter(1s);
  EXPECT_EQ(provider->history->size(), 0U);
  networkInterfaces.setLink("en0", 1ULL << 40U, 0);
  tickAfter(1s);
  EXPECT_EQ(provider->history->size(), 1U);
  EXPECT_LT(now().downloadBytesPerSec, 20.0) << "the uptime's total is no rate";
}

TEST_F(NetworkProviderTest, looksAtTheConnectionAgainAfterFifteenSeconds) {
  networkInterfaces.setLink("en0", 10, 10);
  provider->start(1s);
  advance(15s);
  networkInterfaces.list->addresses.push_back({"en0", "10.0.0.7"});
  advance(500ms);
  EXPECT_EQ(now().ipAddress, std::nullopt);
  advance(500ms);
  EXPECT_EQ(now().ipAddress, "10.0.0.7") << "at once, not with the next tick";
}

TEST_F(NetworkProviderTest, aHungLookCostsOnlyTheFreshness) {
  networkInterfaces.setLink("en0", 10, 10);
  provider->start(1s);
  settle();
  holdsLane = true;
  networkInterfaces.setLink("en0", 1010, 10);
  advance(60s);
  EXPECT_EQ(lane->waiting(), 1U) << "no second look while the first hangs";
  EXPECT_EQ(now().interfaceName, "Ethernet");
  EXPECT_EQ(provider->uploadHistory->size(), 60U);
}

TEST_F(NetworkProviderTest, aGrantedPermissionIsUsedAtOnceEvenDuringALook) {
  location.authorization = LocationAuthorization::denied;
  wifi.interface = platform::WiFiInterface{.name = "wlan0", .isStation = true, .ssid = {}};
  provider->start(1s);
  settle();
  EXPECT_TRUE(now().needsLocation);
  location.watcher();
  settle();
  EXPECT_TRUE(now().needsLocation) << "still denied";

  holdsLane = true;
  provider->refreshConnection();
  wifi.interface->ssid = "Caf\xE9";
  location.authorization = LocationAuthorization::authorizedWhenInUse;
  location.watcher();
  settle();
  EXPECT_EQ(lane->waiting(), 2U);
  lane->run();
  settle();
  EXPECT_EQ(now().ssid, "Caf\uFFFD");
  EXPECT_FALSE(now().needsLocation);
}

TEST_F(NetworkProviderTest, mayGoWhileALookIsUnderWay) {
  holdsLane = true;
  provider->start(1s);
  settle();
  provider.reset();
  lane->run();
  settle();
  location.watcher();  // nobody is left to care
  settle();
  EXPECT_EQ(lane->waiting(), 0U);
}

}  // namespace
}  // namespace kestrune
