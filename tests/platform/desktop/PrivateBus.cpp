#include "PrivateBus.h"

#include <filesystem>
#include <fstream>

#include <QDBusConnectionInterface>
#include <gtest/gtest.h>

namespace kestrune::test {

namespace fs = std::filesystem;

namespace {

// A connection for as long as it is looked through.
struct Visit {
  Visit() = default;
  ~Visit() { QDBusConnection::disconnectFromBus(QStringLiteral("visit")); }
  Visit(const Visit&) = delete;
  Visit& operator=(const Visit&) = delete;

  QDBusConnection bus = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                      QStringLiteral("visit"));
};

}  // namespace

PrivateBus::PrivateBus() {
  fs::create_directory(path("services"));
  const std::string address = "unix:path=" + path("bus");
  std::ofstream(path("bus.conf")) << "<busconfig><type>session</type><listen>" << address
                                  << "</listen><servicedir>" << path("services") << "</servicedir>"
                                  << R"(<policy context="default"><allow send_destination="*"/>)"
                                  << R"(<allow receive_sender="*"/><allow own="*"/></policy></busconfig>)";
  daemon_.emplace(
      std::vector<std::string>{"dbus-daemon", "--nofork", "--nopidfile", "--config-file=" + path("bus.conf")},
      path("bus.log"));
  qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(address));
  EXPECT_TRUE(until([] { return Visit().bus.isConnected(); })) << "the bus does not start";
}

PrivateBus::~PrivateBus() {
  for (const auto& name : connections_) QDBusConnection::disconnectFromBus(QString::fromStdString(name));
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void PrivateBus::makeActivatable(const std::string& command) const {
  std::ofstream(path("services/notifications.service"))
      << "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=" << command << '\n';
  // The bus notices the new file by itself, but when is its own matter.
  Visit().bus.interface()->call(QStringLiteral("ReloadConfig"));
}

QDBusConnection PrivateBus::connect(const std::string& name) {
  connections_.push_back(name);
  auto connection = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                  QString::fromStdString(name));
  EXPECT_TRUE(connection.isConnected()) << connection.lastError().message().toStdString();
  return connection;
}

bool PrivateBus::hasService() const {
  return Visit().bus.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.Notifications"));
}

std::optional<platform::NotificationAuthorization> authorization(desktop::DBusNotifications& notifications) {
  auto answer = std::make_shared<std::optional<platform::NotificationAuthorization>>();
  notifications.authorizationStatus([answer](auto status) { *answer = status; });
  EXPECT_FALSE(*answer) << "answers come later";
  until([&] { return answer->has_value(); });
  return *answer;
}

}  // namespace kestrune::test
