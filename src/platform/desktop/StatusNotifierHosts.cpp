#include "platform/desktop/StatusNotifierHosts.h"

#include <utility>

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include "platform/desktop/SessionBus.h"

namespace kestrune::desktop {
namespace {

const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");

}  // namespace

StatusNotifierHosts::StatusNotifierHosts(QDBusConnection bus, std::function<void()> appeared)
    : bus_(std::move(bus)), appeared_(std::move(appeared)) {
  // The watcher may start long before the first panel, or together with it.
  bus_.connect(QString(), watcherPath, watcherName, QStringLiteral("StatusNotifierHostRegistered"), this,
               SLOT(check()));
  followOwner(bus_, watcherName, this, SLOT(check()));
  check();
}

void StatusNotifierHosts::check() {
  auto message = QDBusMessage::createMethodCall(
      watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  message.setAutoStartService(false);
  message << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
  auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    answer->deleteLater();
    if (reply.isValid() && reply.value().variant().toBool()) appeared_();
  });
}

}  // namespace kestrune::desktop
