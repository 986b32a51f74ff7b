#include "ui/window/MainTab.h"

namespace kestrune::ui {
namespace {

struct Appearance {
  std::string_view title;
  std::string_view symbol;
};

// By raw value.
constexpr std::array<Appearance, allMainTabs.size()> appearances{{
    {"Overview", "square.grid.2x2"},
    {"CPU", "cpu"},
    {"Memory", "memorychip"},
    {"Disk", "internaldrive"},
    {"Network", "network"},
    {"Power", "bolt"},
    {"Audio", "waveform"},
    {"Folders", "folder"},
    {"Stats", "chart.bar"},
    {"Settings", "gearshape"},
}};

}  // namespace

std::string_view title(MainTab tab) {
  return appearances.at(static_cast<std::size_t>(tab)).title;
}

std::string_view symbolName(MainTab tab) {
  return appearances.at(static_cast<std::size_t>(tab)).symbol;
}

}  // namespace kestrune::ui
