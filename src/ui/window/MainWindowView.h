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

// The content of the main window: the sidebar and the selected tab, which is made when it is selected and
// dropped when it is left. Listens to the notifications that switch tabs for as long as it exists. Main
// thread only.
class MainWindowView final : public Component {
 public:
  // The least size of the content.
  static constexpr double minimumWidth = 820;
  static constexpr double minimumHeight = 620;

  explicit MainWindowView(const ViewContext& context);

  Published<std::optional<MainTab>> selectedTab{MainTab::overview};
  const Preference<bool> showFolderTab;

  // The tabs that the sidebar lists, in order: all but the folders, where the sandbox withholds those and the
  // user has hidden them.
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
  std::shared_ptr<char> alive_ = std::make_shared<char>();  // seen by the jobs that wait for the loop
};

}  // namespace kestrune::ui
