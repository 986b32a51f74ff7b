// What one redraw of the CPU page costs, at 1 Hz with everything on it changed.

#include <random>

#include <QApplication>
#include <benchmark/benchmark.h>

#include "app/AppEnvironment.h"
#include "support/ScriptedPlatform.h"
#include "texts/Catalogue.h"
#include "ui/CPUTab.h"
#include "ui/qt/Theme.h"
#include "ui/qt/ViewHost.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

// A window with the CPU page of a scripted computer whose load moves at every tick.
class Page {
 public:
  explicit Page(std::size_t processors) : busy_(processors) {
    computer_.chip.performance = static_cast<std::int32_t>(processors / 2);
    computer_.chip.efficiency = static_cast<std::int32_t>(processors - processors / 2);
    for (std::int32_t pid = 1; pid <= 8; ++pid) {
      computer_.processTable->processes[pid] = {
          "process " + std::to_string(pid), "/usr/bin/process", {}, true};
    }
    for (int second = 0; second < 70; ++second) tick();
    host_.resize(1100, 1100);
    host_.show();
    QApplication::processEvents();
  }

  // A second of the computer's life; what it changes waits for the next frame.
  void tick() {
    for (auto& load : busy_) load = static_cast<std::int32_t>(random_() % 100);
    computer_.processors.pass(100, busy_);
    for (auto& [pid, process] : computer_.processTable->processes) {
      process.info.userNanoseconds += random_() % 1000000000;
      process.info.residentBytes = (random_() % 4096) << 20U;
    }
    computer_.advance(1s);
  }
  void evaluateAndArrange() { host_.flush(); }
  void paint() { QApplication::processEvents(); }
  ui::CPUTab& tab() { return *tab_; }

 private:
  std::mt19937 random_{1};
  std::vector<std::int32_t> busy_;
  test::ScriptedPlatform computer_;
  Preferences preferences_{computer_.preferences};
  NotificationCenter notifications_;
  LocaleFormats formats_{"en_US"};
  Catalogue catalogue_;
  AppEnvironment env_{computer_.loop, computer_.platform, {preferences_, catalogue_, formats_}};
  std::shared_ptr<ui::CPUTab> tab_ = std::make_shared<ui::CPUTab>(ui::ViewContext{
      computer_.loop, env_, preferences_, notifications_, formats_, computer_.workspace, false});
  ui::qt::Theme theme_{catalogue_};
  ui::qt::ViewHost host_{computer_.loop, theme_, ui::component<ui::CPUTab>([tab = tab_] { return tab; })};
};

void evaluateCpuPage(benchmark::State& state) {
  Page page(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(page.tab().body());
}
BENCHMARK(evaluateCpuPage)->Arg(16)->Arg(256)->Unit(benchmark::kMillisecond);

void redrawCpuPageWithoutPainting(benchmark::State& state) {
  Page page(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    page.paint();
    page.tick();
    state.ResumeTiming();
    page.evaluateAndArrange();
  }
}
BENCHMARK(redrawCpuPageWithoutPainting)->Arg(16)->Arg(256)->Unit(benchmark::kMillisecond);

void redrawCpuPage(benchmark::State& state) {
  Page page(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    page.tick();
    state.ResumeTiming();
    page.evaluateAndArrange();
    page.paint();
  }
}
BENCHMARK(redrawCpuPage)->Arg(16)->Arg(256)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kestrune
