#pragma once

#include <memory>
#include <vector>

#include <QDialog>
#include <QMenu>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include "runtime/Published.h"
#include "ui/qt/leaves/Leaf.h"
#include "ui/qt/mount/Breathing.h"
#include "ui/qt/mount/Inherited.h"
#include "ui/qt/mount/Mounted.h"
#include "ui/qt/mount/Root.h"
#include "ui/qt/mount/Scheduler.h"
#include "ui/qt/mount/Surface.h"
#include "ui/view/LayoutNode.h"
#include "ui/view/View.h"

namespace kestrune::ui::qt {

class RowsPane;

// A view on screen: the widget it needs, if it needs one, and the views below it. Its widget lives for as
// long as a view of the same kind stands at its place.
class MountedView final : public Mounted, public Evaluated {
 public:
  // `view` must stay where it is until `update` hands over the next one.
  MountedView(MountContext& context, Root& root, QWidget& parent, const View& view,
              const Inherited& inherited);
  ~MountedView() override;
  MountedView(const MountedView&) = delete;
  MountedView& operator=(const MountedView&) = delete;

  bool canShow(const View& next) const override;
  void update(const View& next, const Inherited& inherited) override;
  // Shows the same view with other surroundings, or in another theme.
  void restyle(const Inherited& inherited);

  const View& view() const { return *view_; }
  const std::vector<std::unique_ptr<MountedView>>& children() const { return children_; }
  QWidget* widget() const override { return widget_; }
  void collectWidgets(std::vector<QWidget*>& widgets) const override;
  LayoutNode& node() override { return node_; }
  void applyGeometry(QPoint origin) override;

  int depth() const override { return inherited_.depth; }
  void evaluate() override;

 private:
  Inherited scope() const;
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
  void openOwnMenu(QPoint place);
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
  QPointer<QWidget> picture_;  // moves in, in place of the widget
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
  bool isEntering_ = false;  // joined views that were there already and isn't placed yet
};

}  // namespace kestrune::ui::qt
