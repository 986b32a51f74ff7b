#pragma once

#include <QIcon>

#include "ui/qt/leaves/Leaf.h"

namespace kestrune::ui::qt {

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
