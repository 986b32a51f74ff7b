#include <algorithm>
#include <chrono>

#include <gmock/gmock.h>

#include "PulseStream.h"
#include "SoundServer.h"
#include "platform/linux/audio/LinuxAudioService.h"

namespace kestrune::platform {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::eventually;
using test::PulseStream;
using testing::ElementsAre;
using testing::FloatNear;
using testing::Optional;

std::size_t openDescriptors() {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

const AudioDevice* find(const AudioCensus& census, const std::string& name) {
  const auto found = std::ranges::find(census.devices, name, &AudioDevice::name);
  return found == census.devices.end() ? nullptr : &*found;
}

std::uint32_t idOf(const AudioCensus& census, const std::string& name) {
  const AudioDevice* device = find(census, name);
  return device == nullptr ? 0 : device->id;
}

// What the clients of one process are doing, as letters: (r)ecording, (p)laying.
std::string uses(const AudioCensus& census, pid_t pid) {
  const auto isAny = [&](auto isRunning) {
    return std::ranges::any_of(census.clients,
                               [=](const auto& client) { return client.pid == pid && client.*isRunning; });
  };
  return std::string(isAny(&AudioClient::isRunningInput) ? "r" : "") +
         (isAny(&AudioClient::isRunningOutput) ? "p" : "");
}

auto ownClients(const AudioCensus& census) {
  return std::ranges::count(census.clients, getpid(), &AudioClient::pid);
}

// A server with the sinks "Front" (the default) and "Rear" and the source "Mic".
class AudioServiceTest : public testing::TestWithParam<test::SoundServer::Kind> {
 protected:
  void SetUp() override {
    startServer();
    ASSERT_TRUE(isComplete());
  }

  void startServer() {
    server.start();
    frontNumber = server.addSink("front", "Front", 48000, 2);
    server.addSink("rear", "Rear", 44100, 6);
    server.addSource("mic", "Mic");
    server.control("set-default-sink front");
    server.control("set-default-source mic");
  }

  bool becomes(const std::function<bool(const AudioCensus&)>& condition) {
    return eventually([&] { return condition(service.census()); });
  }
  bool isComplete() {
    return becomes([](const AudioCensus& census) {
      const auto front = idOf(census, "Front");
      const auto mic = idOf(census, "Mic");
      return front != 0 && mic != 0 && find(census, "Rear") != nullptr && census.defaultOutput == front &&
             census.defaultInput == mic;
    });
  }
  bool isUsing(pid_t pid, const std::string& expected) {
    return becomes([&](const AudioCensus& census) { return uses(census, pid) == expected; });
  }

  test::SoundServer server{GetParam()};
  std::string frontNumber;
  LinuxAudioService service;
};

TEST_P(AudioServiceTest, listsDevices) {
  const AudioCensus census = service.census();
  const AudioDevice front = *find(census, "Front");
  EXPECT_EQ(front.transport, AudioTransport::virtual_);
  EXPECT_EQ(front.sampleRate, 48000.0);
  EXPECT_TRUE(front.output.hasStreams);
  EXPECT_THAT(front.output.mainVolume, Optional(FloatNear(1, 0.001F)));
  EXPECT_THAT(front.output.isMuted, Optional(false));
  EXPECT_THAT(front.output.bufferChannels, ElementsAre(2));
  EXPECT_FALSE(front.input.hasStreams);
  const AudioDevice mic = *find(census, "Mic");
  EXPECT_TRUE(mic.input.hasStreams);
  EXPECT_FALSE(mic.output.hasStreams);
  EXPECT_THAT(mic.input.bufferChannels, ElementsAre(1));
}

TEST_P(AudioServiceTest, followsVolumeMuteAndDefaults) {
  const auto id = idOf(service.census(), "Front");
  const auto volumeBecomes = [&](const std::string& device, float volume) {
    return becomes([&](const AudioCensus& census) {
      const AudioDevice* found = find(census, device);
      const auto shown = found->output.hasStreams ? found->output.mainVolume : found->input.mainVolume;
      return shown && std::abs(*shown - volume) < 0.006F;
    });
  };
  server.control("set-sink-volume front 30% 70%");
  EXPECT_TRUE(volumeBecomes("Front", 0.7F)) << "the loudest channel";
  server.control("set-sink-volume front 150%");
  EXPECT_TRUE(volumeBecomes("Front", 1));
  server.control("set-source-volume mic 20%");
  EXPECT_TRUE(volumeBecomes("Mic", 0.2F));
  server.control("set-sink-mute front 1");
  EXPECT_TRUE(becomes([](const auto& census) { return find(census, "Front")->output.isMuted == true; }));
  server.control("set-default-sink rear");
  EXPECT_TRUE(becomes([](const auto& census) { return census.defaultOutput == idOf(census, "Rear"); }));
  server.control("set-default-source front.monitor");
  EXPECT_TRUE(becomes([](const auto& census) { return census.defaultInput == 0; }));
  EXPECT_EQ(idOf(service.census(), "Front"), id) << "ids don't change";
}

TEST_P(AudioServiceTest, dropsUnpluggedDevices) {
  const auto player = server.play("front");
  ASSERT_TRUE(isUsing(player->pid(), "p"));
  server.control("unload-module " + frontNumber);
  EXPECT_TRUE(becomes([](const auto& census) {
    return find(census, "Front") == nullptr && census.defaultOutput == idOf(census, "Rear");
  }));
}

TEST_P(AudioServiceTest, reportsWhoPlaysAndRecords) {
  auto player = server.play("rear");
  EXPECT_TRUE(isUsing(player->pid(), "p"));
  const auto recorder = server.record("mic");
  EXPECT_TRUE(isUsing(recorder->pid(), "r"));
  EXPECT_EQ(uses(service.census(), player->pid()), "p");
  EXPECT_EQ(uses(service.census(), getpid()), "");

  const pid_t ended = player->pid();
  player.reset();
  EXPECT_TRUE(becomes([&](const auto& census) {
    return std::ranges::find(census.clients, ended, &AudioClient::pid) == census.clients.end();
  }));
  EXPECT_EQ(uses(service.census(), recorder->pid()), "r");
}

TEST_P(AudioServiceTest, corkedStreamsAreNotRunning) {
  PulseStream playback(PulseStream::Kind::playback, "front");
  EXPECT_TRUE(isUsing(getpid(), "p"));
  PulseStream recording(PulseStream::Kind::recording, "mic");
  EXPECT_TRUE(isUsing(getpid(), "rp"));
  playback.cork(true);
  EXPECT_TRUE(isUsing(getpid(), "r"));
  recording.cork(true);
  EXPECT_TRUE(isUsing(getpid(), ""));
  playback.cork(false);
  EXPECT_TRUE(isUsing(getpid(), "p"));
}

TEST_P(AudioServiceTest, levelMetersAndMonitorsUseNoInput) {
  const PulseStream meter(PulseStream::Kind::levelMeter, "mic");
  const auto ofSink = server.record("front.monitor");
  // Once the server lists a later stream it also lists these two.
  const auto recorder = server.record("mic");
  ASSERT_TRUE(isUsing(recorder->pid(), "r"));
  ASSERT_TRUE(
      eventually([&] { return std::ranges::count(server.control("list short source-outputs"), '\n') == 2; }));
  const AudioCensus census = service.census();
  EXPECT_EQ(uses(census, getpid()), "");
  EXPECT_EQ(uses(census, ofSink->pid()), "");
}

TEST_P(AudioServiceTest, reconnectsToARestartedServer) {
  const std::size_t descriptors = openDescriptors();
  for (int round = 0; round < 2; ++round) {
    server.kill();
    const AudioCensus none = service.census();
    EXPECT_TRUE(none.devices.empty() && none.clients.empty());
    EXPECT_EQ(none.defaultOutput, 0U);
    EXPECT_LT(openDescriptors(), descriptors);
    startServer();
    EXPECT_TRUE(isComplete());
  }
  server.kill();
  startServer();
  EXPECT_FALSE(service.census().devices.empty()) << "no census has noticed the loss before";
  EXPECT_EQ(openDescriptors(), descriptors);
  EXPECT_EQ(ownClients(service.census()), 1);
}

TEST_P(AudioServiceTest, timesOutWhileTheServerHangs) {
  LinuxAudioService hasty("/", 30ms);
  ASSERT_TRUE(eventually([&] { return !hasty.census().devices.empty(); }));
  const std::size_t descriptors = openDescriptors();
  server.process().stop();
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 40; ++i) {
    EXPECT_TRUE(hasty.census().devices.empty());
    EXPECT_LE(openDescriptors(), descriptors);
  }
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, 30ms);
  EXPECT_LT(took, 40 * 30ms + 2s);

  server.process().resume();
  EXPECT_TRUE(eventually([&] { return !hasty.census().devices.empty(); }));
  EXPECT_EQ(openDescriptors(), descriptors);
  // Of `service` and `hasty`; abandoned connections are closed.
  EXPECT_TRUE(eventually([&] { return ownClients(hasty.census()) == 2; }));
}

INSTANTIATE_TEST_SUITE_P(PulseAudio, AudioServiceTest, testing::Values(test::SoundServer::Kind::pulseAudio));
INSTANTIATE_TEST_SUITE_P(PipeWire, AudioServiceTest, testing::Values(test::SoundServer::Kind::pipeWire));

TEST(AudioServiceWithoutServer, isEmptyAtOnceAndStartsNone) {
  const test::PrivateSession session;
  LinuxAudioService service;
  service.census();
  const std::size_t descriptors = openDescriptors();
  for (int i = 0; i < 50; ++i) {
    const AudioCensus census = service.census();
    ASSERT_TRUE(census.devices.empty() && census.clients.empty());
  }
  EXPECT_EQ(openDescriptors(), descriptors);
  EXPECT_FALSE(fs::exists(session.runtimeFolder() + "/pulse/native"));
}

}  // namespace
}  // namespace kestrune::platform
