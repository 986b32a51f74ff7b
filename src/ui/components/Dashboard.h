#pragma once

#include <string>
#include <vector>

#include "ui/view/View.h"

// What the dashboards have in common.
namespace kestrune::ui {

inline constexpr double sectionSpacing = 20;
inline constexpr double innerSpacing = 8;

// A page of sections below each other, scrolled as a whole.
View dashboard(std::vector<View> sections);

// Cards beside each other, equally tall.
View cardRow(std::vector<View> cards);

// What stands below each other within a section.
View section(std::vector<View> parts);

// The title of a section: small and secondary.
View sectionHeader(View titled);

// A title at the left and a control at the right.
View headerRow(View titled, View control);

// Captions below the two ends of a chart.
View edgeCaptions(std::string atStart, std::string atEnd, Color color);

// A small secondary caption and, at the right, what it names.
View captionedRow(View caption, View value);

// The faint line between two rows.
View rowDivider();

// Below each other, with such lines between them.
View dividedRows(std::vector<View> rows);

// The same below a header.
View table(View header, std::vector<View> rows);

// A filled circle.
View dot(double side, Color color);

// A dot and what its colour stands for.
View legendEntry(std::string label, Color color);

}  // namespace kestrune::ui
