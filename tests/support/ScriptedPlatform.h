#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "support/TestClock.h"

// A computer that does what a test tells it.
namespace kestrune::test {

class ScriptedProcessors final : public platform::Processors {
 public:
  // Four processors that have not done anything yet; absent: the read fails.
  std::optional<std::vector<platform::ProcessorTicks>> ticks{std::in_place, 4};
  std::function<void()> onRead;  // what happens while the counters are read, where a test says so

  // Adds so many ticks to each processor: `busy` of them user time, the rest idle.
  void pass(std::int32_t total, const std::vector<std::int32_t>& busy);

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
  struct Process {
    std::string name;
    std::string path;
    platform::TaskInfo info;
    bool isReadable = true;  // false: gone, or not ours to look at
  };
  std::map<std::int32_t, Process> processes;
  bool isReadable = true;
  std::optional<std::vector<std::int32_t>>
      listed;                         // the ids as they are listed; absent: all, in ascending order
  std::optional<std::int32_t> count;  // what the count says; absent: as many as are listed
  std::function<void()> onTaskInfo;   // what happens while one process is looked at
  int walks = 0;                      // how often the list of ids was asked for

  std::int32_t processCount() override;
  std::int32_t listPids(std::span<std::int32_t> pids) override;
  std::optional<platform::TaskInfo> taskInfo(std::int32_t pid) override;
  std::string name(std::int32_t pid) override { return processes.at(pid).name; }
  std::string executablePath(std::int32_t pid) override { return processes.at(pid).path; }

 private:
  std::vector<std::int32_t> ids() const;
};

class ScriptedEnvironment final : public platform::ProcessEnvironment {
 public:
  std::map<std::string, std::string> variables{{"HOME", "/home/test"}};

  bool isEmpty() override { return variables.empty(); }
  std::optional<std::string> variable(const std::string& name) override;
};

// Days of 24 hours that begin at midnight UTC.
class ScriptedCalendar final : public platform::Calendar {
 public:
  bool isOutOfRange = false;  // adding days yields nothing

  Date startOfDay(Date date) override;
  std::optional<Date> addingDays(Date date, int days) override;
};

class ScriptedPreferences final : public platform::PreferenceStorage {
 public:
  platform::PreferenceMap stored;

  platform::PreferenceMap load() override { return stored; }
  void store(const std::string& key, const platform::PreferenceValue& value) override { stored[key] = value; }
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
  const platform::Platform platform{clock,      calendar, environment,  preferences,
                                    processors, chip,     processTable, lane};
};

}  // namespace kestrune::test
