#include <filesystem>
#include <thread>

#include <gmock/gmock.h>

#include "platform/linux/network/LinuxNetworkInterfaces.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LinuxNetworkInterfacesTest : public testing::Test {
 protected:
  void setNames(const std::vector<std::string>& names) {
    std::string text = "Inter-| Receive | Transmit\n face |bytes packets\n";
    for (const auto& name : names) text += name + ": 10 0 0 0 0 0 0 0 20 0 0 0 0 0 0 0\n";
    root.write("proc/net/dev", text);
  }
  void tell(const std::string& name, const std::string& file, const std::string& text = "") {
    root.write("sys/class/net/" + name + "/" + file, text);
  }
  void forget(const std::string& name) { std::filesystem::remove_all(root / ("sys/class/net/" + name)); }
  static std::vector<std::string> carriedOf(const std::vector<LinkEntry>& links) {
    std::vector<std::string> names;
    for (const auto& link : links) {
      if (link.isCarriedByAnother) names.push_back(link.name);
    }
    return names;
  }
  std::vector<std::string> carried() { return carriedOf(interfaces.links().value()); }
  std::vector<std::string> carriedByAFullLook() { return carriedOf(interfaces.interfaces().value().links); }

  test::TemporaryFolder root;
  std::optional<std::vector<AddressEntry>> addresses = std::vector<AddressEntry>{};
  LinuxNetworkInterfaces interfaces{root.path(), [this] { return addresses; }};
};

TEST_F(LinuxNetworkInterfacesTest, theKernelTellsWhatStandsOnAnother) {
  setNames({"lo", "eth0", "home", "br0", "lan", "vpn0", "wlan0", "work", "mlan0"});
  tell("eth0", "uevent", "INTERFACE=eth0\nIFINDEX=2\n");
  tell("eth0", "upper_home");
  tell("home", "uevent", "DEVTYPE=vlan\nINTERFACE=home\n");
  tell("br0", "uevent", "DEVTYPE=bridge\nINTERFACE=br0\n");
  tell("lan", "lower_eth0");
  tell("vpn0", "tun_flags", "0x1801\n");
  tell("wlan0", "uevent", "DEVTYPE=wlan\nINTERFACE=wlan0\n");
  tell("work", "uevent", "DEVTYPE=wireguard\nINTERFACE=work\n");
  tell("mlan0", "uevent", "INTERFACE=DEVTYPE=vlan\n");
  EXPECT_THAT(carried(), ElementsAre("home", "br0", "lan", "vpn0", "work"));
  EXPECT_THAT(carriedByAFullLook(), ElementsAre("home", "br0", "lan", "vpn0", "work"));
}

TEST_F(LinuxNetworkInterfacesTest, changesAreSeenWithNewNamesAndInFullLooks) {
  setNames({"eth0", "a"});
  EXPECT_THAT(carried(), IsEmpty());
  tell("a", "lower_eth0");
  EXPECT_THAT(carried(), IsEmpty()) << "the same names";
  EXPECT_THAT(carriedByAFullLook(), ElementsAre("a"));
  EXPECT_THAT(carried(), ElementsAre("a"));

  forget("a");
  setNames({"eth0", "b"});
  tell("b", "lower_eth0");
  EXPECT_THAT(carried(), ElementsAre("b"));
  setNames({"eth0", "a"});
  EXPECT_THAT(carried(), IsEmpty()) << "another interface with the same name";
}

TEST_F(LinuxNetworkInterfacesTest, aDialUpConnectionIsCarriedByAConnectedPort) {
  setNames({"eth0", "wlan0", "ppp0"});
  tell("ppp0", "uevent", "DEVTYPE=ppp\nINTERFACE=ppp0\n");
  tell("eth0", "device/modalias");
  tell("eth0", "carrier", "0\n");
  EXPECT_THAT(carried(), IsEmpty()) << "over a modem";
  tell("eth0", "carrier", "1\n");
  EXPECT_THAT(carriedByAFullLook(), IsEmpty()) << "stays what it was";

  setNames({"eth0", "wlan0", "ppp1"});
  tell("ppp1", "uevent", "DEVTYPE=ppp\nINTERFACE=ppp1\n");
  EXPECT_THAT(carried(), ElementsAre("ppp1"));
  tell("eth0", "carrier", "0\n");
  EXPECT_THAT(carriedByAFullLook(), ElementsAre("ppp1")) << "stays what it was";
  EXPECT_THAT(carried(), ElementsAre("ppp1"));
}

TEST_F(LinuxNetworkInterfacesTest, bothLooksAtTheSameTime) {
  constexpr int rounds = 300;
  tell("br0", "lower_eth0");
  setNames({"eth0", "br0"});
  std::thread other([&] {
    for (int i = 0; i < rounds; ++i) {
      // What is written meanwhile may be read half.
      const auto found = interfaces.interfaces();
      if (!found || found->links.size() < 2) continue;
      EXPECT_THAT(carriedOf(found->links), ElementsAre("br0"));
    }
  });
  for (int i = 0; i < rounds; ++i) {
    setNames(i % 2 == 0 ? std::vector<std::string>{"eth0", "br0", "eth1"}
                        : std::vector<std::string>{"eth0", "br0"});
    EXPECT_THAT(carried(), ElementsAre("br0"));
  }
  other.join();
}

}  // namespace
}  // namespace kestrune::platform
