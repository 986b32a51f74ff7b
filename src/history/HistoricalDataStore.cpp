#include "history/HistoricalDataStore.h"

#include <utility>

namespace kestrune {

std::optional<DailySummary> HistoricalDataStore::load(Date date) {
  const Date day = calendar_.startOfDay(date);
  const auto known = [&] {
    const auto entry = cache->find(day);
    return entry == cache->end() ? std::nullopt : std::optional(entry->second);
  };
  // A record that is there stays as it is: whoever gets one has no change to wait for. So no view is
  // evaluated again because of what its own evaluation has loaded.
  if (auto summary = Dependencies::untracked(known)) return summary;

  auto summary = files_.read(day);
  if (summary) {
    cache.modify([&](auto& days) { days.emplace(day, *summary); });
  } else {
    cache.get();  // whoever gets nothing is told when the day turns up for another
  }
  return summary;
}

}  // namespace kestrune
