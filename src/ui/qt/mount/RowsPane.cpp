#include "ui/qt/mount/RowsPane.h"

#include <algorithm>
#include <utility>

#include <QAccessible>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QScrollBar>

#include "ui/qt/leaves/FocusRing.h"
#include "ui/qt/mount/Surface.h"

namespace kestrune::ui::qt {
namespace {

// Rows made beyond each edge of the view, so that a slow scroll finds them ready.
constexpr std::size_t rowsBeyond = 3;

}  // namespace

struct RowsPane::Row {
  Row(MountContext& context, QWidget* parent, View shown)
      : root(new Root(context, Root::Sizing::fill, parent)),
        view(std::make_unique<const View>(std::move(shown))) {}
  ~Row() {
    root->setContent(nullptr);
    mounted.reset();
    root->hide();
    root->deleteLater();
  }
  Row(const Row&) = delete;
  Row& operator=(const Row&) = delete;

  Root* root;
  std::unique_ptr<const View> view;
  std::unique_ptr<Mounted> mounted;
};

RowsPane::RowsPane(MountContext& context, MountRow mountRow, QWidget* parent)
    : QWidget(parent), context_(context), mountRow_(std::move(mountRow)) {
  setFocusPolicy(Qt::StrongFocus);
}

RowsPane::~RowsPane() = default;

bool RowsPane::show(const RowsContent& content, const Inherited& inherited) {
  const bool hasOtherHeight = content.count != content_.count || content.rowHeight != content_.rowHeight;
  content_ = content;
  inherited_ = inherited;
  inherited_.isInRows = true;
  current_ = std::min(current_, std::max<std::size_t>(content_.count, 1) - 1);
  std::erase_if(rows_, [this](const auto& row) { return row.first >= content_.count; });
  for (auto& [index, row] : rows_) {
    auto next = std::make_unique<const View>(content_.row(index));
    if (!row->mounted->canShow(*next)) {
      row = nullptr;
      continue;
    }
    row->mounted->update(*next, inherited_);
    row->view = std::move(next);
  }
  std::erase_if(rows_, [](const auto& row) { return row.second == nullptr; });
  follow();
  return hasOtherHeight;
}

int RowsPane::rowHeight() const {
  return std::max(qRound(content_.rowHeight), 1);
}

LeafMetrics RowsPane::measure(Proposal proposal) const {
  const double height = static_cast<double>(content_.count) * rowHeight();
  return {{proposal.width.value_or(0), height}, std::nullopt};
}

void RowsPane::watchSurroundings() {
  if (scroller_) return;
  for (QWidget* around = parentWidget(); around != nullptr && !scroller_; around = around->parentWidget()) {
    scroller_ = qobject_cast<QScrollArea*>(around);
  }
  if (!scroller_) return;
  connect(scroller_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { follow(); });
  scroller_->viewport()->installEventFilter(this);
}

bool RowsPane::eventFilter(QObject* watched, QEvent* event) {
  const bool handled = QWidget::eventFilter(watched, event);
  if (event->type() == QEvent::Resize) follow();
  return handled;
}

RowsPane::Range RowsPane::visibleRows() const {
  if (!isVisible() || width() <= 0) return {};
  QRect seen = rect();
  if (scroller_) {
    const QWidget* viewport = scroller_->viewport();
    seen &= QRect(mapFrom(viewport, QPoint(0, 0)), viewport->size());
  }
  if (seen.isEmpty()) return {};
  const auto first = static_cast<std::size_t>(seen.top() / rowHeight());
  const auto last = static_cast<std::size_t>(seen.bottom() / rowHeight());
  return {first > rowsBeyond ? first - rowsBeyond : 0, std::min(last + 1 + rowsBeyond, content_.count)};
}

void RowsPane::follow() {
  const Range seen = visibleRows();
  std::erase_if(rows_, [&seen](const auto& row) { return row.first < seen.first || row.first >= seen.end; });
  for (std::size_t index = seen.first; index < seen.end; ++index) {
    if (!rows_.contains(index)) makeRow(index);
  }
}

void RowsPane::makeRow(std::size_t index) {
  auto row = std::make_unique<Row>(context_, this, content_.row(index));
  row->root->setFill(inherited_.backdrop);
  row->mounted = mountRow_(*row->root, *row->view, inherited_);
  row->root->setContent(row->mounted.get());
  row->root->noteStructureChange();
  row->root->setGeometry(placeOf(index));
  row->root->show();
  row->root->layOut(true);
  rows_.emplace(index, std::move(row));
  if (Surface* surface = surfaceOf(index)) surface->setMarked(showsCurrent_ && index == current_);
}

QRect RowsPane::placeOf(std::size_t index) const {
  return {0, static_cast<int>(index) * rowHeight(), width(), rowHeight()};
}

void RowsPane::showEvent(QShowEvent* event) {
  watchSurroundings();
  follow();
  QWidget::showEvent(event);
}

void RowsPane::moveEvent(QMoveEvent* event) {
  follow();
  QWidget::moveEvent(event);
}

void RowsPane::resizeEvent(QResizeEvent* event) {
  for (const auto& [index, row] : rows_) row->root->setGeometry(placeOf(index));
  follow();
  QWidget::resizeEvent(event);
}

Surface* RowsPane::surfaceOf(std::size_t index) const {
  const auto found = rows_.find(index);
  return found == rows_.end() ? nullptr : dynamic_cast<Surface*>(found->second->mounted->widget());
}

void RowsPane::moveTo(std::size_t index) {
  current_ = std::min(index, std::max<std::size_t>(content_.count, 1) - 1);
  showsCurrent_ = true;
  showCurrent();
}

void RowsPane::showCurrent() {
  if (scroller_ && showsCurrent_) {
    const QPoint middle = mapTo(scroller_->widget(), placeOf(current_).center());
    scroller_->ensureVisible(middle.x(), middle.y(), 0, rowHeight());
  }
  for (const auto& [index, row] : rows_) {
    if (Surface* surface = surfaceOf(index)) surface->setMarked(showsCurrent_ && index == current_);
  }
  if (Surface* surface = surfaceOf(current_); surface != nullptr && showsCurrent_) {
    QAccessibleEvent event(surface, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
  }
}

void RowsPane::keyPressEvent(QKeyEvent* event) {
  const auto page = static_cast<std::size_t>(
      scroller_ ? std::max(scroller_->viewport()->height() / rowHeight() - 1, 1) : 10);
  switch (event->key()) {
    case Qt::Key_Down:
      return moveTo(showsCurrent_ ? current_ + 1 : current_);
    case Qt::Key_Up:
      return moveTo(current_ > 0 ? current_ - 1 : 0);
    case Qt::Key_PageDown:
      return moveTo(current_ + page);
    case Qt::Key_PageUp:
      return moveTo(current_ > page ? current_ - page : 0);
    case Qt::Key_Home:
      return moveTo(0);
    case Qt::Key_End:
      return moveTo(content_.count);
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (Surface* surface = surfaceOf(current_)) surface->tap();
      return;
    case Qt::Key_Backspace:
      if (const auto goBack = content_.onBack) goBack();
      return;
    default:
      event->ignore();
  }
}

void RowsPane::contextMenuEvent(QContextMenuEvent* event) {
  Surface* surface = surfaceOf(current_);
  if (event->reason() != QContextMenuEvent::Keyboard || surface == nullptr) {
    event->ignore();
    return;
  }
  surface->openContextMenu(surface->mapToGlobal(QPoint(surface->width() / 4, surface->height())));
}

void RowsPane::focusInEvent(QFocusEvent* event) {
  showsCurrent_ = isKeyboardReason(event->reason());
  showCurrent();
}

void RowsPane::focusOutEvent(QFocusEvent*) {
  showsCurrent_ = false;
  showCurrent();
}

}  // namespace kestrune::ui::qt
