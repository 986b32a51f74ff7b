#include <algorithm>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMenu>

#include "ui/qt/mount/Surface.h"

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
  // An element that represents a picture or a gauge is read by its name; a plain group isn't.
  return surface.behaviour().hidesChildren ? QAccessible::StaticText : QAccessible::Grouping;
}

class AccessibleSurface final : public QAccessibleWidget {
 public:
  explicit AccessibleSurface(Surface* surface)
      : QAccessibleWidget(surface, roleOf(*surface)), surface_(surface) {}

  // An open menu comes last; being a window of its own it would be in nobody's list.
  int childCount() const override { return ownChildCount() + (openMenu() == nullptr ? 0 : 1); }
  QAccessibleInterface* child(int index) const override {
    if (index < ownChildCount()) return QAccessibleWidget::child(index);
    return index == ownChildCount() ? QAccessible::queryAccessibleInterface(openMenu()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    if (child != nullptr && child->object() != nullptr && child->object() == openMenu())
      return ownChildCount();
    return QAccessibleWidget::indexOfChild(child);
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
  int ownChildCount() const {
    return surface_->behaviour().hidesChildren ? 0 : QAccessibleWidget::childCount();
  }
  QMenu* openMenu() const {
    const auto menus = surface_->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
    const auto open = std::ranges::find_if(menus, &QMenu::isVisible);
    return open == menus.end() ? nullptr : *open;
  }

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
