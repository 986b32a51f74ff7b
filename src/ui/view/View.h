#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

#include "ui/view/Content.h"
#include "ui/view/Style.h"

// Views as plain values: what should be on screen, with no widget behind it. A view is built again at each
// evaluation and compared with the one before; only differences reach the screen.
namespace kestrune::ui {

// The view breathes: from its appearance on, its opacity goes from `from` to `to` and back, ease-in-out,
// forever.
struct Pulse {
  double from = 1;
  double to = 1;
  double seconds = 1;
  double delay = 0;
  friend bool operator==(const Pulse&, const Pulse&) = default;
};

enum class Transition : std::uint8_t { none, moveFromBottomWithOpacity };

// Less common traits, together.
struct Traits {
  std::optional<TextContent> help;  // tooltip
  std::optional<TextContent> accessibilityLabel;
  bool isAccessibilityElement = false;  // one element for assistive tools; its children are hidden from them
  bool isSelected = false;              // announced with a row that can be tapped
  bool isDisabled = false;
  std::function<void()> onTap;  // makes the view pressable, and reachable by keyboard
  std::function<void(bool inside)> onHover;
  std::vector<MenuItem> contextMenu;
  std::optional<Pulse> pulse;
  Transition transition = Transition::none;
};

struct View {
  Content content;
  std::vector<View> children;
  std::string key;  // identity among its siblings, where the position doesn't suffice

  // Apply to the view and all below it that don't set their own. Opacities multiply.
  std::optional<Font> font;
  std::optional<Color> foreground;
  double opacity = 1;

  // Shared between copies and copied on a change, since most views have none.
  std::shared_ptr<const Traits> traits;

  View() = default;
  template <class C>
    requires std::constructible_from<Content, C>
  explicit View(C of, std::vector<View> with = {}) : content(std::move(of)), children(std::move(with)) {}

  bool isEmpty() const { return std::holds_alternative<std::monostate>(content); }
  template <class C>
  const C* as() const {
    return std::get_if<C>(&content);
  }

  // Modifiers return the changed view, so that they can be chained.

  View withFont(double size, FontWeight weight = FontWeight::regular) &&;
  View withMonospacedDigits(double size, FontWeight weight = FontWeight::regular) &&;
  View withForeground(Color color) &&;
  View withOpacity(double factor) &&;
  View withKey(std::string identity) &&;
  View withLineLimit(int lines) &&;      // a text only
  View evenlyTall() &&;                  // a horizontal stack only
  View withReadOut(ReadOut readOut) &&;  // a line chart only

  View padding(double allEdges) &&;
  View padding(Insets insets) &&;
  View paddingHorizontal(double length) &&;
  View paddingVertical(double length) &&;
  View frame(Extent width, Extent height, Alignment alignment = {}) &&;
  View width(double fixed, HorizontalAlignment alignment = HorizontalAlignment::center) &&;
  View height(double fixed) &&;
  View size(double width, double height) &&;
  View fillWidth(HorizontalAlignment alignment = HorizontalAlignment::leading) &&;
  View fillHeight(VerticalAlignment alignment = VerticalAlignment::top) &&;
  View minWidth(double min, HorizontalAlignment alignment = HorizontalAlignment::leading) &&;
  View background(BackgroundContent surface) &&;

  View help(TextContent text) &&;
  View accessibilityLabel(TextContent label) &&;
  View accessibilityElement(TextContent label) &&;
  View selected(bool isSelected) &&;
  View disabled(bool isDisabled) &&;
  View onTap(std::function<void()> action) &&;
  View onHover(std::function<void(bool inside)> action) &&;
  View contextMenu(std::vector<MenuItem> items) &&;
  View pulse(Pulse pulse) &&;
  View transition(Transition transition) &&;
};

// The view's traits; defaults if it has none of its own.
const Traits& traitsOf(const View& view);

// -- Making views

TextContent key(std::string text);           // localizable
TextContent verbatimText(std::string text);  // data
TextContent keyWith(std::string text, std::vector<std::string> arguments);

View text(std::string key, std::vector<std::string> arguments = {});
View verbatim(std::string data);
View symbol(std::string name);
View icon(std::string name, std::string fallbackSymbol);
View spacer(double minLength = 8);
View divider();
View lineChart(std::vector<LineChartContent::Line> lines, double lineWidth);
View button(View label, std::function<void()> action);
View menu(View label, std::vector<MenuItem> items);
View segmentedPicker(std::vector<TextContent> labels, int selected, std::function<void(int)> onSelect);
// `label`: what assistive tools call the control.
View toggle(TextContent label, bool isOn, std::function<void(bool)> onChange);
View slider(TextContent label, SliderContent of);
View hstack(double spacing, VerticalAlignment alignment, std::vector<View> children);
View vstack(double spacing, HorizontalAlignment alignment, std::vector<View> children);
View zstack(Alignment alignment, std::vector<View> children);
View adaptiveGrid(double minColumnWidth, double spacing, std::vector<View> children);
View columns(int count, double spacing, std::vector<View> children, std::vector<int> spans = {});
View firstFit(std::vector<View> arrangements);
View scroll(View content);
View rows(RowsContent of);
View split(double sidebarMinWidth, double sidebarIdealWidth, View sidebar, View detail);
// A symbol and a title beside it.
View label(std::string key, std::string symbolName);

// A component of type C, created by `make` and kept for as long as a view of its type stays at this place.
template <class C>
View component(std::function<std::shared_ptr<C>()> make, std::function<void(C&)> update = {}) {
  ComponentContent content{std::type_index(typeid(C)), [make = std::move(make)] { return make(); }, {}};
  if (update) {
    content.update = [update = std::move(update)](Component& made) { update(static_cast<C&>(made)); };
  }
  return View(std::move(content));
}

// The children of a stack, each moved into place (an initializer list would copy them). Takes anything that
// converts to a view.
template <class... Each>
std::vector<View> views(Each&&... each) {
  std::vector<View> list;
  list.reserve(sizeof...(each));
  (list.push_back(static_cast<View>(std::forward<Each>(each))), ...);
  return list;
}

}  // namespace kestrune::ui
