#include <cstring>
#include <filesystem>
#include <set>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <linux/genetlink.h>
#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/linux/network/LinuxWiFi.h"
#include "platform/linux/network/Nl80211.h"
#include "platform/linux/network/Nl80211Socket.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;

// A message's attributes, laid out as by the kernel.
class Message {
 public:
  Message& add(int type, std::string_view value) {
    const nlattr header{.nla_len = static_cast<std::uint16_t>(NLA_HDRLEN + value.size()),
                        .nla_type = static_cast<std::uint16_t>(type)};
    text_.append(bytesOf(header)).append(value);
    text_.resize((text_.size() + NLA_ALIGNTO - 1) / NLA_ALIGNTO * NLA_ALIGNTO, '\0');
    return *this;
  }
  Message& add(int type, std::uint32_t value) { return add(type, bytesOf(value)); }
  Message& nest(int type, const Message& inner) { return add(type | NLA_F_NESTED, inner.text_); }

  const std::string& text() const { return text_; }
  std::optional<RadioInterface> asInterface() const {
    return parseRadioInterface(std::as_bytes(std::span(text_)));
  }
  std::optional<HeardNetwork> asNetwork() const { return parseHeardNetwork(std::as_bytes(std::span(text_))); }

 private:
  static std::string bytesOf(const auto& value) {
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
  }

  std::string text_;
};

// An interface of a radio, as the kernel reports it.
Message interfaceMessage(std::uint32_t mode) {
  return Message()
      .add(NL80211_ATTR_IFINDEX, 3)
      .add(NL80211_ATTR_IFNAME, "wlp2s0\0"s)
      .add(NL80211_ATTR_WIPHY, std::uint32_t{0})
      .add(NL80211_ATTR_IFTYPE, mode)
      .add(NL80211_ATTR_MAC, "\2\0\0\0\0\1"s);
}

std::string element(char type, const std::string& value) {
  return std::string{type, static_cast<char>(value.size())} + value;
}

TEST(Nl80211Test, readsTheNetworkOfAStation) {
  const auto station = [](const std::string& ssid) {
    return interfaceMessage(NL80211_IFTYPE_STATION).add(NL80211_ATTR_SSID, ssid).asInterface().value();
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
  EXPECT_FALSE(interfaceMessage(NL80211_IFTYPE_AP).asInterface()->isClient);
  const auto management = Message().add(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_P2P_DEVICE).asInterface();
  ASSERT_TRUE(management);
  EXPECT_FALSE(management->isClient);
  EXPECT_FALSE(Message().add(NL80211_ATTR_IFNAME, "wlan0\0"s).asInterface()) << "without a mode";
}

TEST(Nl80211Test, findsTheConnectedNetworkAmongThoseHeard) {
  const auto heard = [](const Message& network) {
    return Message().add(NL80211_ATTR_GENERATION, 7).nest(NL80211_ATTR_BSS, network).asNetwork().value();
  };
  const std::string rates = element(1, "\x82\x84");
  const std::string hidden = element(0, "\0\0\0\0"s) + rates;
  const std::string named = rates + element(0, "a\0b"s) + element(3, "\6");
  Message network;
  network.add(NL80211_BSS_BSSID, "\2\0\0\0\0\2"s).add(NL80211_BSS_INFORMATION_ELEMENTS, named);
  EXPECT_FALSE(heard(network).isAssociated);
  network.add(NL80211_BSS_BEACON_IES, hidden).add(NL80211_BSS_STATUS, NL80211_BSS_STATUS_ASSOCIATED);
  EXPECT_TRUE(heard(network).isAssociated);
  EXPECT_EQ(heard(network).ssid, "a\0b"s) << "hidden in beacons, named in answers";

  EXPECT_FALSE(heard(Message().add(NL80211_BSS_STATUS, NL80211_BSS_STATUS_AUTHENTICATED)).isAssociated);
  EXPECT_EQ(heard(Message().add(NL80211_BSS_BEACON_IES, named)).ssid, "a\0b"s);
  for (const std::string& elements : {""s, hidden, "\0"s, "\0\5abc"s, rates, "\1\377"s + element(0, "x")}) {
    EXPECT_EQ(heard(Message().add(NL80211_BSS_INFORMATION_ELEMENTS, elements)).ssid, std::nullopt);
  }
  EXPECT_FALSE(interfaceMessage(NL80211_IFTYPE_STATION).asNetwork());
}

// Each truncated copy is as large as its text, so that reading beyond its end is found.
TEST(Nl80211Test, truncatedAndInvalidMessagesYieldOnlyWhatIsThere) {
  const std::string whole = interfaceMessage(NL80211_IFTYPE_STATION).add(NL80211_ATTR_SSID, "Home").text();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const std::vector<char> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const auto interface = parseRadioInterface(std::as_bytes(std::span(cut)));
    if (!interface) continue;
    EXPECT_EQ(interface->name, "wlp2s0") << length;
    EXPECT_EQ(interface->ssid, std::nullopt) << length;
  }
  std::string endless = whole;
  endless[0] = '\0';  // a length of zero must end the reading
  EXPECT_FALSE(parseRadioInterface(std::as_bytes(std::span(endless))));
  const auto odd = Message()
                       .add(NL80211_ATTR_IFINDEX, "\1\2")
                       .add(NL80211_ATTR_IFNAME, "\0"s)
                       .add(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_STATION)
                       .asInterface();
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

// The open sockets of this process.
std::set<int> openSockets() {
  std::set<int> sockets;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code gone;
    const std::string target = std::filesystem::read_symlink(entry.path(), gone).string();
    if (target.starts_with("socket:")) sockets.insert(std::stoi(entry.path().filename()));
  }
  return sockets;
}

bool namesFamily(const std::vector<Nl80211Socket::Attributes>& messages, std::string_view name) {
  return std::ranges::any_of(messages, [&](const auto& message) {
    return !std::ranges::search(message, std::as_bytes(std::span(name))).empty();
  });
}

// The kernel's list of families is itself a family, there on every machine.
TEST(Nl80211SocketTest, readsWholeListsAndSurvivesABrokenSocket) {
  const auto before = openSockets();
  {
    Nl80211Socket socket("nlctrl");
    int kept = -1;
    for (int round = 0; round < 3; ++round) {
      const auto families = socket.list(CTRL_CMD_GETFAMILY);
      ASSERT_TRUE(families);
      EXPECT_TRUE(namesFamily(*families, "nlctrl"));
      std::vector<int> own;
      std::ranges::set_difference(openSockets(), before, std::back_inserter(own));
      ASSERT_EQ(own.size(), 1U);
      kept = own.front();
      EXPECT_NE(fcntl(kept, F_GETFD) & FD_CLOEXEC, 0);
    }
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nowhere, kept);
    close(nowhere);
    EXPECT_TRUE(socket.list(CTRL_CMD_GETFAMILY));
    EXPECT_FALSE(socket.list(250)) << "no such command";
    EXPECT_TRUE(socket.list(CTRL_CMD_GETFAMILY));
  }
  Nl80211Socket unknown("no-such-family");
  EXPECT_FALSE(unknown.list(CTRL_CMD_GETFAMILY));
  EXPECT_EQ(openSockets(), before);
}

}  // namespace
}  // namespace kestrune::platform
