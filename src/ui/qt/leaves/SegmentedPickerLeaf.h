#pragma once

#include <vector>

#include "ui/qt/leaves/ControlLeaf.h"

namespace kestrune::ui::qt {

class SegmentedPickerLeaf;

// A segment as assistive tools see it. It neither draws anything nor handles events.
class PickerSegment final : public QWidget {
 public:
  PickerSegment(SegmentedPickerLeaf& picker, int index);

  bool isSelected() const;
  bool hasPickerFocus() const;
  void press();

 private:
  SegmentedPickerLeaf& picker_;
  int index_;
};

// A choice of one among a few, side by side. A single tab stop; the arrow keys, Home and End move the choice.
// Only the user's choices are reported.
class SegmentedPickerLeaf final : public ControlLeaf {
 public:
  SegmentedPickerLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  LeafMetrics measure(Proposal proposal) override;

  int selected() const { return content_.selected; }
  void choose(int index);
  const std::vector<PickerSegment*>& segments() const { return segments_; }

 protected:
  bool event(QEvent* event) override;
  void paint(QPainter& painter) override;
  void press(QPointF place) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  int count() const { return static_cast<int>(labels_.size()); }
  // The segment under the pointer, unless the picker is disabled; -1 if no segment is.
  int highlighted() const { return isEnabled() ? hovered_ : -1; }
  Font labelFont() const;
  QRect segmentRect(int index) const;
  int segmentAt(QPoint position) const;
  void rebuildSegments();
  void placeSegments();
  void hover(int index);
  void announceSelection();
  void paintSegment(QPainter& painter, int index);
  void paintSeparators(QPainter& painter) const;

  SegmentedPickerContent content_;
  std::vector<QString> labels_;
  std::vector<PickerSegment*> segments_;
  int hovered_ = -1;
};

}  // namespace kestrune::ui::qt
