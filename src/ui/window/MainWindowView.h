#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "runtime/NotificationCenter.h"
#include "runtime/Published.h"
#include "settings/Preferences.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"
#include "ui/window/MainTab.h"

namespace kestrune::ui {

// The content of the main window: the sidebar and the selected tab, which is created when it is selected and
// destroyed when it is left. Listens for the notifications that switch tabs while it exists. Main thread
// only.
class MainWindowView final : public Component {
 public:
  // Of the content.
  static constexpr double minimumWidth = 820;
  static constexpr double minimumHeight = 620;

  explicit MainWindowView(const ViewContext& context);

  Published<std::optional<MainTab>> selectedTab{MainTab::overview};
  const Preference<bool> showFolderTab;

  // The tabs that the sidebar lists, in order: all of them, except the folders if the program is sandboxed
  // and the user has hidden that tab.
  std::vector<MainTab> visibleTabs() const;

  // Localizable: the selected tab's title, or the program's name.
  std::string windowTitle() const;

  View body() override;

 private:
  View detail() const;
  void leaveFoldersWhenHidden();

  ViewContext context_;
  Dependencies folderPreference_;
  std::vector<NotificationCenter::Subscription> subscriptions_;
  std::shared_ptr<char> alive_ = std::make_shared<char>();  // watched by the jobs posted to the loop
};

}  // namespace kestrune::ui
