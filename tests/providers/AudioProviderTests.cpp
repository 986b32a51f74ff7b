#include <gmock/gmock.h>

#include "providers/AudioProvider.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;
using platform::AudioDevice;
using platform::AudioTransport;
using testing::ElementsAre;

class AudioProviderTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  AudioSnapshot read() { return audioSnapshot(audio.next, applications); }
  std::vector<std::string> rows() {
    std::vector<std::string> result;
    for (const auto& row : read().activeProcesses) {
      result.push_back(row.id + "|" + row.name + (row.usesInput ? "|in" : "") +
                       (row.usesOutput ? "|out" : ""));
    }
    return result;
  }

  std::shared_ptr<AudioProvider> provider =
      std::make_shared<AudioProvider>(loop, AudioProvider::Services{audio, applications, *lane});
};

AudioDevice headset() {
  AudioDevice device{.id = 3, .name = "Headset", .transport = AudioTransport::usb, .sampleRate = 48000};
  device.output = {.hasStreams = true, .mainVolume = 0.5F, .isMuted = true, .bufferChannels = {2, 6}};
  device.input = {.hasStreams = true, .firstChannelVolume = 0.25F, .bufferChannels = {1}};
  return device;
}

TEST_F(AudioProviderTest, readsBeforeItSleepsAndNeverOverlaps) {
  provider->start(3s);
  EXPECT_EQ(audio.readings, 0);
  settle();
  EXPECT_EQ(audio.readings, 1);
  EXPECT_EQ(provider->history->size(), 1U);
  advance(9s);
  EXPECT_EQ(audio.readings, 4);
  holdsLane = true;
  advance(60s);
  EXPECT_EQ(lane->waiting(), 1U);
  holdsLane = false;
  settle();
  EXPECT_EQ(provider->history->size(), 5U);
  advance(2999ms);
  EXPECT_EQ(audio.readings, 5) << "the interval begins when the reading has ended";
  provider->paused = true;
  advance(30s);
  EXPECT_EQ(audio.readings, 5);
}

TEST_F(AudioProviderTest, mayBeDestroyedDuringAReading) {
  holdsLane = true;
  provider->start(3s);
  settle();
  provider.reset();
  lane->run();
  settle();
  EXPECT_EQ(loop.nextDeadline(), std::nullopt);
}

TEST_F(AudioProviderTest, devicesHaveFiguresForEachDirection) {
  AudioDevice nameless = headset();
  nameless.id = 4;
  nameless.name.reset();
  AudioDevice speaker{.id = 5, .name = "Sp\xFF", .transport = {}, .sampleRate = {}};
  speaker.output.hasStreams = true;
  audio.next = {.defaultOutput = 5, .defaultInput = 4, .devices = {headset(), nameless, speaker}};
  const AudioSnapshot now = read();
  const auto figures = [](const auto& device) {
    return std::tuple(device.volume, device.isMuted, device.channelCount);
  };
  ASSERT_EQ(now.allOutputDevices.size(), 2U);
  EXPECT_EQ(figures(now.allOutputDevices[0]), std::tuple(0.5F, true, 8));
  ASSERT_EQ(now.allInputDevices.size(), 1U);
  EXPECT_EQ(figures(now.allInputDevices[0]), std::tuple(0.25F, false, 1));
  ASSERT_TRUE(now.defaultOutput);
  EXPECT_EQ(now.defaultOutput->name, "Sp\uFFFD");
  EXPECT_EQ(now.defaultOutput->volume, -1.0F);
  EXPECT_FALSE(now.defaultInput) << "it has no name";
}

TEST_F(AudioProviderTest, groupsHelpersAndSkipsIdleClients) {
  applications.running[50] = {.bundleIdentifier = "org.browser", .localizedName = "Browser"};
  applications.running[51] = {.bundleIdentifier = "org.browser", .localizedName = "Helper"};
  audio.next.clients = {{.id = 1, .isRunningInput = true, .pid = 50},
                        {.id = 2, .isRunningOutput = true, .pid = 51},
                        {.id = 3, .pid = 10}};
  EXPECT_THAT(rows(), ElementsAre("org.browser|Browser|in|out"));
  EXPECT_EQ(read().activeProcesses[0].pid, 50);
}

TEST_F(AudioProviderTest, namesHaveFallbacks) {
  applications.running = {{1, {.bundleIdentifier = "org.located", .localizedName = ""}},
                          {2, {.bundleIdentifier = "org.vendor.web helper", .localizedName = ""}},
                          {3, {.bundleIdentifier = "ends.in.", .localizedName = ""}},
                          {6, {.bundleIdentifier = {}, .localizedName = "Plain"}}};
  applications.paths["org.located"] = "/opt/apps/Nice Player.desktop";
  applications.processNames[4] = "averyveryverylongname";
  for (const std::int32_t pid : {1, 2, 3, 4, 5, 6, 0}) {
    audio.next.clients.push_back(
        {.id = static_cast<std::uint32_t>(100 + pid), .isRunningOutput = true, .pid = pid});
  }
  EXPECT_THAT(rows(), ElementsAre("org.located|Nice Player|out", "proc-106|Plain|out",
                                  "proc-100|System Audio Process|out", "proc-105|System Audio Process|out",
                                  "org.vendor.web helper|Web Helper|out", "proc-104|averyveryverylon|out",
                                  "ends.in.|ends.in.|out"));
  EXPECT_EQ(read().activeProcesses[2].pid, std::nullopt);
}

}  // namespace
}  // namespace kestrune
