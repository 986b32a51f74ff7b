#pragma once

#include <functional>
#include <vector>

#include "ui/qt/leaves/PaintedLeaf.h"

namespace kestrune::ui::qt {

class SegmentedPickerLeaf;

// What assistive tools see as one choice. It has neither looks nor behaviour of its own.
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

// One choice out of a few, side by side. One stop for the keyboard; the arrows, Home and End move the choice.
// The user's choices alone are reported.
class SegmentedPickerLeaf final : public PaintedLeaf {
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
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  int count() const { return static_cast<int>(labels_.size()); }
  Font labelFont() const;
  QRect segmentRect(int index) const;
  int segmentAt(QPoint position) const;
  void rebuildSegments();
  void placeSegments();
  void hover(int index);
  void announceSelection();
  void paintSeparators(QPainter& painter) const;

  SegmentedPickerContent content_;
  std::vector<QString> labels_;
  std::vector<PickerSegment*> segments_;
  int hovered_ = -1;
  bool showsFocus_ = false;
};

}  // namespace kestrune::ui::qt
