#pragma once

#include <QIcon>

#include "ui/qt/leaves/PaintedLeaf.h"

namespace kestrune::ui::qt {

// An application's icon over its frame, or in its middle the symbol that stands for it.
class IconLeaf final : public FillingLeaf {
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
