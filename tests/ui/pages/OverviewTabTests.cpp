#include "ui/ViewFixture.h"
#include "ui/pages/overview/OverviewTab.h"

namespace kestrune::ui {
namespace {

using testing::HasSubstr;

class OverviewTabTest : public test::ViewFixture {
 protected:
  template <class Provider, class Snapshot>
  static std::function<void()> publish(Provider& provider, const Snapshot& now) {
    return [&provider, now] { provider->current.set(now); };
  }
};

TEST_F(OverviewTabTest, leadsThroughTheDays) {
  keepDay(1, test::sampleDay());
  auto views = tab<OverviewTab>();
  views.press("(chevron.left)");
  EXPECT_TRUE(views.hasText("Yesterday"));
  views.press("(chevron.right)");
  EXPECT_TRUE(views.hasText("Collecting…"));
  views.press("(chevron.left)");
  views.press("Live");
  EXPECT_TRUE(views.hasText("Collecting…"));
}

TEST_F(OverviewTabTest, aPastDayCanBeNarrowedToOneNetwork) {
  keepDay(1, test::sampleDay());
  auto other = test::sampleDay();
  other.networkSSIDs = {{"Ethernet", {}}};
  keepDay(2, other);
  auto views = tab<OverviewTab>();
  views.press("(chevron.left)");
  views.chooseMenuItem("Home");
  EXPECT_THAT(transcriptOf(views), HasSubstr("{All Networks|---|*Home|Ethernet}"));
  EXPECT_THAT(transcriptOf(views), HasSubstr("(wifi):accent Home\n(arrow.up) 1 MB / Sent 2 MB"));
  views.press("(chevron.left)");
  EXPECT_THAT(transcriptOf(views), HasSubstr("{*All Networks|Ethernet}"));
  EXPECT_THAT(transcriptOf(views), HasSubstr("(cable.connector):accent Ethernet"));
  views.press("(chevron.right)");
  EXPECT_TRUE(views.hasText("Multiple Networks")) << "the choice is forgotten";
}

TEST_F(OverviewTabTest, cardsFollowTheirFigures) {
  context();
  const auto disk = [this](std::uint64_t used) {
    return publish(env->disk, DiskSnapshot{.volumeTotalBytes = 100, .volumeUsedBytes = used});
  };
  const auto battery = [this](const BatterySnapshot& now) { return publish(env->battery, now); };
  const auto network = [this](const NetworkSnapshot& now) { return publish(env->network, now); };
  const auto audio = [this](const AudioSnapshot& now) { return publish(env->audio, now); };
  const auto up = [this](std::int64_t minutes) {
    const double boot = computer.clock.now().seconds + unixTimeOfReferenceDate;
    return
        [this, boot, minutes] { computer.systemFacts.boot = static_cast<std::int64_t>(boot) - minutes * 60; };
  };
  const AudioSnapshot::Device muted{.name = "Speaker", .volume = 0.5F, .isMuted = true};
  expectStates<OverviewTab>({
      {disk(69), "o0.69:accent"},
      {disk(70), "o0.7:orange"},
      {disk(87), "o0.87:orange"},
      {disk(88), "o0.88:red"},
      {battery({.percent = 19}), "=0.19:red"},
      {battery({.percent = 20}), "=0.2:good"},
      {battery({.isCharging = true}), "(battery.75percent) Battery (bolt.fill):good"},
      {up(59), "Uptime / 59m"},
      {up(61), "Uptime\n1h\n1m"},
      {up(1440), "Uptime\n1d\n0h 0m"},
      {network({.ssid = "Home", .interfaceName = "Wi-Fi"}), "Wi-Fi / Home\n"},
      {network({.interfaceName = "Wi-Fi", .needsLocation = true}),
       "Wi-Fi / <(location.slash):orange Allow location for Wi-Fi name:orange>"},
      {network({.interfaceName = "Ethernet", .ipAddress = "10.0.0.9"}),
       "(cable.connector):accent Ethernet / 10.0.0.9"},
      {audio({}),
       "(speaker.slash.fill):accent OUTPUT / None (mic.fill) INPUT / None (waveform) ACTIVE / No "
       "audio at this moment."},
      {audio({.defaultOutput = muted}), "(speaker.slash.fill):red OUTPUT / Speaker Muted:red"},
      {audio({.activeProcesses = {{.name = "A"}}}), "ACTIVE / A"},
      {audio({.activeProcesses = {{.name = "A"}, {.name = "B"}, {.name = "C"}}}),
       "ACTIVE / 3 apps using audio"},
      {[this] { computer.advance(std::chrono::seconds(8)); }, "Collecting…"},
      {[this] { computer.advance(std::chrono::seconds(1)); }, "Last 10 s"},
  });
}

}  // namespace
}  // namespace kestrune::ui
