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
  std::string identifier;  // a later one with the same identifier takes the place of this one
  std::string title;
  std::string body;
};

// The desktop's notifications. No call waits; answers come later, on the main thread. Main thread.
class UserNotifications {
 public:
  virtual ~UserNotifications() = default;
  virtual void authorizationStatus(std::function<void(NotificationAuthorization)> answer) = 0;
  // Asks the user, where that is of any use. `done` says only that asking is over.
  virtual void requestAuthorization(std::function<void()> done) = 0;
  // Shows it at once, with the default sound, also while the program itself is in front. `done` gets what
  // went wrong, in words, or nothing.
  virtual void deliver(const UserNotification& notification,
                       std::function<void(std::optional<std::string> error)> done) = 0;
};

}  // namespace kestrune::platform
