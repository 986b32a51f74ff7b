#pragma once

#include <QCursor>
#include <QTest>

#include "runtime/Published.h"
#include "support/TestClock.h"
#include "texts/Catalogue.h"
#include "ui/qt/LeafSupport.h"
#include "ui/qt/mount/ViewHost.h"
#include "ui/qt/theme/Theme.h"
#include "ui/view/View.h"

namespace kestrune::ui::qt {

// A component with a body that the test makes.
class Scene final : public Component {
 public:
  explicit Scene(std::function<View()> make) : make_(std::move(make)) {}
  View body() override { return make_(); }

 private:
  std::function<View()> make_;
};

inline View scene(std::function<View()> make) {
  return component<Scene>([make = std::move(make)] { return std::make_shared<Scene>(make); });
}

template <class... Each>
View page(Each&&... each) {
  return vstack(0, HorizontalAlignment::leading, views(std::forward<Each>(each)...));
}

// A window over the test clock.
class Stage {
 public:
  explicit Stage(View view, QSize size = {600, 400}) : host(test.loop, theme, std::move(view)) {
    QCursor::setPos(0, 0);  // so that nothing is hovered by chance
    host.move(20, 20);
    host.resize(size);
    host.show();
    settle();
  }

  test::TestLoop test;
  Catalogue catalogue;
  Theme theme{catalogue};
  ViewHost host;

  // Lets changes reach the screen.
  void nextFrame() {
    test.advance(Scheduler::frame);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    settle();
  }

  void resize(int width, int height) {
    host.resize(width, height);
    settle();
  }

  template <class Widget>
  QList<Widget*> shown() {
    QList<Widget*> found;
    for (QWidget* widget : host.findChildren<QWidget*>()) {
      if (auto* typed = dynamic_cast<Widget*>(widget); typed != nullptr && widget->isVisible())
        found << typed;
    }
    return found;
  }
  Surface* surface(const QString& accessibleName) {
    for (Surface* surface : shown<Surface>()) {
      if (surface->accessibleName() == accessibleName) return surface;
    }
    return nullptr;
  }
};

}  // namespace kestrune::ui::qt
