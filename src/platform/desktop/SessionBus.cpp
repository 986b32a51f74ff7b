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

}  // namespace kestrune::desktop
