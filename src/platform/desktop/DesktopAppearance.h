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

// Follows the settings that `org.freedesktop.portal.Settings` of a session bus tells. Where nobody tells any,
// there is no preference. Main thread.
class DesktopAppearance final : public QObject {
  Q_OBJECT

 public:
  // `changed` is called whenever it is another one, from Qt's loop. The construction waits for a portal that
  // runs, for a moment at most, so that the first window has the right colours; one that doesn't run is
  // started, once.
  DesktopAppearance(QDBusConnection bus, std::function<void()> changed);

  const Appearance& current() const { return current_; }

 private Q_SLOTS:
  void look();
  void lookAtNewOwner(const QString& name, const QString& before, const QString& now);

 private:
  void adoptAnswer(const QDBusMessage& question);
  void adopt(const Appearance& next);

  QDBusConnection bus_;
  std::function<void()> changed_;
  Appearance current_;
};

}  // namespace kestrune::desktop
