#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "SampleDay.h"
#include "history/DailySummaryJson.h"

namespace kestrune {
namespace {

using Json = nlohmann::ordered_json;

constexpr Date midnight{799977600};

std::string encoded(const DailySummary& day) {
  const EncodedDay result = encodeDay(day);
  EXPECT_EQ(result.error, "");
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

bool isCollection(const Json::json_pointer& path) {
  return !path.empty() &&
         (path.back() == "hours" || path.back() == "processes" || path.back() == "networkSSIDs");
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
    if (path.empty() || isCollection(path.parent_pointer())) continue;
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
      const bool isFine = (old.is_number() && other.is_number()) || (old.is_string() && other.is_string()) ||
                          (isCollection(path) && old.type() == other.type() && other.empty());
      EXPECT_EQ(isReadable(changed.dump()), isFine) << path << " as " << other;
    }
  }
}

TEST(DailySummaryJsonTest, ignoresUnknownKeys) {
  const Json whole = sampleDocument();
  const Json unknown = Json::parse(R"({"deep":[[{"a":[]}],1e5,-0.5,true,false,null,"\u00e9]}"],"date":"x"})");
  for (const auto& path : allPaths(whole)) {
    if (!whole[path].is_object() || isCollection(path)) continue;
    Json more = whole;
    more[path]["unknown"] = unknown;
    EXPECT_EQ(decodeDay(more.dump()), test::sampleDay(midnight)) << path.to_string();
  }
}

TEST(DailySummaryJsonTest, integersAreExactOrRejected) {
  using Signed = std::optional<std::int64_t>;
  using Unsigned = std::optional<std::uint64_t>;
  struct Case {
    const char* text;
    Signed uptime;
    Unsigned bytes;
  };
  for (const auto& [text, uptime, bytes] :
       {Case{"-9223372036854775808", std::numeric_limits<std::int64_t>::min(), {}},
        Case{"9223372036854775807", std::numeric_limits<std::int64_t>::max(), 9223372036854775807U},
        Case{"18446744073709551615", {}, std::numeric_limits<std::uint64_t>::max()},
        Case{"9007199254740993", 9007199254740993, 9007199254740993U},
        Case{"-0", 0, {}},
        Case{"5.0", 5, 5},
        Case{"5e0", 5, 5},
        Case{"0.5E+1", 5, 5},
        Case{"50e-1", 5, 5},
        Case{"5", 5, 5},
        Case{"-1", -1, {}},
        Case{"-1.0", -1, {}},
        Case{"9223372036854775808", {}, 9223372036854775808U},
        Case{"-9223372036854775809", {}, {}},
        Case{"-1e19", {}, {}},
        Case{"18446744073709551616", {}, {}},
        Case{"18446744073709551615.0", {}, {}},
        Case{"5.5", {}, {}},
        Case{"0.1", {}, {}},
        Case{"1e-1", {}, {}},
        Case{"1e400", {}, {}},
        Case{"99999999999999999999", {}, {}}}) {
    const auto days = decodeDay(dayWith("uptimeDays", text));
    EXPECT_EQ(days ? Signed(days->uptimeDays) : std::nullopt, uptime) << text;
    const auto free = decodeDay(dayWith("diskFreeBytes", text));
    EXPECT_EQ(free ? Unsigned(free->diskFreeBytes) : std::nullopt, bytes) << text;
  }
  EXPECT_FALSE(isReadable(dayWith("uptimeDays", "9223372036854775807.0")));
}

TEST(DailySummaryJsonTest, acceptsOnlyValidJson) {
  const auto expect = [](bool isValid, const char* key, std::initializer_list<const char*> values) {
    for (const auto* value : values) EXPECT_EQ(isReadable(dayWith(key, value)), isValid) << value;
  };
  expect(true, "date", {"0", "-0.0", "1e5", "1E-5", "1.5e+300", "123456789012345678901234567890"});
  expect(false, "date",
         {"",    "-",   "+1",  "01",       "-01",   ".5",     "5.",  "5.e1", "5e",  "5e+",  "0x10",
          "inf", "nan", "NaN", "Infinity", "1e999", "-1e999", "1 2", "1,",   "--1", "1e5.0"});
  expect(true, "unknown", {"\"\\ud83d\\ude00\"", "\"\\u0000\"", "[ ]", "{ }", "[1 , 2]"});
  expect(false, "unknown",
         {"\"\\ud83d\"", "\"\\x\"", "\"\\u12\"", "\"\t\"", "\"\xE9\"", "\"\xC0\x80\"", "\"\\\"", "tru", "nul",
          "[1,]", "[1", "{\"a\":1,}", "{\"a\"}", "{1:2}", "{,}", "'a'", "]"});
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
      EXPECT_NE(encodeDay(day).error, "");
      EXPECT_EQ(encodeDay(day).text, "");
    }
  }
}

TEST(DailySummaryJsonTest, invalidUtf8IsReplaced) {
  DailySummary day{.date = midnight};
  day.processes["\xFF\xFE"] = {.name = "caf\xE9"};
  day.networkSSIDs[std::string("a\0\xC3", 3)] = {};
  const std::string text = encoded(day);
  EXPECT_THAT(text, testing::HasSubstr("caf\uFFFD"));
  const auto read = decodeDay(text);
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->processes.contains("\uFFFD\uFFFD"));
  EXPECT_TRUE(read->networkSSIDs.contains(std::string("a\0", 2) + "\uFFFD"));
}

}  // namespace
}  // namespace kestrune
