#pragma once

#include "PrivateBus.h"
#include "platform/desktop/DBusNotifications.h"

namespace kestrune::test {

// Delivers a notification and keeps the outcome.
class Delivery {
 public:
  Delivery(desktop::DBusNotifications& notifications, const platform::UserNotification& notification) {
    notifications.deliver(notification, [outcome = outcome_](std::optional<std::string> error) {
      ++outcome->reports;
      outcome->error = std::move(error);
    });
  }

  int reports() const { return outcome_->reports; }
  // Both wait for the outcome.
  bool succeeds() const { return isOver() && !outcome_->error; }
  bool fails() const { return isOver() && !outcome_->error.value_or("").empty(); }

 private:
  struct Outcome {
    int reports = 0;
    std::optional<std::string> error;
  };
  bool isOver() const {
    return until([this] { return reports() > 0; });
  }
  std::shared_ptr<Outcome> outcome_ = std::make_shared<Outcome>();
};

// The answer, or absent if none comes.
inline auto authorization(desktop::DBusNotifications& notifications) {
  const auto answer = std::make_shared<std::optional<platform::NotificationAuthorization>>();
  notifications.authorizationStatus([answer](auto status) { *answer = status; });
  EXPECT_FALSE(*answer) << "answers come later";
  until([&] { return answer->has_value(); });
  return *answer;
}

}  // namespace kestrune::test
