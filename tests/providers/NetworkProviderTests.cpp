#include <gmock/gmock.h>

#include "support/Providers.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using platform::LocationAuthorization;

class NetworkProviderTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  const NetworkSnapshot& now() const { return *provider->current; }

  std::shared_ptr<NetworkProvider> provider = test::Providers(*this).network;
};

TEST_F(NetworkProviderTest, firstReadingAfterFailedOnesIsNoRate) {
  networkInterfaces.list.reset();
  provider->start(1s);
  EXPECT_EQ(location.requests, 1);
  networkInterfaces.setLink("en0", 1ULL << 40U, 0);
  advance(1s);
  EXPECT_EQ(provider->history->size(), 1U);
  EXPECT_LT(now().downloadBytesPerSec, 20.0);
}

TEST_F(NetworkProviderTest, refreshesTheConnectionAfterFifteenSeconds) {
  networkInterfaces.setLink("en0", 10, 10);
  provider->start(1s);
  advance(15s);
  networkInterfaces.list->addresses.push_back({"en0", "10.0.0.7"});
  advance(500ms);
  EXPECT_EQ(now().ipAddress, std::nullopt);
  advance(500ms);
  EXPECT_EQ(now().ipAddress, "10.0.0.7") << "at once, not with the next tick";
}

TEST_F(NetworkProviderTest, aHungRefreshStopsNothingElse) {
  networkInterfaces.setLink("en0", 10, 10);
  provider->start(1s);
  settle();
  holdsLane = true;
  networkInterfaces.setLink("en0", 1010, 10);
  advance(60s);
  EXPECT_EQ(lane->waiting(), 1U) << "no second refresh while the first hangs";
  EXPECT_EQ(now().interfaceName, "Ethernet");
  EXPECT_EQ(provider->uploadHistory->size(), 60U);
}

TEST_F(NetworkProviderTest, aGrantedPermissionIsUsedAtOnceEvenDuringARefresh) {
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

TEST_F(NetworkProviderTest, mayBeDestroyedDuringARefresh) {
  holdsLane = true;
  provider->start(1s);
  settle();
  provider.reset();
  lane->run();
  settle();
  location.watcher();
  settle();
  EXPECT_EQ(lane->waiting(), 0U);
}

}  // namespace
}  // namespace kestrune
