#pragma once

#include "ui/qt/leaves/Leaf.h"

namespace kestrune::ui::qt {

// Makes what shows text, symbols, images, icons, dividers, charts, bars, rings, pickers, switches and
// sliders; nothing for a kind of view that is no leaf. `show` must be called before anything else. Owned by
// `parent`. The theme must outlive it.
Leaf* makeLeaf(const Content& content, Theme& theme, QWidget* parent);

}  // namespace kestrune::ui::qt
