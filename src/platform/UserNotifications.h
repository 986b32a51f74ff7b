#pragma once

#include <functional>
#include <optional>
#include <string>

namespace kestrune::platform {

// Whether the program may show notifications.
enum class NotificationAuthorization {
  notDetermined = 0,
  denied = 1,
  authorized = 2,
  provisional = 3,
  ephemeral = 4
};

struct UserNotification {
  std::string identifier;  // a later notification with the same identifier replaces this one
  std::string title;
  std::string body;
};

// The desktop's notifications. No call blocks; answers come later, on the main thread. Main thread.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;
  virtual void authorizationStatus(std::function<void(NotificationAuthorization)> answer) = 0;
  // Asks the user, if the desktop has such a permission. `done` is called when that is over, no matter how.
  virtual void requestAuthorization(std::function<void()> done) = 0;
  // Shows the notification immediately, with the default sound, even while the program is in front. `done`
  // gets an error message, or nothing on success.
  virtual void deliver(const UserNotification& notification,
                       std::function<void(std::optional<std::string> error)> done) = 0;
};

}  // namespace kestrune::platform
