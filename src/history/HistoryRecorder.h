#pragma once

#include <memory>

#include "history/DailySummary.h"
#include "history/DayFiles.h"
#include "platform/Calendar.h"
#include "platform/SystemFacts.h"
#include "providers/BatteryProvider.h"
#include "providers/CPUProvider.h"
#include "providers/DiskProvider.h"
#include "providers/MemoryProvider.h"
#include "providers/NetworkProvider.h"
#include "runtime/Task.h"

namespace kestrune {

// Adds the current figures of the samplers to the record of the day once a minute, and saves the record at
// every tenth tick and when the day is over. Never deletes anything. Main thread only.
class HistoryRecorder : public std::enable_shared_from_this<HistoryRecorder> {
 public:
  struct Services {
    platform::Calendar& calendar;
    platform::SystemFacts& facts;
    DayFiles& files;
  };
  struct Sources {
    std::shared_ptr<CPUProvider> cpu;
    std::shared_ptr<MemoryProvider> memory;
    std::shared_ptr<BatteryProvider> battery;
    std::shared_ptr<NetworkProvider> network;
    std::shared_ptr<DiskProvider> disk;
  };

  // Continues today's file if it can be read. Loop and services must outlive the recorder.
  HistoryRecorder(MainLoop& loop, const Services& services);
  // Stops recording; saves nothing.
  ~HistoryRecorder();
  HistoryRecorder(const HistoryRecorder&) = delete;
  HistoryRecorder& operator=(const HistoryRecorder&) = delete;

  // The first tick comes a minute later.
  void start(const Sources& sources);
  // Writes a record to the file of its day. A failure is reported in one line on standard output.
  void save(const DailySummary& summary);

  // The day's record, as of the last tick. Not observable.
  DailySummary current;

 private:
  static Task record(MainLoop& loop, std::weak_ptr<HistoryRecorder> recorder, Sources sources);
  void tick(const Sources& sources);
  HourBucket& bucketOf(std::int64_t hour);
  void addNetwork(const NetworkSnapshot& network);
  void addProcesses(const CPUSnapshot& cpu);
  void noteLatest(const Sources& sources, Date now);
  bool isSaveMoment() const;

  MainLoop& loop_;
  Services services_;
  Task task_;
  Date dayStart_;
};

}  // namespace kestrune
