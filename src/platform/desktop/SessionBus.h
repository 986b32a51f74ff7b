#pragma once

#include <optional>

#include <QDBusConnection>

namespace kestrune::desktop {

// The bus of the user's session, if there is one. This never starts one, as the library would by itself.
std::optional<QDBusConnection> sessionBus();

}  // namespace kestrune::desktop
