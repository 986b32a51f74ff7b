#pragma once

#include <variant>

#include "ui/view/Content.h"

namespace kestrune::ui {

// A size that the view measures itself: text, symbols and controls.
struct OwnSize {
  friend bool operator==(OwnSize, OwnSize) = default;
};
// Takes the size that it is offered.
struct FillsOffer {
  double idealLength = 0;  // in both dimensions
  friend bool operator==(FillsOffer, FillsOffer) = default;
};
// As large as its one child: backgrounds, buttons, menus and components.
struct AsChild {
  // Takes no part in its parent's arrangement if the child is an empty view.
  bool isEmptyWithChild = false;
  friend bool operator==(AsChild, AsChild) = default;
};

// The part of a view's content that its arrangement depends on; `monostate` for what takes no space.
using Arrangement = std::variant<std::monostate, OwnSize, FillsOffer, AsChild, SpacerContent, DividerContent,
                                 HStackContent, VStackContent, ZStackContent, AdaptiveGridContent,
                                 ColumnsContent, FirstFitContent, PaddingContent, FrameContent>;

Arrangement arrangementOf(const Content& content);

}  // namespace kestrune::ui
