#include "runtime/NotificationCenter.h"

#include <utility>
#include <vector>

namespace kestrune {

NotificationCenter::Subscription NotificationCenter::observe(std::string name, Handler handler) {
  auto token = std::make_shared<char>();
  entries_.emplace(nextId_++, Entry{std::move(name), std::move(handler), token});
  return Subscription(std::move(token));
}

void NotificationCenter::post(std::string_view name, const std::any& object) {
  std::erase_if(entries_, [](const auto& entry) { return entry.second.token.expired(); });
  std::vector<std::uint64_t> addressed;
  for (const auto& [id, entry] : entries_) {
    if (entry.name == name) addressed.push_back(id);
  }
  for (const auto id : addressed) {
    // A handler may unsubscribe itself or others.
    const auto found = entries_.find(id);
    if (found == entries_.end() || found->second.token.expired()) continue;
    const Handler handler = found->second.handler;
    handler(object);
  }
}

}  // namespace kestrune
