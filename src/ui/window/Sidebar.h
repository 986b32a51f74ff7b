#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "runtime/Published.h"
#include "ui/view/View.h"
#include "ui/window/MainTab.h"

namespace kestrune::ui {

// The list of visible tabs, with the selected one marked. A tap selects. A component of its own, so that the
// detail can change without it.
class Sidebar final : public Component {
 public:
  using VisibleTabs = std::function<std::vector<MainTab>()>;

  // `selectedTab`, and what `visibleTabs` reads, must outlive the sidebar.
  Sidebar(Published<std::optional<MainTab>>& selectedTab, VisibleTabs visibleTabs)
      : selectedTab_(selectedTab), visibleTabs_(std::move(visibleTabs)) {}

  View body() override;

 private:
  View row(const MainTabEntry& tab) const;

  Published<std::optional<MainTab>>& selectedTab_;
  VisibleTabs visibleTabs_;
};

}  // namespace kestrune::ui
