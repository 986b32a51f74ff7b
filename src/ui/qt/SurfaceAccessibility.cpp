#include <QAccessible>
#include <QAccessibleWidget>

#include "ui/qt/Surface.h"

namespace kestrune::ui::qt {
namespace {

QAccessible::Role roleOf(const Surface& surface) {
  switch (surface.behaviour().role) {
    case Surface::Role::row:
      return QAccessible::ListItem;
    case Surface::Role::button:
      return QAccessible::Button;
    case Surface::Role::menu:
      return QAccessible::ButtonMenu;
    case Surface::Role::group:
      break;
  }
  // An element that speaks for a picture or a gauge is read with its name; a mere group only groups.
  return surface.behaviour().hidesChildren ? QAccessible::StaticText : QAccessible::Grouping;
}

class AccessibleSurface final : public QAccessibleWidget {
 public:
  explicit AccessibleSurface(Surface* surface)
      : QAccessibleWidget(surface, roleOf(*surface)), surface_(surface) {}

  int childCount() const override {
    return surface_->behaviour().hidesChildren ? 0 : QAccessibleWidget::childCount();
  }
  QAccessibleInterface* child(int index) const override {
    return surface_->behaviour().hidesChildren ? nullptr : QAccessibleWidget::child(index);
  }
  QAccessible::Role role() const override { return roleOf(*surface_); }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    if (surface_->behaviour().role == Surface::Role::row) {
      state.selectable = true;
      state.selected = surface_->behaviour().isSelected;
    }
    return state;
  }
  QStringList actionNames() const override {
    QStringList names = QAccessibleWidget::actionNames();
    if (surface_->behaviour().onTap) names.prepend(pressAction());
    return names;
  }
  void doAction(const QString& name) override {
    if (name == pressAction()) {
      surface_->tap();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  Surface* surface_;
};

QAccessibleInterface* accessibleSurface(const QString&, QObject* object) {
  auto* surface = dynamic_cast<Surface*>(object);
  return surface == nullptr ? nullptr : new AccessibleSurface(surface);
}

}  // namespace

void installSurfaceAccessibility() {
  QAccessible::installFactory(accessibleSurface);
}

}  // namespace kestrune::ui::qt
