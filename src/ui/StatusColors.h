#pragma once

#include "ui/view/Style.h"

namespace kestrune::ui {

inline constexpr Color statusNeutralColor = ColorRole::primary;
inline constexpr Color statusWarningColor = ColorRole::orange;
inline constexpr Color statusCriticalColor = ColorRole::red;
inline constexpr Color statusGoodColor = Color::rgb(0.18, 0.76, 0.34);

}  // namespace kestrune::ui
