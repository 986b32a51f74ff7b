#include <functional>
#include <limits>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "SampleDay.h"
#include "history/DailySummaryJson.h"

namespace kestrune {
namespace {

using Json = nlohmann::ordered_json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr Date midnight{799977600};

std::string encoded(const DailySummary& day) {
  const EncodedDay result = encodeDay(day);
  EXPECT_THAT(result.error, IsEmpty());
  return result.text;
}

bool isReadable(const std::string& text) {
  return decodeDay(text).has_value();
}

Json sampleDocument() {
  return Json::parse(encoded(test::sampleDay(midnight)));
}

// The paths of all values in a document, including itself.
std::vector<Json::json_pointer> allPaths(const Json& document) {
  std::vector<Json::json_pointer> paths;
  const std::function<void(const Json&, const Json::json_pointer&)> collect = [&](const Json& value,
                                                                                  const auto& path) {
    paths.push_back(path);
    if (!value.is_structured()) return;
    for (const auto& [key, item] : value.items()) collect(item, path / key);
  };
  collect(document, Json::json_pointer());
  return paths;
}

// True for a member of one of the types, false for an entry of a list or map.
bool isField(const Json::json_pointer& path) {
  if (path.empty()) return false;
  const std::string parent = path.parent_pointer().to_string();
  return parent != "/hours" && parent != "/processes" && parent != "/networkSSIDs";
}

// An empty day in which one key has the given JSON text as its value.
std::string dayWith(const std::string& key, const std::string& value) {
  Json document = Json::parse(encoded({.date = midnight}));
  document[key] = "HERE";
  std::string text = document.dump();
  return text.replace(text.find("\"HERE\""), 6, value);
}

TEST(DailySummaryJsonTest, writesOneCompactLine) {
  DailySummary day{.date = midnight};
  day.hours.push_back({.hour = 9,
                       .cpu = {.sum = 12.5, .count = 2, .peak = 8e8, .peakTime = midnight + 32400.5},
                       .networkUpBytes = 3});
  day.processes["sh"] = {.name = "sh", .cpuSum = 0.1, .cpuCount = 1, .memorySum = 18446744073709551615U};
  day.networkSSIDs["Wi-Fi"] = {.uploadBytes = 1, .downloadBytes = 2.5};
  day.diskTotalBytes = 7;
  EXPECT_EQ(encoded(day),
            R"({"date":799977600,"hours":[{"hour":9,)"
            R"("cpu":{"sum":12.5,"count":2,"peak":800000000,"peakTime":800010000.5},)"
            R"("memoryGB":{"sum":0,"count":0,"peak":0,"peakTime":-63114076800},)"
            R"("batteryPercent":{"sum":0,"count":0,"peak":0,"peakTime":-63114076800},)"
            R"("networkUpBytes":3,"networkDownBytes":0,"diskReadBytes":0,"diskWriteBytes":0}],)"
            R"("processes":{"sh":{"name":"sh","cpuSum":0.1,"cpuCount":1,"memorySum":18446744073709551615}},)"
            R"("networkSSIDs":{"Wi-Fi":{"uploadBytes":1,"downloadBytes":2.5}},)"
            R"("diskTotalBytes":7,"diskUsedBytes":0,"diskFreeBytes":0,)"
            R"("uptimeDays":0,"uptimeHours":0,"uptimeMinutes":0,"batteryHealthPercent":0})");
}

TEST(DailySummaryJsonTest, readsBackWhatWasWritten) {
  for (const DailySummary& day : {DailySummary{.date = midnight}, test::sampleDay(midnight),
                                  test::sampleDay({-0.1}), DailySummary{.date = Date::distantPast}}) {
    EXPECT_EQ(decodeDay(encoded(day)), day);
  }
  const DailySummary day = test::sampleDay(midnight);
  EXPECT_EQ(decodeDay(sampleDocument().dump(3, ' ', /*ensure_ascii=*/true)), day)
      << "with blanks and escapes";
}

TEST(DailySummaryJsonTest, requiresEveryKey) {
  const Json whole = sampleDocument();
  int removed = 0;
  for (const auto& path : allPaths(whole)) {
    if (!isField(path)) continue;
    Json lacking = whole;
    lacking[path.parent_pointer()].erase(path.back());
    EXPECT_FALSE(isReadable(lacking.dump())) << path.to_string();
    ++removed;
  }
  EXPECT_EQ(removed, 11 + 2 * (8 + 3 * 4) + 3 * 4 + 2 * 2);
}

TEST(DailySummaryJsonTest, acceptsNoOtherTypeOfValue) {
  const Json whole = sampleDocument();
  for (const auto& path : allPaths(whole)) {
    for (const Json& other : {Json(), Json(true), Json("5"), Json(5), Json::array(), Json::object(),
                              Json::array({5}), Json{{"a", 5}}}) {
      Json changed = whole;
      const Json old = std::exchange(changed[path], other);
      const std::string place = path.to_string();
      const bool isCollection = place == "/hours" || place == "/processes" || place == "/networkSSIDs";
      const bool isFine = (old.is_number() && other.is_number()) || (old.is_string() && other.is_string()) ||
                          (isCollection && old.type() == other.type() && other.empty());
      EXPECT_EQ(isReadable(changed.dump()), isFine) << place << " as " << other;
    }
  }
}

TEST(DailySummaryJsonTest, ignoresUnknownKeys) {
  const Json whole = sampleDocument();
  const Json unknown = Json::parse(R"({"deep":[[{"a":[]}],1e5,-0.5,true,false,null,"\u00e9]}"],"date":"x"})");
  for (const auto& path : allPaths(whole)) {
    if (!whole[path].is_object() || path.to_string() == "/processes" || path.to_string() == "/networkSSIDs") {
      continue;
    }
    Json more = whole;
    more[path]["unknown"] = unknown;
    EXPECT_EQ(decodeDay(more.dump()), test::sampleDay(midnight)) << path.to_string();
  }
}

TEST(DailySummaryJsonTest, integersAreExactOrRejected) {
  const auto uptime = [](const std::string& value) -> std::optional<std::int64_t> {
    const auto day = decodeDay(dayWith("uptimeDays", value));
    return day ? std::optional(day->uptimeDays) : std::nullopt;
  };
  const auto bytes = [](const std::string& value) -> std::optional<std::uint64_t> {
    const auto day = decodeDay(dayWith("diskFreeBytes", value));
    return day ? std::optional(day->diskFreeBytes) : std::nullopt;
  };
  EXPECT_EQ(uptime("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(uptime("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(uptime("-0"), 0);
  EXPECT_EQ(bytes("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(bytes("9007199254740993"), 9007199254740993U);
  for (const auto* whole : {"5.0", "5e0", "0.5E+1", "50e-1", "5"}) {
    EXPECT_EQ(uptime(whole), 5) << whole;
    EXPECT_EQ(bytes(whole), 5) << whole;
  }
  for (const auto* bad : {"9223372036854775808", "-9223372036854775809", "9223372036854775807.0", "-1e19",
                          "5.5", "1e-1", "1e400", "99999999999999999999"}) {
    EXPECT_EQ(uptime(bad), std::nullopt) << bad;
  }
  for (const auto* bad : {"18446744073709551616", "18446744073709551615.0", "-1", "-1.0", "0.1"}) {
    EXPECT_EQ(bytes(bad), std::nullopt) << bad;
  }
}

TEST(DailySummaryJsonTest, acceptsOnlyValidJson) {
  const auto date = [](const std::string& value) { return isReadable(dayWith("date", value)); };
  for (const auto* number : {"0", "-0.0", "1e5", "1E-5", "1.5e+300", "123456789012345678901234567890"}) {
    EXPECT_TRUE(date(number)) << number;
  }
  for (const auto* number :
       {"",    "-",   "+1",  "01",       "-01",   ".5",     "5.",  "5.e1", "5e",  "5e+",  "0x10",
        "inf", "nan", "NaN", "Infinity", "1e999", "-1e999", "1 2", "1,",   "--1", "1e5.0"}) {
    EXPECT_FALSE(date(number)) << number;
  }
  const auto unknown = [](const std::string& value) { return isReadable(dayWith("unknown", value)); };
  for (const auto* value : {"\"\\ud83d\\ude00\"", "\"\\u0000\"", "[ ]", "{ }", "[1 , 2]"}) {
    EXPECT_TRUE(unknown(value)) << value;
  }
  for (const auto* value :
       {"\"\\ud83d\"", "\"\\x\"", "\"\\u12\"", "\"\t\"", "\"\xE9\"", "\"\xC0\x80\"", "\"\\\"", "tru", "nul",
        "[1,]", "[1", "{\"a\":1,}", "{\"a\"}", "{1:2}", "{,}", "'a'", "]"}) {
    EXPECT_FALSE(unknown(value)) << value;
  }
  const std::string whole = encoded(test::sampleDay(midnight));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(isReadable(whole.substr(0, length))) << "cut after " << length;
  }
  for (const auto* tail : {"}", "x", ",", "{}", "\\", "\"", "\xEF\xBB\xBF"})
    EXPECT_FALSE(isReadable(whole + tail));
  EXPECT_FALSE(isReadable(whole + std::string(1, '\0')));
  EXPECT_FALSE(isReadable("null"));
  EXPECT_FALSE(isReadable("[" + whole + "]"));
}

TEST(DailySummaryJsonTest, rejectsDeepNesting) {
  constexpr std::size_t depth = 2'000'000;
  EXPECT_TRUE(isReadable(dayWith("unknown", std::string(100, '[') + std::string(100, ']'))));
  EXPECT_FALSE(isReadable(dayWith("unknown", std::string(depth, '[') + std::string(depth, ']'))));
  EXPECT_FALSE(isReadable(std::string(depth, '[')));
  std::string objects;
  for (std::size_t i = 0; i < depth; ++i) objects += "{\"a\":";
  EXPECT_FALSE(isReadable(dayWith("unknown", objects)));
}

TEST(DailySummaryJsonTest, nanAndInfinityAreNotWritten) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double bad : {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity}) {
    std::vector<DailySummary> days(5, test::sampleDay(midnight));
    days[0].date.seconds = bad;
    days[1].hours[1].cpu.peakTime.seconds = bad;
    days[2].hours[0].diskWriteBytes = bad;
    days[3].processes.begin()->second.cpuSum = bad;
    days[4].networkSSIDs.rbegin()->second.downloadBytes = bad;
    for (const DailySummary& day : days) {
      const EncodedDay result = encodeDay(day);
      EXPECT_THAT(result.error, Not(IsEmpty()));
      EXPECT_THAT(result.text, IsEmpty());
    }
  }
}

TEST(DailySummaryJsonTest, invalidUtf8IsReplaced) {
  DailySummary day{.date = midnight};
  day.processes["\xFF\xFE"] = {.name = "caf\xE9"};
  day.networkSSIDs[std::string("a\0\xC3", 3)] = {};
  const std::string text = encoded(day);
  EXPECT_THAT(text, HasSubstr("caf\uFFFD"));
  const auto read = decodeDay(text);
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->processes.contains("\uFFFD\uFFFD"));
  EXPECT_TRUE(read->networkSSIDs.contains(std::string("a\0", 2) + "\uFFFD"));
}

}  // namespace
}  // namespace kestrune
