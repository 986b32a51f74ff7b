#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QDialog>
#include <QMenu>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include "runtime/Published.h"
#include "ui/qt/leaves/Leaf.h"
#include "ui/qt/mount/Breathing.h"
#include "ui/qt/mount/Root.h"
#include "ui/qt/mount/Scheduler.h"
#include "ui/qt/mount/Surface.h"
#include "ui/view/LayoutNode.h"
#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Root;
class RowsPane;
class Theme;

// What a view takes over from those around it.
struct Inherited {
  Font font;
  Color foreground = ColorRole::primary;
  double opacity = 1;
  std::optional<Color> backdrop;  // the even colour behind
  bool isAccessibilityHidden = false;
  bool isEnabled = true;
  bool isInRows = false;  // what lies there takes no focus of its own
  int depth = 0;

  friend bool operator==(const Inherited&, const Inherited&) = default;
};

// A view on screen: the widget it needs, if it needs one, and the views below it. It keeps up with the values
// that it is given; a widget lives for as long as a view of the same kind stands at its place.
class MountedView final : public Evaluated {
 public:
  // `view` must stay where it is until `update` hands over the next one.
  MountedView(MountContext& context, Root& root, QWidget& parent, const View& view,
              const Inherited& inherited);
  ~MountedView() override;
  MountedView(const MountedView&) = delete;
  MountedView& operator=(const MountedView&) = delete;

  // Whether `update` can show that view; otherwise this one has to go and another to come.
  bool canShow(const View& next) const;
  void update(const View& next, const Inherited& inherited);
  // The same view with other surroundings, or in another theme.
  void restyle(const Inherited& inherited);

  LayoutNode& node() { return node_; }
  const std::vector<std::unique_ptr<MountedView>>& children() const { return children_; }
  const View& view() const { return *view_; }
  QWidget* widget() const { return widget_; }
  // Moves the widgets to where the layout put them. `origin`: where the parent widget lies in the root.
  void applyGeometry(QPoint origin);
  // Appends the widget, if there is one, and those below it, in the order of the views.
  void collectWidgets(std::vector<QWidget*>& widgets) const;

  int depth() const override { return inherited_.depth; }
  void evaluate() override;

 private:
  Inherited passedOn() const;
  LeafStyle leafStyle(const Inherited& scope) const;
  bool wantsSurface(const View& view) const;
  void mount();
  void refreshOwnWidget();
  void refreshSurface();
  void updateChildren(const std::vector<View>& next);
  std::unique_ptr<MountedView> mountChild(const View& child, std::size_t index);
  void linkChildren();
  void evaluateIfNeeded(bool hasNewInput);
  void followPulse();
  void enter();
  void leave();
  Surface::Behaviour surfaceBehaviour();
  const std::vector<MenuItem>& menuItems() const;
  void openMenu(QPoint place);
  void chooseMenuItem(const TextContent& title);
  void openOwnDialog();

  MountContext& context_;
  Root& root_;
  QWidget& parent_;
  const View* view_;
  Inherited inherited_;
  LayoutNode node_;
  QPointer<QWidget> widget_;
  QPointer<QMenu> menu_;  // while it is open
  QPointer<QDialog> dialog_;
  QPointer<QWidget> picture_;  // comes in, in place of the widget
  RowsPane* rows_ = nullptr;
  Leaf* leaf_ = nullptr;
  Surface* surface_ = nullptr;
  std::vector<std::unique_ptr<MountedView>> children_;
  std::vector<Root*> panes_;  // of a scroll or split view: its children's roots

  std::shared_ptr<Component> component_;
  std::unique_ptr<const View> body_;
  Dependencies dependencies_;
  bool hasChanged_ = true;
  std::unique_ptr<Breath> breath_;
  double pulseOpacity_ = 1;
  bool isMounted_ = false;
  bool isEntering_ = false;  // has come among views that were there already and isn't placed yet
};

}  // namespace kestrune::ui::qt
