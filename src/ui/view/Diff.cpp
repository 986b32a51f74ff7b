#include "ui/view/Diff.h"

#include <string_view>
#include <unordered_map>

namespace kestrune::ui {

bool sameKind(const View& a, const View& b) {
  if (a.content.index() != b.content.index()) return false;
  const auto* component = a.as<ComponentContent>();
  return component == nullptr || component->type == b.as<ComponentContent>()->type;
}

std::vector<std::optional<std::size_t>> matchChildren(const std::vector<const View*>& before,
                                                      const std::vector<View>& after) {
  std::unordered_map<std::string_view, std::size_t> keyed;
  std::vector<std::size_t> unkeyed;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i]->key.empty()) {
      unkeyed.push_back(i);
    } else {
      keyed.emplace(before[i]->key, i);
    }
  }

  std::vector<std::optional<std::size_t>> matches(after.size());
  std::size_t place = 0;
  for (std::size_t i = 0; i < after.size(); ++i) {
    std::optional<std::size_t> old;
    if (after[i].key.empty()) {
      if (place < unkeyed.size()) old = unkeyed[place];
      ++place;
    } else if (const auto found = keyed.find(after[i].key); found != keyed.end()) {
      old = found->second;
      keyed.erase(found);  // a duplicate key continues once
    }
    if (old && sameKind(*before[*old], after[i])) matches[i] = old;
  }
  return matches;
}

}  // namespace kestrune::ui
