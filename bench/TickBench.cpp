// What a second of sampling costs: the main thread's share of a tick, and the computation after a process
// scan.
#include <chrono>
#include <string>

#include <benchmark/benchmark.h>

#include "Measure.h"
#include "providers/CPUProvider.h"
#include "providers/ProcessLoads.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

std::string longPath(std::int32_t pid) {
  return "/usr/lib/some-application/some-application-" + std::to_string(pid);
}

// Everything that the main thread does for a tick, including the start and the end of every third tick's
// scan.
void tickOnTheMainThread(benchmark::State& state) {
  test::ScriptedPlatform machine;
  machine.holdsLane = true;
  const auto processorCount = static_cast<std::size_t>(state.range(0));
  machine.processors.ticks.emplace(processorCount);
  for (std::int32_t pid = 1; pid <= 300; ++pid) {
    machine.processTable->processes[pid] = {"process " + std::to_string(pid), longPath(pid), {}};
  }
  const auto provider = std::make_shared<CPUProvider>(
      machine.loop, machine.processors, machine.chip,
      std::make_shared<ProcessScanCache>(machine.clock, machine.processTable, *machine.lane));

  const std::vector<std::int32_t> busy(processorCount, 40);
  int ticks = 0;
  for (auto _ : state) {
    // Before the sum overflows.
    if (++ticks % 10000 == 0) machine.processors.ticks->assign(processorCount, {});
    machine.processors.pass(100, busy);
    machine.clock.setContinuous(machine.clock.continuousNow() + std::chrono::seconds(1));
    for (auto& [pid, process] : machine.processTable->processes) {
      process.info.userNanoseconds += static_cast<std::uint64_t>(pid) * 1000000;
    }

    const double submitting = bench::secondsOf([&] {
      provider->tick();
      machine.settle();
    });
    machine.lane->run();
    const double delivering = bench::secondsOf([&] { machine.settle(); });
    state.SetIterationTime(submitting + delivering);
  }
}
BENCHMARK(tickOnTheMainThread)->Arg(16)->Arg(256)->UseManualTime();

// From the entries of a walk to the busiest processes. Every tenth process has used CPU since the last scan.
void computingOfAScan(benchmark::State& state) {
  const auto count = static_cast<std::int32_t>(state.range(0));
  std::vector<ProcessEntry> entries;
  ProcessTicks previous;
  for (std::int32_t pid = 1; pid <= count; ++pid) {
    const std::uint64_t used = pid % 10 == 0 ? static_cast<std::uint64_t>(pid) * 1000000 : 0;
    entries.push_back({.pid = pid,
                       .name = "process " + std::to_string(pid),
                       .executablePath = longPath(pid),
                       .memoryBytes = 1 << 20,
                       .tickUser = used,
                       .tickSys = used});
    previous[pid] = {};
  }
  for (auto _ : state) {
    auto loads = processLoads(entries, previous, Date{3});
    benchmark::DoNotOptimize(loads);
  }
  state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(computingOfAScan)->Arg(300)->Arg(2000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kestrune
