#include "alerts/AlertTexts.h"

#include <utility>

namespace kestrune {

AlertTexts::Alert AlertTexts::highCPU(std::string identifier, double thresholdPercent, double usagePercent) {
  return {std::move(identifier), text("High CPU Usage"),
          filled("CPU above %@ for 30 s (%@ now)", {percent(thresholdPercent), percent(usagePercent)})};
}

AlertTexts::Alert AlertTexts::saturatedCore(std::string identifier, std::int64_t core, double usagePercent) {
  return {std::move(identifier), text("CPU Core Saturated"),
          filled("Core %d at %@ for 20 s — a process may be spinning", {core, percent(usagePercent)})};
}

AlertTexts::Alert AlertTexts::memoryPressure(std::string identifier, MemorySnapshot::MemoryPressure level,
                                             double usedGB, double totalGB) {
  const bool isCritical = level == MemorySnapshot::MemoryPressure::critical;
  return {std::move(identifier), filled("Memory Pressure: %@", {text(isCritical ? "Critical" : "Warning")}),
          filled("%.1f GB used of %.0f GB — consider closing unused apps", {usedGB, totalGB})};
}

AlertTexts::Alert AlertTexts::lowDisk(std::string identifier, double freePercent, double freeGB) {
  return {std::move(identifier), text("Low Disk Space"),
          filled("%@ free — %.1f GB remaining", {percent(freePercent), freeGB})};
}

AlertTexts::Alert AlertTexts::dailyData(std::string identifier, double usedGB) {
  return {std::move(identifier), text("Daily Data Usage"),
          filled("You've used %.1f GB of data today", {usedGB})};
}

}  // namespace kestrune
