#include <gmock/gmock.h>

#include "runtime/NotificationCenter.h"

namespace kestrune {
namespace {

using testing::ElementsAre;

class NotificationCenterTest : public testing::Test {
 protected:
  NotificationCenter center;
  std::vector<std::string> heard;

  auto observe(const std::string& name, const std::string& as) {
    return center.observe(name, [this, as](const std::any&) { heard.push_back(as); });
  }
};

TEST_F(NotificationCenterTest, handlersMaySubscribeAndUnsubscribe) {
  NotificationCenter::Subscription victim;
  NotificationCenter::Subscription late;
  const auto first = center.observe("opened", [&](const std::any&) {
    if (heard.empty()) late = observe("opened", "late");
    victim = {};
  });
  victim = observe("opened", "victim");
  const auto last = observe("opened", "last");
  center.post("opened");
  EXPECT_THAT(heard, ElementsAre("last"));
  center.post("opened");
  EXPECT_THAT(heard, ElementsAre("last", "last", "late"));
}

TEST_F(NotificationCenterTest, handlerMayUnsubscribeItself) {
  NotificationCenter::Subscription own;
  const auto marker = std::make_shared<int>(0);
  own = center.observe("opened", [&, marker](const std::any&) {
    own = {};
    center.post("opened");
    ++*marker;
  });
  center.post("opened");
  EXPECT_EQ(*marker, 1);
  EXPECT_EQ(marker.use_count(), 1);
}

TEST(NotificationCenterLifetime, centreMayDieBeforeSubscriptions) {
  std::optional<NotificationCenter> center(std::in_place);
  const auto kept = std::make_shared<int>(1);
  const auto subscription = center->observe("opened", [kept](const std::any&) {});
  center.reset();
  EXPECT_EQ(kept.use_count(), 1);
}

}  // namespace
}  // namespace kestrune
