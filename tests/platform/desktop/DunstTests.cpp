#include <set>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QVariantMap>

#include "Notifications.h"

namespace kestrune::desktop {
namespace {

using namespace std::chrono_literals;
using platform::NotificationAuthorization;
using platform::UserNotification;
using test::Delivery;
using test::until;

const UserNotification cpuHigh{"cpu-high", "High CPU Usage", "CPU above 80% for 30 s"};
const UserNotification diskLow{"disk-low", "Low Disk Space", "9% free"};

// A real service on a display of its own.
class DunstTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder.emplace();
    display.emplace("Xvfb -displayfd 2 -screen 0 640x480x24 -nolisten tcp", *folder / "display.log");
    // The display writes its number in a line of its own.
    std::string number;
    ASSERT_TRUE(until([&] {
      std::istringstream log(folder->read("display.log"));
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
    bus.folder.write("dunstrc", "[global]\nmarkup = full\n[urgency_normal]\ntimeout = 0\n");
    dunst.emplace("dunst -conf " + bus.folder / "dunstrc", bus.folder / "dunst.log");
    ASSERT_TRUE(until([this] { return bus.hasService(); })) << "the service does not start";
  }

  QVariant ask(const char* interface, const char* method, const QVariantList& arguments = {}) {
    auto message = QDBusMessage::createMethodCall("org.freedesktop.Notifications",
                                                  "/org/freedesktop/Notifications", interface, method);
    message.setArguments(arguments);
    const auto answer = bus.connect("watcher").call(message);
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    return answer.arguments().value(0);
  }

  int displayed() {
    const auto answer =
        ask("org.freedesktop.DBus.Properties", "Get", {"org.dunstproject.cmd0", "displayedLength"});
    return qvariant_cast<QDBusVariant>(answer).variant().toInt();
  }

  // Closes what is displayed and returns the titles and bodies of everything closed so far.
  std::multiset<std::string> takeDisplayed() {
    ask("org.dunstproject.cmd0", "NotificationCloseAll");
    const auto closed = ask("org.dunstproject.cmd0", "NotificationListHistory");
    std::multiset<std::string> texts;
    for (const auto& entry : qdbus_cast<QList<QVariantMap>>(closed)) {
      texts.insert((entry.value("summary").toString() + ": " + entry.value("body").toString()).toStdString());
    }
    return texts;
  }

  inline static std::optional<test::TemporaryFolder> folder;
  inline static std::optional<test::ChildProcess> display;
  test::PrivateBus bus;
  DBusNotifications notifications{bus.connect("program"), 500ms};
  std::optional<test::ChildProcess> dunst;
};

TEST_F(DunstTest, displaysOneNotificationForEachIdentifier) {
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

  dunst.reset();
  ASSERT_TRUE(until([this] { return !bus.hasService(); }));
  EXPECT_EQ(test::authorization(notifications), NotificationAuthorization::denied);
  EXPECT_TRUE(Delivery(notifications, cpuHigh).fails());
  startDunst();
  DBusNotifications stranger(bus.connect("stranger"));
  EXPECT_TRUE(Delivery(stranger, {"theirs", "Stranger", "first of the new service"}).succeeds());
  EXPECT_TRUE(Delivery(notifications, cpuHigh).succeeds());
  EXPECT_EQ(displayed(), 2) << "ids of the old service don't count";
}

TEST_F(DunstTest, startsTheServiceIfTheBusCan) {
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
