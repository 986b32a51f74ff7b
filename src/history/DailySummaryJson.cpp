#include "history/DailySummaryJson.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <map>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "history/JsonReader.h"

namespace kestrune {
namespace {

// -- The shape of the file

template <class Type, class Value>
struct Field {
  std::string_view key;
  Value Type::*member;
};
template <class Type, class Value>
Field(std::string_view, Value Type::*) -> Field<Type, Value>;

// The members of each type, in the order in which they are written. Reading requires all of them.
template <class Type>
constexpr auto fields = nullptr;

template <>
constexpr auto fields<BucketStat> =
    std::tuple(Field{"sum", &BucketStat::sum}, Field{"count", &BucketStat::count},
               Field{"peak", &BucketStat::peak}, Field{"peakTime", &BucketStat::peakTime});

template <>
constexpr auto fields<HourBucket> = std::tuple(
    Field{"hour", &HourBucket::hour}, Field{"cpu", &HourBucket::cpu},
    Field{"memoryGB", &HourBucket::memoryGB}, Field{"batteryPercent", &HourBucket::batteryPercent},
    Field{"networkUpBytes", &HourBucket::networkUpBytes},
    Field{"networkDownBytes", &HourBucket::networkDownBytes},
    Field{"diskReadBytes", &HourBucket::diskReadBytes}, Field{"diskWriteBytes", &HourBucket::diskWriteBytes});

template <>
constexpr auto fields<HistoricProcess> = std::tuple(
    Field{"name", &HistoricProcess::name}, Field{"cpuSum", &HistoricProcess::cpuSum},
    Field{"cpuCount", &HistoricProcess::cpuCount}, Field{"memorySum", &HistoricProcess::memorySum});

template <>
constexpr auto fields<NetworkSSIDStat> = std::tuple(Field{"uploadBytes", &NetworkSSIDStat::uploadBytes},
                                                    Field{"downloadBytes", &NetworkSSIDStat::downloadBytes});

template <>
constexpr auto fields<DailySummary> = std::tuple(
    Field{"date", &DailySummary::date}, Field{"hours", &DailySummary::hours},
    Field{"processes", &DailySummary::processes}, Field{"networkSSIDs", &DailySummary::networkSSIDs},
    Field{"diskTotalBytes", &DailySummary::diskTotalBytes},
    Field{"diskUsedBytes", &DailySummary::diskUsedBytes},
    Field{"diskFreeBytes", &DailySummary::diskFreeBytes}, Field{"uptimeDays", &DailySummary::uptimeDays},
    Field{"uptimeHours", &DailySummary::uptimeHours}, Field{"uptimeMinutes", &DailySummary::uptimeMinutes},
    Field{"batteryHealthPercent", &DailySummary::batteryHealthPercent});

template <class Type>
concept Record = !std::is_null_pointer_v<std::remove_const_t<decltype(fields<Type>)>>;

// Calls `visit` with each field of the type, in order.
template <Record Type, class Visit>
void forEachField(Visit visit) {
  std::apply([&](const auto&... field) { (visit(field), ...); }, fields<Type>);
}

// -- Writing

struct Output {
  std::string text;
  bool isFinite = true;
};

template <class Number>
void writeDigits(Output& output, Number number) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  output.text.append(digits.data(), end);
}

void write(Output& output, std::integral auto number) {
  writeDigits(output, number);
}

void write(Output& output, double number) {
  constexpr double exactBelow = 9007199254740992.0;  // 2^53
  if (!std::isfinite(number)) {
    output.isFinite = false;
  } else if (std::abs(number) < exactBelow && std::trunc(number) == number) {
    writeDigits(output, static_cast<std::int64_t>(number));  // the shortest form could be 8e+08
  } else {
    writeDigits(output, number);
  }
}

void write(Output& output, Date date) {
  write(output, date.seconds);
}

void write(Output& output, std::string_view text) {
  const auto isPlain = [](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; };
  if (std::ranges::all_of(text, isPlain)) {
    output.text.append(1, '"').append(text) += '"';
  } else {
    using Json = nlohmann::json;
    output.text += Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
  }
}

template <Record Type>
void write(Output& output, const Type& record);

template <Record Type>
void write(Output& output, const std::vector<Type>& list) {
  char before = '[';
  for (const Type& record : list) {
    output.text += std::exchange(before, ',');
    write(output, record);
  }
  if (list.empty()) output.text += '[';
  output.text += ']';
}

template <Record Type>
void write(Output& output, const std::map<std::string, Type>& map) {
  char before = '{';
  for (const auto& [key, record] : map) {
    output.text += std::exchange(before, ',');
    write(output, std::string_view(key));
    output.text += ':';
    write(output, record);
  }
  if (map.empty()) output.text += '{';
  output.text += '}';
}

template <Record Type>
void write(Output& output, const Type& record) {
  char before = '{';
  forEachField<Type>([&](const auto& field) {
    output.text += std::exchange(before, ',');
    write(output, field.key);
    output.text += ':';
    write(output, record.*field.member);
  });
  output.text += '}';
}

// -- Reading

bool read(JsonReader& json, auto& value)
  requires requires { json.read(value); }
{
  return json.read(value);
}

bool read(JsonReader& json, Date& date) {
  return json.read(date.seconds);
}

template <Record Type>
bool read(JsonReader& json, Type& record);

template <Record Type>
bool read(JsonReader& json, std::vector<Type>& list) {
  list.clear();
  return json.readArray([&] { return read(json, list.emplace_back()); });
}

template <Record Type>
bool read(JsonReader& json, std::map<std::string, Type>& map) {
  map.clear();
  // The keys are usually sorted.
  return json.readObject(
      [&](const std::string& key) { return read(json, map.try_emplace(map.end(), key)->second); });
}

template <Record Type>
bool read(JsonReader& json, Type& record) {
  constexpr auto count = std::tuple_size_v<std::remove_const_t<decltype(fields<Type>)>>;
  unsigned seen = 0;
  const bool isObject = json.readObject([&](const std::string& key) {
    bool isKnown = false;
    bool isGood = true;
    unsigned bit = 1;
    forEachField<Type>([&](const auto& field) {
      if (!isKnown && key == field.key) {
        isKnown = true;
        isGood = read(json, record.*field.member);
        seen |= bit;
      }
      bit <<= 1U;
    });
    return isKnown ? isGood : json.skip();
  });
  return isObject && seen == (1U << count) - 1;
}

}  // namespace

EncodedDay encodeDay(const DailySummary& summary) {
  Output output;
  write(output, summary);
  if (!output.isFinite) return {.text = {}, .error = "a figure is not a finite number"};
  return {.text = std::move(output.text), .error = {}};
}

std::optional<DailySummary> decodeDay(std::string_view text) {
  JsonReader json(text);
  std::optional<DailySummary> summary(std::in_place);
  if (!read(json, *summary) || !json.isAtEnd()) summary.reset();
  return summary;
}

}  // namespace kestrune
