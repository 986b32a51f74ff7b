// What one redraw of a page costs after everything on it has changed.

#include <random>

#include <QApplication>
#include <benchmark/benchmark.h>

#include "FullDay.h"
#include "app/AppEnvironment.h"
#include "history/DailySummaryJson.h"
#include "support/ScriptedPlatform.h"
#include "texts/Catalogue.h"
#include "ui/pages/CPUTab.h"
#include "ui/pages/DiskTab.h"
#include "ui/pages/FolderTab.h"
#include "ui/pages/MemoryTab.h"
#include "ui/pages/NetworkTab.h"
#include "ui/pages/StatsTab.h"
#include "ui/pages/overview/OverviewTab.h"
#include "ui/qt/Popover.h"
#include "ui/qt/mount/ViewHost.h"
#include "ui/qt/theme/Theme.h"
#include "ui/window/MainWindowView.h"

namespace kestrune {
namespace {

using namespace std::chrono_literals;

// A window with one page of a scripted machine whose figures change every tick.
template <class Tab>
struct Page {
  std::mt19937 random{1};
  std::vector<std::int32_t> busy;
  std::uint64_t received = 0;
  test::ScriptedPlatform computer;
  Preferences preferences{computer.preferences};
  NotificationCenter notifications;
  LocaleFormats formats{"en_US"};
  Catalogue catalogue;
  AppEnvironment env{computer.loop, computer.platform, {preferences, catalogue, formats}};
  test::ScriptedApplication application;
  test::ScriptedPasteboard pasteboard;
  ui::Shell shell{application, computer.loginItem, pasteboard, "en", "1", "1"};
  ui::ViewContext context{computer.loop,      env,   preferences, notifications, formats,
                          computer.workspace, shell, false};
  std::shared_ptr<Tab> tab = std::make_shared<Tab>(context);
  ui::qt::Theme theme{catalogue};
  ui::qt::ViewHost host{computer.loop, theme, ui::component<Tab>([tab = tab] { return tab; })};

  explicit Page(std::size_t processors = 16) : busy(processors) {
    computer.chip.performance = static_cast<std::int32_t>(processors / 2);
    computer.chip.efficiency = static_cast<std::int32_t>(processors - processors / 2);
    for (std::int32_t pid = 1; pid <= 8; ++pid) {
      computer.processTable->processes[pid] = {"process " + std::to_string(pid), "/usr/bin/process", {}};
    }
    for (int second = 0; second < 70; ++second) tick();
    host.resize(1100, 1100);
    host.show();
    QApplication::processEvents();
  }

  // One second on the machine. The redraw is left to the next frame.
  void tick() {
    for (auto& load : busy) load = static_cast<std::int32_t>(random() % 100);
    computer.processors.pass(100, busy);
    for (auto& [pid, process] : computer.processTable->processes) {
      process.info.userNanoseconds += random() % 1000000000;
      process.info.residentBytes = (random() % 4096) << 20U;
    }
    received += random() % 100000000;
    computer.networkInterfaces.setLink("en0", received, received / 3);
    computer.memory.used->activeBytes = (100000 + random() % 1000000) * 4096;
    computer.advance(1s);
  }
  void paint() { QApplication::processEvents(); }
};

template <class Tab>
void redraw(benchmark::State& state, Page<Tab>& page) {
  for (auto _ : state) {
    state.PauseTiming();
    page.tick();
    state.ResumeTiming();
    page.host.flush();
    page.paint();
  }
}

void evaluateCpuPage(benchmark::State& state) {
  Page<ui::CPUTab> page(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(page.tab->body());
}
BENCHMARK(evaluateCpuPage)->Arg(16)->Arg(256)->Unit(benchmark::kMillisecond);

void redrawCpuPageWithoutPainting(benchmark::State& state) {
  Page<ui::CPUTab> page(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    page.paint();
    page.tick();
    state.ResumeTiming();
    page.host.flush();
  }
}
BENCHMARK(redrawCpuPageWithoutPainting)->Arg(16)->Arg(256)->Unit(benchmark::kMillisecond);

void redrawCpuPage(benchmark::State& state) {
  Page<ui::CPUTab> page(static_cast<std::size_t>(state.range(0)));
  redraw(state, page);
}
BENCHMARK(redrawCpuPage)->Arg(16)->Arg(256)->Unit(benchmark::kMillisecond);

template <class Tab>
void redrawPage(benchmark::State& state) {
  Page<Tab> page;
  redraw(state, page);
}
BENCHMARK_TEMPLATE(redrawPage, ui::OverviewTab)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(redrawPage, ui::MemoryTab)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(redrawPage, ui::DiskTab)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(redrawPage, ui::NetworkTab)->Unit(benchmark::kMillisecond);

// From one page to the next, painted: all ten in turn.
void switchTabs(benchmark::State& state) {
  Page<ui::MainWindowView> page;
  page.computer.folders.addDirectory("/home/test/folder");
  std::size_t next = 0;
  for (auto _ : state) {
    page.tab->selectedTab.set(ui::mainTabs.at(next++ % ui::mainTabs.size()).tab);
    page.host.flush();
    page.paint();
  }
}
BENCHMARK(switchTabs)->Unit(benchmark::kMillisecond);

// From creating the popover to its first frame.
void openPopover(benchmark::State& state) {
  Page<ui::CPUTab> page;
  for (auto _ : state) {
    ui::qt::Popover popover(page.context, page.theme, {[] {}, [] {}});
    popover.toggle(QRect(100, 5, 22, 22));
    page.paint();
  }
}
BENCHMARK(openPopover)->Unit(benchmark::kMillisecond);

// A list of 100,000 entries after one directory has been measured: moves the entry and paints the visible
// part.
void redrawLongList(benchmark::State& state) {
  constexpr int entries = 100000;
  Page<ui::FolderTab> page;
  auto& folders = page.computer.folders;
  for (int i = 0; i < entries / 2; ++i) {
    folders.addFile("/long/file" + std::to_string(i), i);
    folders.addDirectory("/long/folder" + std::to_string(i));
  }
  page.env.folders->currentPath.set(platform::FileLocation("/long"));
  page.env.folders->scan();
  page.computer.settle();
  page.host.flush();
  page.paint();
  int next = 0;
  for (auto _ : state) {
    state.PauseTiming();
    folders.complete("/long/folder" + std::to_string(next),
                     {.bytes = 1000000 + page.random() % 1000000, .files = 1});
    next = (next + 1) % (entries / 2);
    state.ResumeTiming();
    page.computer.settle();
    page.host.flush();
    page.paint();
  }
}
BENCHMARK(redrawLongList)->Unit(benchmark::kMillisecond)->Iterations(300);

// The statistics of 90 full days, from choosing the range to painting it.
void showNinetyDays(benchmark::State& state) {
  Page<ui::StatsTab> page;
  for (int ago = 1; ago < 90; ++ago) {
    const Date day = *page.env.startOfDay(-ago);
    page.computer.historyFolder.files[page.env.dayFiles.name(day)] = encodeDay(fullDay(day)).text;
  }
  const auto show = [&page](ui::StatsRange range) {
    page.tab->select(range);
    page.computer.settle();
    page.host.flush();
    page.paint();
  };
  for (auto _ : state) {
    state.PauseTiming();
    show(ui::StatsRange::week);
    state.ResumeTiming();
    show(ui::StatsRange::quarter);
  }
}
BENCHMARK(showNinetyDays)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kestrune
