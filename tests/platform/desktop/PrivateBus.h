#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <gtest/gtest.h>

#include "support/ChildProcess.h"
#include "support/Eventually.h"
#include "support/TemporaryFolder.h"

namespace kestrune::test {

// Runs Qt's event loop until the condition holds. False: it never did.
template <class Condition>
bool until(Condition condition, std::chrono::milliseconds timeout = std::chrono::seconds(20)) {
  return eventually(condition, timeout, [] { QCoreApplication::processEvents(); });
}

// A bus that nobody else uses, set in the environment. It activates no services but those that a test adds.
class PrivateBus {
 public:
  PrivateBus() {
    const std::string address = "unix:path=" + folder / "bus";
    folder.write("bus.conf", "<busconfig><type>session</type><listen>" + address + "</listen><servicedir>" +
                                 folder / "services" +
                                 "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/>"
                                 "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>");
    std::filesystem::create_directory(folder / "services");
    daemon_.emplace("dbus-daemon --nofork --nopidfile --print-address=2 --config-file=" + folder / "bus.conf",
                    folder / "bus.log");
    qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(address));
    EXPECT_TRUE(until([this] { return folder.read("bus.log").starts_with("unix:"); }));
  }
  ~PrivateBus() {
    for (const auto& name : connections_) QDBusConnection::disconnectFromBus(name);
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  }
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  // The connection of that name, opened at the first call.
  QDBusConnection connect(const QString& name) {
    connections_.insert(name);
    auto connection = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), name);
    EXPECT_TRUE(connection.isConnected()) << connection.lastError().message().toStdString();
    return connection;
  }

  // Makes the bus start the command when the notification service is called.
  void makeActivatable(const std::string& command) {
    folder.write("services/notifications.service",
                 "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=" + command + "\n");
    // The bus notices new files by itself, but at no defined time.
    connect("test").interface()->call(QStringLiteral("ReloadConfig"));
  }

  TemporaryFolder folder;

 private:
  std::optional<ChildProcess> daemon_;
  std::set<QString> connections_;
};

}  // namespace kestrune::test
