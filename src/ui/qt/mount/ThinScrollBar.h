#pragma once

#include <QScrollBar>

namespace kestrune::ui::qt {

class Theme;

// A slim bar over the right edge of what it scrolls, so that the content keeps its width whether or not there
// is anything to scroll. It follows the scroll area's own bar, which stays hidden.
class ThinScrollBar final : public QScrollBar {
 public:
  // `followed` must outlive the bar.
  ThinScrollBar(Theme& theme, QScrollBar& followed, QWidget* parent);

  // Places the bar at the right edge of its parent; call when the parent's size has changed.
  void place();
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void follow();

  Theme& theme_;
  QScrollBar& followed_;
};

}  // namespace kestrune::ui::qt
