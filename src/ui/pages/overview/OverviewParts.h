#pragma once

#include <string>
#include <vector>

#include "ui/view/View.h"

// What the cards of the overview share.
namespace kestrune::ui {

// The large figure of a card.
View headline(std::string figure);

// A figure of a card.
View figure(std::string value);

// A card of parts below each other, as large as its cell in the grid.
View gridCard(double spacing, std::vector<View> parts);

}  // namespace kestrune::ui
