#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>

#include "platform/Application.h"
#include "platform/HistoryFolder.h"
#include "platform/Pasteboard.h"
#include "platform/Platform.h"
#include "platform/SystemFacts.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"
#include "support/ScriptedFolders.h"
#include "support/TestClock.h"

// A computer whose answers a test sets.
namespace kestrune::test {

template <class Key, class Value>
std::optional<Value> valueAt(const std::map<Key, Value>& map, const Key& key) {
  const auto entry = map.find(key);
  return entry == map.end() ? std::nullopt : std::optional(entry->second);
}

class ScriptedProcessors final : public platform::Processors {
 public:
  // Four processors that have not done anything yet; absent: the read fails.
  std::optional<std::vector<platform::ProcessorTicks>> ticks{std::in_place, 4};
  std::function<void()> onRead;  // called while the counters are read

  // Adds `total` ticks to each processor: `busy` of them user time, the rest idle.
  void pass(std::int32_t total, const std::vector<std::int32_t>& busy) {
    if (!ticks) ticks.emplace();
    ticks->resize(busy.size());
    for (std::size_t i = 0; i < busy.size(); ++i) {
      (*ticks)[i].user += busy[i];
      (*ticks)[i].idle += total - busy[i];
    }
  }

  std::optional<std::vector<platform::ProcessorTicks>> processorTicks() override {
    if (onRead) onRead();
    return ticks;
  }
};

class ScriptedChip final : public platform::Chip {
 public:
  std::string brandText = "Test Processor 9000";
  std::string modelText = "Test Machine";
  std::int32_t physical = 4;
  std::int32_t performance = 0;
  std::int32_t efficiency = 0;

  std::string brand() override { return brandText; }
  std::string machineModel() override { return modelText; }
  std::int32_t physicalCores() override { return physical; }
  std::int32_t performanceCores() override { return performance; }
  std::int32_t efficiencyCores() override { return efficiency; }
};

class ScriptedProcessTable final : public platform::ProcessTable {
 public:
  struct Figures {
    std::uint64_t residentBytes = 0;
    std::uint64_t userNanoseconds = 0;
    std::uint64_t systemNanoseconds = 0;
  };
  struct Process {
    std::string name;
    std::string path;
    Figures info;
  };
  std::map<std::int32_t, Process> processes;
  bool isReadable = true;
  int walks = 0;

  std::vector<platform::ProcessReading> readings() override {
    ++walks;
    std::vector<platform::ProcessReading> readings;
    if (!isReadable) return readings;
    for (const auto& [pid, process] : processes) {
      const auto& [resident, user, system] = process.info;
      readings.push_back({pid, process.name, process.path, resident, user, system});
    }
    return readings;
  }
};

class ScriptedEnvironment final : public platform::ProcessEnvironment {
 public:
  std::map<std::string, std::string> variables{{"HOME", "/home/test"}};

  bool isEmpty() override { return variables.empty(); }
  std::optional<std::string> variable(const std::string& name) override { return valueAt(variables, name); }
};

// Days of 24 hours in a zone without daylight saving.
class ScriptedCalendar final : public platform::Calendar {
 public:
  bool isOutOfRange = false;  // adding days yields nothing
  double hoursEast = 0;       // of UTC

  Date startOfDay(Date date) override { return {dayNumber(date, hoursEast) * 86400 - hoursEast * 3600}; }
  std::optional<Date> addingDays(Date date, int days) override {
    return isOutOfRange ? std::nullopt : std::optional(date + days * 86400.0);
  }
  int secondOfDay(Date date) override { return static_cast<int>(date - startOfDay(date)); }
  std::function<std::string(Date)> dayFormatter() override {
    return [east = hoursEast](Date date) {
      const std::chrono::sys_days first(std::chrono::year(2001) / 1 / 1);
      const std::chrono::year_month_day day(first +
                                            std::chrono::days(static_cast<int>(dayNumber(date, east))));
      std::array<char, 16> text{};
      std::snprintf(text.data(), text.size(), "%d-%02u-%02u", static_cast<int>(day.year()),
                    static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
      return std::string(text.data());
    };
  }

 private:
  // Counted from the first day of 2001.
  static double dayNumber(Date date, double hoursEast) {
    return std::floor((date.seconds + hoursEast * 3600) / 86400);
  }
};

class ScriptedHistoryFolder final : public platform::HistoryFolder {
 public:
  std::map<std::string, std::string> files;
  std::optional<std::string> failure;  // the error of each write
  std::vector<std::string> reads;      // the names, in order
  int writes = 0;                      // including failed ones

  std::optional<std::string> read(const std::string& name) override {
    reads.push_back(name);
    return valueAt(files, name);
  }
  bool exists(const std::string& name) override { return files.contains(name); }
  std::optional<std::string> write(const std::string& name, const std::string& content) override {
    ++writes;
    if (!failure) files[name] = content;
    return failure;
  }
};

class ScriptedSystemFacts final : public platform::SystemFacts {
 public:
  std::optional<std::int64_t> boot = 1700000000;

  std::optional<std::int64_t> bootTime() override { return boot; }
  std::string operatingSystemVersion() override { return "Test System 1"; }
  std::vector<std::string> languages() override { return {}; }
};

class ScriptedLoginItem final : public platform::LoginItem {
 public:
  bool enabled = false;
  std::optional<std::string> failure;  // of both operations

  bool isEnabled() override { return enabled; }
  std::optional<std::string> registerItem() override { return change(true); }
  std::optional<std::string> unregisterItem() override { return change(false); }

 private:
  std::optional<std::string> change(bool wanted) {
    if (!failure) enabled = wanted;
    return failure;
  }
};

class ScriptedPreferences final : public platform::PreferenceStorage {
 public:
  platform::PreferenceMap stored;

  platform::PreferenceMap load() override { return stored; }
  void store(const std::string& key, const platform::PreferenceValue& value) override { stored[key] = value; }
};

class ScriptedMemory final : public platform::Memory {
 public:
  std::optional<platform::MemoryUsage> used{std::in_place};
  std::optional<platform::SwapUsage> swap{std::in_place};
  std::optional<std::uint64_t> physical = 16ULL << 30U;

  std::optional<platform::MemoryUsage> usage() override { return used; }
  std::optional<platform::SwapUsage> swapUsage() override { return swap; }
  std::optional<std::uint64_t> physicalBytes() override { return physical; }
};

class ScriptedPowerSources final : public platform::PowerSources {
 public:
  std::optional<platform::PowerSource> source;
  std::optional<platform::BatteryRegistry> registry;

  std::optional<platform::PowerSource> powerSource() override { return source; }
  std::optional<platform::BatteryRegistry> battery() override { return registry; }
};

class ScriptedBlockStorage final : public platform::BlockStorage {
 public:
  std::optional<std::vector<platform::BlockDriver>> drivers{std::in_place};

  std::optional<std::vector<platform::BlockDriver>> blockDrivers() override { return drivers; }
};

class ScriptedVolumes final : public platform::Volumes {
 public:
  std::optional<std::string> rootName = "Test Disk";
  std::optional<platform::VolumeCapacity> rootCapacity = platform::VolumeCapacity{1000, 400};

  std::optional<std::string> name(const std::string& path) override {
    return path == "/" ? rootName : std::nullopt;
  }
  std::optional<platform::VolumeCapacity> capacity(const std::string& path) override {
    return path == "/" ? rootCapacity : std::nullopt;
  }
};

class ScriptedNetworkInterfaces final : public platform::NetworkInterfaces {
 public:
  std::optional<platform::InterfaceList> list{std::in_place};
  platform::InterfaceNaming names{.uncounted = {"docker"}, .wired = {"eth"}, .vpn = {"tun"}};

  // Adds an interface, or sets its counters.
  void setLink(const std::string& name, std::uint64_t received, std::uint64_t sent) {
    if (!list) list.emplace();
    auto link = std::ranges::find(list->links, name, &platform::LinkEntry::name);
    if (link == list->links.end()) link = list->links.insert(link, {.name = name, .counters = {}});
    link->counters = platform::LinkCounters{received, sent};
  }

  std::optional<std::vector<platform::LinkEntry>> links() override {
    return list ? std::optional(list->links) : std::nullopt;
  }
  std::optional<platform::InterfaceList> interfaces() override { return list; }
  const platform::InterfaceNaming& naming() const override { return names; }
};

class ScriptedWiFi final : public platform::WiFi {
 public:
  std::optional<platform::WiFiInterface> interface;
  std::vector<std::optional<std::string>> names;
  std::optional<std::string> foundName;  // by a search
  std::vector<std::string> searches;     // the interfaces, in order

  std::optional<platform::WiFiInterface> defaultInterface() override { return interface; }
  std::vector<std::optional<std::string>> interfaceNames() override { return names; }
  std::optional<std::string> findNetworkName(const std::string& interfaceName) override {
    searches.push_back(interfaceName);
    return foundName;
  }
};

class ScriptedLocation final : public platform::LocationPermission {
 public:
  platform::LocationAuthorization authorization = platform::LocationAuthorization::authorizedAlways;
  int requests = 0;
  std::function<void()> watcher;

  platform::LocationAuthorization status() override { return authorization; }
  void request() override { ++requests; }
  void setWatcher(std::function<void()> changed) override { watcher = std::move(changed); }
};

class ScriptedAudio final : public platform::AudioService {
 public:
  platform::AudioCensus next;
  int readings = 0;

  platform::AudioCensus census() override {
    ++readings;
    return next;
  }
};

class ScriptedApplications final : public platform::Applications {
 public:
  std::map<std::int32_t, platform::RunningApplication> running;
  std::map<std::string, std::string> paths;  // by bundle identifier
  std::map<std::int32_t, std::string> processNames;

  std::optional<platform::RunningApplication> runningApplication(std::int32_t pid) override {
    return valueAt(running, pid);
  }
  std::optional<std::string> applicationPath(const std::string& bundle) override {
    return valueAt(paths, bundle);
  }
  std::string processName(std::int32_t pid) override { return valueAt(processNames, pid).value_or(""); }
};

class ScriptedNotifications final : public platform::UserNotifications {
 public:
  // Answers come at the loop's next turn.
  explicit ScriptedNotifications(MainLoop& loop) : loop_(loop) {}

  platform::NotificationAuthorization status = platform::NotificationAuthorization::authorized;
  std::optional<platform::NotificationAuthorization> statusAfterRequest;  // absent: the same
  int requests = 0;
  std::optional<std::string> error;                    // the error of each delivery
  std::vector<platform::UserNotification> deliveries;  // including failed ones

  void authorizationStatus(std::function<void(platform::NotificationAuthorization)> answer) override {
    loop_.post([this, answer = std::move(answer)] { answer(status); });
  }
  void requestAuthorization(std::function<void()> done) override {
    ++requests;
    loop_.post([this, done = std::move(done)] {
      status = statusAfterRequest.value_or(status);
      done();
    });
  }
  void deliver(const platform::UserNotification& notification,
               std::function<void(std::optional<std::string> error)> done) override {
    deliveries.push_back(notification);
    loop_.post([error = error, done = std::move(done)] { done(error); });
  }

 private:
  MainLoop& loop_;
};

class ScriptedWorkspace final : public platform::Workspace {
 public:
  std::vector<std::string> opened;
  std::vector<platform::SettingsPanel> panels;

  void openSettings(platform::SettingsPanel panel) override { panels.push_back(panel); }
  void open(const platform::FileLocation& directory) override {
    opened.push_back("open " + directory.path());
  }
  void reveal(const platform::FileLocation& file) override { opened.push_back("reveal " + file.path()); }
};

class ScriptedPasteboard final : public platform::Pasteboard {
 public:
  std::string copied;

  void setText(const std::string& text) override { copied = text; }
};

class ScriptedApplication final : public platform::Application {
 public:
  std::vector<std::string> calls;

  void openNewInstance() override { calls.emplace_back("open"); }
  void terminate() override { calls.emplace_back("terminate"); }
};

// The whole computer, with the loop that the program runs on.
class ScriptedPlatform : public TestLoop {
 public:
  ScriptedCalendar calendar;
  ScriptedEnvironment environment;
  ScriptedPreferences preferences;
  ScriptedProcessors processors;
  ScriptedChip chip;
  std::shared_ptr<ScriptedProcessTable> processTable = std::make_shared<ScriptedProcessTable>();
  ScriptedMemory memory;
  ScriptedPowerSources powerSources;
  ScriptedBlockStorage blockStorage;
  ScriptedVolumes volumes;
  ScriptedNetworkInterfaces networkInterfaces;
  ScriptedWiFi wifi;
  ScriptedLocation location;
  ScriptedAudio audio;
  ScriptedApplications applications;
  ScriptedFolders folders;
  ScriptedHistoryFolder historyFolder;
  ScriptedSystemFacts systemFacts;
  ScriptedLoginItem loginItem;
  ScriptedNotifications notifications{loop};
  ScriptedWorkspace workspace;
  const platform::Platform platform{.clock = clock,
                                    .calendar = calendar,
                                    .environment = environment,
                                    .preferences = preferences,
                                    .processors = processors,
                                    .chip = chip,
                                    .processTable = processTable,
                                    .processLane = lane,
                                    .memory = memory,
                                    .powerSources = powerSources,
                                    .blockStorage = blockStorage,
                                    .volumes = volumes,
                                    .networkInterfaces = networkInterfaces,
                                    .wifi = wifi,
                                    .location = location,
                                    .connectionLane = lane,
                                    .audio = audio,
                                    .applications = applications,
                                    .audioLane = lane,
                                    .folders = folders,
                                    .folderLane = lane,
                                    .facts = systemFacts,
                                    .loginItem = loginItem,
                                    .historyFolder = historyFolder,
                                    .notifications = notifications,
                                    .workspace = workspace};
};

}  // namespace kestrune::test
