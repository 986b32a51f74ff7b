#include "settings/Preferences.h"

#include "settings/Settings.h"

namespace kestrune {
namespace {

template <class T>
void writeDefault(Preferences& preferences, const Setting<T>& setting) {
  preferences.set(std::string(setting.key), T(setting.fallback));
}

}  // namespace

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

void resetAllSettings(Preferences& preferences) {
  std::apply([&](const auto&... each) { (writeDefault(preferences, each), ...); }, settings::reset);
}

}  // namespace kestrune
