#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <thread>

#include <QCoreApplication>
#include <QDBusConnection>

#include "platform/desktop/DBusNotifications.h"
#include "platform/linux/audio/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace kestrune::test {

// Runs Qt's event loop until it is so. False: it never was.
template <typename Condition>
bool until(Condition condition, std::chrono::milliseconds patience = std::chrono::seconds(20)) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    QCoreApplication::processEvents();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

// A bus that nobody else uses. It starts no services but those that a test adds. Programs that are started
// while it lives find it in their environment.
class PrivateBus {
 public:
  PrivateBus();
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  // The bus will start the command where someone asks for the notification service.
  void makeActivatable(const std::string& command) const;

  // A connection of its own for each name.
  QDBusConnection connect(const std::string& name);

  // Whether anyone has the notification service's name.
  bool hasService() const;

  std::string path(const std::string& name) const { return folder_ / name; }

 private:
  TemporaryFolder folder_;
  std::optional<ChildProcess> daemon_;
  std::vector<std::string> connections_;
};

// Delivers, and keeps what comes of it.
class Delivery {
 public:
  Delivery(desktop::DBusNotifications& notifications, const platform::UserNotification& notification) {
    notifications.deliver(notification, [outcome = outcome_](std::optional<std::string> error) {
      ++outcome->reports;
      outcome->error = std::move(error);
    });
  }

  bool isOver() const { return outcome_->reports > 0; }
  int reports() const { return outcome_->reports; }
  const std::optional<std::string>& error() const { return outcome_->error; }
  // Waits for the outcome; true if it was shown.
  bool succeeds() const {
    return until([this] { return isOver(); }) && !error();
  }
  bool fails() const {
    return until([this] { return isOver(); }) && error() && !error()->empty();
  }

 private:
  struct Outcome {
    int reports = 0;
    std::optional<std::string> error;
  };
  std::shared_ptr<Outcome> outcome_ = std::make_shared<Outcome>();
};

// The answer, or absent if none comes.
std::optional<platform::NotificationAuthorization> authorization(desktop::DBusNotifications& notifications);

}  // namespace kestrune::test
