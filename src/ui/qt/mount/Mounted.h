#pragma once

#include <vector>

#include <QPoint>
#include <QWidget>

#include "ui/qt/mount/Inherited.h"
#include "ui/view/LayoutNode.h"
#include "ui/view/View.h"

namespace kestrune::ui::qt {

// A view on screen, as the root or the list that holds it sees it.
class Mounted {
 public:
  Mounted() = default;
  virtual ~Mounted() = default;
  Mounted(const Mounted&) = delete;
  Mounted& operator=(const Mounted&) = delete;

  // True if `update` can show the view; otherwise a new one has to be mounted in place of this one.
  virtual bool canShow(const View& next) const = 0;
  virtual void update(const View& next, const Inherited& inherited) = 0;

  // The view's own widget; null if it needs none.
  virtual QWidget* widget() const = 0;
  // Appends the widget, if there is one, and those below it, in the order of the views.
  virtual void collectWidgets(std::vector<QWidget*>& widgets) const = 0;

  virtual LayoutNode& node() = 0;
  // Moves the widgets to where the layout put them. `origin`: the parent widget's place in the root.
  virtual void applyGeometry(QPoint origin) = 0;
};

}  // namespace kestrune::ui::qt
