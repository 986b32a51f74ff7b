#include "ui/window/Sidebar.h"

#include <string>

#include "ui/window/MainTab.h"
#include "ui/window/MainWindowView.h"

namespace kestrune::ui {
namespace {

View row(MainWindowView& window, MainTab tab) {
  const bool isSelected = window.selectedTab.get() == tab;
  const std::string name(title(tab));
  // Every row has a surface, clear unless it is selected, so that it stays the same view and keeps its focus.
  const Color fill = isSelected ? Color(ColorRole::accent, 0.18) : Color(ColorRole::clear);
  return label(name, std::string(symbolName(tab)))
      .paddingVertical(2)
      .fillWidth()
      .paddingHorizontal(4)
      .background({.fill = fill, .cornerRadius = 6})
      .onTap([&window, tab] { window.selectedTab.set(tab); })
      .accessibilityElement(key(name))
      .selected(isSelected)
      .transition(Transition::moveFromBottomWithOpacity)
      .withKey(name);
}

}  // namespace

View Sidebar::body() {
  std::vector<View> rows;
  for (const MainTab tab : window_.visibleTabs()) rows.push_back(row(window_, tab));
  return scroll(vstack(6, HorizontalAlignment::leading, std::move(rows)).padding(10));
}

}  // namespace kestrune::ui
