#include "ui/window/MainWindowView.h"

#include <utility>

#include "settings/Settings.h"
#include "ui/window/Sidebar.h"

namespace kestrune::ui {
namespace {

constexpr double sidebarMinWidth = 160;
constexpr double sidebarIdealWidth = 180;

}  // namespace

MainWindowView::MainWindowView(const ViewContext& context)
    : showFolderTab(context.preferences, settings::showFolderTab),
      context_(context),
      folderPreference_([this] {
        // All other readers are notified before the preference is read again.
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
  for (const MainTabEntry& each : mainTabs) {
    if (each.tab != MainTab::folders || !hidesFolders) visible.push_back(each.tab);
  }
  return visible;
}

std::string MainWindowView::windowTitle() const {
  const auto tab = selectedTab.get();
  return std::string(tab ? entry(*tab).title : "Kestrune");
}

View MainWindowView::body() {
  auto sidebar = component<Sidebar>(
      [this] { return std::make_shared<Sidebar>(selectedTab, [this] { return visibleTabs(); }); });
  return split(sidebarMinWidth, sidebarIdealWidth, std::move(sidebar), detail())
      .frame({.fixed = {}, .min = minimumWidth, .max = {}}, {.fixed = {}, .min = minimumHeight, .max = {}});
}

View MainWindowView::detail() const {
  const auto tab = selectedTab.get();
  View page = tab ? entry(*tab).page(context_) : View();
  const Extent filling{.fixed = {}, .min = {}, .max = unlimited};
  return std::move(page).frame(filling, filling, topLeading);
}

}  // namespace kestrune::ui
