#include <gtest/gtest.h>

#include "platform/linux/network/LinuxWiFi.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

class NetworkNameToolsTest : public testing::Test {
 protected:
  // Installs tools that note their arguments and print the file "answers/LAST ARGUMENT".
  void installAll() {
    for (const char* path :
         {"usr/sbin/networksetup",
          "System/Library/PrivateFrameworks/Apple80211.framework/Versions/Current/Resources/airport"}) {
      root.script(path, "#!/bin/sh\necho \"$@\" >> '" + (root / "calls") + "'\nfor last; do :; done\ncat '" +
                            (root / "answers") + "'/\"$last\"\n");
    }
  }
  void answer(const std::string& lastArgument, const std::string& text) {
    root.write("answers/" + lastArgument, text);
  }

  test::TemporaryFolder root;
};

TEST_F(NetworkNameToolsTest, asksOneAfterTheOtherUntilANameIsFound) {
  installAll();
  LinuxWiFi wifi(root.path());
  EXPECT_EQ(wifi.findNetworkName("wlan0"), std::nullopt);
  EXPECT_EQ(root.read("calls"),
            "-getairportnetwork wlan0\n-getairportnetwork en0\n-getairportnetwork en1\n-I\n");

  answer("wlan0", "You are not associated with an AirPort network.\n");
  answer("en0", "Current Wi-Fi Network: \n");
  answer("en1", "Current Wi-Fi Network: Caf\xE9\n");
  answer("-I", "     BSSID: 0:1:2\n      SSID: \n   SSID:  The Net \n   SSID: Other\n");
  EXPECT_EQ(wifi.findNetworkName("wlan0"), "The Net");
  answer("en1", "Current Wi-Fi Network: a: b \n");
  EXPECT_EQ(wifi.findNetworkName("wlan0"), "a: b");
  root.write("calls", "");
  answer("wlan0", "Current Wi-Fi Network: Home");
  EXPECT_EQ(wifi.findNetworkName("wlan0"), "Home");
  EXPECT_EQ(root.read("calls"), "-getairportnetwork wlan0\n");
}

TEST_F(NetworkNameToolsTest, toolsAreLookedForOnce) {
  LinuxWiFi wifi(root.path());
  installAll();
  answer("-I", "SSID: Net");
  EXPECT_EQ(wifi.findNetworkName("wlan0"), std::nullopt);
  EXPECT_FALSE(root.has("calls"));
  EXPECT_EQ(LinuxWiFi(root.path()).findNetworkName("wlan0"), "Net");
}

}  // namespace
}  // namespace kestrune::platform
