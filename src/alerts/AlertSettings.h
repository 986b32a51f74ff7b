#pragma once

#include "settings/Preferences.h"

namespace kestrune {

// The user's settings for the alerts, read from the preferences each time.
struct AlertSettings {
  explicit AlertSettings(Preferences& preferences)
      : isEnabled(preferences, settings::alerts),
        cpuIsEnabled(preferences, settings::cpuAlert),
        cpuThreshold(preferences, settings::cpuAlertPercent),
        memoryIsEnabled(preferences, settings::memoryAlert),
        memoryThreshold(preferences, settings::memoryAlertPressure),
        diskIsEnabled(preferences, settings::diskAlert),
        diskThreshold(preferences, settings::diskAlertPercentFree),
        networkIsEnabled(preferences, settings::networkAlert),
        networkDailyGB(preferences, settings::networkAlertDailyGB) {}

  Preference<bool> isEnabled;
  Preference<bool> cpuIsEnabled;
  Preference<double> cpuThreshold;
  Preference<bool> memoryIsEnabled;
  Preference<std::string> memoryThreshold;
  Preference<bool> diskIsEnabled;
  Preference<std::int64_t> diskThreshold;
  Preference<bool> networkIsEnabled;
  Preference<std::int64_t> networkDailyGB;
};

}  // namespace kestrune
