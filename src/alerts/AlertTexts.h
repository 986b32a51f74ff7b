#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/UserNotifications.h"
#include "providers/MemoryProvider.h"
#include "texts/Catalogue.h"
#include "texts/LocaleFormats.h"
#include "texts/TextFormat.h"

namespace kestrune {

// The alerts in words, for the user's language and locale. A GB has 2^30 bytes. Main thread only.
class AlertTexts {
 public:
  using Alert = platform::UserNotification;

  // Both must outlive the texts.
  AlertTexts(const Catalogue& texts, LocaleFormats& formats) : texts_(texts), formats_(formats) {}

  Alert highCPU(std::string identifier, double thresholdPercent, double usagePercent);
  // `core` counts from 1.
  Alert saturatedCore(std::string identifier, std::int64_t core, double usagePercent);
  Alert memoryPressure(std::string identifier, MemorySnapshot::MemoryPressure level, double usedGB,
                       double totalGB);
  Alert lowDisk(std::string identifier, double freePercent, double freeGB);
  Alert dailyData(std::string identifier, double usedGB);

 private:
  std::string text(std::string_view key) const { return std::string(texts_.text(key)); }
  std::string filled(std::string_view key, const std::vector<TextArgument>& arguments) const {
    return formatText(texts_.text(key), arguments, formats_.decimalMark());
  }
  std::string percent(double value) { return formats_.percent(value / 100, 0); }

  const Catalogue& texts_;
  LocaleFormats& formats_;
};

}  // namespace kestrune
