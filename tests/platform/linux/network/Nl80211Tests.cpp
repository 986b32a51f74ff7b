#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <linux/genetlink.h>
#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <unistd.h>

#include "platform/linux/files/UniqueFd.h"
#include "platform/linux/network/LinuxWiFi.h"
#include "platform/linux/network/Nl80211.h"
#include "platform/linux/network/Nl80211Socket.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;

std::string bytesOf(const auto& value) {
  return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// An attribute of a message, laid out as by the kernel.
std::string attribute(int type, std::string_view value) {
  std::string text = bytesOf(nlattr{.nla_len = static_cast<std::uint16_t>(NLA_HDRLEN + value.size()),
                                    .nla_type = static_cast<std::uint16_t>(type)});
  text.append(value).resize(NLA_ALIGN(text.size()), '\0');
  return text;
}
std::string attribute(int type, std::uint32_t value) {
  return attribute(type, bytesOf(value));
}

// An interface of a radio, as the kernel reports it.
std::string interfaceMessage(std::uint32_t mode) {
  return attribute(NL80211_ATTR_IFINDEX, 3) + attribute(NL80211_ATTR_IFNAME, "wlp2s0\0"s) +
         attribute(NL80211_ATTR_WIPHY, 0U) + attribute(NL80211_ATTR_IFTYPE, mode) +
         attribute(NL80211_ATTR_MAC, "\2\0\0\0\0\1"s);
}

std::optional<RadioInterface> asInterface(std::span<const char> message) {
  return parseRadioInterface(std::as_bytes(message));
}

std::string element(char type, const std::string& value) {
  return std::string{type, static_cast<char>(value.size())} + value;
}

TEST(Nl80211Test, readsTheNetworkOfAStation) {
  const auto station = [](const std::string& ssid) {
    return asInterface(interfaceMessage(NL80211_IFTYPE_STATION) + attribute(NL80211_ATTR_SSID, ssid)).value();
  };
  for (const std::string& ssid : {"Home"s, "Caf\xc3\xa9 \xff"s, "a\0b"s, std::string(32, 'x')}) {
    EXPECT_TRUE(station(ssid).isClient);
    EXPECT_EQ(station(ssid).index, 3U);
    EXPECT_EQ(station(ssid).ssid, ssid);
  }
  for (const std::string& ssid : {""s, "\0\0\0"s, std::string(33, 'x')}) {
    EXPECT_EQ(station(ssid).ssid, std::nullopt) << "hidden or impossible: " << ssid.size();
  }
}

TEST(Nl80211Test, otherModesAreNotClients) {
  EXPECT_FALSE(asInterface(interfaceMessage(NL80211_IFTYPE_AP))->isClient);
  EXPECT_FALSE(asInterface(attribute(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_P2P_DEVICE)).value().isClient);
  EXPECT_FALSE(asInterface(attribute(NL80211_ATTR_IFNAME, "wlan0\0"s))) << "without a mode";
}

TEST(Nl80211Test, findsTheConnectedNetworkAmongThoseHeard) {
  const auto heard = [](const std::string& network) {
    const std::string message =
        attribute(NL80211_ATTR_GENERATION, 7) + attribute(NL80211_ATTR_BSS | NLA_F_NESTED, network);
    return parseHeardNetwork(std::as_bytes(std::span(message))).value();
  };
  const std::string rates = element(1, "\x82\x84");
  const std::string hidden = element(0, "\0\0\0\0"s) + rates;
  const std::string named = rates + element(0, "a\0b"s) + element(3, "\6");
  std::string network =
      attribute(NL80211_BSS_BSSID, "\2\0\0\0\0\2"s) + attribute(NL80211_BSS_INFORMATION_ELEMENTS, named);
  EXPECT_FALSE(heard(network).isAssociated);
  network += attribute(NL80211_BSS_BEACON_IES, hidden) +
             attribute(NL80211_BSS_STATUS, NL80211_BSS_STATUS_ASSOCIATED);
  EXPECT_TRUE(heard(network).isAssociated);
  EXPECT_EQ(heard(network).ssid, "a\0b"s) << "hidden in beacons, named in answers";

  EXPECT_FALSE(heard(attribute(NL80211_BSS_STATUS, NL80211_BSS_STATUS_AUTHENTICATED)).isAssociated);
  EXPECT_EQ(heard(attribute(NL80211_BSS_BEACON_IES, named)).ssid, "a\0b"s);
  for (const std::string& elements : {""s, hidden, "\0"s, "\0\5abc"s, rates, "\1\377"s + element(0, "x")}) {
    EXPECT_EQ(heard(attribute(NL80211_BSS_INFORMATION_ELEMENTS, elements)).ssid, std::nullopt);
  }
  const std::string other = interfaceMessage(NL80211_IFTYPE_STATION);
  EXPECT_FALSE(parseHeardNetwork(std::as_bytes(std::span(other))));
}

// Each truncated copy is as large as its text, so that reading beyond its end is found.
TEST(Nl80211Test, truncatedAndInvalidMessagesYieldOnlyWhatIsThere) {
  std::string whole = interfaceMessage(NL80211_IFTYPE_STATION) + attribute(NL80211_ATTR_SSID, "Home");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const auto interface = asInterface(std::vector(whole.data(), whole.data() + length));
    if (!interface) continue;
    EXPECT_EQ(interface->name, "wlp2s0") << length;
    EXPECT_EQ(interface->ssid, std::nullopt) << length;
  }
  whole[0] = '\0';  // a length of zero must end the reading
  EXPECT_FALSE(asInterface(whole));
  const auto odd =
      asInterface(attribute(NL80211_ATTR_IFINDEX, "\1\2") + attribute(NL80211_ATTR_IFNAME, "\0"s) +
                  attribute(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_STATION));
  EXPECT_EQ(odd->index, 0U);
  EXPECT_EQ(odd->name, std::nullopt);
}

struct ScriptedRadios final : RadioSource {
  std::optional<std::vector<RadioInterface>> interfaces() override {
    ++questions;
    return list;
  }
  std::optional<std::string> heardSsid(std::uint32_t index) override {
    return index == 4 ? std::optional<std::string>("Heard") : std::nullopt;
  }
  std::optional<std::vector<RadioInterface>> list;
  int questions = 0;
};

class LinuxWiFiTest : public testing::Test {
 protected:
  LinuxWiFiTest() {
    std::filesystem::create_directories(root / "sys/class/ieee80211/phy0");
    radios->list = {{.name = "ap0", .index = 2, .ssid = "Mine"},
                    {.name = {}, .index = 0},
                    {.name = "wlan0", .index = 3, .isClient = true},
                    {.name = "wlan1", .index = 4, .isClient = true}};
  }
  // "name", "name connected" or "name network".
  std::string defaultInterface() {
    const auto interface = wifi.defaultInterface();
    if (!interface) return "none";
    return interface->name.value() +
           (interface->isStation ? " " + interface->ssid.value_or("connected") : "");
  }
  void setCarrier(const std::string& name) { root.write("sys/class/net/" + name + "/carrier", "1\n"); }

  test::TemporaryFolder root;
  ScriptedRadios* radios = new ScriptedRadios;  // owned by `wifi`
  LinuxWiFi wifi{root.path(), std::unique_ptr<RadioSource>(radios)};
};

TEST_F(LinuxWiFiTest, firstConnectedClientIsTheDefault) {
  EXPECT_THAT(wifi.interfaceNames(), ElementsAre("ap0", std::nullopt, "wlan0", "wlan1"));
  EXPECT_EQ(defaultInterface(), "wlan0");
  (*radios->list)[3].ssid = "Home";
  EXPECT_EQ(defaultInterface(), "wlan1 Home");
  radios->list->resize(2);
  EXPECT_EQ(defaultInterface(), "none") << "no client";
  radios->list.reset();
  EXPECT_EQ(defaultInterface(), "none") << "unreadable";
}

TEST_F(LinuxWiFiTest, aMissingNameIsReplacedByTheCarrierAndWhatWasHeard) {
  setCarrier("wlan1");
  EXPECT_EQ(defaultInterface(), "wlan1 Heard");
  setCarrier("wlan0");
  EXPECT_EQ(defaultInterface(), "wlan0 connected") << "hidden";
}

TEST_F(LinuxWiFiTest, asksNothingOnAMachineWithoutARadio) {
  std::filesystem::remove(root / "sys/class/ieee80211/phy0");
  EXPECT_EQ(defaultInterface(), "none");
  std::filesystem::remove(root / "sys/class/ieee80211");
  EXPECT_EQ(defaultInterface(), "none");
  EXPECT_EQ(radios->questions, 0);
  std::filesystem::create_directories(root / "sys/class/ieee80211/phy1");
  EXPECT_EQ(defaultInterface(), "wlan0") << "a radio was plugged in";
}

// The number that the next file to be opened will have.
int nextDescriptor() {
  return UniqueFd(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0)).get();
}

// The kernel's list of families is itself a family, there on every machine.
TEST(Nl80211SocketTest, readsWholeListsAndSurvivesABrokenSocket) {
  const int kept = nextDescriptor();
  {
    Nl80211Socket socket("nlctrl");
    for (int round = 0; round < 3; ++round) {
      const auto families = socket.list(CTRL_CMD_GETFAMILY);
      ASSERT_TRUE(families);
      EXPECT_TRUE(std::ranges::any_of(*families, [](const auto& message) {
        return !std::ranges::search(message, std::as_bytes(std::span("nlctrl"))).empty();
      }));
      EXPECT_NE(fcntl(kept, F_GETFD) & FD_CLOEXEC, 0);
      EXPECT_EQ(nextDescriptor(), kept + 1) << "one socket for all";
    }
    const UniqueFd nowhere(open("/dev/null", O_RDWR | O_CLOEXEC));
    dup2(nowhere.get(), kept);
    EXPECT_TRUE(socket.list(CTRL_CMD_GETFAMILY));
    EXPECT_FALSE(socket.list(250)) << "no such command";
    EXPECT_TRUE(socket.list(CTRL_CMD_GETFAMILY));
  }
  Nl80211Socket unknown("no-such-family");
  EXPECT_FALSE(unknown.list(CTRL_CMD_GETFAMILY));
  EXPECT_EQ(nextDescriptor(), kept);
}

}  // namespace
}  // namespace kestrune::platform
