#pragma once

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include <QPointer>
#include <QScrollArea>
#include <QWidget>

#include "ui/qt/mount/MountedView.h"

namespace kestrune::ui::qt {

// Rows of one height below each other, of which only those exist that can be seen. To the keyboard it is one
// stop: the arrows, Page Up and Down, Home and End move from row to row, Return or the space bar taps one.
class RowsPane final : public QWidget {
 public:
  RowsPane(MountContext& context, QWidget* parent);
  ~RowsPane() override;

  // True if it is of another height than before.
  bool show(const RowsContent& content, const Inherited& inherited);
  LeafMetrics measure(Proposal proposal) const;
  // Rows that exist now.
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
  // Makes the rows that have come into sight and drops those that have left it.
  void follow();
  void makeRow(std::size_t index);
  void placeRow(std::size_t index, Row& row);
  void moveTo(std::size_t index);
  void showCurrent();
  int rowHeight() const;
  Surface* surfaceOf(std::size_t index) const;

  MountContext& context_;
  RowsContent content_;
  Inherited inherited_;
  std::map<std::size_t, std::unique_ptr<Row>> rows_;
  QPointer<QScrollArea> scroller_;
  std::size_t current_ = 0;
  bool showsCurrent_ = false;
};

}  // namespace kestrune::ui::qt
