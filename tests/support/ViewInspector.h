#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "runtime/Published.h"
#include "texts/TextFormat.h"
#include "ui/view/Diff.h"
#include "ui/view/View.h"

// Inspects views as values, and acts on them as a user would, without a window.
namespace kestrune::test {

// The keys of all texts that were looked at.
inline std::set<std::string>& shownKeys() {
  static std::set<std::string> keys;
  return keys;
}

// The English text before the catalogue's words for this desktop.
inline std::string shown(const ui::TextContent& content) {
  if (content.isKey && !content.string.empty()) shownKeys().insert(content.string);
  if (content.arguments.empty()) return content.string;
  return formatText(content.string, {content.arguments.begin(), content.arguments.end()});
}

// What assistive tools call the view; empty if nothing says so.
inline std::string accessibilityLabel(const ui::View& view) {
  return view.traits ? shown(view.traits->accessibilityLabel.value_or(ui::TextContent{})) : std::string();
}

// Keeps a view's components as a window does: created when they appear, re-evaluated when something they read
// has changed, destroyed when they go.
class MountedViews {
 public:
  explicit MountedViews(ui::View root) { assign(*root_, std::move(root)); }

  // Evaluates the components that are out of date.
  void update() { evaluate(*root_); }

  // All views, outermost first, in the order in which they stand.
  std::vector<const ui::View*> all() const {
    std::vector<const ui::View*> found;
    visit(*root_, [&](const Node& node) {
      if (!node.component && !node.view.isEmpty()) found.push_back(&node.view);
    });
    return found;
  }

  // The tree with each component's body below it.
  ui::View resolved() const { return resolve(*root_); }

  template <class C>
  std::vector<const ui::View*> kind() const {
    auto found = all();
    std::erase_if(found, [](const ui::View* view) { return view->template as<C>() == nullptr; });
    return found;
  }

  bool hasText(std::string_view string) const {
    return std::ranges::any_of(kind<ui::TextContent>(), [&](const ui::View* view) {
      return test::shown(*view->as<ui::TextContent>()) == string;
    });
  }

  // Presses the button, or taps the view, that holds a text or a "(symbol)".
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

  // Chooses a segment of the picker that has it.
  void choose(std::string_view segment) {
    for (const auto* view : kind<ui::SegmentedPickerContent>()) {
      const auto picker = *view->as<ui::SegmentedPickerContent>();
      const auto label = std::ranges::find(picker.labels, segment, &ui::TextContent::string);
      if (label == picker.labels.end()) continue;
      picker.onSelect(static_cast<int>(label - picker.labels.begin()));
      update();
      return;
    }
    ADD_FAILURE() << "no picker offers " << segment;
  }

  // Chooses an item of the one menu.
  void chooseMenuItem(std::string_view title) {
    const auto menus = kind<ui::MenuContent>();
    ASSERT_EQ(menus.size(), 1U);
    const auto items = menus.front()->as<ui::MenuContent>()->items;
    const auto item =
        std::ranges::find_if(items, [&](const auto& each) { return each.title.string == title; });
    ASSERT_NE(item, items.end()) << title;
    item->action();
    update();
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

  static ui::View resolve(const Node& node) {
    ui::View view = node.view;
    view.children.clear();
    for (const auto& child : node.children) view.children.push_back(resolve(*child));
    return view;
  }

  static void visit(const Node& node, const std::function<void(const Node&)>& each) {
    each(node);
    for (const auto& child : node.children) visit(*child, each);
  }

  static bool holds(const ui::View& view, std::string_view string) {
    const auto* text = view.as<ui::TextContent>();
    const auto* symbol = view.as<ui::SymbolContent>();
    return (text != nullptr && test::shown(*text) == string) ||
           (symbol != nullptr && "(" + symbol->name + ")" == string) ||
           std::ranges::any_of(view.children, [&](const ui::View& child) { return holds(child, string); });
  }

  template <class Fits, class Act>
  void act(std::string_view string, Fits fits, Act action) {
    for (const auto* view : all()) {
      if (!fits(*view) || !holds(*view, string)) continue;
      const ui::View pressed = *view;  // the action may change the tree
      action(pressed);
      update();
      return;
    }
    ADD_FAILURE() << "nothing to act on holds \"" << string << '"';
  }

  std::unique_ptr<Node> root_ = std::make_unique<Node>();  // stays where it is when this moves
};

}  // namespace kestrune::test
