#pragma once

#include <functional>

#include <QDBusConnection>
#include <QObject>

namespace kestrune::desktop {

// Watches a session bus for panels that show the items of programs, as `org.kde.StatusNotifierWatcher` tells
// them. Nothing waits; all comes through Qt's event loop. Main thread.
class StatusNotifierHosts final : public QObject {
  Q_OBJECT

 public:
  // `present` is called soon if there is one now, and whenever one may have turned up later.
  StatusNotifierHosts(QDBusConnection bus, std::function<void()> present);

 private Q_SLOTS:
  void look();

 private:
  QDBusConnection bus_;
  std::function<void()> present_;
};

}  // namespace kestrune::desktop
