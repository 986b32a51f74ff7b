#pragma once

#include <vector>

#include "ui/qt/leaves/PaintedLeaf.h"
#include "ui/qt/leaves/TextShape.h"

namespace kestrune::ui::qt {

// A text in one style. Data is never taken for markup, and takes one line whatever it contains. A text that
// is cut short has the whole one as its tooltip.
class TextLeaf final : public PaintedLeaf {
 public:
  TextLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  LeafMetrics measure(Proposal proposal) override;

 protected:
  bool event(QEvent* event) override;
  void paint(QPainter& painter) override;

 private:
  double lineHeight() const;
  double leastWidth() const;
  void shape();
  std::vector<TextLine> shapedForWidth(double width) const;
  Size wrappedSize(double width) const;
  bool wrapsAsBefore() const;
  void fit();

  TextContent content_;
  QString text_;
  std::vector<TextLine> natural_;  // as broken by the text itself alone
  double naturalWidth_ = 0;
  std::vector<std::pair<double, Size>> wrapped_;  // what was measured, by width
  bool wrappedMore_ = false;                      // and in widths that aren't remembered

  // What is painted in the width `fittedWidth_`, where `natural_` is too wide.
  std::vector<TextLine> fitted_;
  int fittedWidth_ = -1;
  bool isElided_ = false;
};

}  // namespace kestrune::ui::qt
