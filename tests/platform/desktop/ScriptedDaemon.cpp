#include "ScriptedDaemon.h"

#include <utility>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <gtest/gtest.h>

namespace kestrune::test {
namespace {

const auto name = QStringLiteral("org.freedesktop.Notifications");
const auto path = QStringLiteral("/org/freedesktop/Notifications");

}  // namespace

ScriptedDaemon::ScriptedDaemon(QDBusConnection bus, std::uint32_t firstId)
    : bus_(std::move(bus)), nextId_(firstId) {
  EXPECT_TRUE(bus_.registerVirtualObject(path, this));
  EXPECT_TRUE(bus_.interface()->registerService(name, QDBusConnectionInterface::ReplaceExistingService,
                                                QDBusConnectionInterface::AllowReplacement));
}

bool ScriptedDaemon::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
  if (message.member() == QStringLiteral("GetCapabilities")) {
    answers_.emplace_back([this, message] { bus_.send(message.createReply(capabilities)); });
  } else if (message.member() == QStringLiteral("Notify")) {
    note(message);
    answers_.emplace_back([this, message, replaced = calls.back().replaced] {
      bus_.send(message.createReply(replaced != 0 ? replaced : nextId_++));
    });
  } else {
    return false;
  }
  if (!unanswered.contains(message.member())) answer();
  return true;
}

void ScriptedDaemon::note(const QDBusMessage& message) {
  EXPECT_EQ(message.signature().toStdString(), "susssasa{sv}i");
  const auto arguments = message.arguments();
  calls.push_back({.replaced = arguments.at(1).toUInt(),
                   .summary = arguments.at(3).toString().toStdString(),
                   .body = arguments.at(4).toString().toStdString(),
                   .hints = qdbus_cast<QVariantMap>(arguments.at(6))});
}

void ScriptedDaemon::answer() {
  for (const auto& reply : std::exchange(answers_, {})) reply();
}

void ScriptedDaemon::close(std::uint32_t id) {
  bus_.send(QDBusMessage::createSignal(path, name, QStringLiteral("NotificationClosed")) << id << 2U);
}

}  // namespace kestrune::test
