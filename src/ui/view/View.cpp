#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

View wrapped(Content content, View&& inner) {
  View outer;
  outer.content = std::move(content);
  outer.key = std::exchange(inner.key, {});
  outer.children.push_back(std::move(inner));
  return outer;
}

template <class Change>
View withTraits(View&& view, Change change) {
  auto traits = view.traits ? std::make_shared<Traits>(*view.traits) : std::make_shared<Traits>();
  change(*traits);
  view.traits = std::move(traits);
  return std::move(view);
}

}  // namespace

const Traits& traitsOf(const View& view) {
  static const Traits none;
  return view.traits ? *view.traits : none;
}

View View::withFont(double size, FontWeight weight) && {
  font = Font{size, weight, false};
  return std::move(*this);
}

View View::withMonospacedDigits(double size, FontWeight weight) && {
  font = Font{size, weight, true};
  return std::move(*this);
}

View View::withForeground(Color color) && {
  foreground = color;
  return std::move(*this);
}

View View::withOpacity(double factor) && {
  opacity *= factor;
  return std::move(*this);
}

View View::withKey(std::string identity) && {
  key = std::move(identity);
  return std::move(*this);
}

View View::withLineLimit(int lines) && {
  if (auto* shown = std::get_if<TextContent>(&content)) shown->lineLimit = lines;
  return std::move(*this);
}

View View::withReadOut(ReadOut readOut) && {
  if (auto* chart = std::get_if<LineChartContent>(&content)) chart->readOut = std::move(readOut);
  return std::move(*this);
}

View View::evenlyTall() && {
  if (auto* stack = std::get_if<HStackContent>(&content)) stack->isEvenlyTall = true;
  return std::move(*this);
}

View View::padding(double allEdges) && {
  return std::move(*this).padding(Insets{allEdges, allEdges, allEdges, allEdges});
}

View View::padding(Insets insets) && {
  return wrapped(PaddingContent{insets}, std::move(*this));
}

View View::paddingHorizontal(double length) && {
  return std::move(*this).padding(Insets{0, length, 0, length});
}

View View::paddingVertical(double length) && {
  return std::move(*this).padding(Insets{length, 0, length, 0});
}

View View::frame(Extent width, Extent height, Alignment alignment) && {
  return wrapped(FrameContent{width, height, alignment}, std::move(*this));
}

View View::width(double fixed, HorizontalAlignment alignment) && {
  return std::move(*this).frame({.fixed = fixed, .min = {}, .max = {}}, {},
                                {alignment, VerticalAlignment::center});
}

View View::height(double fixed) && {
  return std::move(*this).frame({}, {.fixed = fixed, .min = {}, .max = {}});
}

View View::size(double width, double height) && {
  return std::move(*this).frame({.fixed = width, .min = {}, .max = {}},
                                {.fixed = height, .min = {}, .max = {}});
}

View View::fillWidth(HorizontalAlignment alignment) && {
  return std::move(*this).frame({.fixed = {}, .min = {}, .max = unlimited}, {},
                                {alignment, VerticalAlignment::center});
}

View View::fillHeight(VerticalAlignment alignment) && {
  return std::move(*this).frame({}, {.fixed = {}, .min = {}, .max = unlimited},
                                {HorizontalAlignment::leading, alignment});
}

View View::minWidth(double min, HorizontalAlignment alignment) && {
  return std::move(*this).frame({.fixed = {}, .min = min, .max = {}}, {},
                                {alignment, VerticalAlignment::center});
}

View View::background(BackgroundContent surface) && {
  return wrapped(surface, std::move(*this));
}

View View::help(TextContent text) && {
  return withTraits(std::move(*this), [&](Traits& changed) { changed.help = std::move(text); });
}

View View::accessibilityLabel(TextContent label) && {
  return withTraits(std::move(*this),
                    [&](Traits& changed) { changed.accessibilityLabel = std::move(label); });
}

View View::accessibilityElement(TextContent label) && {
  return withTraits(std::move(*this), [&](Traits& changed) {
    changed.accessibilityLabel = std::move(label);
    changed.isAccessibilityElement = true;
  });
}

View View::selected(bool isSelected) && {
  return withTraits(std::move(*this), [&](Traits& changed) { changed.isSelected = isSelected; });
}

View View::disabled(bool isDisabled) && {
  return withTraits(std::move(*this), [&](Traits& changed) { changed.isDisabled = isDisabled; });
}

View View::onTap(std::function<void()> action) && {
  return withTraits(std::move(*this), [&](Traits& changed) { changed.onTap = std::move(action); });
}

View View::onHover(std::function<void(bool)> action) && {
  return withTraits(std::move(*this), [&](Traits& changed) { changed.onHover = std::move(action); });
}

View View::contextMenu(std::vector<MenuItem> items) && {
  return withTraits(std::move(*this), [&](Traits& changed) { changed.contextMenu = std::move(items); });
}

View View::pulse(Pulse pulse) && {
  return withTraits(std::move(*this), [&](Traits& changed) { changed.pulse = pulse; });
}

View View::transition(Transition transition) && {
  return withTraits(std::move(*this), [&](Traits& changed) { changed.transition = transition; });
}

TextContent key(std::string text) {
  return {std::move(text), true, 0};
}

TextContent keyWith(std::string text, std::vector<std::string> arguments) {
  TextContent content = key(std::move(text));
  content.arguments = std::move(arguments);
  return content;
}

TextContent verbatimText(std::string text) {
  return {std::move(text), false, 0};
}

View text(std::string key, std::vector<std::string> arguments) {
  return View(keyWith(std::move(key), std::move(arguments)));
}

View verbatim(std::string data) {
  return View(verbatimText(std::move(data)));
}

View symbol(std::string name) {
  return View(SymbolContent{std::move(name)});
}

View spacer(double minLength) {
  return View(SpacerContent{minLength});
}

View divider() {
  return View(DividerContent{});
}

View lineChart(std::vector<LineChartContent::Line> lines, double lineWidth) {
  return View(LineChartContent{std::move(lines), lineWidth});
}

View button(View label, std::function<void()> action) {
  View view(ButtonContent{std::move(action)});
  view.children.push_back(std::move(label));
  return view;
}

View menu(View label, std::vector<MenuItem> items) {
  View view(MenuContent{std::move(items)});
  view.children.push_back(std::move(label));
  return view;
}

View segmentedPicker(std::vector<TextContent> labels, int selected, std::function<void(int)> onSelect) {
  return View(SegmentedPickerContent{std::move(labels), selected, std::move(onSelect)});
}

View icon(std::string name, std::string fallbackSymbol) {
  return View(IconContent{std::move(name), std::move(fallbackSymbol)});
}

View toggle(TextContent label, bool isOn, std::function<void(bool)> onChange) {
  return View(SwitchContent{isOn, std::move(onChange)}).accessibilityLabel(std::move(label));
}

View slider(TextContent label, SliderContent of) {
  return View(std::move(of)).accessibilityLabel(std::move(label));
}

View hstack(double spacing, VerticalAlignment alignment, std::vector<View> children) {
  return View(HStackContent{spacing, alignment}, std::move(children));
}

View vstack(double spacing, HorizontalAlignment alignment, std::vector<View> children) {
  return View(VStackContent{spacing, alignment}, std::move(children));
}

View zstack(Alignment alignment, std::vector<View> children) {
  return View(ZStackContent{alignment}, std::move(children));
}

View adaptiveGrid(double minColumnWidth, double spacing, std::vector<View> children) {
  return View(AdaptiveGridContent{minColumnWidth, spacing}, std::move(children));
}

View columns(int count, double spacing, std::vector<View> children, std::vector<int> spans) {
  return View(ColumnsContent{count, spacing, std::move(spans)}, std::move(children));
}

View firstFit(std::vector<View> arrangements) {
  return View(FirstFitContent{}, std::move(arrangements));
}

View scroll(View content) {
  View view(ScrollContent{});
  view.children.push_back(std::move(content));
  return view;
}

View rows(RowsContent of) {
  return View(std::move(of));
}

View split(double sidebarMinWidth, double sidebarIdealWidth, View sidebar, View detail) {
  View view(SplitContent{sidebarMinWidth, sidebarIdealWidth});
  view.children.push_back(std::move(sidebar));
  view.children.push_back(std::move(detail));
  return view;
}

View label(std::string key, std::string symbolName) {
  std::vector<View> children;
  children.push_back(symbol(std::move(symbolName)));
  children.push_back(text(std::move(key)));
  return hstack(6, VerticalAlignment::center, std::move(children));
}

}  // namespace kestrune::ui
