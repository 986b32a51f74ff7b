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

// The program `org.freedesktop.Notifications` of a bus, call by call. No call waits; answers come through
// Qt's event loop, may come late, and don't come at all once this is gone.
class NotificationService final : public QObject {
  Q_OBJECT

 public:
  // What a notification on display is known by; 0: none.
  using Id = std::uint32_t;

  explicit NotificationService(QDBusConnection bus);

  std::function<void(Id)> onClosed;
  // The program with its notifications is gone; another one may have taken its place.
  std::function<void()> onGone;

  // Whether the program runs or would be started when asked for.
  void lookForIt(const std::function<void(bool isThere)>& answer);

  // To come before `show`: asks the program what it can do, unless that is known. Starts it where need be.
  // `done` comes at once or when there is an answer, be it an error, unless this is gone by then.
  void prepare(const std::function<void()>& done);

  // Shows it in place of another one. `answer` gets what it is known by, or 0 and what went wrong.
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
  std::optional<QStringList> capabilities_;  // absent: not known
  std::uint64_t programs_ = 0;               // how many there have been, so as to tell one from the next
};

}  // namespace kestrune::desktop
