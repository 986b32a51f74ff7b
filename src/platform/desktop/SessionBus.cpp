#include "platform/desktop/SessionBus.h"

#include <QFileInfo>

namespace kestrune::desktop {

std::optional<QDBusConnection> sessionBus() {
  const bool mayExist = !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
                        QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
  if (!mayExist) return std::nullopt;
  const QDBusConnection bus = QDBusConnection::sessionBus();
  return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

void followOwner(QDBusConnection& bus, const QString& name, QObject* receiver, const char* slot) {
  // With a sender given, Qt would block to look up its owner.
  bus.connect(QString(), busPath, busName, QStringLiteral("NameOwnerChanged"), {name}, QString(), receiver,
              slot);
}

}  // namespace kestrune::desktop
