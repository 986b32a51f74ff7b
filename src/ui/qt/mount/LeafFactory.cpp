#include "ui/qt/mount/LeafFactory.h"

#include "ui/qt/charts/DayChartLeaf.h"
#include "ui/qt/charts/GaugeLeaf.h"
#include "ui/qt/charts/LineChartLeaf.h"
#include "ui/qt/leaves/SegmentedPickerLeaf.h"
#include "ui/qt/leaves/SliderLeaf.h"
#include "ui/qt/leaves/SwitchLeaf.h"
#include "ui/qt/leaves/SymbolLeaf.h"
#include "ui/qt/leaves/TextLeaf.h"

namespace kestrune::ui::qt {
namespace {

struct Maker {
  Theme& theme;
  QWidget* parent;

  Leaf* operator()(const TextContent&) const { return new TextLeaf(theme, parent); }
  Leaf* operator()(const SymbolContent&) const { return new SymbolLeaf(theme, parent); }
  Leaf* operator()(const IconContent&) const { return new IconLeaf(theme, parent); }
  Leaf* operator()(const SwitchContent&) const { return new SwitchLeaf(theme, parent); }
  Leaf* operator()(const SliderContent&) const { return new SliderLeaf(theme, parent); }
  Leaf* operator()(const DayChartContent&) const { return new DayChartLeaf(theme, parent); }
  Leaf* operator()(const DividerContent&) const { return new DividerLeaf(theme, parent); }
  Leaf* operator()(const LineChartContent&) const { return new LineChartLeaf(theme, parent); }
  Leaf* operator()(const BarContent&) const { return new BarLeaf(theme, parent); }
  Leaf* operator()(const RingContent&) const { return new RingLeaf(theme, parent); }
  Leaf* operator()(const SegmentedPickerContent&) const { return new SegmentedPickerLeaf(theme, parent); }
  template <class Other>
  Leaf* operator()(const Other&) const {
    return nullptr;
  }
};

}  // namespace

Leaf* makeLeaf(const Content& content, Theme& theme, QWidget* parent) {
  return std::visit(Maker{theme, parent}, content);
}

}  // namespace kestrune::ui::qt
