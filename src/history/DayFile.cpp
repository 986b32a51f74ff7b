#include "history/DayFile.h"

#include <charconv>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <utility>

#include <nlohmann/json.hpp>

namespace kestrune {
namespace {

using Json = nlohmann::json;

// ---- writing

class Writer {
 public:
  template <class Write>
  void object(Write write) {
    separate();
    text_ += '{';
    write();
    text_ += '}';
  }
  template <class Write>
  void object(std::string_view key, Write write) {
    member(key);
    object(write);
  }
  template <class List, class Write>
  void array(std::string_view key, const List& list, Write write) {
    member(key);
    text_ += '[';
    for (const auto& each : list) object([&] { write(each); });
    text_ += ']';
  }

  void number(std::string_view key, std::integral auto value) {
    member(key);
    append(value);
  }
  void number(std::string_view key, double value) {
    member(key);
    isFinite_ = isFinite_ && std::isfinite(value);
    append(value);
  }
  void string(std::string_view key, const std::string& value) {
    member(key);
    quote(value);
  }

  EncodedDay take() && {
    if (!isFinite_) return {.text = {}, .error = "A figure is not a finite number."};
    return {.text = std::move(text_), .error = {}};
  }

 private:
  void member(std::string_view key) {
    separate();
    quote(key);
    text_ += ':';
  }
  void separate() {
    const bool isFirst = text_.empty() || text_.back() == '{' || text_.back() == '[' || text_.back() == ':';
    if (!isFirst) text_ += ',';
  }
  void quote(std::string_view value) {
    text_ += Json(value).dump(-1, ' ', false, Json::error_handler_t::replace);
  }
  void append(auto value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    text_.append(digits.data(), end);
  }

  std::string text_;
  bool isFinite_ = true;
};

void write(Writer& writer, std::string_view key, const BucketStat& stat) {
  writer.object(key, [&] {
    writer.number("sum", stat.sum);
    writer.number("count", stat.count);
    writer.number("peak", stat.peak);
    writer.number("peakTime", stat.peakTime.seconds);
  });
}

void write(Writer& writer, const HourBucket& hour) {
  writer.number("hour", hour.hour);
  write(writer, "cpu", hour.cpu);
  write(writer, "memoryGB", hour.memoryGB);
  write(writer, "batteryPercent", hour.batteryPercent);
  writer.number("networkUpBytes", hour.networkUpBytes);
  writer.number("networkDownBytes", hour.networkDownBytes);
  writer.number("diskReadBytes", hour.diskReadBytes);
  writer.number("diskWriteBytes", hour.diskWriteBytes);
}

void write(Writer& writer, const DailySummary& summary) {
  writer.number("date", summary.date.seconds);
  writer.array("hours", summary.hours, [&](const HourBucket& hour) { write(writer, hour); });
  writer.object("processes", [&] {
    for (const auto& [name, process] : summary.processes) {
      writer.object(name, [&] {
        writer.string("name", process.name);
        writer.number("cpuSum", process.cpuSum);
        writer.number("cpuCount", process.cpuCount);
        writer.number("memorySum", process.memorySum);
      });
    }
  });
  writer.object("networkSSIDs", [&] {
    for (const auto& [name, network] : summary.networkSSIDs) {
      writer.object(name, [&] {
        writer.number("uploadBytes", network.uploadBytes);
        writer.number("downloadBytes", network.downloadBytes);
      });
    }
  });
  writer.number("diskTotalBytes", summary.diskTotalBytes);
  writer.number("diskUsedBytes", summary.diskUsedBytes);
  writer.number("diskFreeBytes", summary.diskFreeBytes);
  writer.number("uptimeDays", summary.uptimeDays);
  writer.number("uptimeHours", summary.uptimeHours);
  writer.number("uptimeMinutes", summary.uptimeMinutes);
  writer.number("batteryHealthPercent", summary.batteryHealthPercent);
}

// ---- reading

// 2^63 and 2^64, the first doubles beyond what the integers hold.
constexpr double beyondSigned = 9223372036854775808.0;
constexpr double beyondUnsigned = 18446744073709551616.0;

bool read(const Json& json, double& value) {
  if (!json.is_number()) return false;
  value = json.get<double>();
  return std::isfinite(value);
}

bool read(const Json& json, Date& date) {
  return read(json, date.seconds);
}

bool isWhole(double value, double least, double beyond) {
  return value >= least && value < beyond && std::trunc(value) == value;
}

bool read(const Json& json, std::int64_t& value) {
  if (json.is_number_float()) {
    const auto number = json.get<double>();
    if (!isWhole(number, -beyondSigned, beyondSigned)) return false;
    value = static_cast<std::int64_t>(number);
    return true;
  }
  if (!json.is_number_integer()) return false;
  if (json.is_number_unsigned() && !std::in_range<std::int64_t>(json.get<std::uint64_t>())) {
    return false;
  }
  value = json.get<std::int64_t>();
  return true;
}

bool read(const Json& json, std::uint64_t& value) {
  if (json.is_number_float()) {
    const auto number = json.get<double>();
    if (!isWhole(number, 0, beyondUnsigned)) return false;
    value = static_cast<std::uint64_t>(number);
    return true;
  }
  if (!json.is_number_integer()) return false;
  if (!json.is_number_unsigned() && json.get<std::int64_t>() < 0) return false;
  value = json.get<std::uint64_t>();
  return true;
}

bool read(const Json& json, std::string& value) {
  if (!json.is_string()) return false;
  value = json.get_ref<const std::string&>();
  return true;
}

bool read(const Json& json, BucketStat& stat);
bool read(const Json& json, HourBucket& hour);
bool read(const Json& json, HistoricProcess& process);
bool read(const Json& json, NetworkSSIDStat& network);
template <class Value>
bool read(const Json& json, std::vector<Value>& list);
template <class Value>
bool read(const Json& json, std::map<std::string, Value>& map);

// The members of one object, each of which has to be there.
class Members {
 public:
  explicit Members(const Json& json) : json_(json), isGood_(json.is_object()) {}

  template <class Value>
  Members& operator()(const char* key, Value& value) {
    if (!isGood_) return *this;
    const auto found = json_.find(key);
    isGood_ = found != json_.end() && read(*found, value);
    return *this;
  }
  bool areGood() const { return isGood_; }

 private:
  const Json& json_;
  bool isGood_;
};

bool read(const Json& json, BucketStat& stat) {
  return Members(json)("sum", stat.sum)("count", stat.count)("peak", stat.peak)("peakTime", stat.peakTime)
      .areGood();
}

bool read(const Json& json, HourBucket& hour) {
  return Members(json)("hour", hour.hour)("cpu", hour.cpu)("memoryGB", hour.memoryGB)(
             "batteryPercent", hour.batteryPercent)("networkUpBytes", hour.networkUpBytes)(
             "networkDownBytes", hour.networkDownBytes)("diskReadBytes", hour.diskReadBytes)(
             "diskWriteBytes", hour.diskWriteBytes)
      .areGood();
}

bool read(const Json& json, HistoricProcess& process) {
  return Members(json)("name", process.name)("cpuSum", process.cpuSum)("cpuCount", process.cpuCount)(
             "memorySum", process.memorySum)
      .areGood();
}

bool read(const Json& json, NetworkSSIDStat& network) {
  return Members(json)("uploadBytes", network.uploadBytes)("downloadBytes", network.downloadBytes).areGood();
}

template <class Value>
bool read(const Json& json, std::vector<Value>& list) {
  if (!json.is_array()) return false;
  list.resize(json.size());
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (!read(json[i], list[i])) return false;
  }
  return true;
}

template <class Value>
bool read(const Json& json, std::map<std::string, Value>& map) {
  if (!json.is_object()) return false;
  for (const auto& [key, value] : json.items()) {
    if (!read(value, map[key])) return false;
  }
  return true;
}

bool read(const Json& json, DailySummary& summary) {
  return Members(json)("date", summary.date)("hours", summary.hours)("processes", summary.processes)(
             "networkSSIDs", summary.networkSSIDs)("diskTotalBytes", summary.diskTotalBytes)(
             "diskUsedBytes", summary.diskUsedBytes)("diskFreeBytes", summary.diskFreeBytes)(
             "uptimeDays", summary.uptimeDays)("uptimeHours", summary.uptimeHours)(
             "uptimeMinutes", summary.uptimeMinutes)("batteryHealthPercent", summary.batteryHealthPercent)
      .areGood();
}

}  // namespace

EncodedDay encodeDay(const DailySummary& summary) {
  Writer writer;
  writer.object([&] { write(writer, summary); });
  return std::move(writer).take();
}

std::optional<DailySummary> decodeDay(std::string_view text) {
  const Json json = Json::parse(text, nullptr, false);
  DailySummary summary;
  return !json.is_discarded() && read(json, summary) ? std::optional(std::move(summary)) : std::nullopt;
}

}  // namespace kestrune
