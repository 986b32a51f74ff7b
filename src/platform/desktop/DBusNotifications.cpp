#include "platform/desktop/DBusNotifications.h"

#include <utility>

#include <QTimer>

namespace kestrune::desktop {

using platform::NotificationAuthorization;

// Reports the outcome of one delivery, once.
class DBusNotifications::Report {
 public:
  using Done = std::function<void(std::optional<std::string> error)>;
  explicit Report(Done done) : done_(std::move(done)) {}

  void send(std::optional<std::string> error) {
    if (!std::exchange(isSent_, true)) done_(std::move(error));
  }
  bool isSent() const { return isSent_; }

 private:
  Done done_;
  bool isSent_ = false;
};

DBusNotifications::DBusNotifications(const std::optional<QDBusConnection>& bus,
                                     std::chrono::milliseconds timeout)
    : timeout_(timeout) {
  if (!bus || !bus->isConnected()) return;
  service_ = std::make_unique<NotificationService>(*bus);
  service_->onClosed = [this](auto id) { forget(id); };
  service_->onLost = [this] { forgetAll(); };
}

void DBusNotifications::authorizationStatus(std::function<void(NotificationAuthorization)> answer) {
  const auto report = [answer = std::move(answer)](bool isAvailable) {
    answer(isAvailable ? NotificationAuthorization::authorized : NotificationAuthorization::denied);
  };
  if (service_) {
    service_->checkAvailability(report);
  } else {
    QTimer::singleShot(0, &timers_, [report] { report(false); });
  }
}

void DBusNotifications::requestAuthorization(std::function<void()> done) {
  QTimer::singleShot(0, &timers_, std::move(done));
}

void DBusNotifications::deliver(const platform::UserNotification& notification,
                                std::function<void(std::optional<std::string> error)> done) {
  auto report = std::make_shared<Report>(std::move(done));
  if (!service_) {
    QTimer::singleShot(0, &timers_, [report] { report->send("There is no session bus."); });
    return;
  }
  QTimer::singleShot(timeout_, &timers_,
                     [report] { report->send("The notification service does not answer."); });
  Slot& slot = slots_[notification.identifier];
  slot.waiting = notification;
  std::erase_if(slot.reports, [](const auto& earlier) { return earlier->isSent(); });
  slot.reports.push_back(std::move(report));
  if (!slot.isBusy) begin(slot);
}

void DBusNotifications::begin(Slot& slot) {
  slot.isBusy = true;
  service_->prepare([this, &slot, turn = ++slot.turn] { sendWaiting(slot, turn); });
}

void DBusNotifications::sendWaiting(Slot& slot, std::uint64_t turn) {
  if (turn != slot.turn) return;
  const auto notification = std::exchange(slot.waiting, std::nullopt);
  auto reports = std::exchange(slot.reports, {});
  // A notification already reported as failed must not be shown after all.
  const bool isWanted = std::ranges::any_of(reports, [](const auto& report) { return !report->isSent(); });
  if (!notification || !isWanted) {
    slot.isBusy = false;
    return;
  }
  service_->show(*notification, slot.shown, [this, &slot, turn, reports](auto shown, const auto& error) {
    if (turn == slot.turn) {
      slot.shown = shown;
      slot.isBusy = false;
      if (slot.waiting) begin(slot);
    }
    for (const auto& report : reports) report->send(error);
  });
}

void DBusNotifications::forget(NotificationService::Id closed) {
  for (auto& [identifier, slot] : slots_) {
    if (slot.shown == closed) slot.shown = 0;
  }
}

void DBusNotifications::forgetAll() {
  for (auto& [identifier, slot] : slots_) {
    slot.shown = 0;
    slot.isBusy = false;
    ++slot.turn;
    if (slot.waiting) begin(slot);
  }
}

}  // namespace kestrune::desktop
