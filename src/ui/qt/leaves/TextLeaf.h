#pragma once

#include <vector>

#include "ui/qt/leaves/Leaf.h"
#include "ui/qt/leaves/TextShape.h"

namespace kestrune::ui::qt {

// A text in one style. Data is never interpreted as markup, and line breaks in it become spaces. An elided
// text has the whole text as its tooltip.
class TextLeaf final : public Leaf {
 public:
  TextLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  LeafMetrics measure(Proposal proposal) override;

 protected:
  bool event(QEvent* event) override;
  void paint(QPainter& painter) override;

 private:
  double lineHeight() const;
  double minWidth() const;
  void shape();
  std::vector<TextLine> shapedForWidth(double width) const;
  Size wrappedSize(double width) const;
  bool wrapsAsBefore() const;
  void fit();

  TextContent content_;
  QString text_;
  // The lines without wrapping.
  std::vector<TextLine> natural_;
  double naturalWidth_ = 0;
  // The sizes measured so far, by width.
  std::vector<std::pair<double, Size>> wrapped_;
  // More widths were measured than `wrapped_` has kept.
  bool hasForgottenWraps_ = false;

  // The lines painted at the width `fittedWidth_`, if `natural_` is too wide for it.
  std::vector<TextLine> fitted_;
  int fittedWidth_ = -1;
  bool isElided_ = false;
};

}  // namespace kestrune::ui::qt
