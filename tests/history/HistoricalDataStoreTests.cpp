#include <gmock/gmock.h>

#include "SampleDay.h"
#include "history/DailySummaryJson.h"
#include "history/HistoricalDataStore.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr Date midnight{799977600};  // 2026-05-09T00:00:00Z
constexpr double day = 86400;
constexpr const char* fileName = "2026-05-09.json";

class HistoricalDataStoreTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  void keep(const std::string& name, const DailySummary& summary) {
    historyFolder.files[name] = encodeDay(summary).text;
  }

  DayFiles files{historyFolder, calendar};
  HistoricalDataStore store{files, calendar};
};

TEST_F(HistoricalDataStoreTest, readsADayOnceAndKeepsIt) {
  const DailySummary summary = test::sampleDay(midnight);
  keep(fileName, summary);
  EXPECT_EQ(store.load(midnight + 50000.5), summary);
  historyFolder.files.clear();
  EXPECT_EQ(store.load(midnight), summary);
  keep(fileName, {.date = midnight});
  EXPECT_EQ(store.load(midnight + (day - 0.001)), summary);
  EXPECT_THAT(historyFolder.reads, ElementsAre(fileName));
  EXPECT_THAT(*store.cache, SizeIs(1));
}

TEST_F(HistoricalDataStoreTest, failuresAreNotCached) {
  EXPECT_EQ(store.load(midnight), std::nullopt);
  std::string lacking = encodeDay(test::sampleDay(midnight)).text;
  lacking.erase(lacking.find(",\"uptimeDays\":12"), 16);
  historyFolder.files[fileName] = lacking;
  EXPECT_EQ(store.load(midnight), std::nullopt);
  EXPECT_THAT(*store.cache, SizeIs(0));
  keep(fileName, test::sampleDay(midnight));
  EXPECT_EQ(store.load(midnight), test::sampleDay(midnight));
  EXPECT_THAT(historyFolder.reads, SizeIs(3));
}

TEST_F(HistoricalDataStoreTest, readsTheDaysBeforeAnInstantEachTime) {
  for (const auto* name : {"2026-05-10", "2026-05-09", "2026-05-07", "2026-05-06"}) {
    keep(name + std::string(".json"), test::sampleDay({static_cast<double>(name[9])}));
  }
  historyFolder.files["2026-05-08.json"] = "damaged";
  const auto dates = [&] {
    std::vector<double> found;
    for (const DailySummary& record : store.daysBefore(midnight + (day + 50000), 3)) {
      found.push_back(record.date.seconds);
    }
    return found;
  };
  EXPECT_THAT(dates(), ElementsAre('9', '7')) << "three days, the latest first, without the damaged one";
  store.load(midnight);
  keep(fileName, {.date = {1}});
  EXPECT_THAT(dates(), ElementsAre(1, '7')) << "as the file is now";
  calendar.isOutOfRange = true;
  EXPECT_THAT(dates(), IsEmpty());
}

TEST_F(HistoricalDataStoreTest, mayBeReadWhileAViewIsEvaluated) {
  int changes = 0;
  Dependencies view([&] { ++changes; });
  const auto evaluate = [&](Date date) { return view.track([&] { return store.load(date); }); };
  EXPECT_EQ(evaluate(midnight), std::nullopt);
  EXPECT_EQ(changes, 0);

  // Another view loads the file.
  keep(fileName, test::sampleDay(midnight));
  store.load(midnight);
  EXPECT_EQ(changes, 1) << "so that this view shows it too";
  EXPECT_TRUE(evaluate(midnight));

  keep("2026-05-10.json", {.date = midnight + day});
  EXPECT_TRUE(evaluate(midnight + day));
  EXPECT_TRUE(view.empty()) << "a cached record never changes";
  EXPECT_EQ(changes, 1) << "its own load is no change";
}

}  // namespace
}  // namespace kestrune
