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

inline constexpr Setting<bool> cpuInPopover{"metrics.cpu.menubar.enabled", true};
inline constexpr Setting<bool> memoryInPopover{"metrics.memory.menubar.enabled", true};
inline constexpr Setting<bool> diskInPopover{"metrics.disk.menubar.enabled", false};
inline constexpr Setting<bool> networkInPopover{"metrics.network.menubar.enabled", false};
inline constexpr Setting<bool> processesInPopover{"metrics.processes.menubar.enabled", true};
inline constexpr Setting<bool> ipInPopover{"metrics.ip.menubar.enabled", false};
inline constexpr Setting<bool> audioInPopover{"metrics.audio.menubar.enabled", false};
inline constexpr Setting<bool> alerts{"alerts.master.enabled", true};
inline constexpr Setting<bool> cpuAlert{"alerts.cpu.enabled", true};
// Percent of the whole machine.
inline constexpr Setting<double> cpuAlertPercent{"alerts.cpu.threshold", 80};
inline constexpr Setting<bool> memoryAlert{"alerts.memory.enabled", true};
// "critical"; anything else means "warning".
inline constexpr Setting<std::string> memoryAlertPressure{"alerts.memory.threshold", "warning"};
inline constexpr Setting<bool> diskAlert{"alerts.disk.enabled", true};
inline constexpr Setting<std::int64_t> diskAlertPercentFree{"alerts.disk.threshold", 10};
inline constexpr Setting<bool> networkAlert{"alerts.network.enabled", false};
// Units of 2^30 bytes a day.
inline constexpr Setting<std::int64_t> networkAlertDailyGB{"alerts.network.dailyGB", 5};
// Kept and shown only: no day file is ever deleted.
inline constexpr Setting<std::int64_t> retentionDays{"history.retentionDays", 30};
inline constexpr Setting<bool> folderTab{"ui.sandbox.showFolderTab", true};
inline constexpr Setting<bool> sandboxHints{"ui.sandbox.showHints", true};

// What a reset writes, in this order: everything except `sandboxHints`.
inline constexpr std::tuple reset{cpuInPopover,       memoryInPopover,
                                  diskInPopover,      networkInPopover,
                                  processesInPopover, ipInPopover,
                                  audioInPopover,     alerts,
                                  cpuAlert,           cpuAlertPercent,
                                  memoryAlert,        memoryAlertPressure,
                                  diskAlert,          diskAlertPercentFree,
                                  networkAlert,       networkAlertDailyGB,
                                  retentionDays,      folderTab};

}  // namespace settings
}  // namespace kestrune
