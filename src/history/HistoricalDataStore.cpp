#include "history/HistoricalDataStore.h"

namespace kestrune {

std::optional<DailySummary> HistoricalDataStore::load(Date date) {
  const Date day = calendar_.startOfDay(date);
  // A record that is there stays as it is, so whoever gets one has no change to wait for. That keeps a view
  // from being evaluated again because of what its own evaluation has loaded.
  const auto& days = Dependencies::untracked([&]() -> const auto& { return cache.get(); });
  if (const auto known = days.find(day); known != days.end()) return known->second;

  auto summary = files_.read(day);
  if (summary) {
    cache.modify([&](auto& cached) { cached.emplace(day, *summary); });
  } else {
    cache.get();  // whoever gets nothing is told when the day turns up for another
  }
  return summary;
}

}  // namespace kestrune
