#include "ui/ViewFixture.h"
#include "ui/pages/AudioTab.h"
#include "ui/pages/CPUTab.h"
#include "ui/pages/DiskTab.h"
#include "ui/pages/MemoryTab.h"
#include "ui/pages/NetworkTab.h"
#include "ui/pages/PowerTab.h"
#include "ui/pages/overview/OverviewTab.h"

namespace kestrune::ui {
namespace {

using testing::HasSubstr;
using testing::Not;

// The pages that show one metric, in the states that the sample leaves out.
class MetricTabTest : public test::ViewFixture {
 protected:
  MetricTabTest() { context(); }

  // The heights of the front line of the chart in a frame of height 60.
  static std::vector<double> points(const test::MountedViews& tab) {
    for (const auto* shown : tab.kind<FrameContent>()) {
      if (shown->as<FrameContent>()->height.fixed != 60) continue;
      if (const auto* chart = shown->children.front().as<LineChartContent>())
        return chart->lines.back().heights;
    }
    ADD_FAILURE() << "no such chart";
    return {0};
  }
  // Each choice shows that many of the newest samples.
  template <class Tab>
  void expectRanges(const std::vector<std::pair<const char*, std::size_t>>& ranges) {
    auto tab = this->tab<Tab>();
    for (const auto& [segment, samples] : ranges) {
      tab.choose(segment);
      EXPECT_NEAR(points(tab).front(), 1 - static_cast<double>(samples) / 86400, 1e-4) << segment;
      EXPECT_THAT(transcriptOf(tab), HasSubstr(std::string("*") + segment));
    }
  }
};

TEST_F(MetricTabTest, eachRangeShowsItsSamples) {
  HistoryRing<double> percentages(86400);
  for (int i = 1; i <= 86400; ++i) percentages.append({{}, i / 864.0});
  for (auto* history : {&env->cpu->usageHistory, &env->memory->usageHistory, &env->network->downloadHistory,
                        &env->network->uploadHistory})
    history->set(percentages);
  expectRanges<CPUTab>(
      {{"60s", 60}, {"5m", 300}, {"10m", 600}, {"1h", 3600}, {"12h", 43200}, {"24h", 86400}});
  expectRanges<MemoryTab>({{"5m", 150}, {"10m", 300}, {"1h", 1800}, {"12h", 21600}, {"24h", 43200}});
  expectRanges<NetworkTab>({{"60s", 60}, {"5m", 300}, {"1h", 3600}, {"12h", 43200}, {"24h", 86400}});
  auto network = tab<NetworkTab>();
  network.choose("12h");
  EXPECT_THAT(transcriptOf(network), HasSubstr("\n12h ago Now\n"));
}

TEST_F(MetricTabTest, memoryFollowsItsPressure) {
  using enum MemorySnapshot::MemoryPressure;
  auto& memory = env->memory->current;
  const auto overfull =
      becomes(memory, {.usedBytes = 3ULL << 30U, .totalBytes = 2ULL << 30U, .pressure = critical});
  expectStates<MemoryTab>({{overfull, "\n=1:red\n(gauge.medium) Pressure ●:red critical"},
                           {overfull, "Swap Used None"},
                           {overfull, "Free =0:good -1.0 GB"},
                           {becomes(memory, {.usedBytes = 1, .totalBytes = 8}),
                            "\n=0.125:primary\n(gauge.medium) Pressure ●:primary nom"}});
}

TEST_F(MetricTabTest, aVolumeOfNothingIsAnEmptyBar) {
  expectStates<DiskTab>({{becomes(env->disk->current, {}), "\n=0:accent"}});
}

TEST_F(MetricTabTest, theConnectionShowsWhatIsKnown) {
  auto& network = env->network->current;
  const auto nameless = becomes(network, {.interfaceName = "Wi-Fi", .needsLocation = true});
  expectStates<NetworkTab>(
      {{becomes(network, {.interfaceName = "Ethernet", .ipAddress = "10.0.0.9"}),
        "(cable.connector):accent Ethernet / (number) 10.0.0.9"},
       {becomes(network, {.interfaceName = "Not connected"}), "(wifi.slash):accent Not connected"},
       {becomes(network, NetworkSnapshot::empty()), "Detecting…"},
       {nameless,
        "(wifi):accent Wi-Fi <(location.slash):orange Allow location for Wi-Fi "
        "name:orange> / <(arrow.clockwise) Reload>"},
       {nameless, "No network activity recorded yet today"},
       {nameless, "No active interfaces"}});
  tab<NetworkTab>().press("Allow location for Wi-Fi name");
  EXPECT_THAT(computer.workspace.panels, testing::ElementsAre(platform::SettingsPanel::location));
}

TEST_F(MetricTabTest, networksOfTodayCanBeFiltered) {
  showSample();
  auto& today = env->recorder->current.networkSSIDs;
  auto views = tab<NetworkTab>();
  const auto after = [&](auto change) {
    change();
    env->network->current.modify([](auto&) {});
    views.update();
    return transcriptOf(views);
  };
  const auto filtered = after([&] { views.chooseMenuItem("Home"); });
  EXPECT_THAT(filtered, HasSubstr("{All|Ethernet|*Home} Home"));
  EXPECT_THAT(filtered, HasSubstr("(wifi) Home 18 MB 19 MB"));
  EXPECT_THAT(filtered, Not(HasSubstr("21 MB")));
  today["Other"] = {};
  EXPECT_THAT(after([&] { today.erase("Home"); }), HasSubstr("21 MB")) << "the chosen network is gone";
  EXPECT_THAT(after([&] { today.erase("Other"); }), Not(HasSubstr("{All"))) << "nothing to choose from";
}

TEST_F(MetricTabTest, soundShowsWhatIsSilent) {
  showSample();
  env->audio->current.modify([](AudioSnapshot& audio) {
    audio.defaultOutput->isMuted = true;
    audio.defaultInput->sampleRate = 800;
    audio.defaultInput->channelCount = 4;
    audio.activeProcesses.clear();
  });
  const auto nothing = [] {};
  expectStates<AudioTab>(
      {{nothing, "\n(speaker.slash.fill):red Speaker\nVolume / =0.379:red Muted Sample Rate"},
       {nothing, "Sample Rate / 800 Hz Channels / 4 ch Connection / USB"},
       {nothing, "(speaker.slash) No apps are currently playing audio or using the microphone."}});
}

TEST_F(MetricTabTest, thePowerFollowsTheCharge) {
  auto& battery = env->battery->current;
  expectStates<PowerTab>({
      {becomes(battery, {.percent = 75}), "(battery.100percent) 75%"},
      {becomes(battery, {.percent = 74}), "(battery.75percent) 74%"},
      {becomes(battery, {.percent = 50}), "(battery.75percent) 50%"},
      {becomes(battery, {.percent = 49}), "(battery.50percent) 49%"},
      {becomes(battery, {.percent = 25}), "(battery.50percent) 25%"},
      {becomes(battery, {.percent = 24}), "(battery.25percent) 24%"},
      {becomes(battery, {.percent = 20}), "(battery.25percent) 20%"},
      {becomes(battery, {.percent = 19}), "(battery.25percent):red 19%\n"},
      {becomes(battery, {.percent = 5, .isCharging = true}), "(battery.100percent.bolt):good 5%"},
      {becomes(battery, {.percent = 99, .isFullyCharged = true}),
       "(battery.100percent):good 99%\nFully charged\n=0.99:good"},
      {becomes(battery, {.isFullyCharged = true}), "Power Source / Fully Charged"},
      {becomes(battery, {.isCharging = true}), "Power Source / Charging"},
      {becomes(battery, {.isCharging = true, .voltageMV = 10000, .amperageMa = 2500}), "\nCharging 25.0 W"},
      {becomes(battery, {}), "\nCalculating…\n"},
      {becomes(battery, {.condition = BatteryCondition::poor}), "Condition Poor:red"},
      {becomes(battery, {.condition = BatteryCondition::good}), "Condition Good:good"},
  });
  battery.set({.voltageMV = 12000});
  for (const char* absent : {"Draw", "Temp", "Capacity"})
    EXPECT_THAT(page<PowerTab>(), Not(HasSubstr(absent)));
}

TEST_F(MetricTabTest, healthIsAChartOnceItMoves) {
  const auto keepHealth = [this](int ago, std::int64_t percent) {
    keepDay(ago, {.batteryHealthPercent = percent});
  };
  keepHealth(2, 93);
  keepHealth(7, 91);
  keepHealth(8, 50);
  keepHealth(3, 0);
  keepDayFile(4, "damaged");
  EXPECT_THAT(page<PowerTab>(), HasSubstr("Health trend (7 days)\n~0 1:green \"93%\" «Battery health over "
                                          "the past 7 days»\n7 days ago Today"));
  env->recorder->current.batteryHealthPercent = 92;
  keepHealth(7, 92);
  const auto stable = page<PowerTab>();
  EXPECT_THAT(stable, HasSubstr("(checkmark.circle.fill):green Stable at 92% / No measurable change"));
  EXPECT_THAT(stable, Not(HasSubstr("7 days ago")));
}

using OverviewTabTest = test::ViewFixture;

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
    return becomes(env->disk->current, {.volumeTotalBytes = 100, .volumeUsedBytes = used});
  };
  auto& battery = env->battery->current;
  auto& network = env->network->current;
  auto& audio = env->audio->current;
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
      {becomes(env->memory->current, {.pressure = MemorySnapshot::MemoryPressure::critical}),
       "  ·  critical"},
      {becomes(battery, {.percent = 19}), "=0.19:red"},
      {becomes(battery, {.percent = 20}), "=0.2:good"},
      {becomes(battery, {.isCharging = true}), "(battery.75percent) Battery (bolt.fill):good"},
      {up(59), "Uptime / 59m"},
      {up(61), "Uptime\n1h\n1m"},
      {up(1440), "Uptime\n1d\n0h 0m"},
      {becomes(network, {.ssid = "Home", .interfaceName = "Wi-Fi"}), "Wi-Fi / Home\n"},
      {becomes(network, {.interfaceName = "Wi-Fi", .needsLocation = true}),
       "Wi-Fi / <(location.slash):orange Allow location for Wi-Fi name:orange>"},
      {becomes(network, {.interfaceName = "Ethernet", .ipAddress = "10.0.0.9"}),
       "(cable.connector):accent Ethernet / 10.0.0.9"},
      {becomes(audio, {}),
       "(speaker.slash.fill):accent OUTPUT / None (mic.fill) INPUT / None (waveform) ACTIVE / No "
       "audio at this moment."},
      {becomes(audio, {.defaultOutput = muted}), "(speaker.slash.fill):red OUTPUT / Speaker Muted:red"},
      {becomes(audio, {.activeProcesses = {{.name = "A"}}}), "ACTIVE / A"},
      {becomes(audio, {.activeProcesses = {{.name = "A"}, {.name = "B"}, {.name = "C"}}}),
       "ACTIVE / 3 apps using audio"},
      {[this] { computer.advance(std::chrono::seconds(8)); }, "Collecting…"},
      {[this] { computer.advance(std::chrono::seconds(1)); }, "Last 10 s"},
  });
}

}  // namespace
}  // namespace kestrune::ui
