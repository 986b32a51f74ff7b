#pragma once

#include "settings/Preferences.h"

namespace kestrune {

// The user's settings for the alerts, read from the preferences each time.
struct AlertSettings {
  explicit AlertSettings(Preferences& preferences)
      : isEnabled(preferences, settings::alertsEnabled),
        cpuIsEnabled(preferences, settings::cpuAlertEnabled),
        cpuThreshold(preferences, settings::cpuAlertThreshold),
        memoryIsEnabled(preferences, settings::memoryAlertEnabled),
        memoryThreshold(preferences, settings::memoryAlertThreshold),
        diskIsEnabled(preferences, settings::diskAlertEnabled),
        diskThreshold(preferences, settings::diskAlertThreshold),
        networkIsEnabled(preferences, settings::networkAlertEnabled),
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
