#include <random>

#include <gtest/gtest.h>

#include "ui/qt/MountSupport.h"

// Random trees: a window that was patched from one value to the next has to look like one that was built with
// the last value.
namespace kestrune::ui::qt {
namespace {

class Trees {
 public:
  explicit Trees(unsigned seed) : random_(seed) {}

  View tree(int depth = 4) {
    View view = depth > 0 && below(4) > 0 ? container(depth - 1) : leaf();
    if (below(4) == 0) view = std::move(view).withKey("key" + std::to_string(below(5)));
    if (below(6) == 0) view = std::move(view).withOpacity(0.5);
    if (below(6) == 0) view = std::move(view).withFont(9 + below(8), FontWeight::medium);
    if (below(6) == 0) view = std::move(view).withForeground(ColorRole::secondary);
    return view;
  }

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  View leaf() {
    switch (below(7)) {
      case 0:
        return symbol("cpu");
      case 1:
        return divider();
      case 2:
        return lineChart({{{0, 0.5, 1, below(10) / 10.0}, ColorRole::accent}}, 1.5);
      case 3:
        return View(BarContent{below(10) / 10.0, ColorRole::quaternary, ColorRole::accent, 3, 0});
      case 4:
        return segmentedPicker({verbatimText("a"), verbatimText("b")}, below(2), [](int) {});
      case 5:
        return {};
      default:
        return verbatim("text " + std::to_string(below(1000)));
    }
  }

  View container(int depth) {
    switch (below(13)) {
      case 9:
        return columns(2, 6, children(depth), {2});
      case 10:
        return firstFit(children(depth));
      case 11:
        return menu(tree(depth), {{.title = verbatimText("item"), .symbol = {}, .action = {}}});
      case 0:
        return tree(depth).padding(below(12));
      case 1:
        return tree(depth).frame({100.0 + below(100), {}, {}}, {40, {}, {}}, topLeading);
      case 2:
        return tree(depth).background({.fill = ColorRole::controlBackground, .cornerRadius = 4});
      case 3:
        return button(tree(depth), [] {});
      case 4:
        return adaptiveGrid(80, 6, children(depth));
      case 5:
        return scroll(tree(depth)).size(150, 80);
      case 6:
        return hstack(5, VerticalAlignment::center, children(depth)).help(verbatimText("help"));
      case 7:
        return zstack({}, children(depth));
      case 8:
        return hstack(8, VerticalAlignment::top, children(depth));
      default:
        return vstack(3, HorizontalAlignment::leading, children(depth));
    }
  }

  std::vector<View> children(int depth) {
    std::vector<View> views;
    for (int i = below(4); i >= 0; --i) views.push_back(tree(depth));
    return views;
  }

  std::mt19937 random_;
};

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

TEST(Patching, AgreesWithBuildingAnew) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    Trees patchedTrees(seed);
    Trees newTrees(seed);
    Stage patched(patchedTrees.tree());
    newTrees.tree();
    for (int step = 0; step < 6; ++step) {
      patched.host.setView(patchedTrees.tree());
      patched.nextFrame();
      Stage built(newTrees.tree());
      const Picture left = pictureOf(patched);
      const Picture right = pictureOf(built);
      ASSERT_EQ(left.tree, right.tree) << "seed " << seed << ", step " << step;
      ASSERT_EQ(left.image, right.image) << "seed " << seed << ", step " << step;
    }
  }
}

}  // namespace
}  // namespace kestrune::ui::qt
