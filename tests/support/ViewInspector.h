#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "runtime/Published.h"
#include "texts/TextFormat.h"
#include "ui/view/Diff.h"
#include "ui/view/View.h"

// Looks at views as values, and does with them what a user does, without a window.
namespace kestrune::test {

// The English text before the catalogue's words for this desktop.
inline std::string shown(const ui::TextContent& content) {
  if (content.arguments.empty()) return content.string;
  return formatText(content.string, {content.arguments.begin(), content.arguments.end()});
}

// What assistive tools call the view; empty if nothing says so.
inline std::string accessibilityLabel(const ui::View& view) {
  return view.traits ? shown(view.traits->accessibilityLabel.value_or(ui::TextContent{})) : std::string();
}

// A view with what is in force for it.
struct ShownView {
  const ui::View* view = nullptr;
  ui::Color foreground;
};

// Keeps a view's components as a window does: made when they appear, evaluated again when something they read
// has changed, dropped when they go.
class MountedViews {
 public:
  explicit MountedViews(ui::View root) { assign(*root_, std::move(root)); }

  // Evaluates the components that are out of date.
  void update() { evaluate(*root_); }

  // All views, outermost first, in the order in which they stand.
  std::vector<ShownView> all() const {
    std::vector<ShownView> found;
    collect(*root_, {}, found);
    return found;
  }

  template <class C>
  std::vector<ShownView> kind() const {
    auto found = all();
    std::erase_if(found, [](const ShownView& shown) { return shown.view->template as<C>() == nullptr; });
    return found;
  }

  std::vector<std::string> texts() const {
    std::vector<std::string> strings;
    for (const auto& shown : kind<ui::TextContent>()) {
      strings.push_back(test::shown(*shown.view->as<ui::TextContent>()));
    }
    return strings;
  }

  bool hasText(std::string_view string) const { return !find(string).empty(); }

  // The first text that reads so.
  ShownView text(std::string_view string) const {
    const auto found = find(string);
    if (found.empty()) {
      ADD_FAILURE() << "no text reads \"" << string << '"';
      static const ui::View none;
      return {.view = &none, .foreground = {}};
    }
    return found.front();
  }

  // Presses the button, or taps the view, that holds a text.
  void press(std::string_view string) {
    act(
        string, [](const ui::View& view) { return view.as<ui::ButtonContent>() != nullptr; },
        [](const ui::View& view) { view.as<ui::ButtonContent>()->action(); });
  }
  void tap(std::string_view string) {
    act(
        string, [](const ui::View& view) { return view.traits && view.traits->onTap; },
        [](const ui::View& view) { view.traits->onTap(); });
  }

  // Chooses a segment of the one picker.
  void choose(std::string_view segment) {
    const auto pickers = kind<ui::SegmentedPickerContent>();
    ASSERT_EQ(pickers.size(), 1U);
    const auto picker = *pickers.front().view->as<ui::SegmentedPickerContent>();
    const auto label = std::ranges::find(picker.labels, segment, &ui::TextContent::string);
    ASSERT_NE(label, picker.labels.end()) << segment;
    picker.onSelect(static_cast<int>(label - picker.labels.begin()));
    update();
  }

  // The titles of the one menu's items; none where there is no menu.
  std::vector<std::string> menuItems() const {
    std::vector<std::string> titles;
    for (const auto& shown : kind<ui::MenuContent>()) {
      for (const auto& item : shown.view->as<ui::MenuContent>()->items) titles.push_back(item.title.string);
    }
    return titles;
  }
  void chooseMenuItem(std::string_view title) {
    const auto menus = kind<ui::MenuContent>();
    ASSERT_EQ(menus.size(), 1U);
    const auto items = menus.front().view->as<ui::MenuContent>()->items;
    const auto item =
        std::ranges::find_if(items, [&](const auto& each) { return each.title.string == title; });
    ASSERT_NE(item, items.end()) << title;
    item->action();
    update();
  }

  // The symbols, in the order in which they stand.
  std::vector<std::string> symbols() const {
    std::vector<std::string> names;
    for (const auto& shown : kind<ui::SymbolContent>())
      names.push_back(shown.view->as<ui::SymbolContent>()->name);
    return names;
  }

  // What the chart with that number, counted from 0 as they stand, says of a point.
  std::string readOut(std::size_t chart, std::size_t point) const {
    const auto& said = kind<ui::LineChartContent>().at(chart).view->as<ui::LineChartContent>()->readOut;
    std::string together;
    if (said) {
      for (const auto& part : said(point)) together += test::shown(part);
    }
    return together;
  }

  // The first component of that type and how often it has been evaluated; none: null and 0.
  template <class C>
  std::pair<C*, int> component() const {
    std::pair<C*, int> found{nullptr, 0};
    visit(*root_, [&](const Node& node) {
      auto* typed = dynamic_cast<C*>(node.component.get());
      if (typed != nullptr && found.first == nullptr) found = {typed, node.evaluations};
    });
    return found;
  }

 private:
  struct Node {
    ui::View view;
    std::shared_ptr<ui::Component> component;
    std::unique_ptr<Dependencies> dependencies;
    bool isOutOfDate = true;
    int evaluations = 0;
    std::vector<std::unique_ptr<Node>> children;  // of the view, or the body of its component
  };

  static void assign(Node& node, ui::View view) {
    node.view = std::move(view);
    const auto* component = node.view.as<ui::ComponentContent>();
    if (component == nullptr) {
      reconcile(node, node.view.children);
      return;
    }
    if (!node.component) {
      node.component = component->make();
      node.dependencies = std::make_unique<Dependencies>([&node] { node.isOutOfDate = true; });
    }
    if (component->update) component->update(*node.component);
    evaluate(node);
  }

  static void evaluate(Node& node) {
    if (node.component && std::exchange(node.isOutOfDate, false)) {
      ++node.evaluations;
      std::vector<ui::View> body(1, node.dependencies->track([&] { return node.component->body(); }));
      reconcile(node, std::move(body));
    }
    for (auto& child : node.children) evaluate(*child);
  }

  static void reconcile(Node& node, std::vector<ui::View> after) {
    std::vector<const ui::View*> before;
    before.reserve(node.children.size());
    for (const auto& child : node.children) before.push_back(&child->view);
    const auto matches = ui::matchChildren(before, after);
    auto old = std::exchange(node.children, {});
    for (std::size_t i = 0; i < after.size(); ++i) {
      const auto continued = matches[i];
      auto child = continued ? std::move(old[*continued]) : std::make_unique<Node>();
      assign(*child, std::move(after[i]));
      node.children.push_back(std::move(child));
    }
  }

  static void visit(const Node& node, const std::function<void(const Node&)>& each) {
    each(node);
    for (const auto& child : node.children) visit(*child, each);
  }

  static void collect(const Node& node, ShownView inherited, std::vector<ShownView>& found) {
    inherited.view = &node.view;
    inherited.foreground = node.view.foreground.value_or(inherited.foreground);
    if (!node.component && !node.view.isEmpty()) found.push_back(inherited);
    for (const auto& child : node.children) collect(*child, inherited, found);
  }

  std::vector<ShownView> find(std::string_view string) const {
    auto found = kind<ui::TextContent>();
    std::erase_if(found, [&](const ShownView& each) {
      return test::shown(*each.view->as<ui::TextContent>()) != string;
    });
    return found;
  }

  static bool holds(const ui::View& view, std::string_view string) {
    const auto* text = view.as<ui::TextContent>();
    return (text != nullptr && test::shown(*text) == string) ||
           std::ranges::any_of(view.children, [&](const ui::View& child) { return holds(child, string); });
  }

  template <class Fits, class Act>
  void act(std::string_view string, Fits fits, Act action) {
    for (const auto& shown : all()) {
      if (!fits(*shown.view) || !holds(*shown.view, string)) continue;
      const ui::View pressed = *shown.view;  // the action may make the tree change
      action(pressed);
      update();
      return;
    }
    ADD_FAILURE() << "nothing to act on holds \"" << string << '"';
  }

  std::unique_ptr<Node> root_ = std::make_unique<Node>();  // stays where it is when this moves
};

}  // namespace kestrune::test
