#include "settings/SettingsReset.h"

#include <array>
#include <cstdint>

namespace kestrune {

void resetAllSettings(Preferences& preferences) {
  using Value = platform::PreferenceValue;
  struct Setting {
    const char* key;
    Value value;
  };
  const std::array<Setting, 18> settings = {{{"metrics.cpu.menubar.enabled", true},
                                             {"metrics.memory.menubar.enabled", true},
                                             {"metrics.disk.menubar.enabled", false},
                                             {"metrics.network.menubar.enabled", false},
                                             {"metrics.processes.menubar.enabled", true},
                                             {"metrics.ip.menubar.enabled", false},
                                             {"metrics.audio.menubar.enabled", false},
                                             {"alerts.master.enabled", true},
                                             {"alerts.cpu.enabled", true},
                                             {"alerts.cpu.threshold", 80.0},
                                             {"alerts.memory.enabled", true},
                                             {"alerts.memory.threshold", std::string("warning")},
                                             {"alerts.disk.enabled", true},
                                             {"alerts.disk.threshold", std::int64_t{10}},
                                             {"alerts.network.enabled", false},
                                             {"alerts.network.dailyGB", std::int64_t{5}},
                                             {"history.retentionDays", std::int64_t{30}},
                                             {"ui.sandbox.showFolderTab", true}}};
  for (const auto& [key, value] : settings) preferences.set(key, value);
}

}  // namespace kestrune
