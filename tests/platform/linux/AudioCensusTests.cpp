#include <filesystem>

#include <gmock/gmock.h>

#include "TemporaryFolder.h"
#include "platform/linux/AudioCensusMapping.h"
#include "platform/linux/PulseClientPids.h"

namespace kestrune::linux_platform {
namespace {

namespace fs = std::filesystem;
using platform::AudioCensus;
using platform::AudioTransport;
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

PulseDevice monitor(std::uint32_t index, const std::string& name) {
  PulseDevice result = device(index, name);
  result.isMonitor = true;
  return result;
}

std::vector<std::uint32_t> idsOf(const AudioCensus& census) {
  std::vector<std::uint32_t> ids;
  ids.reserve(census.devices.size());
  for (const auto& each : census.devices) ids.push_back(each.id);
  return ids;
}

TEST(AudioCensus, idsAreNeverZeroAndNeverMeet) {
  PulseFacts facts;
  facts.sinks = {device(0, "a"), device(1, "b"), device(0x7FFFFFFE, "c"), device(0x7FFFFFFF, "beyond")};
  facts.sources = {device(0, "d"), device(1, "e"), device(0x7FFFFFFE, "f"), device(0xFFFFFFFE, "beyond")};
  EXPECT_THAT(idsOf(censusOf(facts)), ElementsAre(1, 3, 0xFFFFFFFD, 2, 4, 0xFFFFFFFE));

  facts.clients = {{.index = 0}, {.index = 0xFFFFFFFE}, {.index = noPulseIndex}};
  const auto clients = censusOf(facts).clients;
  ASSERT_EQ(clients.size(), 2U);
  EXPECT_EQ(clients[0].id, 1U);
  EXPECT_EQ(clients[1].id, 0xFFFFFFFFU);
}

TEST(AudioCensus, defaultsAreDevicesThatAreListed) {
  PulseFacts facts;
  facts.sinks = {device(4, "a"), device(5, "b"), device(6, "")};
  facts.sources = {monitor(4, "a.monitor"), device(5, "mic")};
  facts.defaultSink = "b";
  facts.defaultSource = "mic";
  EXPECT_EQ(censusOf(facts).defaultOutput, 11U);
  EXPECT_EQ(censusOf(facts).defaultInput, 12U);
  facts.defaultSource = "a.monitor";
  EXPECT_EQ(censusOf(facts).defaultInput, 0U) << "no input";
  EXPECT_EQ(idsOf(censusOf(facts)).size(), 4U);
  for (const char* name : {"gone", ""}) {
    facts.defaultSink = name;
    EXPECT_EQ(censusOf(facts).defaultOutput, 0U) << name;
  }
}

TEST(AudioCensus, describesDevices) {
  PulseFacts facts;
  PulseDevice sink = device(0, "sink");
  sink.volume = fullPulseVolume / 4;
  sink.isMuted = true;
  sink.sampleRate = 44100;
  PulseDevice amplified = device(1, "amplified");
  amplified.volume = 2 * fullPulseVolume;
  PulseDevice odd = device(2, "odd");
  odd.channels = 0;
  odd.description = "";
  facts.sinks = {sink, amplified, odd};
  facts.sources = {device(0, "source")};

  const auto devices = censusOf(facts).devices;
  EXPECT_EQ(devices[0].name, "The sink");
  EXPECT_EQ(devices[0].sampleRate, 44100.0);
  EXPECT_EQ(devices[0].output.mainVolume, 0.25F);
  EXPECT_EQ(devices[0].output.isMuted, true);
  EXPECT_THAT(devices[0].output.bufferChannels, ElementsAre(2));
  EXPECT_FALSE(devices[0].input.hasStreams);
  EXPECT_EQ(devices[1].output.mainVolume, 1.0F);
  EXPECT_EQ(devices[2].name, "odd");
  EXPECT_EQ(devices[2].output.mainVolume, std::nullopt);
  EXPECT_EQ(devices[2].sampleRate, std::nullopt);
  EXPECT_TRUE(devices[3].input.hasStreams);
  EXPECT_FALSE(devices[3].output.hasStreams);
}

TEST(AudioCensus, aClientRunsWhileAStreamOfItsOwnDoes) {
  PulseFacts facts;
  facts.sources = {device(7, "mic"), monitor(8, "sink.monitor")};
  facts.clients = {{.index = 1}, {.index = 2}, {.index = 3}, {.index = 4}};
  facts.playing = {{.client = 1, .device = 0, .isCorked = true},
                   {.client = 1, .device = 0, .isCorked = false},
                   {.client = 2, .device = 0, .isCorked = true},
                   {.client = noPulseIndex, .device = 0}};
  facts.recording = {{.client = 2, .device = 7},
                     {.client = 3, .device = 8},
                     {.client = 3, .device = 7, .isCorked = true},
                     {.client = 4, .device = 7, .isLevelMeter = true},
                     {.client = noPulseIndex, .device = 7}};
  std::string uses;
  for (const auto& client : censusOf(facts).clients) {
    uses += client.isRunningOutput ? "p" : "-";
    uses += client.isRunningInput ? "r " : "- ";
  }
  EXPECT_EQ(uses, "p- -r -- -- ");
}

AudioTransport transport(const std::function<void(PulseDevice&)>& change) {
  PulseDevice sink = device(0, "alsa_output.platform-sound.stereo-fallback");
  sink.api = "alsa";
  sink.isHardware = true;
  change(sink);
  return audioTransport(sink);
}

TEST(AudioTransport, isWhatTheServerSays) {
  EXPECT_EQ(transport([](auto&) {}), AudioTransport::unknown);
  EXPECT_EQ(transport([](auto& it) { it.formFactor = "internal"; }), AudioTransport::builtIn);
  EXPECT_EQ(transport([](auto& it) { it.bus = "pci"; }), AudioTransport::builtIn);
  EXPECT_EQ(transport([](auto& it) { it.bus = "usb"; }), AudioTransport::usb);
  EXPECT_EQ(transport([](auto& it) { it.name = "alsa_output.pci-0000_00_1f.3.analog-stereo"; }),
            AudioTransport::builtIn);
  EXPECT_EQ(transport([](auto& it) { it.name = "alsa_input.usb-Maker_Model-00.mono"; }), AudioTransport::usb);
  EXPECT_EQ(transport([](auto& it) {
              it.name = "alsa_input.usb-Maker_Model-00.mono";
              it.bus = "firewire";
            }),
            AudioTransport::unknown)
      << "a name is only a hint";
}

TEST(AudioTransport, knowsDisplaysByTheSocketInUse) {
  const auto onPci = [](const std::function<void(PulseDevice&)>& change) {
    return transport([&](auto& it) {
      it.bus = "pci";
      change(it);
    });
  };
  EXPECT_EQ(onPci([](auto& it) { it.isPortHdmi = true; }), AudioTransport::hdmi);
  EXPECT_EQ(onPci([](auto& it) { it.portName = "hdmi-output-0"; }), AudioTransport::hdmi);
  EXPECT_EQ(onPci([](auto& it) { it.name = "alsa_output.pci-0000_01_00.1.hdmi-stereo"; }),
            AudioTransport::hdmi);
  EXPECT_EQ(onPci([](auto& it) { it.portDescription = "HDMI / DisplayPort 2"; }), AudioTransport::hdmi);
  EXPECT_EQ(onPci([](auto& it) {
              it.isPortHdmi = true;
              it.portDescription = "DisplayPort 1 Output";
            }),
            AudioTransport::displayPort);
}

TEST(AudioTransport, knowsWhatIsFarAwayOrNoDeviceAtAll) {
  EXPECT_EQ(transport([](auto& it) { it.bus = "bluetooth"; }), AudioTransport::bluetooth);
  EXPECT_EQ(transport([](auto& it) {
              it.api = "bluez5";
              it.bluetoothProfile = "a2dp-sink";
            }),
            AudioTransport::bluetooth);
  EXPECT_EQ(transport([](auto& it) {
              it.api = "bluez5";
              it.bluetoothProfile = "bap-sink";
            }),
            AudioTransport::bluetoothLE);
  const auto software = [](const std::string& name, const std::string& driver) {
    PulseDevice sink = device(0, name);
    sink.driver = driver;
    return audioTransport(sink);
  };
  EXPECT_EQ(software("raop_sink.Kitchen.local", "PipeWire"), AudioTransport::airPlay);
  EXPECT_EQ(software("kitchen", "module-raop-sink.c"), AudioTransport::airPlay);
  EXPECT_EQ(software("auto_null", "module-null-sink.c"), AudioTransport::virtual_);
  EXPECT_EQ(software("my_hdmi_mix", "PipeWire"), AudioTransport::virtual_);
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
    fs::remove(root / (folder + "/exe"));
    if (!executable.empty()) fs::create_symlink(executable, root / (folder + "/exe"));
  }
  std::int32_t pidOf(std::int32_t claimed, const std::string& binary) {
    pids.forgetAll();
    return pids.pid({.index = 1, .claimedPid = claimed, .claimedBinary = binary});
  }

  test::TemporaryFolder root;
  PulseClientPids pids{root.path()};
};

TEST_F(PulseClientPidsTest, believesAClaimThatFits) {
  put(50, "Web Content", "/usr/lib/fox/fox");
  put(60, "mixer-with-a-ve", "");
  put(70, "player", "/usr/bin/player (deleted)");
  EXPECT_EQ(pidOf(50, "fox"), 50);
  EXPECT_EQ(pidOf(50, ""), 50);
  EXPECT_EQ(pidOf(60, "mixer-with-a-very-long-name"), 60) << "the executable is hidden";
  EXPECT_EQ(pidOf(70, "player"), 70);
  EXPECT_EQ(pidOf(70, "player (deleted)"), 70);
  EXPECT_EQ(pidOf(50, "hen"), 0);
  EXPECT_EQ(pidOf(51, "fox"), 0) << "no such process";
  EXPECT_EQ(pidOf(51, ""), 0);
  for (const int claimed : {0, -3}) EXPECT_EQ(pidOf(claimed, "fox"), 0);
}

TEST_F(PulseClientPidsTest, findsTheProcessInItsSandbox) {
  put(2, "kthreadd", "", "", "2129984");
  put(900, "fox", "/usr/lib/fox/fox", "900\t3");
  put(901, "hen", "/usr/bin/hen", "901\t2");
  put(902, "fox", "/usr/lib/fox/fox", "902\t7\t2");
  EXPECT_EQ(pidOf(2, "fox"), 902);
  EXPECT_EQ(pidOf(2, "hen"), 901);
  EXPECT_EQ(pidOf(4, "fox"), 0);
  EXPECT_EQ(pidOf(2, ""), 0) << "a thread of the kernel plays nothing";
}

TEST_F(PulseClientPidsTest, trustsTheKernelButNoServerBetween) {
  put(50, "fox", "/usr/bin/fox");
  PulseClient client{.index = 1, .claimedPid = 2, .claimedBinary = "fox", .peerPid = 50};
  EXPECT_EQ(pids.pid(client), 50);
  client = {.index = 2, .claimedPid = 50, .claimedBinary = "fox", .peerPid = 33, .hasForeignPeer = true};
  EXPECT_EQ(pids.pid(client), 50);
  client = {.index = 3, .claimedPid = 50, .claimedBinary = "fox", .isOnOtherMachine = true};
  EXPECT_EQ(pids.pid(client), 0);
}

TEST_F(PulseClientPidsTest, keepsWhatItFoundWhileTheClientIsThere) {
  const PulseClient client{.index = 1, .claimedPid = 50, .claimedBinary = "fox"};
  put(50, "fox", "/usr/bin/fox");
  EXPECT_EQ(pids.pid(client), 50);
  fs::remove_all(root / "proc/50");
  pids.keepOnly({client});
  EXPECT_EQ(pids.pid(client), 50);
  EXPECT_EQ(pids.pid({.index = 1, .claimedPid = 50, .claimedBinary = "hen"}), 0) << "another one";
  EXPECT_EQ(pids.pid(client), 0);
  put(50, "fox", "/usr/bin/fox");
  pids.keepOnly({});
  EXPECT_EQ(pids.pid(client), 50);
}

TEST(InnermostPid, isTheLastOfSeveral) {
  EXPECT_EQ(innermostPid("Name:\tx\nNSpid:\t10\t3\nNSpgid:\t1\t2\n"), 3);
  EXPECT_EQ(innermostPid("Name:\tx\nNSpid:\t10\n"), 0);
  for (const char* text : {"", "NSpid:\t", "Name:\tx\nNSpid:\t10\tx", "Name:\tx\nNSpid:\t10\t"}) {
    EXPECT_EQ(innermostPid(text), 0) << text;
  }
}

}  // namespace
}  // namespace kestrune::linux_platform
