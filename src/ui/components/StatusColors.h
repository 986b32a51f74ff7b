#pragma once

#include "providers/MemoryProvider.h"
#include "ui/view/Style.h"

namespace kestrune::ui {

inline constexpr Color statusNeutralColor = ColorRole::primary;
inline constexpr Color statusWarningColor = ColorRole::orange;
inline constexpr Color statusCriticalColor = ColorRole::red;
inline constexpr Color statusGoodColor = Color::rgb(0.18, 0.76, 0.34);

inline Color pressureColor(MemorySnapshot::MemoryPressure pressure) {
  switch (pressure) {
    case MemorySnapshot::MemoryPressure::nominal:
      return statusNeutralColor;
    case MemorySnapshot::MemoryPressure::warning:
      return statusWarningColor;
    case MemorySnapshot::MemoryPressure::critical:
      return statusCriticalColor;
  }
  return {};
}

}  // namespace kestrune::ui
