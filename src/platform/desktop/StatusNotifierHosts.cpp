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

StatusNotifierHosts::StatusNotifierHosts(QDBusConnection bus, std::function<void()> present)
    : bus_(std::move(bus)), present_(std::move(present)) {
  // A watcher may be there long before the first panel, and a panel may come with its watcher.
  bus_.connect(QString(), watcherPath, watcherName, QStringLiteral("StatusNotifierHostRegistered"), this,
               SLOT(look()));
  followOwner(bus_, watcherName, this, SLOT(look()));
  look();
}

void StatusNotifierHosts::look() {
  auto message = QDBusMessage::createMethodCall(
      watcherName, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  message.setAutoStartService(false);
  message << watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
  auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    answer->deleteLater();
    if (reply.isValid() && reply.value().variant().toBool()) present_();
  });
}

}  // namespace kestrune::desktop
