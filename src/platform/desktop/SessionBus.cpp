#include "platform/desktop/SessionBus.h"

#include <QFileInfo>

namespace kestrune::desktop {

std::optional<QDBusConnection> sessionBus() {
  const bool isThere = !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
                       QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
  if (!isThere) return std::nullopt;
  const QDBusConnection bus = QDBusConnection::sessionBus();
  return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

void followOwner(QDBusConnection& bus, const QString& name, QObject* receiver, const char* slot) {
  // No sender is given, since the library would wait for the bus to tell who that is.
  bus.connect(QString(), busPath, busName, QStringLiteral("NameOwnerChanged"), {name}, QString(), receiver,
              slot);
}

}  // namespace kestrune::desktop
