#include <filesystem>
#include <fstream>
#include <set>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QVariantMap>
#include <gmock/gmock.h>

#include "PrivateBus.h"

namespace kestrune::desktop {
namespace {

using namespace std::chrono_literals;
using platform::NotificationAuthorization;
using platform::UserNotification;
using test::Delivery;
using test::until;

const UserNotification cpuHigh{"cpu-high", "High CPU Usage", "CPU above 80% for 30 s"};
const UserNotification diskLow{"disk-low", "Low Disk Space", "9% free"};

// The real service on a display of its own.
class DunstTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder.emplace();
    display.emplace(
        std::vector<std::string>{"Xvfb", "-displayfd", "2", "-screen", "0", "640x480x24", "-nolisten", "tcp"},
        *folder / "display.log");
    std::string number;
    ASSERT_TRUE(until([&] {
      std::ifstream log(*folder / "display.log");
      while (std::getline(log, number) && !log.eof()) {
        if (!number.empty() && number.find_first_not_of("0123456789") == std::string::npos) return true;
      }
      return false;
    })) << "the display does not start";
    qputenv("DISPLAY", QByteArray::fromStdString(":" + number));
  }
  static void TearDownTestSuite() {
    display.reset();
    folder.reset();
    qunsetenv("DISPLAY");
  }

  void startDunst() {
    std::ofstream(bus.path("dunstrc")) << "[global]\nmarkup = full\n[urgency_normal]\ntimeout = 0\n";
    dunst.emplace(std::vector<std::string>{"dunst", "-conf", bus.path("dunstrc")}, bus.path("dunst.log"));
    ASSERT_TRUE(until([this] { return bus.hasService(); })) << "the service does not start";
  }

  QDBusMessage ask(const char* interface, const char* method, const QVariantList& arguments = {}) {
    auto message = QDBusMessage::createMethodCall("org.freedesktop.Notifications",
                                                  "/org/freedesktop/Notifications", interface, method);
    message.setArguments(arguments);
    auto answer = watcher.call(message);
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    return answer;
  }

  int displayed() {
    const auto answer =
        ask("org.freedesktop.DBus.Properties", "Get", {"org.dunstproject.cmd0", "displayedLength"});
    return qvariant_cast<QDBusVariant>(answer.arguments().value(0)).variant().toInt();
  }

  // Closes what is displayed and yields the titles and bodies of all that was closed.
  std::multiset<std::string> takeDisplayed() {
    ask("org.dunstproject.cmd0", "NotificationCloseAll");
    const auto answer = ask("org.dunstproject.cmd0", "NotificationListHistory");
    std::multiset<std::string> texts;
    for (const auto& entry : qdbus_cast<QList<QVariantMap>>(answer.arguments().value(0))) {
      texts.insert((entry.value("summary").toString() + ": " + entry.value("body").toString()).toStdString());
    }
    return texts;
  }

  inline static std::optional<test::TemporaryFolder> folder;
  inline static std::optional<test::ChildProcess> display;
  test::PrivateBus bus;
  QDBusConnection watcher = bus.connect("watcher");
  DBusNotifications notifications{bus.connect("program"), 500ms};
  std::optional<test::ChildProcess> dunst;
};

TEST_F(DunstTest, oneOfAKindIsOnDisplay) {
  startDunst();
  EXPECT_EQ(test::authorization(notifications), NotificationAuthorization::authorized);
  EXPECT_TRUE(Delivery(notifications, cpuHigh).succeeds());
  EXPECT_EQ(displayed(), 1);
  EXPECT_TRUE(Delivery(notifications, diskLow).succeeds());
  EXPECT_EQ(displayed(), 2);
  EXPECT_TRUE(Delivery(notifications, {"cpu-high", "High CPU Usage", "<b> & \"more\""}).succeeds());
  EXPECT_EQ(displayed(), 2);
  EXPECT_EQ(takeDisplayed(), (std::multiset<std::string>{"High CPU Usage: &lt;b&gt; &amp; &quot;more&quot;",
                                                         "Low Disk Space: 9% free"}));
  EXPECT_TRUE(Delivery(notifications, cpuHigh).succeeds()) << "after the user has closed the last one";
  EXPECT_EQ(displayed(), 1);
}

TEST_F(DunstTest, aRestartedServiceIsNotAskedToReplaceWhatItNeverShowed) {
  startDunst();
  EXPECT_TRUE(Delivery(notifications, cpuHigh).succeeds());
  dunst.reset();
  ASSERT_TRUE(until([this] { return !bus.hasService(); }));
  EXPECT_EQ(test::authorization(notifications), NotificationAuthorization::denied);
  EXPECT_TRUE(Delivery(notifications, cpuHigh).fails());

  startDunst();
  DBusNotifications stranger(bus.connect("stranger"));
  EXPECT_TRUE(Delivery(stranger, {"theirs", "Stranger", "first of the new service"}).succeeds());
  EXPECT_TRUE(Delivery(notifications, cpuHigh).succeeds());
  EXPECT_EQ(takeDisplayed(), (std::multiset<std::string>{"High CPU Usage: CPU above 80% for 30 s",
                                                         "Stranger: first of the new service"}));
}

TEST_F(DunstTest, aHungServiceHoldsUpNothing) {
  startDunst();
  EXPECT_TRUE(Delivery(notifications, cpuHigh).succeeds());
  dunst->stop();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(test::authorization(notifications), NotificationAuthorization::authorized);
  std::vector<Delivery> unanswered;
  for (int i = 1; i <= 3; ++i) {
    unanswered.emplace_back(notifications, UserNotification{"cpu-high", "CPU", std::to_string(i)});
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, 400ms) << "nobody waited";
  for (const auto& delivery : unanswered) EXPECT_TRUE(delivery.fails());
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s) << "failures are told in time";

  const Delivery latest(notifications, UserNotification{"cpu-high", "CPU", "latest"});
  dunst->resume();
  EXPECT_TRUE(latest.succeeds());
  EXPECT_EQ(displayed(), 1) << "what came late is replaced like all else";
  EXPECT_EQ(takeDisplayed(), (std::multiset<std::string>{"CPU: latest"}));
  for (const auto& delivery : unanswered) EXPECT_EQ(delivery.reports(), 1);
}

TEST_F(DunstTest, aServiceThatDoesNotRunIsStartedWhereItCanBe) {
  EXPECT_EQ(test::authorization(notifications), NotificationAuthorization::denied);
  EXPECT_TRUE(Delivery(notifications, cpuHigh).fails());

  bus.makeActivatable("/bin/false");
  EXPECT_EQ(test::authorization(notifications), NotificationAuthorization::authorized);
  EXPECT_TRUE(Delivery(notifications, cpuHigh).fails());

  bus.makeActivatable("/usr/bin/dunst -conf /dev/null");
  DBusNotifications patient(bus.connect("patient"), 20s);
  EXPECT_TRUE(Delivery(patient, cpuHigh).succeeds());
  EXPECT_TRUE(Delivery(patient, cpuHigh).succeeds());
  EXPECT_EQ(displayed(), 1);
}

}  // namespace
}  // namespace kestrune::desktop
