#include "settings/Preferences.h"

namespace kestrune {

Preferences::Preferences(platform::PreferenceStorage& storage) : storage_(storage) {
  for (auto& [key, value] : storage.load()) slots_.emplace(key, std::make_unique<Slot>(value));
}

void Preferences::set(const std::string& key, platform::PreferenceValue value) {
  storage_.store(key, value);
  slot(key).set(std::move(value));
}

Preferences::Slot& Preferences::slot(const std::string& key) const {
  auto& found = slots_[key];
  if (!found) found = std::make_unique<Slot>();
  return *found;
}

}  // namespace kestrune
