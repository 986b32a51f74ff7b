#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"
#include "ui/view/RandomViews.h"

// Random trees: a window that was patched from one value to the next must look like one that was built with
// the last value.
namespace kestrune::ui::qt {
namespace {

// What is on screen, as text: each view's kind and what its widget is and shows.
void describe(const MountedView& mounted, const std::string& indent, std::string& out) {
  out += indent + std::to_string(mounted.view().content.index());
  if (const QWidget* widget = mounted.widget()) {
    if (widget->isHidden()) {
      out += " hidden\n";
      return;
    }
    const QRect rect(widget->mapTo(widget->window(), QPoint()), widget->size());
    out += " [" + std::to_string(rect.x()) + "," + std::to_string(rect.y()) + " " +
           std::to_string(rect.width()) + "x" + std::to_string(rect.height()) + "] " +
           widget->accessibleName().toStdString() + "|" + widget->toolTip().toStdString() +
           (widget->isEnabled() ? "" : " disabled");
  }
  out += "\n";
  for (const auto& child : mounted.children()) describe(*child, indent + " ", out);
}

struct Picture {
  std::string tree;
  QImage image;
};

Picture pictureOf(Stage& stage) {
  Picture picture;
  describe(stage.host.mounted(), "", picture.tree);
  picture.image = stage.host.grab().toImage();
  return picture;
}

TEST(Patching, agreesWithBuildingFromScratch) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    test::RandomViews patches(seed, {0, 3, 8, 40, 150});
    test::RandomViews sameAgain = patches;
    Stage patched(patches.any(5));
    sameAgain.any(5);
    for (int step = 0; step < 6; ++step) {
      patched.host.setView(patches.any(5));
      patched.nextFrame();
      Stage built(sameAgain.any(5));
      const Picture left = pictureOf(patched);
      const Picture right = pictureOf(built);
      ASSERT_EQ(left.tree, right.tree) << "seed " << seed << ", step " << step;
      ASSERT_EQ(left.image, right.image) << "seed " << seed << ", step " << step;
    }
  }
}

}  // namespace
}  // namespace kestrune::ui::qt
