// What the history costs the main thread: adding each minute, saving every ten minutes, loading past days.
// The storage is in memory, so no figure includes waiting for a disk; loading also reads real files.
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "FullDay.h"
#include "Measure.h"
#include "history/DailySummaryJson.h"
#include "history/HistoryRecorder.h"
#include "platform/linux/user/LinuxHistoryFolder.h"
#include "support/ScriptedPlatform.h"
#include "support/TemporaryFolder.h"

namespace kestrune {
namespace {

std::string nameOf(int day) {
  return "2026-" + std::to_string(10 + day / 28) + "-" + std::to_string(10 + day % 28) + ".json";
}

void encodeFullDay(benchmark::State& state) {
  const DailySummary day = fullDay({800000000});
  for (auto _ : state) benchmark::DoNotOptimize(encodeDay(day));
  state.counters["bytes"] = static_cast<double>(encodeDay(day).text.size());
}
BENCHMARK(encodeFullDay)->Unit(benchmark::kMicrosecond);

void decodeFullDay(benchmark::State& state) {
  const std::string text = encodeDay(fullDay({800000000})).text;
  for (auto _ : state) benchmark::DoNotOptimize(decodeDay(text));
}
BENCHMARK(decodeFullDay)->Unit(benchmark::kMicrosecond);

// A quarter of a year, from files in the page cache.
void load89FullDays(benchmark::State& state) {
  const test::TemporaryFolder folder;
  platform::LinuxHistoryFolder storage(folder.path());
  constexpr int days = 89;
  for (int i = 0; i < days; ++i) storage.write(nameOf(i), encodeDay(fullDay({86400.0 * i})).text);
  for (auto _ : state) {
    std::vector<DailySummary> loaded;
    for (int i = 0; i < days; ++i) {
      const auto text = storage.read(nameOf(i));
      auto day = text ? decodeDay(*text) : std::nullopt;
      if (!day) return state.SkipWithError("a day is missing");
      loaded.push_back(*std::move(day));
    }
    benchmark::DoNotOptimize(loaded);
  }
}
BENCHMARK(load89FullDays)->Unit(benchmark::kMillisecond);

// Adds a minute with the eight busiest processes. Every tenth minute saves and isn't measured.
void foldOfAMinute(benchmark::State& state) {
  test::ScriptedPlatform machine;
  machine.holdsLane = true;
  const auto scans = std::make_shared<ProcessScanCache>(machine.clock, machine.processTable, *machine.lane);
  const HistoryRecorder::Sources sources{
      std::make_shared<CPUProvider>(machine.loop, machine.processors, machine.chip, scans),
      std::make_shared<MemoryProvider>(machine.loop, machine.memory, scans),
      std::make_shared<BatteryProvider>(machine.loop, machine.powerSources),
      std::make_shared<NetworkProvider>(
          machine.loop, NetworkProvider::Services{machine.networkInterfaces, machine.wifi, machine.location,
                                                  *machine.lane}),
      std::make_shared<DiskProvider>(machine.loop, machine.blockStorage, machine.volumes)};
  CPUSnapshot cpu;
  for (int i = 0; i < 8; ++i) {
    cpu.topProcesses.push_back({.id = i, .name = "some-application-" + std::to_string(i * 50)});
  }
  sources.cpu->current.set(cpu);

  DailySummary day = fullDay(machine.calendar.startOfDay(machine.clock.now()));
  machine.historyFolder.files["2026-05-09.json"] = encodeDay(day).text;
  DayFiles files(machine.historyFolder, machine.calendar);
  const auto recorder = std::make_shared<HistoryRecorder>(
      machine.loop, HistoryRecorder::Services{machine.calendar, machine.systemFacts, files});
  if (recorder->current.hours.size() != 24) return state.SkipWithError("the day was not loaded");
  recorder->start(sources);
  machine.settle();
  const auto passMinute = [&] {
    machine.clock.setContinuous(machine.clock.continuousNow() + std::chrono::seconds(60));
    return bench::secondsOf([&] { machine.loop.run(); });
  };
  int minute = 0;
  for (auto _ : state) {
    if (++minute % 10 == 0) {
      passMinute();
      ++minute;
    }
    state.SetIterationTime(passMinute());
  }
}
BENCHMARK(foldOfAMinute)->Unit(benchmark::kMicrosecond)->UseManualTime();

}  // namespace
}  // namespace kestrune
