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

// Notifications by the desktop's notification service. Nothing here waits for that service, which may hang,
// end or be replaced at any time. Answers come through Qt's event loop.
class DBusNotifications final : public platform::UserNotifications {
 public:
  // Without a bus nothing can be shown. A delivery that has no answer after `patience` counts as failed,
  // though the service may still show it later.
  explicit DBusNotifications(const std::optional<QDBusConnection>& bus,
                             std::chrono::milliseconds patience = std::chrono::seconds(5));

  // Authorized where the service runs or would be started when asked for, denied elsewhere.
  void authorizationStatus(std::function<void(platform::NotificationAuthorization)> answer) override;
  // Does nothing else: there is nobody to ask.
  void requestAuthorization(std::function<void()> done) override;
  // As long as the service has not answered, only the latest notification of an identifier waits for it.
  void deliver(const platform::UserNotification& notification,
               std::function<void(std::optional<std::string> error)> done) override;

 private:
  class Report;
  using Reports = std::vector<std::shared_ptr<Report>>;

  // What is on display and on its way for one identifier.
  struct Slot {
    NotificationService::Id shown = 0;
    bool isBusy = false;     // the service has not answered yet
    std::uint64_t turn = 0;  // answers to an earlier one come too late to count
    std::optional<platform::UserNotification> waiting;
    Reports reports;  // of what waits
  };

  void begin(Slot& slot);
  void sendWaiting(Slot& slot, std::uint64_t turn);
  void forget(NotificationService::Id closed);
  void forgetAll();

  std::chrono::milliseconds patience_;
  std::map<std::string, Slot> slots_;             // by identifier; none ever goes
  std::unique_ptr<NotificationService> service_;  // none without a bus
  QObject timers_;                                // what is still to be told ends with it
};

}  // namespace kestrune::desktop
