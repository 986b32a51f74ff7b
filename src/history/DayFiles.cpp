#include "history/DayFiles.h"

#include "history/DailySummaryJson.h"

namespace kestrune {

std::string DayFiles::name(Date midnight) const {
  return dayName(midnight) + ".json";
}

std::string DayFiles::dayName(Date midnight) const {
  if (!dayFileFormatter_) dayFileFormatter_ = calendar_.dayFormatter();
  return dayFileFormatter_(midnight);
}

std::optional<DailySummary> DayFiles::read(Date midnight) const {
  const auto text = storage_.read(name(midnight));
  return text ? decodeDay(*text) : std::nullopt;
}

std::optional<std::string> DayFiles::write(const DailySummary& summary) {
  const EncodedDay day = encodeDay(summary);
  if (!day.error.empty()) return day.error;
  return storage_.write(name(summary.date), day.text);
}

}  // namespace kestrune
