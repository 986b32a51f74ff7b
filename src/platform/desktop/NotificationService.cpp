#include "platform/desktop/NotificationService.h"

#include <limits>
#include <utility>

#include <QDBusPendingCallWatcher>
#include <QVariantMap>

#include "platform/desktop/SessionBus.h"

namespace kestrune::desktop {
namespace {

const auto serviceName = QStringLiteral("org.freedesktop.Notifications");
const auto servicePath = QStringLiteral("/org/freedesktop/Notifications");

constexpr int busPatience = 5000;  // milliseconds
// The answer tells what the notification is known by, so that it counts however late it comes. One that ends
// without an answer is reported by the bus.
constexpr int withoutEnd = std::numeric_limits<int>::max();

constexpr uchar normalUrgency = 1;
constexpr int expiresByDefault = -1;

QDBusMessage toService(const QString& method) {
  return QDBusMessage::createMethodCall(serviceName, servicePath, serviceName, method);
}

QDBusMessage toBus(const QString& method) {
  return QDBusMessage::createMethodCall(busName, busPath, busName, method);
}

// The one value of an answer that fits the signature; absent from any other, and from an error.
std::optional<QVariant> valueOf(const QDBusMessage& message, const char* signature) {
  if (message.type() != QDBusMessage::ReplyMessage || message.signature() != QLatin1String(signature)) {
    return std::nullopt;
  }
  return message.arguments().constFirst();
}

std::string errorOf(const QDBusMessage& message) {
  if (message.type() != QDBusMessage::ErrorMessage) return "The answer makes no sense.";
  const QString text = message.errorMessage();
  return (text.isEmpty() ? message.errorName() : text).toStdString();
}

}  // namespace

NotificationService::NotificationService(QDBusConnection bus) : bus_(std::move(bus)) {
  // No sender is given, since the library would wait for the bus to tell who that is.
  bus_.connect(QString(), servicePath, serviceName, QStringLiteral("NotificationClosed"), this,
               SLOT(closed(uint)));
  followOwner(bus_, serviceName, this, SLOT(ownerChanged(QString, QString)));
}

void NotificationService::lookForIt(const std::function<void(bool isThere)>& answer) {
  call(toBus(QStringLiteral("NameHasOwner")) << serviceName, busPatience, [=, this](const auto& owned) {
    if (valueOf(owned, "b").value_or(false).toBool()) {
      answer(true);
      return;
    }
    call(toBus(QStringLiteral("ListActivatableNames")), busPatience, [answer](const auto& names) {
      answer(valueOf(names, "as").value_or(QStringList()).toStringList().contains(serviceName));
    });
  });
}

void NotificationService::prepare(const std::function<void()>& done) {
  if (capabilities_) {
    done();
    return;
  }
  call(toService(QStringLiteral("GetCapabilities")), withoutEnd,
       [this, done, program = programs_](const auto& answer) {
         const auto list = valueOf(answer, "as");
         if (list && program == programs_) capabilities_ = list->toStringList();
         done();
       });
}

void NotificationService::show(
    const platform::UserNotification& notification, Id replaced,
    const std::function<void(Id shown, std::optional<std::string> error)>& answer) {
  QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue(normalUrgency)},
                    {QStringLiteral("desktop-entry"), QStringLiteral("org.kestrune.Kestrune")}};
  if (can(QStringLiteral("sound"))) {
    hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
  }
  const QString body = QString::fromStdString(notification.body);
  const auto message = toService(QStringLiteral("Notify"))
                       << QStringLiteral("Kestrune") << replaced << QStringLiteral("org.kestrune.Kestrune")
                       << QString::fromStdString(notification.title)
                       << (can(QStringLiteral("body-markup")) ? body.toHtmlEscaped() : body) << QStringList()
                       << hints << expiresByDefault;
  call(message, withoutEnd, [answer](const auto& reply) {
    if (const auto id = valueOf(reply, "u")) {
      answer(id->toUInt(), std::nullopt);
    } else {
      answer(0, errorOf(reply));
    }
  });
}

void NotificationService::closed(uint id) const {
  if (onClosed) onClosed(id);
}

void NotificationService::ownerChanged(const QString& name, const QString& before) {
  // One that only now begins changes nothing for what it has been asked while it was being started.
  if (name != serviceName || before.isEmpty()) return;
  ++programs_;
  capabilities_.reset();
  if (onGone) onGone();
}

void NotificationService::call(const QDBusMessage& message, int timeout, const Answer& answer) {
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, timeout), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [answer](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    answer(finished->reply());
  });
}

}  // namespace kestrune::desktop
