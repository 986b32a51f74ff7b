#include "ui/components/Dashboard.h"

#include <utility>

#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr auto leading = HorizontalAlignment::leading;
constexpr auto centered = VerticalAlignment::center;
constexpr double pagePadding = 20;
constexpr double dividerOpacity = 0.4;
constexpr double dotSide = 8;

}  // namespace

View dashboard(std::vector<View> sections) {
  return scroll(vstack(sectionSpacing, leading, std::move(sections)).padding(pagePadding));
}

View cardRow(std::vector<View> cards) {
  return hstack(sectionSpacing, VerticalAlignment::top, std::move(cards)).evenlyTall();
}

View section(std::vector<View> parts) {
  return vstack(innerSpacing, leading, std::move(parts));
}

View sectionHeader(View titled) {
  return std::move(titled).withFont(13).withForeground(ColorRole::secondary);
}

View headerRow(View titled, View control) {
  return hstack(innerSpacing, centered,
                views(sectionHeader(std::move(titled)), spacer(), std::move(control)));
}

View caption(View words, Color color) {
  return std::move(words).withFont(11).withForeground(color);
}

View edgeCaptions(std::string atStart, std::string atEnd, Color color) {
  return caption(
      hstack(innerSpacing, centered, views(text(std::move(atStart)), spacer(), text(std::move(atEnd)))),
      color);
}

View captioned(double spacing, std::string captionKey, View value) {
  return vstack(spacing, leading, views(caption(text(std::move(captionKey))), std::move(value)));
}

View captionedRow(View words, View value) {
  return hstack(innerSpacing, VerticalAlignment::firstTextBaseline,
                views(caption(std::move(words)), spacer(), std::move(value)));
}

View rowDivider() {
  return divider().withOpacity(dividerOpacity);
}

View dividedRows(std::vector<View> rows) {
  std::vector<View> lines;
  lines.reserve(2 * rows.size());
  for (auto& row : rows) {
    if (!lines.empty()) lines.push_back(rowDivider());
    lines.push_back(std::move(row));
  }
  return vstack(0, leading, std::move(lines));
}

View table(View header, std::vector<View> rows) {
  return vstack(0, leading, views(caption(std::move(header)), dividedRows(std::move(rows))));
}

View dot(double side, Color color) {
  return spacer(0).size(side, side).background({.fill = color, .cornerRadius = side / 2});
}

View legendEntry(std::string label, Color color) {
  return caption(hstack(5, centered, views(dot(dotSide, color), text(std::move(label)))));
}

}  // namespace kestrune::ui
