#pragma once

#include <QScrollArea>
#include <QSplitter>

#include "ui/qt/mount/Root.h"
#include "ui/qt/mount/ThinScrollBar.h"

namespace kestrune::ui::qt {

// Scrolls its content vertically; the content is as wide as the pane. The position survives updates.
class ScrollPane final : public QScrollArea {
 public:
  ScrollPane(MountContext& context, QWidget* parent);
  Root* content() const { return content_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  Root* content_;
  ThinScrollBar* bar_;
};

// A sidebar whose width the user drags, and the detail beside it, which takes all further room.
class SplitPane final : public QSplitter {
 public:
  SplitPane(MountContext& context, const SplitContent& split, QWidget* parent);
  Root* sidebar() const { return sidebar_; }
  Root* detail() const { return detail_; }

 protected:
  QSplitterHandle* createHandle() override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  Theme& theme_;
  Root* sidebar_;
  Root* detail_;
  int idealSidebarWidth_;
  bool hasSizes_ = false;
};

}  // namespace kestrune::ui::qt
