#pragma once

#include <string>
#include <vector>

#include "providers/CPUProvider.h"
#include "ui/view/View.h"

namespace kestrune::ui {

// The load of one logical processor.
struct CoreBar {
  std::string label;
  double usage = 0;  // percent
  bool isPerformance = false;
  std::vector<double> history;  // fractions 0 to 1, oldest first

  // `readOut`: the text for a point of the history.
  View body(ReadOut readOut = {}) const;
  operator View() const { return body(); }
};

// One for each processor of the snapshot, in its order: "E1" and so on, then "P1"; "C1" and so on where the
// chip's cores are all of one kind.
std::vector<CoreBar> coreBars(const CPUSnapshot& snapshot, const ChipInfo& chip,
                              const HistoryRing<CPUSnapshot>& history);

}  // namespace kestrune::ui
