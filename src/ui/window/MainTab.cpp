#include "ui/window/MainTab.h"

#include <memory>

#include "ui/components/ViewContext.h"
#include "ui/pages/AudioTab.h"
#include "ui/pages/CPUTab.h"
#include "ui/pages/DiskTab.h"
#include "ui/pages/FolderTab.h"
#include "ui/pages/MemoryTab.h"
#include "ui/pages/NetworkTab.h"
#include "ui/pages/PowerTab.h"
#include "ui/pages/SettingsTab.h"
#include "ui/pages/StatsTab.h"
#include "ui/pages/overview/OverviewTab.h"

namespace kestrune::ui {
namespace {

template <class Tab>
View page(const ViewContext& context) {
  return component<Tab>([context] { return std::make_shared<Tab>(context); });
}

}  // namespace

constexpr std::array<MainTabEntry, 10> mainTabs{{
    {MainTab::overview, "Overview", "square.grid.2x2", '1', page<OverviewTab>},
    {MainTab::cpu, "CPU", "cpu", '2', page<CPUTab>},
    {MainTab::memory, "Memory", "memorychip", '3', page<MemoryTab>},
    {MainTab::disk, "Disk", "internaldrive", '4', page<DiskTab>},
    {MainTab::network, "Network", "network", '5', page<NetworkTab>},
    {MainTab::power, "Power", "bolt", '6', page<PowerTab>},
    {MainTab::audio, "Audio", "waveform", '7', page<AudioTab>},
    {MainTab::folders, "Folders", "folder", '8', page<FolderTab>},
    {MainTab::stats, "Stats", "chart.bar", '9', page<StatsTab>},
    {MainTab::settings, "Settings", "gearshape", '0', page<SettingsTab>, true},
}};

const MainTabEntry& entry(MainTab tab) {
  return mainTabs.at(static_cast<std::size_t>(tab));
}

}  // namespace kestrune::ui
