#pragma once

#include "settings/Preferences.h"

namespace kestrune {

// What the user has set for the alerts. Each is read anew whenever it is asked for; one that is absent, or of
// another type, has its default.
struct AlertSettings {
  explicit AlertSettings(Preferences& preferences)
      : isEnabled(preferences, "alerts.master.enabled", true),
        cpuIsEnabled(preferences, "alerts.cpu.enabled", true),
        cpuThreshold(preferences, "alerts.cpu.threshold", 80.0),
        memoryIsEnabled(preferences, "alerts.memory.enabled", true),
        memoryThreshold(preferences, "alerts.memory.threshold", "warning"),
        diskIsEnabled(preferences, "alerts.disk.enabled", true),
        diskThreshold(preferences, "alerts.disk.threshold", 10),
        networkIsEnabled(preferences, "alerts.network.enabled", false),
        networkDailyGB(preferences, "alerts.network.dailyGB", 5) {}

  Preference<bool> isEnabled;
  Preference<bool> cpuIsEnabled;
  Preference<double> cpuThreshold;  // percent of the whole machine
  Preference<bool> memoryIsEnabled;
  Preference<std::string> memoryThreshold;  // "critical", or anything else for "warning"
  Preference<bool> diskIsEnabled;
  Preference<std::int64_t> diskThreshold;  // percent free
  Preference<bool> networkIsEnabled;
  Preference<std::int64_t> networkDailyGB;  // units of 2^30 bytes
};

}  // namespace kestrune
