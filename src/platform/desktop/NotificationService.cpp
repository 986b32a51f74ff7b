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

constexpr int busTimeoutMilliseconds = 5000;
// The reply carries the notification's id, which is useful however late. If the service dies, the bus reports
// an error.
constexpr int noTimeout = std::numeric_limits<int>::max();

constexpr uchar normalUrgency = 1;
constexpr int expiresByDefault = -1;

QDBusMessage toService(const QString& method) {
  return QDBusMessage::createMethodCall(serviceName, servicePath, serviceName, method);
}

QDBusMessage toBus(const QString& method) {
  return QDBusMessage::createMethodCall(busName, busPath, busName, method);
}

// The single value of a reply with that signature. Absent: an error, or another signature.
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
  // With a sender given, Qt would block to look up its owner.
  bus_.connect(QString(), servicePath, serviceName, QStringLiteral("NotificationClosed"), this,
               SLOT(closed(uint)));
  followOwner(bus_, serviceName, this, SLOT(ownerChanged(QString, QString)));
}

void NotificationService::checkAvailability(const std::function<void(bool isAvailable)>& answer) {
  call(toBus(QStringLiteral("NameHasOwner")) << serviceName, busTimeoutMilliseconds,
       [=, this](const auto& owned) {
         if (valueOf(owned, "b").value_or(false).toBool()) {
           answer(true);
           return;
         }
         call(toBus(QStringLiteral("ListActivatableNames")), busTimeoutMilliseconds,
              [answer](const auto& names) {
                answer(valueOf(names, "as").value_or(QStringList()).toStringList().contains(serviceName));
              });
       });
}

void NotificationService::prepare(const std::function<void()>& done) {
  if (capabilities_) {
    done();
    return;
  }
  call(toService(QStringLiteral("GetCapabilities")), noTimeout,
       [this, done, generation = generation_](const auto& answer) {
         const auto list = valueOf(answer, "as");
         if (list && generation == generation_) capabilities_ = list->toStringList();
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
  call(message, noTimeout, [answer](const auto& reply) {
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
  // A service activated by our own call has no predecessor whose state we must drop.
  if (name != serviceName || before.isEmpty()) return;
  ++generation_;
  capabilities_.reset();
  if (onLost) onLost();
}

void NotificationService::call(const QDBusMessage& message, int timeout, const Answer& answer) {
  auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, timeout), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [answer](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    answer(finished->reply());
  });
}

}  // namespace kestrune::desktop
