#pragma once

#include <functional>
#include <optional>
#include <string>

namespace kestrune::platform {

// Whether the user lets the program show notifications.
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

// The desktop's notifications. No call waits; callbacks come later, on the main thread. Main thread.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;
  virtual void authorizationStatus(std::function<void(NotificationAuthorization)> answer) = 0;
  // Asks the user for permission, on systems that have such a thing. `done` doesn't carry the answer.
  virtual void requestAuthorization(std::function<void()> done) = 0;
  // Shows the notification at once, with the default sound, even while the program's own window is active.
  // `done` gets a description of the failure, or nothing.
  virtual void deliver(const UserNotification& notification,
                       std::function<void(std::optional<std::string> error)> done) = 0;
};

}  // namespace kestrune::platform
