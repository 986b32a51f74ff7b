#include <algorithm>
#include <optional>

#include <nlohmann/json.hpp>

#include "Fuzzer.h"
#include "history/DayFile.h"

using namespace kestrune;

namespace {

using Json = nlohmann::json;

// A text that another reader can't parse ends the run as a finding. Absent: the text has a number too large
// for that reader, in a field that we don't read.
std::optional<Json> asOthersReadIt(const std::string& text) {
  try {
    return Json::parse(text);
  } catch (const Json::out_of_range&) {
    return std::nullopt;
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const auto day = decodeDay(text);
  if (!day) return 0;

  if (const auto document = asOthersReadIt(text)) {
    fuzz::require(document->size() >= 11);
    fuzz::require(document->at("batteryHealthPercent").get<double>() ==
                  static_cast<double>(day->batteryHealthPercent));
    fuzz::require(document->at("date").get<double>() == day->date.seconds);
    fuzz::require(document->at("hours").size() == day->hours.size());
    fuzz::require(document->at("processes").size() == day->processes.size());
  }

  // Survives writing and reading, by another reader too.
  const EncodedDay encoded = encodeDay(*day);
  fuzz::require(encoded.error.empty());
  fuzz::require(decodeDay(encoded.text) == day);
  const auto again = asOthersReadIt(encoded.text);
  fuzz::require(again && again->size() == 11);

  // Computed figures hold for any values.
  fuzz::require(day->topProcesses().size() == std::min<std::size_t>(5, day->processes.size()));
  fuzz::require(day->ssidsByTraffic().size() == day->networkSSIDs.size());
  fuzz::require(day->hours.empty() <= (day->batteryStartPercent() == 0 && day->averageCPU() == 0));
  return 0;
}
