#pragma once

#include <functional>

#include <QDBusConnection>
#include <QObject>

namespace kestrune::desktop {

// Watches a session bus for panels that show status items, as reported by `org.kde.StatusNotifierWatcher`. No
// call waits; callbacks come through Qt's event loop. Main thread.
class StatusNotifierHosts final : public QObject {
  Q_OBJECT

 public:
  // `appeared` is called soon if there is a panel already, and whenever one may have appeared.
  StatusNotifierHosts(QDBusConnection bus, std::function<void()> appeared);

 private Q_SLOTS:
  void check();

 private:
  QDBusConnection bus_;
  std::function<void()> appeared_;
};

}  // namespace kestrune::desktop
