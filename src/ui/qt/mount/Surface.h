#pragma once

#include <functional>

#include <QMargins>
#include <QPixmap>
#include <QWidget>

#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Theme;

// The widget of a view with children that has a background, can be tapped, follows the pointer, has a tooltip
// or represents its children to assistive tools. The children's widgets are placed on it.
class Surface : public QWidget {
 public:
  enum class Role : std::uint8_t { group, row, button, menu };

  struct Look {
    BackgroundContent background;
    double opacity = 1;
    friend bool operator==(const Look&, const Look&) = default;
  };
  struct Behaviour {
    Role role = Role::group;
    QString accessibleName;
    bool hidesChildren = false;  // from assistive tools
    bool isSelected = false;
    QString toolTip;
    std::function<void()> onTap;
    std::function<void(bool inside)> onHover;
    std::function<void(QPoint onScreen)> onContextMenu;
    bool takesFocus = false;
  };

  Surface(Theme& theme, QWidget* parent);

  void setLook(const Look& look);
  void setBehaviour(Behaviour behaviour);
  const Behaviour& behaviour() const { return behaviour_; }

  // How far the widget extends past the view's bounds, for a shadow.
  QMargins outset() const { return outset_; }
  void tap();
  void openContextMenu(QPoint onScreen) const;
  // Shows the focus ring without having the focus.
  void setMarked(bool isMarked);
  bool isMarked() const { return showsFocus_; }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void setInside(bool inside);
  void moveFocus(bool forward);
  void paintFeedback(QPainter& painter, const QRectF& bounds, double radius) const;
  // Side of the square that holds a corner with its border and shadow.
  int cornerSide() const;
  // True if the surface is larger than its corners, and these are whole pixels.
  bool canBePieced() const;
  // Draws the surface by paths.
  void paintLook(QPainter& painter, const QRectF& bounds) const;
  // Draws the same from a small picture of the surface, of which all but the corners is stretched.
  void paintPieces(QPainter& painter, const QRegion& damage);

  Theme& theme_;
  Look look_;
  Behaviour behaviour_;
  QMargins outset_;
  QPixmap picture_;  // of the smallest surface with this look
  unsigned pictureGeneration_ = 0;
  bool isInside_ = false;
  bool isPressed_ = false;
  bool showsFocus_ = false;
};

// Makes surfaces accessible in their roles. Call once, before an assistive tool asks for the first surface.
void installSurfaceAccessibility();

}  // namespace kestrune::ui::qt
