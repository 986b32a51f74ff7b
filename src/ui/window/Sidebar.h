#pragma once

#include "ui/view/View.h"

namespace kestrune::ui {

class MainWindowView;

// The list of the tabs that are visible, with the selected one marked. A tap selects. A component of its own,
// so that what the detail shows can move without it.
class Sidebar final : public Component {
 public:
  // The window must outlive its sidebar.
  explicit Sidebar(MainWindowView& window) : window_(window) {}

  View body() override;

 private:
  MainWindowView& window_;
};

}  // namespace kestrune::ui
