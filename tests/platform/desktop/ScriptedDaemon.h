#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

namespace kestrune::test {

// A notification service that does what a test tells it, and notes what it is asked for.
class ScriptedDaemon final : public QDBusVirtualObject {
 public:
  struct Notify {
    std::uint32_t replaced = 0;
    std::string summary;
    std::string body;
    QVariantMap hints;
  };

  // Takes the name, from another one too.
  explicit ScriptedDaemon(QDBusConnection bus, std::uint32_t firstId = 1);

  QStringList capabilities;
  std::vector<Notify> calls;
  QStringList unanswered;  // methods whose calls are noted but not answered

  // Answers all calls that were not answered.
  void answer();
  void close(std::uint32_t id);

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  void note(const QDBusMessage& message);

  QDBusConnection bus_;
  std::uint32_t nextId_;
  std::vector<std::function<void()>> answers_;
};

}  // namespace kestrune::test
