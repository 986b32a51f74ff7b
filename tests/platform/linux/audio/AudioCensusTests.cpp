#include <filesystem>

#include <gmock/gmock.h>

#include "platform/linux/audio/AudioCensusMapping.h"
#include "platform/linux/audio/PulseClientPids.h"
#include "support/TemporaryFolder.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

AudioCensus censusOf(const PulseFacts& facts) {
  return audioCensus(facts, [](const PulseClient& client) { return client.claimedPid; });
}

PulseDevice device(std::uint32_t index, const std::string& name) {
  PulseDevice result;
  result.index = index;
  result.name = name;
  result.description = "The " + name;
  result.channels = 2;
  return result;
}

template <class Item>
std::vector<std::uint32_t> idsOf(const std::vector<Item>& items) {
  std::vector<std::uint32_t> ids;
  for (const auto& item : items) ids.push_back(item.id);
  return ids;
}

TEST(AudioCensus, idsAreUniqueAndNotZero) {
  PulseFacts facts;
  facts.sinks = {device(0, "a"), device(1, "b"), device(0x7FFFFFFE, "c"), device(0x7FFFFFFF, "beyond")};
  facts.sources = {device(0, "d"), device(1, "e"), device(0x7FFFFFFE, "f"), device(0xFFFFFFFE, "beyond")};
  EXPECT_THAT(idsOf(censusOf(facts).devices), ElementsAre(1, 3, 0xFFFFFFFD, 2, 4, 0xFFFFFFFE));

  facts.clients = {{.index = 0}, {.index = 0xFFFFFFFE}, {.index = noPulseIndex}};
  EXPECT_THAT(idsOf(censusOf(facts).clients), ElementsAre(1, 0xFFFFFFFF));
}

TEST(AudioTransport, followsTheServersFacts) {
  struct Case {
    PulseDevice device;
    AudioTransport transport;
  };
  const Case hardware[] = {
      {{.formFactor = "internal"}, AudioTransport::builtIn},
      {{.bus = "usb"}, AudioTransport::usb},
      {{.name = "alsa_output.pci-0000_00_1f.3.analog-stereo"}, AudioTransport::builtIn},
      {{.name = "alsa_input.usb-Maker_Model-00.mono", .bus = "firewire"}, AudioTransport::unknown},
      // Displays, by the active port.
      {{.bus = "pci", .isPortHdmi = true}, AudioTransport::hdmi},
      {{.bus = "pci", .portName = "hdmi-output-0"}, AudioTransport::hdmi},
      {{.name = "alsa_output.pci-0000_01_00.1.hdmi-stereo", .bus = "pci"}, AudioTransport::hdmi},
      {{.bus = "pci", .portDescription = "HDMI / DisplayPort 2"}, AudioTransport::hdmi},
      {{.bus = "pci", .isPortHdmi = true, .portDescription = "DisplayPort 1 Output"},
       AudioTransport::displayPort},
      {{.bus = "bluetooth"}, AudioTransport::bluetooth},
      {{.api = "bluez5", .bluetoothProfile = "a2dp-sink"}, AudioTransport::bluetooth},
      {{.api = "bluez5", .bluetoothProfile = "bap-sink"}, AudioTransport::bluetoothLE},
  };
  for (const Case& each : hardware) {
    PulseDevice device = each.device;
    device.isHardware = true;
    if (device.api.empty()) device.api = "alsa";
    if (device.name.empty()) device.name = "alsa_output.platform-sound.stereo-fallback";
    EXPECT_EQ(audioTransport(device), each.transport) << "case " << &each - &hardware[0];
  }
  EXPECT_EQ(audioTransport({.name = "raop_sink.Kitchen.local", .driver = "PipeWire"}),
            AudioTransport::airPlay);
  EXPECT_EQ(audioTransport({.name = "kitchen", .driver = "module-raop-sink.c"}), AudioTransport::airPlay);
  EXPECT_EQ(audioTransport({.name = "my_hdmi_mix", .driver = "PipeWire"}), AudioTransport::virtual_);
}

class PulseClientPidsTest : public testing::Test {
 protected:
  void put(int pid, const std::string& name, const std::string& executable, const std::string& nested = "",
           const std::string& flags = "4194560") {
    const std::string folder = "proc/" + std::to_string(pid);
    root.write(folder + "/stat", std::to_string(pid) + " (" + name + ") S 1 1 1 0 -1 " + flags +
                                     " 0 0 0 0 0 0 0 0 20 0 1 0 100 1000 10 1 1\n");
    root.write(folder + "/status", "Name:\t" + name + "\nNSpid:\t" +
                                       (nested.empty() ? std::to_string(pid) : nested) + "\nNSpgid:\t1\n");
    if (!executable.empty()) root.link(folder + "/exe", executable);
  }
  std::int32_t pidOf(std::int32_t claimed, const std::string& binary) {
    pids.clear();
    return pids.pid({.index = 1, .claimedPid = claimed, .claimedBinary = binary});
  }

  test::TemporaryFolder root;
  PulseClientPids pids{root.path()};
};

TEST_F(PulseClientPidsTest, believesMatchingClaims) {
  put(50, "Web Content", "/usr/lib/fox/fox");
  put(60, "mixer-with-a-ve", "");
  put(70, "player", "/usr/bin/player (deleted)");
  EXPECT_EQ(pidOf(50, "fox"), 50);
  EXPECT_EQ(pidOf(50, ""), 50);
  EXPECT_EQ(pidOf(60, "mixer-with-a-very-long-name"), 60) << "the executable is hidden";
  EXPECT_EQ(pidOf(70, "player"), 70);
  EXPECT_EQ(pidOf(50, "hen"), 0);
  EXPECT_EQ(pidOf(51, "fox"), 0) << "no such process";
  for (const int claimed : {0, -3}) EXPECT_EQ(pidOf(claimed, "fox"), 0);
}

TEST_F(PulseClientPidsTest, findsProcessesInSandboxes) {
  put(2, "kthreadd", "", "", "2129984");
  put(900, "fox", "/usr/lib/fox/fox", "900\t3");
  put(901, "hen", "/usr/bin/hen", "901\t2");
  put(902, "fox", "/usr/lib/fox/fox", "902\t7\t2");
  EXPECT_EQ(pidOf(2, "fox"), 902);
  EXPECT_EQ(pidOf(2, "hen"), 901);
  EXPECT_EQ(pidOf(4, "fox"), 0);
  EXPECT_EQ(pidOf(2, ""), 0) << "a kernel thread plays nothing";
}

TEST_F(PulseClientPidsTest, trustsThePeerUnlessItIsAProxy) {
  put(50, "fox", "/usr/bin/fox");
  PulseClient client{.index = 1, .claimedPid = 2, .claimedBinary = "fox", .peerPid = 50};
  EXPECT_EQ(pids.pid(client), 50);
  client = {.index = 2, .claimedPid = 50, .claimedBinary = "fox", .peerPid = 33, .isPeerProxy = true};
  EXPECT_EQ(pids.pid(client), 50);
  client = {.index = 3, .claimedPid = 50, .claimedBinary = "fox", .isOnOtherMachine = true};
  EXPECT_EQ(pids.pid(client), 0);
}

TEST_F(PulseClientPidsTest, cachesResultsPerClient) {
  const PulseClient client{.index = 1, .claimedPid = 50, .claimedBinary = "fox"};
  put(50, "fox", "/usr/bin/fox");
  EXPECT_EQ(pids.pid(client), 50);
  fs::remove_all(root / "proc/50");
  pids.retain({client});
  EXPECT_EQ(pids.pid(client), 50);
  EXPECT_EQ(pids.pid({.index = 1, .claimedPid = 50, .claimedBinary = "hen"}), 0) << "another claim";
  EXPECT_EQ(pids.pid(client), 0);
  put(50, "fox", "/usr/bin/fox");
  pids.retain({});
  EXPECT_EQ(pids.pid(client), 50);
}

}  // namespace
}  // namespace kestrune::platform
