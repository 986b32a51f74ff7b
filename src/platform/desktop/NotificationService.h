#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

#include "platform/UserNotifications.h"

namespace kestrune::desktop {

// The calls to the service `org.freedesktop.Notifications` of a bus. No call waits; answers come through Qt's
// event loop, however late, and never after this object is destroyed.
class NotificationService final : public QObject {
  Q_OBJECT

 public:
  // Identifies a displayed notification; 0: none.
  using Id = std::uint32_t;

  explicit NotificationService(QDBusConnection bus);

  std::function<void(Id)> onClosed;
  // The service has exited, and its notifications with it; another program may have taken over.
  std::function<void()> onLost;

  // Whether the service is running or the bus can start it.
  void checkAvailability(const std::function<void(bool isAvailable)>& answer);

  // To be called before `show`: asks for the service's capabilities unless they are known, starting it if
  // need be. Calls `done` at once, or when the answer or an error arrives.
  void prepare(const std::function<void()>& done);

  // Shows the notification, replacing an earlier one. `answer` gets its id, or 0 and an error.
  void show(const platform::UserNotification& notification, Id replaced,
            const std::function<void(Id shown, std::optional<std::string> error)>& answer);

 private Q_SLOTS:
  void closed(uint id) const;
  void ownerChanged(const QString& name, const QString& before);

 private:
  using Answer = std::function<void(const QDBusMessage&)>;
  void call(const QDBusMessage& message, int timeout, const Answer& answer);
  bool can(const QString& capability) const { return capabilities_ && capabilities_->contains(capability); }

  QDBusConnection bus_;
  std::optional<QStringList> capabilities_;  // absent: unknown
  std::uint64_t generation_ = 0;             // counts the programs that have provided the service
};

}  // namespace kestrune::desktop
