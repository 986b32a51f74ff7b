#pragma once

#include <memory>

#include <QApplication>
#include <QImage>
#include <QWidget>

#include "texts/Catalogue.h"
#include "ui/qt/mount/LeafFactory.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

// The plain style, changed.
template <class Change>
LeafStyle styled(Change change) {
  LeafStyle style;
  change(style);
  return style;
}

// Lets what is to be painted be painted.
inline void settle() {
  QApplication::processEvents();
}

// One leaf at a time on a window of its own.
class LeafStage {
 public:
  Leaf& put(const Content& content, int width, int height, const LeafStyle& style = {}) {
    leaf_.reset(makeLeaf(content, theme, &window_));
    leaf_->show(content, style);
    leaf_->setGeometry(0, 0, width, height);
    leaf_->QWidget::show();
    return *leaf_;
  }

  void showWindow() {
    window_.resize(400, 200);
    window_.show();
    settle();
  }

  // What the leaf draws over white.
  QImage picture() const {
    QImage image(leaf_->size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    leaf_->render(&image, {}, {}, QWidget::RenderFlags());
    return image;
  }

  std::unique_ptr<const Catalogue> catalogue = std::make_unique<const Catalogue>();
  Theme theme{*catalogue};

 private:
  QWidget window_;
  std::unique_ptr<Leaf> leaf_;
};

// Counts how often a widget is painted.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
  int count = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
};

}  // namespace kestrune::ui::qt
