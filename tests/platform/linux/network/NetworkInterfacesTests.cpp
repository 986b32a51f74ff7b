#include <filesystem>
#include <thread>

#include <gmock/gmock.h>

#include "platform/linux/network/LinuxNetworkInterfaces.h"
#include "platform/linux/network/NetDev.h"
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
  void describe(const std::string& name, const std::string& file, const std::string& text = "") {
    root.write("sys/class/net/" + name + "/" + file, text);
  }
  static std::vector<std::string> carriedOf(const std::vector<LinkEntry>& links) {
    std::vector<std::string> names;
    for (const auto& link : links) {
      if (link.isCarriedByAnother) names.push_back(link.name);
    }
    return names;
  }
  std::vector<std::string> carried() { return carriedOf(interfaces.links().value()); }
  std::vector<std::string> carriedInFullRead() { return carriedOf(interfaces.interfaces().value().links); }

  test::TemporaryFolder root;
  std::optional<std::vector<AddressEntry>> addresses = std::vector<AddressEntry>{};
  LinuxNetworkInterfaces interfaces{root.path(), [this] { return addresses; }};
};

TEST_F(LinuxNetworkInterfacesTest, theKernelKnowsWhatIsStacked) {
  setNames({"lo", "eth0", "home", "br0", "lan", "vpn0", "wlan0", "work", "mlan0"});
  describe("eth0", "uevent", "INTERFACE=eth0\nIFINDEX=2\n");
  describe("eth0", "upper_home");
  describe("home", "uevent", "DEVTYPE=vlan\nINTERFACE=home\n");
  describe("br0", "uevent", "DEVTYPE=bridge\nINTERFACE=br0\n");
  describe("lan", "lower_eth0");
  describe("vpn0", "tun_flags", "0x1801\n");
  describe("wlan0", "uevent", "DEVTYPE=wlan\nINTERFACE=wlan0\n");
  describe("work", "uevent", "DEVTYPE=wireguard\nINTERFACE=work\n");
  describe("mlan0", "uevent", "INTERFACE=DEVTYPE=vlan\n");
  EXPECT_THAT(carried(), ElementsAre("home", "br0", "lan", "vpn0", "work"));
  EXPECT_THAT(carriedInFullRead(), ElementsAre("home", "br0", "lan", "vpn0", "work"));
}

TEST_F(LinuxNetworkInterfacesTest, changesShowWithNewNamesAndInFullReads) {
  setNames({"eth0", "a"});
  EXPECT_THAT(carried(), IsEmpty());
  describe("a", "lower_eth0");
  EXPECT_THAT(carried(), IsEmpty()) << "the same names";
  EXPECT_THAT(carriedInFullRead(), ElementsAre("a"));
  EXPECT_THAT(carried(), ElementsAre("a"));

  std::filesystem::remove_all(root / "sys/class/net/a");
  setNames({"eth0", "b"});
  describe("b", "lower_eth0");
  EXPECT_THAT(carried(), ElementsAre("b"));
  setNames({"eth0", "a"});
  EXPECT_THAT(carried(), IsEmpty()) << "another interface with the same name";
}

TEST_F(LinuxNetworkInterfacesTest, aDialUpConnectionIsCarriedByAConnectedPort) {
  setNames({"eth0", "wlan0", "ppp0"});
  describe("ppp0", "uevent", "DEVTYPE=ppp\nINTERFACE=ppp0\n");
  describe("eth0", "device/modalias");
  describe("eth0", "carrier", "0\n");
  EXPECT_THAT(carried(), IsEmpty()) << "over a modem";
  describe("eth0", "carrier", "1\n");
  EXPECT_THAT(carriedInFullRead(), IsEmpty()) << "stays as it was";

  setNames({"eth0", "wlan0", "ppp1"});
  describe("ppp1", "uevent", "DEVTYPE=ppp\nINTERFACE=ppp1\n");
  EXPECT_THAT(carried(), ElementsAre("ppp1"));
  describe("eth0", "carrier", "0\n");
  EXPECT_THAT(carriedInFullRead(), ElementsAre("ppp1")) << "stays as it was";
  EXPECT_THAT(carried(), ElementsAre("ppp1"));
}

TEST_F(LinuxNetworkInterfacesTest, bothReadsAtTheSameTime) {
  constexpr int rounds = 300;
  describe("br0", "lower_eth0");
  setNames({"eth0", "br0"});
  std::thread other([&] {
    for (int i = 0; i < rounds; ++i) {
      // The file may be read half written.
      const auto found = interfaces.interfaces();
      if (!found || found->links.size() < 2) continue;
      EXPECT_THAT(carriedOf(found->links), ElementsAre("br0"));
    }
  });
  for (int i = 0; i < rounds; ++i) {
    setNames({"eth0", "br0", i % 2 == 0 ? "eth1" : "eth2"});
    EXPECT_THAT(carried(), ElementsAre("br0"));
  }
  other.join();
}

// A line as the kernel prints it.
std::string line(const std::string& name, const std::string& received, const std::string& sent) {
  return name + ":" + received + " 2 3 4 5 6 7 8 " + sent + " 10 11 12 13 14 15 16\n";
}

// "name received sent", or "name -" for an interface without counters.
std::vector<std::string> parsed(const std::string& text) {
  std::vector<std::string> lines;
  for (const auto& link : parseNetDev(text)) {
    const auto& counters = link.counters;
    lines.push_back(link.name + (counters ? " " + std::to_string(counters->received) + " " +
                                                std::to_string(counters->sent)
                                          : std::string(" -")));
  }
  return lines;
}

TEST(NetDevTest, namesMayBeOdd) {
  EXPECT_THAT(parsed(line("eth0:1", "5", "6") + line("a|b", " 7", "8") + line("  \xff\x01\"", " 9", "1") +
                     line("123", "456", "7")),
              ElementsAre("eth0:1 5 6", "a|b 7 8", "\xff\x01\" 9 1", "123 456 7"));
}

TEST(NetDevTest, invalidLinesAreLeftOut) {
  const std::string whole = line("eth0", " 1", "2");
  for (const std::string bad :
       {"\n", ":\n", "garbage\n", "eth1: 1 2 3\n", "eth1: x 2 3 4 5 6 7 8 9\n",
        "eth1: 1 2 3 4 5 6 7 8 -9 1\n", ": 1 2 3 4 5 6 7 8 9 1\n", "blank : 1 2 3 4 5 6 7 8 9 1\n",
        "two words: 1 2 3 4 5 6 7 8 9 1\n", "eth1: 1a 2 3 4 5 6 7 8 9 1\n"}) {
    EXPECT_THAT(parsed(bad + whole), ElementsAre("eth0 1 2")) << bad;
  }
  const std::string last = line("eth1", " 3", "4");
  for (std::size_t length = 0; length < last.size(); ++length) {
    EXPECT_THAT(parsed(whole + last.substr(0, length)), ElementsAre("eth0 1 2")) << length;
  }
}

TEST(NetDevTest, implausibleCountersAreAbsent) {
  EXPECT_THAT(parsed(line("a", " 18446744073709551616", "1") + line("b", " 1", "18446744073709551615") +
                     line("c", " 99999999999999999999999999", "99999999999999999999999999") +
                     line("d", " 1152921504606846976", "1") + line("e", " 1152921504606846977", "1")),
              ElementsAre("a -", "b -", "c -", "d 1152921504606846976 1", "e -"));
}

}  // namespace
}  // namespace kestrune::platform
