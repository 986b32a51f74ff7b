#include "ui/window/Sidebar.h"

#include <string>

namespace kestrune::ui {

View Sidebar::body() {
  std::vector<View> rows;
  for (const MainTab tab : visibleTabs_()) rows.push_back(row(entry(tab)));
  return scroll(vstack(6, HorizontalAlignment::leading, std::move(rows)).padding(10));
}

View Sidebar::row(const MainTabEntry& tab) const {
  const bool isSelected = selectedTab_.get() == tab.tab;
  const std::string title(tab.title);
  // Every row has a surface, clear unless it is selected, so that it stays the same view and keeps its focus.
  const Color fill = isSelected ? Color(ColorRole::accent, 0.18) : Color(ColorRole::clear);
  return label(title, std::string(tab.symbol))
      .paddingVertical(2)
      .fillWidth()
      .paddingHorizontal(4)
      .background({.fill = fill, .cornerRadius = 6})
      .onTap([&selectedTab = selectedTab_, id = tab.tab] { selectedTab.set(id); })
      .accessibilityElement(key(title))
      .selected(isSelected)
      .transition(Transition::moveFromBottomWithOpacity)
      .withKey(title);
}

}  // namespace kestrune::ui
