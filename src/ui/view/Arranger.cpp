#include "ui/view/Arranger.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/view/Stacks.h"

namespace kestrune::ui {
namespace {

constexpr double hairline = 1;

Size sizeOf(const Rect& rect) {
  return {rect.width, rect.height};
}

std::optional<double> offerWithin(const Extent& extent, const std::optional<double>& offered) {
  if (extent.fixed) return extent.fixed;
  if (!offered) return std::nullopt;
  return std::max(extent.min.value_or(0), std::min(*offered, extent.max.value_or(unlimited)));
}

// Where the extent sets no limit the child's own length is the limit.
double chosenLength(const Extent& extent, const std::optional<double>& offered, double child) {
  if (extent.fixed) return *extent.fixed;
  if (!extent.min && !extent.max) return child;
  const double min = extent.min.value_or(std::min(child, extent.max.value_or(child)));
  const double max = std::max(min, extent.max.value_or(child));
  return std::clamp(offered.value_or(child), min, max);
}

double columnWidth(double width, double columns, double spacing) {
  return std::max(0.0, (width - (columns - 1) * spacing) / columns);
}

int spanOf(const ColumnsContent& grid, std::size_t child) {
  const int span = child < grid.spans.size() ? grid.spans[child] : 1;
  return std::clamp(span, 1, std::max(1, grid.columns));
}

}  // namespace

Arranger::Items Arranger::offerEach(const Proposal& proposal) const {
  Items items;
  items.reserve(children_.count());
  for (std::size_t child = 0; child < children_.count(); ++child) {
    if (!children_.isEmpty(child)) items.push_back(offer(children_, child, proposal));
  }
  return items;
}

Arranger::Items Arranger::offerOnly(const Proposal& proposal) const {
  if (children_.count() == 0) return {};
  return {offer(children_, 0, proposal)};
}

// -- Leaves

Arranged Arranger::operator()(const OwnSize&) const {
  return (*this)(FillsOffer{defaultIdealLength});
}

Arranged Arranger::operator()(const FillsOffer& content) const {
  return {{offered_.width.value_or(content.idealLength), offered_.height.value_or(content.idealLength)}, {}};
}

Arranged Arranger::operator()(const SpacerContent& spacer) const {
  const double min = std::max(0.0, spacer.minLength);
  return {sizeAlong(around_, std::max(min, length(offered_, around_).value_or(min)), 0), {}};
}

Arranged Arranger::operator()(const DividerContent&) const {
  const Axis line = across(around_);
  return {sizeAlong(line, length(offered_, line).value_or(defaultIdealLength), hairline), {}};
}

// -- One child

Arranged Arranger::operator()(const AsChild&) const {
  Items items = offerOnly(offered_);
  if (items.empty()) return {};
  const Size size = sizeOf(items.front().rect);
  return {size, std::move(items)};
}

Arranged Arranger::operator()(const PaddingContent& padding) const {
  const Insets& insets = padding.insets;
  const double horizontal = insets.leading + insets.trailing;
  const double vertical = insets.top + insets.bottom;
  Proposal inner = offered_;
  if (inner.width) inner.width = std::max(0.0, *inner.width - horizontal);
  if (inner.height) inner.height = std::max(0.0, *inner.height - vertical);

  Arranged arranged{{}, offerOnly(inner)};
  Size child;
  for (auto& item : arranged.items) {
    item.rect.x = insets.leading;
    item.rect.y = insets.top;
    child = sizeOf(item.rect);
  }
  arranged.size = {std::max(0.0, child.width + horizontal), std::max(0.0, child.height + vertical)};
  return arranged;
}

Arranged Arranger::operator()(const FrameContent& frame) const {
  Arranged arranged{
      {}, offerOnly({offerWithin(frame.width, offered_.width), offerWithin(frame.height, offered_.height)})};
  const Size child = arranged.items.empty() ? Size{} : sizeOf(arranged.items.front().rect);
  arranged.size = {chosenLength(frame.width, offered_.width, child.width),
                   chosenLength(frame.height, offered_.height, child.height)};
  for (auto& item : arranged.items) alignWithin(arranged.size, item, frame.alignment);
  return arranged;
}

// -- Stacks

Arranged Arranger::operator()(const HStackContent& stack) const {
  Items items = shareOut(children_, offered_, Axis::horizontal, stack.spacing);
  const double width = lineUp(items, Axis::horizontal, stack.spacing);
  const double height = alignVertically(items, stack.alignment);
  if (stack.isEvenlyTall && !offered_.height) {
    const Proposal even{offered_.width, height};
    return Arranger(children_, around_, even)(stack);
  }
  return {{width, height}, std::move(items)};
}

Arranged Arranger::operator()(const VStackContent& stack) const {
  Items items = shareOut(children_, offered_, Axis::vertical, stack.spacing);
  const double width = alignHorizontally(items, stack.alignment);
  const double height = lineUp(items, Axis::vertical, stack.spacing);
  return {{width, height}, std::move(items)};
}

Arranged Arranger::operator()(const ZStackContent& stack) const {
  Items items = offerEach(offered_);
  const double width = alignHorizontally(items, stack.alignment.horizontal);
  const double height = alignVertically(items, stack.alignment.vertical);
  return {{width, height}, std::move(items)};
}

// -- Grids

Arranged Arranger::operator()(const AdaptiveGridContent& grid) const {
  const double width = offered_.width.value_or(grid.minColumnWidth);
  const double pitch = grid.minColumnWidth + grid.spacing;
  const auto cells = static_cast<double>(children_.count());
  const bool anyNumberFits = pitch <= 0 || width == unlimited;
  const double columns = std::max(1.0, anyNumberFits ? cells : std::floor((width + grid.spacing) / pitch));
  const double cellWidth = columnWidth(width, columns, grid.spacing);

  Arranged arranged{{width, 0}, offerEach({cellWidth, std::nullopt})};
  double column = 0;
  double top = 0;
  double bottom = 0;
  for (auto& item : arranged.items) {
    if (column == columns) {
      column = 0;
      top = bottom + grid.spacing;
    }
    item.rect.x = column > 0 ? column * (cellWidth + grid.spacing) : 0;
    item.rect.y = top;
    bottom = std::max(bottom, top + item.rect.height);
    column += 1;
  }
  arranged.size.height = bottom;
  return arranged;
}

Arranged Arranger::operator()(const ColumnsContent& grid) const {
  const double width = offered_.width && *offered_.width < unlimited ? *offered_.width : idealWidth(grid);
  const double columns = std::max(1, grid.columns);
  const double single = columnWidth(width, columns, grid.spacing);

  Arranged arranged{{width, 0}, {}};
  double top = 0;
  std::size_t next = 0;
  while (next < children_.count()) {
    Items row;
    double column = 0;
    double height = 0;
    while (next < children_.count()) {
      const double span = spanOf(grid, next);
      if (column > 0 && column + span > columns) break;
      row.push_back(offer(children_, next++, {span * single + (span - 1) * grid.spacing, std::nullopt}));
      row.back().rect.x = column * (single + grid.spacing);
      height = std::max(height, row.back().rect.height);
      column += span;
    }
    for (const auto& cell : row) {
      PlacedChild item = offer(children_, cell.child, {cell.proposal.width, height});
      item.rect.x = cell.rect.x;
      item.rect.y = top;
      arranged.items.push_back(item);
    }
    arranged.size.height = top + height;
    top += height + grid.spacing;
  }
  return arranged;
}

// Wide enough for each cell to have its ideal width.
double Arranger::idealWidth(const ColumnsContent& grid) const {
  double single = 0;
  for (std::size_t child = 0; child < children_.count(); ++child) {
    const double span = spanOf(grid, child);
    const double width = children_.metrics(child, {}).size.width;
    single = std::max(single, columnWidth(width, span, grid.spacing));
  }
  const double columns = std::max(1, grid.columns);
  return columns * single + (columns - 1) * grid.spacing;
}

// -- Alternatives

Arranged Arranger::operator()(const FirstFitContent&) const {
  if (children_.count() == 0) return {};
  std::size_t chosen = 0;
  const auto fits = [this](std::size_t child) {
    const Proposal anyWidth{std::nullopt, offered_.height};
    return !offered_.width || children_.metrics(child, anyWidth).size.width <= *offered_.width;
  };
  while (chosen + 1 < children_.count() && !fits(chosen)) ++chosen;
  const PlacedChild item = offer(children_, chosen, offered_);
  return {sizeOf(item.rect), {item}};
}

}  // namespace kestrune::ui
