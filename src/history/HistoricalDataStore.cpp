#include "history/HistoricalDataStore.h"

#include <utility>

namespace kestrune {

std::optional<DailySummary> HistoricalDataStore::load(Date date) {
  const Date day = calendar_.startOfDay(date);
  const auto known = [&] {
    const auto entry = cache->find(day);
    return entry == cache->end() ? std::nullopt : std::optional(entry->second);
  };
  // A cached record never changes, so a view that gets one has nothing to wait for and must not be evaluated
  // again because of what its own evaluation loaded.
  if (auto summary = Dependencies::untracked(known)) return summary;

  auto summary = files_.read(day);
  if (summary) {
    cache.modify([&](auto& days) { days.emplace(day, *summary); });
  } else {
    cache.get();  // a view that gets nothing is evaluated again once another one finds the day
  }
  return summary;
}

std::vector<DailySummary> HistoricalDataStore::daysBefore(Date date, int count) const {
  std::vector<DailySummary> records;
  const Date today = calendar_.startOfDay(date);
  for (int ago = 1; ago <= count; ++ago) {
    const auto day = calendar_.addingDays(today, -ago);
    if (!day) continue;
    if (auto record = files_.read(calendar_.startOfDay(*day))) records.push_back(*std::move(record));
  }
  return records;
}

}  // namespace kestrune
