#pragma once

#include <random>
#include <string>
#include <utility>
#include <vector>

#include "ui/view/View.h"

namespace kestrune::ui::test {

// Makes trees of all kinds of views, the same trees for the same seed.
class RandomViews {
 public:
  // Sizes and spacings are picked from `lengths`.
  RandomViews(unsigned seed, std::vector<double> lengths) : engine_(seed), lengths_(std::move(lengths)) {}

  View any(int depth) {
    View view = depth > 0 && below(4) > 0 ? branch(depth - 1) : leaf();
    if (below(4) == 0) view = std::move(view).withKey("key" + std::to_string(below(5)));
    if (below(6) == 0) view = std::move(view).withOpacity(0.5);
    if (below(6) == 0) view = std::move(view).withFont(9.0 + below(8), FontWeight::medium);
    if (below(6) == 0) view = std::move(view).withForeground(ColorRole::secondary);
    return view;
  }
  double length() { return lengths_[static_cast<std::size_t>(below(static_cast<int>(lengths_.size())))]; }
  int below(int count) { return std::uniform_int_distribution(0, count - 1)(engine_); }

 private:
  Extent extent() {
    Extent result;
    if (below(4) == 0) result.fixed = length();
    if (below(3) == 0) result.min = length();
    if (below(3) == 0) result.max = below(2) == 0 ? unlimited : length();
    return result;
  }
  Alignment alignment() {
    return {static_cast<HorizontalAlignment>(below(3)), static_cast<VerticalAlignment>(below(4))};
  }
  View leaf() {
    const double fraction = below(10) / 10.0;
    const int kind = below(10);
    if (kind == 0) return {};
    if (kind == 1) return symbol("cpu");
    if (kind == 2) return spacer(length());
    if (kind == 3) return divider();
    if (kind == 4) return lineChart({{{0, 0.5, 1, fraction}, ColorRole::accent}}, 1.5);
    if (kind == 5) return View(BarContent{fraction, ColorRole::quaternary, ColorRole::accent, 3, 0});
    if (kind == 6) return segmentedPicker({verbatimText("a"), verbatimText("b")}, below(2), [](int) {});
    if (kind == 7) return slider(key("s"), {.value = fraction});
    return verbatim("text " + std::to_string(below(1000)));
  }
  View branch(int depth) {
    const int kind = below(14);
    if (kind == 0) return any(depth).padding(Insets{length(), 1, 2, length()});
    if (kind == 1) return any(depth).frame(extent(), extent(), alignment());
    if (kind == 2) return any(depth).background({.fill = ColorRole::controlBackground, .cornerRadius = 4});
    if (kind == 3) return button(any(depth), [] {});
    if (kind == 4) return menu(any(depth), {{.title = verbatimText("item"), .symbol = {}, .action = {}}});
    if (kind == 5) return scroll(any(depth)).size(150, 80);
    if (kind == 6) return zstack(alignment(), children(depth));
    if (kind == 7) return columns(1 + below(3), length(), children(depth), {1, 2, 1});
    if (kind == 8) return firstFit(children(depth));
    if (kind == 9) return adaptiveGrid(length(), length(), children(depth));
    if (kind == 10)
      return hstack(8, VerticalAlignment::firstTextBaseline, children(depth)).help(verbatimText("help"));
    if (kind == 11) return hstack(length(), alignment().vertical, children(depth));
    return vstack(length(), alignment().horizontal, children(depth));
  }
  std::vector<View> children(int depth) {
    std::vector<View> views;
    for (int count = below(5); count > 0; --count) views.push_back(any(depth));
    return views;
  }

  std::mt19937 engine_;
  std::vector<double> lengths_;
};

}  // namespace kestrune::ui::test
