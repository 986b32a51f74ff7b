#include "ui/pages/StatsExport.h"

#include <fmt/format.h>

namespace kestrune::ui {
namespace {

constexpr double perMegabyte = 0x1p-20;

// The mean of a process's memory over the minutes in which it was counted.
std::string meanMemoryText(const HistoricProcess& process) {
  const std::uint64_t bytes =
      process.cpuCount < 1 ? 0 : process.memorySum / static_cast<std::uint64_t>(process.cpuCount);
  const auto mean = static_cast<double>(bytes);
  if (mean * 0x1p-30 >= 1.0) return fmt::format("{:.1f} GB", mean * 0x1p-30);
  if (mean * 0x1p-20 >= 1.0) return fmt::format("{:.0f} MB", mean * 0x1p-20);
  return fmt::format("{:.0f} KB", mean * 0x1p-10);
}

}  // namespace

DayStats dayStats(const DailySummary& record, Date startOfDay) {
  return {.date = startOfDay,
          .avgCPU = record.averageCPU(),
          .peakCPU = record.peakCPU(),
          .avgMemoryGB = record.averageMemoryGB(),
          .peakMemoryGB = record.peakMemoryGB(),
          .networkUpMB = record.totalNetworkUpBytes() * perMegabyte,
          .networkDownMB = record.totalNetworkDownBytes() * perMegabyte,
          .diskReadMB = record.totalDiskReadBytes() * perMegabyte,
          .diskWriteMB = record.totalDiskWriteBytes() * perMegabyte};
}

std::string statsCSV(const std::vector<DayStats>& stats, const std::vector<DailySummary>& records,
                     const std::function<std::string(Date)>& dayName) {
  std::string csv =
      "Date,Avg CPU %,Peak CPU %,Avg Memory GB,Peak Memory GB,Network Up MB,Network Down MB,Disk Read MB,"
      "Disk Write MB";
  for (const DayStats& day : stats) {
    csv += fmt::format("\n{},{:.1f},{:.1f},{:.2f},{:.2f},{:.1f},{:.1f},{:.1f},{:.1f}", dayName(day.date),
                       day.avgCPU, day.peakCPU, day.avgMemoryGB, day.peakMemoryGB, day.networkUpMB,
                       day.networkDownMB, day.diskReadMB, day.diskWriteMB);
  }
  csv += "\n\nTop Processes\nDate,Process,Avg CPU %,Avg Memory";
  for (const DailySummary& record : records) {
    for (const HistoricProcess& process : record.topProcesses()) {
      csv += fmt::format("\n{},{},{:.1f},{}", dayName(record.date), process.name, process.avgCPU(),
                         meanMemoryText(process));
    }
  }
  return csv;
}

}  // namespace kestrune::ui
