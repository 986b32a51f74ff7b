#pragma once

#include "ui/qt/leaves/PaintedLeaf.h"

namespace kestrune::ui::qt {

// A symbol as large as the text beside it. A name that is not in the symbol table leaves its place empty.
class SymbolLeaf final : public PaintedLeaf {
 public:
  SymbolLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  LeafMetrics measure(Proposal proposal) override;

 protected:
  void paint(QPainter& painter) override;

 private:
  SymbolContent content_;
};

// A picture over all of its frame.
class ImageLeaf final : public FillingLeaf {
 public:
  ImageLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  void paint(QPainter& painter) override;

 private:
  ImageContent content_;
};

// A line one device pixel thick along its longer side.
class DividerLeaf final : public FillingLeaf {
 public:
  DividerLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  // One pixel thick, and as long as the space allows.
  LeafMetrics measure(Proposal proposal) override;

 protected:
  void paint(QPainter& painter) override;
};

}  // namespace kestrune::ui::qt
