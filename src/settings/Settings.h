#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace kestrune {

// A stored setting: its key, its type, and its value until it is written for the first time.
template <class T>
struct Setting {
  using Fallback = std::conditional_t<std::is_same_v<T, std::string>, std::string_view, T>;
  std::string_view key;
  Fallback fallback;
};

// Every setting, declared once for all that read or write it.
namespace settings {

inline constexpr Setting<bool> showCPU{"metrics.cpu.menubar.enabled", true};
inline constexpr Setting<bool> showMemory{"metrics.memory.menubar.enabled", true};
inline constexpr Setting<bool> showDisk{"metrics.disk.menubar.enabled", false};
inline constexpr Setting<bool> showNetwork{"metrics.network.menubar.enabled", false};
inline constexpr Setting<bool> showProcesses{"metrics.processes.menubar.enabled", true};
inline constexpr Setting<bool> showIP{"metrics.ip.menubar.enabled", false};
inline constexpr Setting<bool> showAudio{"metrics.audio.menubar.enabled", false};
inline constexpr Setting<bool> alertsEnabled{"alerts.master.enabled", true};
inline constexpr Setting<bool> cpuAlertEnabled{"alerts.cpu.enabled", true};
// Percent of the whole machine.
inline constexpr Setting<double> cpuAlertThreshold{"alerts.cpu.threshold", 80};
inline constexpr Setting<bool> memoryAlertEnabled{"alerts.memory.enabled", true};
// "critical"; anything else means "warning".
inline constexpr Setting<std::string> memoryAlertThreshold{"alerts.memory.threshold", "warning"};
inline constexpr Setting<bool> diskAlertEnabled{"alerts.disk.enabled", true};
inline constexpr Setting<std::int64_t> diskAlertThreshold{"alerts.disk.threshold", 10};
inline constexpr Setting<bool> networkAlertEnabled{"alerts.network.enabled", false};
// Units of 2^30 bytes a day.
inline constexpr Setting<std::int64_t> networkAlertDailyGB{"alerts.network.dailyGB", 5};
// Kept and shown only: no day file is ever deleted.
inline constexpr Setting<std::int64_t> retentionDays{"history.retentionDays", 30};
inline constexpr Setting<bool> showFolderTab{"ui.sandbox.showFolderTab", true};
inline constexpr Setting<bool> showHints{"ui.sandbox.showHints", true};

// What a reset writes, in this order: everything except `showHints`.
inline constexpr std::tuple reset{showCPU,
                                  showMemory,
                                  showDisk,
                                  showNetwork,
                                  showProcesses,
                                  showIP,
                                  showAudio,
                                  alertsEnabled,
                                  cpuAlertEnabled,
                                  cpuAlertThreshold,
                                  memoryAlertEnabled,
                                  memoryAlertThreshold,
                                  diskAlertEnabled,
                                  diskAlertThreshold,
                                  networkAlertEnabled,
                                  networkAlertDailyGB,
                                  retentionDays,
                                  showFolderTab};

}  // namespace settings
}  // namespace kestrune
