#include "settings/SettingsReset.h"

#include "settings/Settings.h"

namespace kestrune {
namespace {

template <class T>
void writeDefault(Preferences& preferences, const Setting<T>& setting) {
  preferences.set(std::string(setting.key), T(setting.fallback));
}

}  // namespace

void resetAllSettings(Preferences& preferences) {
  std::apply([&](const auto&... each) { (writeDefault(preferences, each), ...); }, settings::reset);
}

}  // namespace kestrune
