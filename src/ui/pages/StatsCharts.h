#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/view/View.h"

// What the cards of the statistics are made of.
namespace kestrune::ui {

std::string megabytesText(double megabytes);
std::string gigabytesText(double gigabytes);

// The step of a scale of megabytes up to `highest`: tenths of a gigabyte once there is a gigabyte.
double megabytesScaleUnit(double highest);

// A large figure under its name.
View summaryCard(std::string symbolName, std::string name, std::string value);

View legendItem(Color color, std::string name, std::string value);

// `spoken`: the chart in words, for assistive tools.
View chartCard(std::string title, std::string symbolName, DayChartContent chart, TextContent spoken,
               std::vector<View> legend);

struct NamedFigures {
  const char* name;                            // localizable
  std::vector<std::optional<double>> figures;  // one for each day
};

// "May 9, 2026:  Avg 12%  Peak 40%". A day that lacks one of the figures has no text.
ReadOut dayReadOut(std::function<std::string(std::size_t)> dayTitle, std::vector<NamedFigures> named,
                   std::function<std::string(double)> figureText);

}  // namespace kestrune::ui
