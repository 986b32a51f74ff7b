#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

#include <QDBusConnection>
#include <QObject>

namespace kestrune::desktop {

// How the user wants programs to look.
struct Appearance {
  enum class Scheme : std::uint8_t { noPreference, dark, light };

  Scheme scheme = Scheme::noPreference;
  std::optional<std::array<double, 3>> accent;  // red, green and blue, each from 0 to 1

  friend bool operator==(const Appearance&, const Appearance&) = default;
};

// Follows the settings published by `org.freedesktop.portal.Settings` on a session bus. Without a portal
// there is no preference. Main thread.
class DesktopAppearance final : public QObject {
  Q_OBJECT

 public:
  // `changed` is called from Qt's event loop whenever the appearance changes. The constructor waits briefly
  // for a running portal, so that the first window has the right colours; a portal that isn't running is
  // started.
  DesktopAppearance(QDBusConnection bus, std::function<void()> changed);

  const Appearance& current() const { return current_; }

 private Q_SLOTS:
  void refresh();
  void ownerChanged(const QString& name, const QString& before, const QString& now);

 private:
  void adoptAnswer(const QDBusMessage& question);
  void adopt(const Appearance& next);

  QDBusConnection bus_;
  std::function<void()> changed_;
  Appearance current_;
};

}  // namespace kestrune::desktop
