#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "platform/UserNotifications.h"
#include "platform/desktop/NotificationService.h"

namespace kestrune::desktop {

// Notifications through the desktop's notification service. Nothing here waits for the service, which may
// hang, exit or be replaced at any time. Callbacks come through Qt's event loop.
class DBusNotifications final : public platform::UserNotifications {
 public:
  // Without a bus nothing can be shown. A delivery without an answer within `timeout` counts as failed,
  // though the service may still show it later.
  explicit DBusNotifications(const std::optional<QDBusConnection>& bus,
                             std::chrono::milliseconds timeout = std::chrono::seconds(5));

  // Authorized if the service is running or the bus can start it, else denied.
  void authorizationStatus(std::function<void(platform::NotificationAuthorization)> answer) override;
  // Only calls `done`: there is nobody to ask.
  void requestAuthorization(std::function<void()> done) override;
  // While the service hasn't answered, only the latest notification of each identifier is kept waiting.
  void deliver(const platform::UserNotification& notification,
               std::function<void(std::optional<std::string> error)> done) override;

 private:
  class Report;
  using Reports = std::vector<std::shared_ptr<Report>>;

  // What is displayed, in flight and waiting for one identifier.
  struct Slot {
    NotificationService::Id shown = 0;
    bool isBusy = false;     // a call to the service is in flight
    std::uint64_t turn = 0;  // of the current call; answers to earlier calls are ignored
    std::optional<platform::UserNotification> waiting;
    Reports reports;  // for the waiting notification
  };

  void begin(Slot& slot);
  void sendWaiting(Slot& slot, std::uint64_t turn);
  void forget(NotificationService::Id closed);
  void forgetAll();

  std::chrono::milliseconds timeout_;
  std::map<std::string, Slot> slots_;             // by identifier; never erased
  std::unique_ptr<NotificationService> service_;  // null without a bus
  QObject timers_;                                // cancels pending callbacks when it is destroyed
};

}  // namespace kestrune::desktop
