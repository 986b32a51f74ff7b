#pragma once

#include <string>
#include <vector>

#include "ui/view/View.h"

// What the pages share.
namespace kestrune::ui {

inline constexpr double sectionSpacing = 20;
inline constexpr double innerSpacing = 8;

// A page of sections below each other, scrolled as a whole.
View dashboard(std::vector<View> sections);

// Cards side by side, all as tall as the tallest.
View cardRow(std::vector<View> cards);

// The parts of a section, one below the other.
View section(std::vector<View> parts);

// The title of a section: small and secondary.
View sectionHeader(View titled);

// A title at the left and a control at the right.
View headerRow(View titled, View control);

// Captions below the two ends of a chart.
View edgeCaptions(std::string atStart, std::string atEnd, Color color);

// Small words beside or below what they name.
View caption(View words, Color color = ColorRole::secondary);

// A caption above what it names.
View captioned(double spacing, std::string captionKey, View value);

// A caption and, at the right, what it names.
View captionedRow(View words, View value);

// The faint line between two rows.
View rowDivider();

// Rows below each other with such a line between them.
View dividedRows(std::vector<View> rows);

// Divided rows below a header.
View table(View header, std::vector<View> rows);

// A filled circle.
View dot(double side, Color color);

// A dot with the name of what has its colour.
View legendEntry(std::string label, Color color);

}  // namespace kestrune::ui
