#include <gmock/gmock.h>

#include "ScriptedDaemon.h"
#include "platform/desktop/DBusNotifications.h"
#include "platform/desktop/SessionBus.h"

namespace kestrune::desktop {
namespace {

using namespace std::chrono_literals;
using platform::NotificationAuthorization;
using test::until;
using testing::ElementsAre;

// Delivers a notification and keeps the outcome.
class Delivery {
 public:
  Delivery(DBusNotifications& notifications, const platform::UserNotification& notification) {
    notifications.deliver(notification, [outcome = outcome_](std::optional<std::string> error) {
      ++outcome->reports;
      outcome->error = std::move(error);
    });
  }

  int reports() const { return outcome_->reports; }
  // Both wait for the outcome.
  bool succeeds() const { return isOver() && !outcome_->error; }
  bool fails() const { return isOver() && !outcome_->error.value_or("").empty(); }

 private:
  struct Outcome {
    int reports = 0;
    std::optional<std::string> error;
  };
  bool isOver() const {
    return until([this] { return reports() > 0; });
  }
  std::shared_ptr<Outcome> outcome_ = std::make_shared<Outcome>();
};

// The answer, or absent if none comes.
auto authorization(DBusNotifications& notifications) {
  const auto answer = std::make_shared<std::optional<NotificationAuthorization>>();
  notifications.authorizationStatus([answer](auto status) { *answer = status; });
  EXPECT_FALSE(*answer) << "answers come later";
  until([&] { return answer->has_value(); });
  return *answer;
}

std::vector<std::uint32_t> replaced(const test::ScriptedDaemon& service) {
  std::vector<std::uint32_t> ids;
  for (const auto& call : service.calls) ids.push_back(call.replaced);
  return ids;
}

// The calls on the bus, as a scripted service records them.
class NotificationProtocolTest : public testing::Test {
 protected:
  // Waits for that number of calls, and a moment for any that shouldn't come.
  bool hasCalls(std::size_t count) const {
    const bool came = until([&] { return daemon.calls.size() >= count; });
    until([] { return false; }, 50ms);
    return came && daemon.calls.size() == count;
  }

  test::PrivateBus bus;
  test::ScriptedDaemon daemon{bus.connect("daemon"), 7};
  DBusNotifications notifications{bus.connect("program")};
};

TEST_F(NotificationProtocolTest, adaptsToTheCapabilitiesOfTheService) {
  daemon.capabilities = {"body", "sound", "body-markup"};
  EXPECT_TRUE(Delivery(notifications, {"id", "<Title>", "5 < 6 & \"a\" – ñ"}).succeeds());
  ASSERT_EQ(daemon.calls.size(), 1U);
  const auto& call = daemon.calls.front();
  EXPECT_EQ(call.replaced, 0U);
  EXPECT_EQ(call.summary, "<Title>") << "a summary has no markup";
  EXPECT_THAT(call.body, testing::StartsWith("5 &lt; 6 &amp; "));
  EXPECT_THAT(call.body, testing::EndsWith(" – ñ"));
  EXPECT_EQ(call.hints.value("urgency").typeId(), QMetaType::UChar);
  EXPECT_EQ(call.hints.value("sound-name").toString().toStdString(), "message-new-instant");

  daemon.capabilities = {"body"};
  DBusNotifications later(bus.connect("later"));
  EXPECT_TRUE(Delivery(later, {"id", "Title", "5 < 6 & more"}).succeeds());
  ASSERT_EQ(daemon.calls.size(), 2U);
  EXPECT_EQ(daemon.calls.back().body, "5 < 6 & more");
  EXPECT_FALSE(daemon.calls.back().hints.contains("sound-name"));
}

TEST_F(NotificationProtocolTest, replacesTheSameIdentifierUntilItIsClosed) {
  for (const char* identifier : {"cpu", "disk", "cpu"}) {
    EXPECT_TRUE(Delivery(notifications, {identifier, "t", "b"}).succeeds());
  }
  daemon.close(8);
  // The signal isn't acknowledged, but arrives before the answer to any later call.
  for (const char* identifier : {"other", "disk", "cpu"}) {
    EXPECT_TRUE(Delivery(notifications, {identifier, "t", "b"}).succeeds());
  }
  EXPECT_THAT(replaced(daemon), ElementsAre(0, 0, 7, 0, 0, 7));
}

TEST_F(NotificationProtocolTest, onlyTheLatestWaitsForASlowService) {
  daemon.unanswered = {"Notify"};
  const Delivery first(notifications, {"cpu", "t", "1"});
  ASSERT_TRUE(hasCalls(1));
  const Delivery second(notifications, {"cpu", "t", "2"});
  const Delivery third(notifications, {"cpu", "t", "3"});
  const Delivery other(notifications, {"disk", "t", "4"});
  ASSERT_TRUE(hasCalls(2)) << "another identifier does not wait";
  EXPECT_EQ(daemon.calls[1].body, "4");
  daemon.unanswered.clear();
  daemon.answer();
  ASSERT_TRUE(hasCalls(3));
  EXPECT_EQ(daemon.calls[2].body, "3");
  EXPECT_EQ(daemon.calls[2].replaced, 7U);
  for (const auto* delivery : {&first, &second, &third, &other}) {
    EXPECT_TRUE(delivery->succeeds());
    EXPECT_EQ(delivery->reports(), 1);
  }
}

TEST_F(NotificationProtocolTest, failedDeliveriesAreNotSentLater) {
  DBusNotifications impatient(bus.connect("impatient"), 100ms);
  daemon.unanswered = {"Notify"};
  const Delivery sent(impatient, {"cpu", "t", "1"});
  ASSERT_TRUE(hasCalls(1));
  EXPECT_EQ(authorization(impatient), NotificationAuthorization::authorized) << "it may only be slow";
  const Delivery waiting(impatient, {"cpu", "t", "2"});
  EXPECT_EQ(waiting.reports(), 0) << "no call waits";
  EXPECT_TRUE(sent.fails());
  EXPECT_TRUE(waiting.fails());
  daemon.unanswered.clear();
  daemon.answer();
  EXPECT_TRUE(hasCalls(1));
  EXPECT_TRUE(Delivery(impatient, {"cpu", "t", "3"}).succeeds());
  EXPECT_EQ(daemon.calls.back().replaced, 7U) << "a late answer still carries the id";
  EXPECT_EQ(sent.reports() + waiting.reports(), 2);
}

TEST_F(NotificationProtocolTest, startsOverWithANewService) {
  EXPECT_TRUE(Delivery(notifications, {"cpu", "t", "1"}).succeeds());
  daemon.unanswered = {"Notify"};
  const Delivery lost(notifications, {"cpu", "t", "2"});
  const Delivery lostToo(notifications, {"disk", "t", "2"});
  ASSERT_TRUE(hasCalls(3));
  const Delivery waiting(notifications, {"cpu", "t", "3"});
  test::ScriptedDaemon successor(bus.connect("successor"), 100);
  successor.capabilities = {"body-markup"};
  EXPECT_TRUE(waiting.succeeds()) << "the old service's missing answers hold up nothing";
  EXPECT_TRUE(Delivery(notifications, {"cpu", "t", "<4>"}).succeeds());
  daemon.answer();
  EXPECT_TRUE(lost.succeeds());
  EXPECT_TRUE(lostToo.succeeds());
  EXPECT_TRUE(Delivery(notifications, {"cpu", "t", "5"}).succeeds());
  EXPECT_TRUE(Delivery(notifications, {"disk", "t", "5"}).succeeds());
  EXPECT_THAT(replaced(successor), ElementsAre(0, 100, 100, 0)) << "late answers of the old one don't count";
  EXPECT_EQ(successor.calls.at(1).body, "&lt;4&gt;") << "capabilities are those of the new one";
}

TEST_F(NotificationProtocolTest, waitsForTheCapabilitiesOfANewService) {
  daemon.unanswered = {"GetCapabilities"};
  const Delivery delivery(notifications, {"cpu", "t", "<1>"});
  authorization(notifications);  // so that the bus has passed on the question before
  test::ScriptedDaemon successor(bus.connect("successor"), 100);
  successor.capabilities = {"body-markup"};
  successor.unanswered = {"GetCapabilities"};
  EXPECT_TRUE(until([&] { return daemon.answer(); }));
  EXPECT_TRUE(hasCalls(0));
  EXPECT_TRUE(until([&] { return successor.answer(); }));
  EXPECT_TRUE(delivery.succeeds());
  EXPECT_EQ(successor.calls.at(0).body, "&lt;1&gt;");
}

TEST_F(NotificationProtocolTest, failsWhileThereIsNoService) {
  EXPECT_TRUE(Delivery(notifications, {"cpu", "t", "1"}).succeeds());
  bus.connect("daemon").unregisterService("org.freedesktop.Notifications");
  EXPECT_EQ(authorization(notifications), NotificationAuthorization::denied);
  EXPECT_TRUE(Delivery(notifications, {"cpu", "t", "2"}).fails());
  const test::ScriptedDaemon successor(bus.connect("successor"), 100);
  EXPECT_TRUE(Delivery(notifications, {"cpu", "t", "3"}).succeeds());
  EXPECT_THAT(replaced(successor), ElementsAre(0));
}

TEST(NotificationActivationTest, theBusStartsTheServiceIfItCan) {
  test::PrivateBus bus;
  DBusNotifications notifications(bus.connect("program"));
  bus.makeActivatable("/bin/false");
  EXPECT_EQ(authorization(notifications), NotificationAuthorization::authorized);
  EXPECT_TRUE(Delivery(notifications, {"cpu", "t", "1"}).fails());

  // Fails once, and then the bus waits for what has been started.
  bus.makeActivatable("/bin/sh -c \"! mkdir " + bus.folder / "first" + " && mkdir " +
                      bus.folder / "second\"");
  const Delivery waiting(notifications, {"cpu", "t", "2"});
  EXPECT_TRUE(until([&] { return bus.folder.has("second"); }));
  EXPECT_EQ(waiting.reports(), 0);
  const test::ScriptedDaemon daemon(bus.connect("daemon"), 7);
  EXPECT_TRUE(waiting.succeeds());
  EXPECT_TRUE(Delivery(notifications, {"cpu", "t", "3"}).succeeds());
  EXPECT_THAT(replaced(daemon), ElementsAre(0, 7));
}

TEST(NotificationsWithoutABusTest, failAtOnce) {
  const auto folder = qgetenv("XDG_RUNTIME_DIR");
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  qputenv("XDG_RUNTIME_DIR", "/nonexistent");
  EXPECT_FALSE(sessionBus());
  qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
  EXPECT_FALSE(sessionBus());
  qputenv("XDG_RUNTIME_DIR", folder);
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");

  DBusNotifications unreachable(QDBusConnection::connectToBus("unix:path=/nonexistent/bus", "unreachable"));
  EXPECT_EQ(authorization(unreachable), NotificationAuthorization::denied);
  DBusNotifications notifications(std::nullopt);
  EXPECT_EQ(authorization(notifications), NotificationAuthorization::denied);
  const Delivery delivery(notifications, {"id", "t", "b"});
  EXPECT_EQ(delivery.reports(), 0) << "answers come later";
  EXPECT_TRUE(delivery.fails());
  bool asked = false;
  notifications.requestAuthorization([&] { asked = true; });
  EXPECT_TRUE(until([&] { return asked; }));
}

}  // namespace
}  // namespace kestrune::desktop
