#pragma once

#include <functional>
#include <map>
#include <memory>

#include <QPointer>
#include <QScrollArea>
#include <QWidget>

#include "ui/qt/mount/Mounted.h"
#include "ui/qt/mount/Root.h"
#include "ui/view/Layout.h"

namespace kestrune::ui::qt {

class Surface;

// Puts a row's view on screen in a root of its own. The view must outlive what is returned.
using MountRow =
    std::function<std::unique_ptr<Mounted>(Root& root, const View& row, const Inherited& inherited)>;

// Rows of one height below each other; only rows that can be seen exist. To the keyboard the list is one
// stop: the arrows, Page Up and Down, Home and End move from row to row, Return or the space bar taps the
// current one.
class RowsPane final : public QWidget {
 public:
  RowsPane(MountContext& context, MountRow mountRow, QWidget* parent);
  ~RowsPane() override;

  // True if the height has changed.
  bool show(const RowsContent& content, const Inherited& inherited);
  LeafMetrics measure(Proposal proposal) const;
  // Number of rows that exist now.
  std::size_t existingRows() const { return rows_.size(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  struct Row;
  struct Range {
    std::size_t first = 0;
    std::size_t end = 0;
  };

  void watchSurroundings();
  Range visibleRows() const;
  // Makes the rows that scrolled into view and drops the rows that scrolled out of it.
  void follow();
  void makeRow(std::size_t index);
  QRect placeOf(std::size_t index) const;
  void moveTo(std::size_t index);
  void showCurrent();
  int rowHeight() const;
  Surface* surfaceOf(std::size_t index) const;

  MountContext& context_;
  MountRow mountRow_;
  RowsContent content_;
  Inherited inherited_;
  std::map<std::size_t, std::unique_ptr<Row>> rows_;
  QPointer<QScrollArea> scroller_;
  std::size_t current_ = 0;
  bool showsCurrent_ = false;
};

}  // namespace kestrune::ui::qt
