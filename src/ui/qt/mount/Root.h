#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QWidget>

#include "ui/qt/mount/Breathing.h"
#include "ui/qt/mount/Scheduler.h"
#include "ui/view/View.h"

namespace kestrune::ui::qt {

class Mounted;
class Root;
class Theme;

// What every mounted view of one window shares.
struct MountContext {
  Theme& theme;
  Scheduler& scheduler;
  Breathing& breathing;
  std::vector<Root*> roots;  // all areas of the window that are laid out on their own
};

// An area that is laid out on its own: the content of a window or of a scroll view, a pane of a split view, a
// row of a list.
class Root : public QWidget {
 public:
  enum class Sizing : std::uint8_t {
    fill,           // the content fills the widget
    heightToWidth,  // the widget asks for the height that the content wants at its width
  };

  Root(MountContext& context, Sizing sizing, QWidget* parent);
  ~Root() override;

  // The content must outlive the root, or be replaced by null before it goes.
  void setContent(Mounted* content) { content_ = content; }
  // Arranges the content if something in it has changed its size, or if `always` is set.
  void layOut(bool always = false);
  void noteStructureChange() { structureChanged_ = true; }
  // The even colour behind the content; without one the root is transparent.
  void setFill(const std::optional<Color>& fill);
  int heightForWidth(int width) const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  MountContext& context_;
  Sizing sizing_;
  Mounted* content_ = nullptr;
  std::optional<Color> fill_ = Color(ColorRole::window);
  bool structureChanged_ = true;
  int wantedHeight_ = -1;
};

}  // namespace kestrune::ui::qt
