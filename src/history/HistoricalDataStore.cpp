#include "history/HistoricalDataStore.h"

namespace kestrune {

std::optional<DailySummary> HistoricalDataStore::load(Date date) {
  const Date day = calendar_.startOfDay(date);
  const auto known = cache->find(day);
  if (known != cache->end()) return known->second;
  auto summary = files_.read(day);
  if (summary) cache.modify([&](auto& days) { days.emplace(day, *summary); });
  return summary;
}

}  // namespace kestrune
