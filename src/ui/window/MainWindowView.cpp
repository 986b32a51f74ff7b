#include "ui/window/MainWindowView.h"

#include <utility>

#include "ui/pages/AudioTab.h"
#include "ui/pages/CPUTab.h"
#include "ui/pages/DiskTab.h"
#include "ui/pages/FolderTab.h"
#include "ui/pages/MemoryTab.h"
#include "ui/pages/NetworkTab.h"
#include "ui/pages/overview/OverviewTab.h"
#include "ui/pages/PowerTab.h"
#include "ui/pages/SettingsTab.h"
#include "ui/pages/StatsTab.h"
#include "ui/window/Sidebar.h"

namespace kestrune::ui {
namespace {

constexpr double sidebarMinWidth = 160;
constexpr double sidebarIdealWidth = 180;

template <class Tab>
View tabPage(const ViewContext& context) {
  return component<Tab>([context] { return std::make_shared<Tab>(context); });
}

}  // namespace

MainWindowView::MainWindowView(const ViewContext& context)
    : showFolderTab(context.preferences, "ui.sandbox.showFolderTab", true),
      context_(context),
      folderPreference_([this] {
        // Noting the preference again has to wait until all its readers have been told.
        context_.loop.post([this, alive = std::weak_ptr(alive_)] {
          if (!alive.expired()) leaveFoldersWhenHidden();
        });
      }) {
  subscriptions_.push_back(
      context.notifications.observe(std::string(switchTabNotification), [this](const std::any& object) {
        if (const auto* tab = std::any_cast<MainTab>(&object)) selectedTab.set(*tab);
      }));
  subscriptions_.push_back(
      context.notifications.observe(std::string(openSettingsTabNotification),
                                    [this](const std::any&) { selectedTab.set(MainTab::settings); }));
  leaveFoldersWhenHidden();
}

void MainWindowView::leaveFoldersWhenHidden() {
  const bool shows = folderPreference_.track([this] { return showFolderTab.get(); });
  if (!shows && selectedTab.get() == MainTab::folders) selectedTab.set(MainTab::overview);
}

std::vector<MainTab> MainWindowView::visibleTabs() const {
  const bool hidesFolders = context_.isSandboxed && !showFolderTab.get();
  std::vector<MainTab> visible;
  for (const MainTab tab : allMainTabs) {
    if (tab != MainTab::folders || !hidesFolders) visible.push_back(tab);
  }
  return visible;
}

std::string MainWindowView::windowTitle() const {
  const auto tab = selectedTab.get();
  return std::string(tab ? title(*tab) : "Kestrune");
}

View MainWindowView::body() {
  auto sidebar = component<Sidebar>([this] { return std::make_shared<Sidebar>(*this); });
  return split(sidebarMinWidth, sidebarIdealWidth, std::move(sidebar), detail())
      .frame({.fixed = {}, .min = minimumWidth, .max = {}}, {.fixed = {}, .min = minimumHeight, .max = {}});
}

View MainWindowView::detail() const {
  const auto tab = selectedTab.get();
  View page;
  if (tab == MainTab::overview) {
    page = tabPage<OverviewTab>(context_);
  } else if (tab == MainTab::cpu) {
    page = tabPage<CPUTab>(context_);
  } else if (tab == MainTab::memory) {
    page = tabPage<MemoryTab>(context_);
  } else if (tab == MainTab::disk) {
    page = tabPage<DiskTab>(context_);
  } else if (tab == MainTab::network) {
    page = tabPage<NetworkTab>(context_);
  } else if (tab == MainTab::power) {
    page = tabPage<PowerTab>(context_);
  } else if (tab == MainTab::audio) {
    page = tabPage<AudioTab>(context_);
  } else if (tab == MainTab::stats) {
    page = tabPage<StatsTab>(context_);
  } else if (tab == MainTab::settings) {
    page = tabPage<SettingsTab>(context_);
  } else if (tab == MainTab::folders) {
    page = tabPage<FolderTab>(context_);
  }
  const Extent filling{.fixed = {}, .min = {}, .max = unlimited};
  return std::move(page).frame(filling, filling, topLeading);
}

}  // namespace kestrune::ui
