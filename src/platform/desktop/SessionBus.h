#pragma once

#include <optional>

#include <QDBusConnection>
#include <QString>

namespace kestrune::desktop {

// The bus of the user's session, if there is one. This never starts one, as the library would by itself.
std::optional<QDBusConnection> sessionBus();

// The bus itself, as one asks it for something.
inline const auto busName = QStringLiteral("org.freedesktop.DBus");
inline const auto busPath = QStringLiteral("/org/freedesktop/DBus");

// Has `slot` of the receiver called with the name, its owner before and its owner now, whenever that changes;
// an empty owner stands for none.
void followOwner(QDBusConnection& bus, const QString& name, QObject* receiver, const char* slot);

}  // namespace kestrune::desktop
