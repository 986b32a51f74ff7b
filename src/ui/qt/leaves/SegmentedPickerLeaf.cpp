#include "ui/qt/leaves/SegmentedPickerLeaf.h"

#include <algorithm>
#include <cmath>

#include <QHoverEvent>
#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

constexpr int controlHeight = 24;
// Of the raised segment within the track.
constexpr int inset = 2;
constexpr int labelPadding = 10;
constexpr int minLabelPadding = 3;
constexpr double trackRadius = 6;
constexpr double segmentRadius = 4.5;

}  // namespace

PickerSegment::PickerSegment(SegmentedPickerLeaf& picker, int index)
    : QWidget(&picker), picker_(picker), index_(index) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

bool PickerSegment::isSelected() const {
  return picker_.selected() == index_;
}

bool PickerSegment::hasPickerFocus() const {
  return picker_.hasFocus();
}

void PickerSegment::press() {
  if (picker_.isEnabled()) picker_.choose(index_);
}

SegmentedPickerLeaf::SegmentedPickerLeaf(Theme& theme, QWidget* parent)
    : ControlLeaf(theme, parent, QAccessible::Grouping) {
  setAttribute(Qt::WA_Hover);
}

bool SegmentedPickerLeaf::show(const Content& content, const LeafStyle& style) {
  const Change change = adopt(style);
  const auto& next = std::get<SegmentedPickerContent>(content);
  const bool hasNewLabels = change == Change::font || next.labels != content_.labels;
  const bool hasNewSelection = next.selected != content_.selected;
  content_ = next;
  if (hasNewLabels) {
    labels_.clear();
    for (const TextContent& label : content_.labels) labels_.push_back(theme().text(label));
    rebuildSegments();
  }
  if (hasNewLabels || hasNewSelection) update();
  if (hasNewSelection) announceSelection();
  return hasNewLabels;
}

Font SegmentedPickerLeaf::labelFont() const {
  // The same weight for every segment, so that nothing shifts when the choice moves.
  return {style().font.size, FontWeight::medium, false};
}

LeafMetrics SegmentedPickerLeaf::measure(Proposal proposal) {
  const QFontMetricsF& metrics = theme().metrics(labelFont());
  double widest = 0;
  for (const QString& label : labels_) widest = std::max(widest, std::ceil(metrics.horizontalAdvance(label)));
  const double natural = count() * (widest + 2 * labelPadding) + 2 * inset;
  const double smallest = count() * (style().font.size * 2 + 2 * minLabelPadding) + 2 * inset;
  const double width =
      std::max(std::min(proposal.width.value_or(natural), natural), std::min(smallest, natural));
  const double height = std::max<double>(controlHeight, std::ceil(metrics.height()) + 2 * inset);
  return {{width, height}, std::round((height + metrics.capHeight()) / 2)};
}

void SegmentedPickerLeaf::rebuildSegments() {
  while (segments_.size() > labels_.size()) {
    segments_.back()->hide();
    segments_.back()->deleteLater();
    segments_.pop_back();
  }
  while (segments_.size() < labels_.size()) {
    segments_.push_back(new PickerSegment(*this, static_cast<int>(segments_.size())));
    segments_.back()->show();
  }
  for (std::size_t i = 0; i < labels_.size(); ++i) {
    if (segments_[i]->accessibleName() != labels_[i]) segments_[i]->setAccessibleName(labels_[i]);
  }
  placeSegments();
}

void SegmentedPickerLeaf::placeSegments() {
  for (int i = 0; i < count(); ++i) segments_[static_cast<std::size_t>(i)]->setGeometry(segmentRect(i));
}

QRect SegmentedPickerLeaf::segmentRect(int index) const {
  const int room = width() - 2 * inset;
  const int left = room * index / count();
  const int right = room * (index + 1) / count();
  return {inset + left, inset, right - left, height() - 2 * inset};
}

int SegmentedPickerLeaf::segmentAt(QPoint position) const {
  if (count() == 0 || !rect().contains(position)) return -1;
  for (int i = 0; i < count(); ++i) {
    if (position.x() < segmentRect(i).right() + 1) return i;
  }
  return count() - 1;
}

void SegmentedPickerLeaf::choose(int index) {
  if (index < 0 || index >= count() || index == content_.selected) return;
  content_.selected = index;
  update();
  announceSelection();
  const auto onSelect = content_.onSelect;  // the call may replace it
  if (onSelect) onSelect(index);
}

void SegmentedPickerLeaf::announceSelection() {
  if (!QAccessible::isActive()) return;
  QAccessible::State checked;
  checked.checked = true;
  for (PickerSegment* segment : segments_) {
    QAccessibleStateChangeEvent event(segment, checked);
    QAccessible::updateAccessibility(&event);
    if (!hasFocus() || !segment->isSelected()) continue;
    QAccessibleEvent focus(segment, QAccessible::Focus);
    QAccessible::updateAccessibility(&focus);
  }
}

void SegmentedPickerLeaf::hover(int index) {
  if (index == hovered_) return;
  hovered_ = index;
  update();
}

bool SegmentedPickerLeaf::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
      hover(segmentAt(static_cast<QHoverEvent*>(event)->position().toPoint()));
      break;
    case QEvent::HoverLeave:
      hover(-1);
      break;
    default:
      break;
  }
  return ControlLeaf::event(event);
}

void SegmentedPickerLeaf::press(QPointF place) {
  choose(segmentAt(place.toPoint()));
}

void SegmentedPickerLeaf::keyPressEvent(QKeyEvent* event) {
  int target = content_.selected;
  switch (event->key()) {
    case Qt::Key_Left:
      target = std::max(target - 1, 0);
      break;
    case Qt::Key_Right:
      target = std::min(target + 1, count() - 1);
      break;
    case Qt::Key_Home:
      target = 0;
      break;
    case Qt::Key_End:
      target = count() - 1;
      break;
    default:
      event->ignore();
      return;
  }
  showFocus();
  choose(target);
}

void SegmentedPickerLeaf::focusInEvent(QFocusEvent* event) {
  ControlLeaf::focusInEvent(event);
  announceSelection();
}

void SegmentedPickerLeaf::resizeEvent(QResizeEvent*) {
  placeSegments();
}

void SegmentedPickerLeaf::paint(QPainter& painter) {
  if (count() == 0) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color(Color(ColorRole::primary, theme().isDark() ? 0.10 : 0.075)));
  painter.drawRoundedRect(rect(), trackRadius, trackRadius);
  paintSeparators(painter);

  painter.setFont(theme().font(labelFont()));
  for (int i = 0; i < count(); ++i) paintSegment(painter, i);
  paintFocus(painter, trackRadius - 1);
}

void SegmentedPickerLeaf::paintSegment(QPainter& painter, int index) {
  const QRectF segment = segmentRect(index);
  const bool isSelected = index == content_.selected;
  painter.setPen(Qt::NoPen);
  if (isSelected) {
    // The lower rim, then the raised segment over it.
    painter.setBrush(color(Color(ColorRole::black, theme().isDark() ? 0.25 : 0.16)));
    painter.drawRoundedRect(segment.adjusted(-0.25, 0.25, 0.25, 0.75), segmentRadius, segmentRadius);
    painter.setBrush(theme().isDark() ? color(Color::rgb(0.42, 0.42, 0.44)) : color(Color::rgb(1, 1, 1)));
    painter.drawRoundedRect(segment, segmentRadius, segmentRadius);
  } else if (index == highlighted()) {
    painter.setBrush(color(Color(ColorRole::primary, 0.06)));
    painter.drawRoundedRect(segment, segmentRadius, segmentRadius);
  }
  painter.setPen(color(Color(isSelected ? ColorRole::primary : ColorRole::secondary)));
  const double room = segment.width() - 2 * minLabelPadding;
  const QString label =
      theme().metrics(labelFont()).elidedText(labels_[static_cast<std::size_t>(index)], Qt::ElideRight, room);
  painter.drawText(segment, Qt::AlignCenter | Qt::TextSingleLine, label);
}

void SegmentedPickerLeaf::paintSeparators(QPainter& painter) const {
  const auto standsOut = [this](int index) { return index == content_.selected || index == highlighted(); };
  for (int i = 1; i < count(); ++i) {
    if (standsOut(i - 1) || standsOut(i)) continue;
    const QRect segment = segmentRect(i);
    painter.fillRect(QRectF(segment.left(), segment.top() + 5, 1, segment.height() - 10),
                     color(Color(ColorRole::primary, 0.14)));
  }
}

}  // namespace kestrune::ui::qt
