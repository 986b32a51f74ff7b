#include <gmock/gmock.h>

#include "ui/AudioTab.h"
#include "ui/StatusColors.h"
#include "ui/ViewFixture.h"

namespace kestrune::ui {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;
using Device = AudioSnapshot::Device;

class AudioTabTest : public test::ViewFixture {
 protected:
  test::MountedViews showing(const AudioSnapshot& audio) {
    context();
    env->audio->current.set(audio);
    return tab<AudioTab>();
  }
};

TEST_F(AudioTabTest, beforeTheFirstReadingThereIsNothing) {
  EXPECT_THAT(this->tab<AudioTab>().texts(),
              ElementsAre("Using Audio Now", "No apps are currently playing audio or using the microphone.",
                          "Available Devices"));
}

TEST_F(AudioTabTest, showsTheDefaultDevices) {
  const Device speaker{.id = 1,
                       .name = "Speaker",
                       .transport = Device::TransportKind::usb,
                       .volume = 0.5F,
                       .isMuted = true,
                       .sampleRate = 44100,
                       .channelCount = 2};
  const Device microphone{.id = 2, .name = "Microphone", .sampleRate = 800, .channelCount = 6};
  const auto tab = showing({.defaultOutput = speaker,
                            .defaultInput = microphone,
                            .allOutputDevices = {speaker},
                            .allInputDevices = {microphone, {.id = 3, .name = "Line", .channelCount = 1}}});
  EXPECT_THAT(tab.texts(),
              ElementsAre("Output", "Speaker", "Volume", "Muted", "Sample Rate", "44.1 kHz", "Channels",
                          "Stereo", "Connection", "USB",  //
                          "Input", "Microphone", "Sample Rate", "800 Hz", "Channels", "6 ch", "Connection",
                          "Unknown",  //
                          "Using Audio Now", "No apps are currently playing audio or using the microphone.",
                          "Available Devices",                                   //
                          "Output", "Speaker", "Default", "44.1 kHz", "Stereo",  //
                          "Input", "Microphone", "Default", "800 Hz", "6 ch",    //
                          "Line", "—", "Mono"));
  EXPECT_THAT(tab.symbols(), ElementsAre("speaker.slash.fill", "speaker.wave.2", "speaker.slash",
                                         "cable.connector", "speaker.wave.2", "speaker.wave.2"));
  const auto* bar = tab.kind<BarContent>().front().view->as<BarContent>();
  EXPECT_EQ(bar->fraction, 0.5);
  EXPECT_EQ(bar->fill.role, statusCriticalColor.role);
}

TEST_F(AudioTabTest, listsWhoUsesSound) {
  const auto tab =
      showing({.activeProcesses = {
                   {.id = "a", .name = "Call", .usesInput = true, .usesOutput = true},
                   {.id = "b", .name = "Player", .usesOutput = true, .iconName = "org.example.Player"}}});
  EXPECT_THAT(tab.texts(), ElementsAre("Using Audio Now", "Call", "Mic", "Playback", "Player", "Playback",
                                       "Available Devices"));
  const auto icons = tab.kind<IconContent>();
  ASSERT_EQ(icons.size(), 2U);
  EXPECT_EQ(*icons[0].view->as<IconContent>(), (IconContent{"", "app.dashed"}));
  EXPECT_EQ(icons[1].view->as<IconContent>()->name, "org.example.Player");
}

}  // namespace
}  // namespace kestrune::ui
