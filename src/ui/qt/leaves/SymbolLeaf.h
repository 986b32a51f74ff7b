#pragma once

#include <QIcon>

#include "ui/qt/leaves/Leaf.h"

namespace kestrune::ui::qt {

// A symbol as large as the text beside it. A name that isn't in the symbol table leaves an empty space.
class SymbolLeaf final : public Leaf {
 public:
  SymbolLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;
  LeafMetrics measure(Proposal proposal) override;

 protected:
  void paint(QPainter& painter) override;

 private:
  SymbolContent content_;
};

// A line one device pixel thick along its longer side.
class DividerLeaf final : public Leaf {
 public:
  DividerLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  void paint(QPainter& painter) override;
};

// An application's icon, scaled to the leaf, or a fallback symbol in its middle.
class IconLeaf final : public Leaf {
 public:
  IconLeaf(Theme& theme, QWidget* parent);

  bool show(const Content& content, const LeafStyle& style) override;

 protected:
  void paint(QPainter& painter) override;

 private:
  IconContent content_;
  QIcon icon_;
};

}  // namespace kestrune::ui::qt
