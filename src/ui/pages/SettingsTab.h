#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "alerts/AlertSettings.h"
#include "runtime/NotificationCenter.h"
#include "runtime/Published.h"
#include "settings/Preferences.h"
#include "ui/components/ViewContext.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The page on which the user changes preferences. Every change takes effect at once.
class SettingsTab final : public Component {
 public:
  explicit SettingsTab(const ViewContext& context);

  // Follows the session's login items. A change that fails is undone.
  Published<bool> launchAtLogin;
  Published<std::optional<std::string>> launchAtLoginError{std::nullopt};
  Published<bool> showResetConfirm{false};

  View body() override;

 private:
  void changeLaunchAtLogin(bool wanted);
  void keepSandboxedProcessesOff() const;
  View general();
  View menuBar() const;
  View alerts() const;
  std::vector<View> permissionRows() const;
  std::vector<View> ruleRows() const;
  View history() const;
  View about() const;
  View resetRow();
  View testButton(AlertsMonitor::Sample kind) const;

  ViewContext context_;
  AlertSettings alertSettings_;
  Preference<bool> showHints_;
  Preference<bool> showFolderTab_;
  Preference<std::int64_t> retentionDays_;
  std::vector<NotificationCenter::Subscription> subscriptions_;
};

}  // namespace kestrune::ui
