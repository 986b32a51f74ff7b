#include "ui/qt/mount/MountedView.h"

#include "ui/qt/leaves/ToolTip.h"
#include "ui/qt/mount/Dialogs.h"
#include "ui/qt/mount/LeafFactory.h"
#include "ui/qt/mount/Panes.h"
#include "ui/qt/mount/RowsPane.h"
#include "ui/qt/mount/Transitions.h"
#include "ui/qt/theme/Theme.h"
#include "ui/view/Diff.h"

namespace kestrune::ui::qt {
namespace {

QString joinedTexts(const View& view, const Theme& theme) {
  QStringList texts;
  if (const auto* text = view.as<TextContent>()) texts << theme.text(*text);
  for (const View& child : view.children) {
    const QString inner = joinedTexts(child, theme);
    if (!inner.isEmpty()) texts << inner;
  }
  return texts.join(QLatin1Char(' '));
}

}  // namespace

MountedView::MountedView(MountContext& context, Root& root, QWidget& parent, const View& view,
                         const Inherited& inherited)
    : context_(context),
      root_(root),
      parent_(parent),
      view_(&view),
      inherited_(inherited),
      dependencies_([this] {
        hasChanged_ = true;
        context_.scheduler.markChanged(*this);
      }) {
  mount();
}

MountedView::~MountedView() {
  context_.scheduler.forget(*this);
  breath_.reset();
  for (Root* pane : panes_) pane->setContent(nullptr);
  children_.clear();
  if (menu_) menu_->close();
  delete picture_.data();
  if (dialog_) {
    dialog_->disconnect();
    dialog_->hide();
    dialog_->deleteLater();
  }
  if (widget_) {
    // The widget may be handling an event; it is deleted later and must call back no more.
    if (surface_ != nullptr) surface_->setBehaviour({});
    widget_->hide();
    widget_->deleteLater();
  }
}

bool MountedView::wantsSurface(const View& view) const {
  if (view.as<BackgroundContent>() != nullptr || view.as<ButtonContent>() != nullptr ||
      view.as<MenuContent>() != nullptr) {
    return true;
  }
  if (leaf_ != nullptr || rows_ != nullptr || !view.traits) return false;
  const Traits& traits = *view.traits;
  return traits.onTap || traits.onHover || traits.help || traits.isAccessibilityElement ||
         traits.accessibilityLabel || !traits.contextMenu.empty() || traits.transition != Transition::none;
}

bool MountedView::canShow(const View& next) const {
  return sameKind(*view_, next) && wantsSurface(next) == (surface_ != nullptr);
}

void MountedView::mount() {
  leaf_ = makeLeaf(view_->content, context_.theme, &parent_);
  if (leaf_ != nullptr) {
    widget_ = leaf_;
    node_.setMeasure([this](Proposal proposal) { return leaf_->measure(proposal); });
  } else if (view_->as<RowsContent>() != nullptr) {
    const auto mountRow = [&context = context_](Root& root, const View& row, const Inherited& inherited) {
      return std::make_unique<MountedView>(context, root, root, row, inherited);
    };
    rows_ = new RowsPane(context_, mountRow, &parent_);
    widget_ = rows_;
    node_.setMeasure([this](Proposal proposal) { return rows_->measure(proposal); });
  } else if (view_->as<ScrollContent>() != nullptr) {
    auto* pane = new ScrollPane(context_, &parent_);
    widget_ = pane;
    panes_ = {pane->content()};
  } else if (const auto* split = view_->as<SplitContent>()) {
    auto* pane = new SplitPane(context_, *split, &parent_);
    widget_ = pane;
    panes_ = {pane->sidebar(), pane->detail()};
  } else if (wantsSurface(*view_)) {
    surface_ = new Surface(context_.theme, &parent_);
    widget_ = surface_;
  }
  if (const auto* component = view_->as<ComponentContent>()) component_ = component->make();
  node_.setContent(view_->content);
  refreshOwnWidget();
  if (component_) {
    evaluateIfNeeded(true);
  } else {
    updateChildren(view_->children);
  }
  if (widget_) widget_->show();
  openOwnDialog();
  followPulse();
  isMounted_ = true;
}

void MountedView::update(const View& next, const Inherited& inherited) {
  const bool sameSurroundings = inherited == inherited_;
  view_ = &next;
  inherited_ = inherited;
  node_.setContent(view_->content);
  refreshOwnWidget();
  if (component_) {
    evaluateIfNeeded(!sameSurroundings || view_->as<ComponentContent>()->update);
  } else {
    updateChildren(view_->children);
  }
  followPulse();
}

void MountedView::restyle(const Inherited& inherited) {
  inherited_ = inherited;
  refreshOwnWidget();
  const Inherited passed = scope();
  for (const auto& child : children_) child->restyle(passed);
}

Inherited MountedView::scope() const {
  Inherited scope = passedOn(*view_, inherited_, pulseOpacity_);
  if (surface_ != nullptr) {
    // A surface that paints feedback under its content leaves no even colour behind it.
    if (surface_->behaviour().onTap) scope.backdrop.reset();
    if (surface_->behaviour().hidesChildren) scope.isAccessibilityHidden = true;
  }
  return scope;
}

LeafStyle MountedView::leafStyle(const Inherited& scope) const {
  return {scope.font,
          scope.foreground,
          scope.opacity,
          scope.backdrop,
          traitsOf(*view_).accessibilityLabel,
          inherited_.isAccessibilityHidden};
}

void MountedView::refreshOwnWidget() {
  if (leaf_ != nullptr) {
    const Inherited passed = scope();
    if (leaf_->show(view_->content, leafStyle(passed))) node_.invalidate();
    leaf_->setEnabled(passed.isEnabled);
    const auto& help = traitsOf(*view_).help;
    const QString toolTip = help ? plainToolTip(context_.theme.text(*help)) : QString();
    if (leaf_->toolTip() != toolTip) leaf_->setToolTip(toolTip);
  } else if (rows_ != nullptr) {
    if (rows_->show(std::get<RowsContent>(view_->content), scope())) node_.invalidate();
  } else if (surface_ != nullptr) {
    refreshSurface();
  }
}

void MountedView::openOwnDialog() {
  dialog_ = openDialog(
      view_->content, [this] { return &view_->content; }, context_.theme, parent_);
}

void MountedView::refreshSurface() {
  surface_->setBehaviour(surfaceBehaviour());
  const Inherited passed = scope();
  Surface::Look look;
  look.opacity = passed.opacity;
  if (const auto* background = view_->as<BackgroundContent>()) look.background = *background;
  surface_->setLook(look);
  surface_->setEnabled(passed.isEnabled);
}

Surface::Behaviour MountedView::surfaceBehaviour() {
  const Traits& traits = traitsOf(*view_);
  Surface::Behaviour behaviour;
  behaviour.onHover = traits.onHover;
  behaviour.onTap = traits.onTap;
  behaviour.isSelected = traits.isSelected;
  if (behaviour.onTap) behaviour.role = Surface::Role::row;
  if (const auto* button = view_->as<ButtonContent>()) {
    behaviour.role = Surface::Role::button;
    behaviour.onTap = button->action;
  }
  if (view_->as<MenuContent>() != nullptr) {
    behaviour.role = Surface::Role::menu;
    behaviour.onTap = [this] { openOwnMenu(surface_->mapToGlobal(surface_->rect().bottomLeft())); };
  }
  if (!traits.contextMenu.empty()) behaviour.onContextMenu = [this](QPoint place) { openOwnMenu(place); };
  behaviour.takesFocus = behaviour.onTap && !inherited_.isInRows;
  behaviour.hidesChildren = traits.isAccessibilityElement || behaviour.onTap;
  if (traits.help) behaviour.toolTip = context_.theme.text(*traits.help);
  if (traits.accessibilityLabel) {
    behaviour.accessibleName = context_.theme.text(*traits.accessibilityLabel);
  } else if (behaviour.hidesChildren) {
    behaviour.accessibleName = joinedTexts(*view_, context_.theme);
    // A control that shows only a symbol is named by its tooltip.
    if (behaviour.accessibleName.isEmpty()) behaviour.accessibleName = behaviour.toolTip;
  }
  return behaviour;
}

const std::vector<MenuItem>& MountedView::menuItems() const {
  const auto* menu = view_->as<MenuContent>();
  return menu != nullptr ? menu->items : traitsOf(*view_).contextMenu;
}

void MountedView::openOwnMenu(QPoint place) {
  menu_ = openMenu([this]() -> const auto& { return menuItems(); }, context_.theme, *surface_, place);
}

void MountedView::evaluateIfNeeded(bool hasNewInput) {
  if (!hasNewInput && !hasChanged_) return;
  if (const auto& handInput = view_->as<ComponentContent>()->update) handInput(*component_);
  evaluate();
}

void MountedView::evaluate() {
  context_.scheduler.forget(*this);
  hasChanged_ = false;
  auto next = std::make_unique<const View>(dependencies_.track([this] { return component_->body(); }));
  // The old body must live until nothing shows it any more.
  const auto old = std::exchange(body_, std::move(next));
  const Inherited passed = scope();
  if (children_.size() == 1 && children_.front()->canShow(*body_)) {
    children_.front()->update(*body_, passed);
    return;
  }
  children_.clear();
  QWidget& parent = surface_ != nullptr ? *surface_ : parent_;
  children_.push_back(std::make_unique<MountedView>(context_, root_, parent, *body_, passed));
  linkChildren();
}

std::unique_ptr<MountedView> MountedView::mountChild(const View& child, std::size_t index) {
  const Inherited passed = scope();
  if (!panes_.empty()) {
    Root& pane = *panes_[index];
    auto mounted = std::make_unique<MountedView>(context_, pane, pane, child, passed);
    pane.setContent(mounted.get());
    pane.noteStructureChange();
    return mounted;
  }
  QWidget& parent = surface_ != nullptr ? *surface_ : parent_;
  return std::make_unique<MountedView>(context_, root_, parent, child, passed);
}

void MountedView::updateChildren(const std::vector<View>& next) {
  if (leaf_ != nullptr || (children_.empty() && next.empty())) return;
  std::vector<const View*> before;
  before.reserve(children_.size());
  for (const auto& child : children_) before.push_back(child->view_);
  const auto matches = matchChildren(before, next);

  const Inherited passed = scope();
  std::vector<std::unique_ptr<MountedView>> after;
  after.reserve(next.size());
  bool isSameOrder = next.size() == children_.size();
  for (std::size_t i = 0; i < next.size(); ++i) {
    const auto old = matches[i];
    if (old && children_[*old]->canShow(next[i])) {
      isSameOrder = isSameOrder && *old == i;
      after.push_back(std::move(children_[*old]));
      after.back()->update(next[i], passed);
    } else {
      isSameOrder = false;
      after.push_back(mountChild(next[i], i));
      after.back()->isEntering_ = isMounted_;
    }
  }
  for (const auto& child : children_) {
    if (child) child->leave();
  }
  children_ = std::move(after);
  if (!isSameOrder) linkChildren();
}

void MountedView::linkChildren() {
  root_.noteStructureChange();
  if (!panes_.empty()) return;  // a pane lays out its own content
  std::vector<LayoutNode*> nodes;
  nodes.reserve(children_.size());
  for (const auto& child : children_) nodes.push_back(&child->node_);
  node_.setChildren(std::move(nodes));
}

void MountedView::applyGeometry(QPoint origin) {
  const Rect& frame = node_.frame();
  const QRect bounds(qRound(frame.x), qRound(frame.y), qRound(frame.width), qRound(frame.height));
  if (widget_) {
    QRect geometry = bounds.translated(-origin);
    if (surface_ != nullptr) geometry = geometry.marginsAdded(surface_->outset());
    if (widget_->geometry() != geometry) widget_->setGeometry(geometry);
    const bool isShown = !node_.isLeftOut() && !picture_;
    if (widget_->isHidden() == isShown) widget_->setVisible(isShown);
    if (surface_ != nullptr) origin += geometry.topLeft();
  }
  if (!panes_.empty()) return;
  for (const auto& child : children_) child->applyGeometry(origin);
  if (std::exchange(isEntering_, false)) enter();
}

void MountedView::collectWidgets(std::vector<QWidget*>& widgets) const {
  if (widget_) widgets.push_back(widget_);
  if (!panes_.empty()) return;  // a pane orders its own content
  for (const auto& child : children_) child->collectWidgets(widgets);
}

void MountedView::followPulse() {
  const auto& wanted = traitsOf(*view_).pulse;
  if (!wanted) {
    breath_.reset();
    pulseOpacity_ = 1;
    return;
  }
  if (breath_) return;
  pulseOpacity_ = context_.breathing.isActive() ? wanted->from : wanted->to;
  breath_ = std::make_unique<Breath>(context_.breathing, *wanted, [this](double opacity) {
    pulseOpacity_ = opacity;
    restyle(inherited_);
  });
  restyle(inherited_);
}

void MountedView::enter() {
  if (!widget_ || traitsOf(*view_).transition != Transition::moveFromBottomWithOpacity) return;
  picture_ = playEntrance(*widget_, [this] {
    picture_.clear();
    widget_->setVisible(!node_.isLeftOut());
  });
}

void MountedView::leave() {
  if (widget_ && traitsOf(*view_).transition == Transition::moveFromBottomWithOpacity) playExit(*widget_);
}

}  // namespace kestrune::ui::qt
