#pragma once

#include <functional>
#include <utility>
#include <vector>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include "PrivateBus.h"

namespace kestrune::test {

// A notification service that a test controls; it records what it is asked for.
class ScriptedDaemon final : public QDBusVirtualObject {
 public:
  struct Notify {
    std::uint32_t replaced = 0;
    std::string summary;
    std::string body;
    QVariantMap hints;
  };

  // Takes the name, from another service too.
  ScriptedDaemon(QDBusConnection bus, std::uint32_t firstId) : bus_(std::move(bus)), nextId_(firstId) {
    EXPECT_TRUE(bus_.registerVirtualObject(path, this));
    EXPECT_TRUE(bus_.interface()->registerService(name, QDBusConnectionInterface::ReplaceExistingService,
                                                  QDBusConnectionInterface::AllowReplacement));
  }

  QStringList capabilities;
  std::vector<Notify> calls;
  QStringList unanswered;  // methods whose calls are recorded but not answered

  // Answers all calls that were not answered. False: there are none.
  bool answer() {
    const auto answers = std::exchange(answers_, {});
    for (const auto& reply : answers) reply();
    return !answers.empty();
  }
  void close(std::uint32_t id) {
    bus_.send(QDBusMessage::createSignal(path, name, QStringLiteral("NotificationClosed")) << id << 2U);
  }

  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
    const bool isNotify = message.member() == QStringLiteral("Notify");
    if (!isNotify && message.member() != QStringLiteral("GetCapabilities")) return false;
    if (isNotify) record(message);
    const std::uint32_t replaced = isNotify ? calls.back().replaced : 0;
    answers_.emplace_back([=, this] {
      bus_.send(isNotify ? message.createReply(replaced != 0 ? replaced : nextId_++)
                         : message.createReply(capabilities));
    });
    if (!unanswered.contains(message.member())) answer();
    return true;
  }

 private:
  inline static const auto name = QStringLiteral("org.freedesktop.Notifications");
  inline static const auto path = QStringLiteral("/org/freedesktop/Notifications");

  void record(const QDBusMessage& message) {
    EXPECT_EQ(message.signature().toStdString(), "susssasa{sv}i");
    const auto arguments = message.arguments();
    calls.push_back({.replaced = arguments.at(1).toUInt(),
                     .summary = arguments.at(3).toString().toStdString(),
                     .body = arguments.at(4).toString().toStdString(),
                     .hints = qdbus_cast<QVariantMap>(arguments.at(6))});
  }

  QDBusConnection bus_;
  std::uint32_t nextId_;
  std::vector<std::function<void()>> answers_;
};

}  // namespace kestrune::test
