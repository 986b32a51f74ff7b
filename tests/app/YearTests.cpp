#include <gmock/gmock.h>
#include <malloc.h>

#include "alerts/AlertsMonitor.h"
#include "history/DayFile.h"
#include "history/HistoryRecorder.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// The sanitizers' allocators don't count.
constexpr bool countsAllocations = false;
#else
constexpr bool countsAllocations = true;
#endif

constexpr int days = 365;
constexpr std::uint64_t gibibyte = 1073741824;

// Keeps of each file only what a check needs, so that a year of them takes no memory worth the name.
class CountingDayFiles final : public platform::DayFileStorage {
 public:
  std::map<std::string, int> writes;  // by name
  std::string lastName;
  std::string lastContent;
  std::function<void(const std::string& name, const std::string& content)> onNewName;

  std::optional<std::string> read(const std::string&) override { return std::nullopt; }
  bool exists(const std::string&) override { return false; }
  std::optional<std::string> write(const std::string& name, const std::string& content) override {
    if (name != lastName && !lastName.empty() && onNewName) onNewName(lastName, lastContent);
    ++writes[name];
    lastName = name;
    lastContent = content;
    return std::nullopt;
  }
};

// A year of recording and alerting, with samplers that show what the test says.
class YearTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  YearTest() {
    clock.setWall(calendar.startOfDay(clock.now()));
    notifications.status = platform::NotificationAuthorization::authorized;
    store.set("alerts.network.enabled", true);
  }
  void SetUp() override {
    alerts->refreshAuthorization();
    settle();
    recorder->start(
        {.cpu = cpu, .memory = memoryProvider, .battery = battery, .network = network, .disk = disk});
    alerts->start(cpu, memoryProvider, disk, recorder);
  }

  // What is shown during one hour: busier by day than at night, with something new every few days.
  void show(int day, int hour) {
    cpu->current.modify([&](CPUSnapshot& snapshot) {
      snapshot.usagePercent = hour;
      snapshot.coreUsages = {1.0 * hour};
      snapshot.topProcesses = {
          {.id = 1, .name = "editor", .executablePath = {}, .cpuPercent = 2, .memoryBytes = 1000},
          {.id = 2, .name = "day " + std::to_string(day % 40), .executablePath = {}, .cpuPercent = 1}};
    });
    network->current.modify([&](NetworkSnapshot& snapshot) {
      snapshot.downloadBytesPerSec = 100;
      snapshot.interfaceName = "Ethernet";
    });
    disk->current.modify([&](DiskSnapshot& snapshot) {
      snapshot.volumeTotalBytes = 100;
      // On every tenth day nearly full, from noon to four.
      snapshot.volumeUsedBytes = day % 10 == 0 && hour >= 12 && hour < 16 ? 95 : 50;
    });
    // Twice a month the memory is short for an hour.
    memoryProvider->current.modify([&](MemorySnapshot& snapshot) {
      snapshot.pressure = day % 15 == 0 && hour == 9 ? MemorySnapshot::MemoryPressure::warning
                                                     : MemorySnapshot::MemoryPressure::nominal;
    });
  }

  std::map<std::string, int> deliveriesByIdentifier() const {
    std::map<std::string, int> counts;
    for (const auto& delivery : notifications.deliveries) ++counts[delivery.identifier];
    return counts;
  }

  CountingDayFiles files;
  Preferences store{preferences};
  Catalogue texts;
  LocaleFormats formats{"en_US"};
  DayFiles dayFilesOfYear{files, calendar};
  std::shared_ptr<ProcessScanCache> scans = std::make_shared<ProcessScanCache>(clock, processTable, *lane);
  std::shared_ptr<CPUProvider> cpu = std::make_shared<CPUProvider>(loop, processors, chip, scans);
  std::shared_ptr<MemoryProvider> memoryProvider = std::make_shared<MemoryProvider>(loop, memory, scans);
  std::shared_ptr<BatteryProvider> battery = std::make_shared<BatteryProvider>(loop, powerSources);
  std::shared_ptr<DiskProvider> disk = std::make_shared<DiskProvider>(loop, blockStorage, volumes);
  std::shared_ptr<NetworkProvider> network = std::make_shared<NetworkProvider>(
      loop, NetworkProvider::Services{networkInterfaces, tools, wifi, location, *lane});
  std::shared_ptr<HistoryRecorder> recorder = std::make_shared<HistoryRecorder>(
      loop, HistoryRecorder::Services{calendar, systemFacts, dayFilesOfYear});
  std::shared_ptr<AlertsMonitor> alerts = std::make_shared<AlertsMonitor>(
      loop, AlertsMonitor::Services{store, notifications, workspace, calendar, texts, formats});
};

TEST_F(YearTest, leavesAWholeFileForEachDayAndAlertsWhenDue) {
  int wholeDays = 0;
  files.onNewName = [&](const std::string& name, const std::string& content) {
    const auto day = decodeDay(content);
    ASSERT_TRUE(day) << name;
    // The tick at midnight belongs to the new day, so the first day of all lacks one.
    const bool isFirst = wholeDays++ == 0;
    ASSERT_EQ(day->hours.size(), 24U) << name;
    for (std::size_t hour = 0; hour < 24; ++hour) {
      const std::int64_t ticks = isFirst && hour == 0 ? 59 : 60;
      const BucketStat& bucket = day->hours[hour].cpu;
      ASSERT_EQ(bucket.count, ticks) << name << " " << hour;
      ASSERT_EQ(bucket.peak, hour == 0 ? 0 : static_cast<double>(hour)) << name << " " << hour;
      ASSERT_EQ(day->hours[hour].networkDownBytes, 6000.0 * static_cast<double>(ticks));
    }
    ASSERT_EQ(day->processes.at("editor").cpuCount, isFirst ? 1439 : 1440);
    ASSERT_EQ(day->networkSSIDs.at("Ethernet").downloadBytes, isFirst ? 6000.0 * 1439 : 6000.0 * 1440);
  };

  std::optional<std::size_t> allocated;
  for (int day = 0; day < days; ++day) {
    for (int hour = 0; hour < 24; ++hour) {
      show(day, hour);
      // What is shown in an hour holds from its first tick on, which comes at the full hour.
      advance(day == 0 && hour == 0 ? 1h - 1s : 1h);
    }
    if (day == 60) allocated = mallinfo2().uordblks;
  }
  advance(2s);
  files.onNewName(files.lastName, files.lastContent);

  EXPECT_EQ(wholeDays, days);
  EXPECT_EQ(files.writes.size(), static_cast<std::size_t>(days));
  EXPECT_EQ(files.writes.begin()->second, 144) << "every tenth tick, and as the day is over";
  EXPECT_EQ(deliveriesByIdentifier(),
            (std::map<std::string, int>{{"disk-low", 37 * 4}, {"memory-pressure", 25}}));
  if (countsAllocations) {
    const auto grown = static_cast<double>(mallinfo2().uordblks) - static_cast<double>(*allocated);
    EXPECT_LT(grown, 300000.0) << "what the test itself counts, and no more";
  }
}

TEST_F(YearTest, aLoadThatStaysHighAlertsEveryHalfMinuteAndATrafficLimitOnceADay) {
  show(1, 1);
  cpu->current.modify([](CPUSnapshot& snapshot) {
    snapshot.usagePercent = 80;
    snapshot.coreUsages = {90, 70};
  });
  network->current.modify([](NetworkSnapshot& snapshot) {
    snapshot.downloadBytesPerSec = static_cast<double>(gibibyte) / 60;  // a gigabyte a minute
  });
  advance(10min);
  const auto counts = deliveriesByIdentifier();
  // The first evaluation sees the load at 5 s, so it fires at 35 s and then every 30 s.
  EXPECT_EQ(counts.at("cpu-high"), 19);
  EXPECT_EQ(counts.at("cpu-core-pinned"), 29);
  EXPECT_EQ(counts.at("network-daily"), 1);
  advance(24h);
  EXPECT_EQ(deliveriesByIdentifier().at("network-daily"), 2);
}

}  // namespace
}  // namespace kestrune
