#include "ui/view/Arrangement.h"

#include "ui/view/Layout.h"

namespace kestrune::ui {
namespace {

constexpr double iconIdealLength = 24;

struct ArrangementOf {
  Arrangement operator()(const std::monostate&) const { return {}; }
  Arrangement operator()(const TextContent&) const { return OwnSize{}; }
  Arrangement operator()(const SymbolContent&) const { return OwnSize{}; }
  Arrangement operator()(const SegmentedPickerContent&) const { return OwnSize{}; }
  Arrangement operator()(const SwitchContent&) const { return OwnSize{}; }
  Arrangement operator()(const SliderContent&) const { return OwnSize{}; }
  Arrangement operator()(const RowsContent&) const { return OwnSize{}; }
  Arrangement operator()(const IconContent&) const { return FillsOffer{iconIdealLength}; }
  Arrangement operator()(const DayChartContent&) const { return FillsOffer{defaultIdealLength}; }
  Arrangement operator()(const AlertContent&) const { return {}; }
  Arrangement operator()(const FileExportContent&) const { return {}; }
  Arrangement operator()(const LineChartContent&) const { return FillsOffer{defaultIdealLength}; }
  Arrangement operator()(const BarContent&) const { return FillsOffer{defaultIdealLength}; }
  Arrangement operator()(const RingContent&) const { return FillsOffer{defaultIdealLength}; }
  Arrangement operator()(const ScrollContent&) const { return FillsOffer{}; }
  Arrangement operator()(const SplitContent&) const { return FillsOffer{}; }
  Arrangement operator()(const ButtonContent&) const { return AsChild{}; }
  Arrangement operator()(const MenuContent&) const { return AsChild{}; }
  Arrangement operator()(const BackgroundContent&) const { return AsChild{}; }
  Arrangement operator()(const ComponentContent&) const { return AsChild{true}; }
  template <class Same>
  Arrangement operator()(const Same& content) const {
    return content;
  }
};

}  // namespace

Arrangement arrangementOf(const Content& content) {
  return std::visit(ArrangementOf{}, content);
}

}  // namespace kestrune::ui
