#pragma once

#include <optional>

#include <QDBusConnection>
#include <QString>

namespace kestrune::desktop {

// The user's session bus, if there is one. Unlike Qt's own function this never starts a bus.
std::optional<QDBusConnection> sessionBus();

// The address of the bus itself.
inline const auto busName = QStringLiteral("org.freedesktop.DBus");
inline const auto busPath = QStringLiteral("/org/freedesktop/DBus");

// Calls `slot` of the receiver whenever the name's owner changes, with the name, the owner before and the
// owner now; an empty string means no owner.
void followOwner(QDBusConnection& bus, const QString& name, QObject* receiver, const char* slot);

}  // namespace kestrune::desktop
