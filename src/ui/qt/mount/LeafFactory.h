#pragma once

#include "ui/qt/leaves/Leaf.h"

namespace kestrune::ui::qt {

// Creates the leaf for a text, symbol, icon, divider, chart, bar, ring, picker, switch or slider; null
// for any other kind of view. `show` must be called before anything else. The leaf is owned by `parent`; the
// theme must outlive it.
Leaf* makeLeaf(const Content& content, Theme& theme, QWidget* parent);

}  // namespace kestrune::ui::qt
