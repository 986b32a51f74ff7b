#pragma once

#include <memory>

#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QTest>

#include "texts/Catalogue.h"
#include "ui/qt/mount/LeafFactory.h"
#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {

inline constexpr Color blue = Color::rgb(0, 0, 1);
inline constexpr Color gray = Color::rgb(0.5, 0.5, 0.5);

// Lets pending events, such as paints, be processed.
inline void settle() {
  QApplication::processEvents();
}

// Moves the pointer over a widget on screen.
inline void hover(const QWidget& widget, QPoint place) {
  QCursor::setPos(widget.mapToGlobal(place));
  settle();
}

// A window with one widget at a time: a leaf, or another that draws with the theme.
class LeafStage {
 public:
  class Window : public QWidget {
   public:
    // Presses that the widget didn't handle.
    int presses = 0;

   protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }
  };

  Leaf& put(const Content& content, QSize size, const LeafStyle& style = {}) {
    auto* leaf = makeLeaf(content, theme, &window);
    leaf->show(content, style);
    put(*leaf, size);
    return *leaf;
  }
  void put(QWidget& widget, QSize size) {
    widget_.reset(&widget);
    widget.resize(size);
    widget.show();
  }
  // Away from the pointer, so that nothing is hovered by chance.
  void showWindow() {
    QCursor::setPos(0, 0);
    window.setGeometry(20, 20, 400, 200);
    window.show();
    settle();
  }
  // What the widget draws over a colour, with animations at their ends.
  QImage picture(const QColor& behind = Qt::white) {
    theme.animations().advance(AnimationDriver::now() + 9);
    return frame(behind);
  }
  QImage frame(const QColor& behind = Qt::white) const {
    QImage image(widget_->size(), QImage::Format_RGB32);
    image.fill(behind);
    widget_->render(&image, {}, {}, QWidget::RenderFlags());
    return image;
  }

  const Catalogue catalogue{};
  Theme theme{catalogue};
  Window window;

 private:
  std::unique_ptr<QWidget> widget_;
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
