#include "alerts/AlertTexts.h"

#include <utility>

#include "texts/TextFormat.h"

namespace kestrune {

AlertTexts::Alert AlertTexts::highCPU(std::string identifier, double thresholdPercent, double usagePercent) {
  return {std::move(identifier), text("High CPU Usage"),
          formatText(texts_.text("CPU above %@ for 30 s (%@ now)"),
                     {percent(thresholdPercent), percent(usagePercent)})};
}

AlertTexts::Alert AlertTexts::saturatedCore(std::string identifier, std::int64_t core, double usagePercent) {
  return {std::move(identifier), text("CPU Core Saturated"),
          formatText(texts_.text("Core %d at %@ for 20 s — a process may be spinning"),
                     {core, percent(usagePercent)})};
}

AlertTexts::Alert AlertTexts::memoryPressure(std::string identifier, MemorySnapshot::MemoryPressure level,
                                             double usedGB, double totalGB) {
  const bool isCritical = level == MemorySnapshot::MemoryPressure::critical;
  return {
      std::move(identifier),
      formatText(texts_.text("Memory Pressure: %@"), {text(isCritical ? "Critical" : "Warning")}),
      formatText(texts_.text("%.1f GB used of %.0f GB — consider closing unused apps"), {usedGB, totalGB})};
}

AlertTexts::Alert AlertTexts::lowDisk(std::string identifier, double freePercent, double freeGB) {
  return {std::move(identifier), text("Low Disk Space"),
          formatText(texts_.text("%@ free — %.1f GB remaining"), {percent(freePercent), freeGB})};
}

AlertTexts::Alert AlertTexts::dailyData(std::string identifier, double usedGB) {
  return {std::move(identifier), text("Daily Data Usage"),
          formatText(texts_.text("You've used %.1f GB of data today"), {usedGB})};
}

}  // namespace kestrune
