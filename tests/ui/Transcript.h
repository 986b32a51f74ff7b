#pragma once

#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "support/ViewInspector.h"

// Writes a page as text, so that a test can hold all of it against one table: what stands side by side shares
// a line, and everything comes in the order in which it stands.
//
//   CPU 12%              texts; ":red" behind a text or a symbol in a colour
//   Used / 12 GB         one text above another
//   (cpu)                a symbol
//   =0.25:accent         a bar; "o" for a ring
//   ~0.1 0.2:accent      a line of a chart, then what the chart says of its last point
//   [on] [50..99/5 80]   a switch, a slider
//   {*60s|5m}            a picker or a menu with its marked choice
//   <Reload>             a button
//   !Sure? … {Do|Don't}  a question
//   >days.csv            a file to be saved
//   ?… «…» !off          a tooltip, a name for assistive tools, disabled
namespace kestrune::test {
namespace transcript {

using Lines = std::vector<std::string>;

inline std::string nameOf(ui::Color color) {
  static constexpr std::array names{"clear",  "primary", "secondary", "tertiary", "quaternary",
                                    "accent", "window",  "control",   "orange",   "red",
                                    "green",  "purple",  "black",     "good"};
  return std::string(":") + names.at(static_cast<std::size_t>(color.role));
}

inline std::string tinted(const std::string& words, ui::Color color) {
  return color.role < ui::ColorRole::accent || words.empty() ? words : words + nameOf(color);
}

inline std::string number(double value) {
  std::ostringstream out;
  out.precision(3);
  out << value;
  return out.str();
}

inline std::string together(const Lines& parts, const std::string& separator) {
  std::string all;
  for (const auto& part : parts) all += all.empty() || part.empty() ? part : separator + part;
  return all;
}

inline std::string readOut(const ui::ReadOut& readOut, std::size_t point) {
  std::string said;
  if (readOut) {
    for (const auto& part : readOut(point)) said += shown(part);
  }
  return said;
}

inline std::string chart(const ui::LineChartContent& content) {
  Lines parts;
  for (const auto& line : content.lines) {
    Lines heights;
    for (const double height : line.heights) heights.push_back(number(height));
    parts.push_back("~" + together(heights, " ") + nameOf(line.color));
  }
  const std::size_t points = content.lines.empty() ? 0 : content.lines.front().heights.size();
  return together(parts, " ") + (points > 0 ? " \"" + readOut(content.readOut, points - 1) + "\"" : "");
}

inline Lines chart(const ui::DayChartContent& content) {
  constexpr std::array marks{"area", "line", "bars"};
  Lines parts;
  for (const auto& series : content.series) {
    Lines figures;
    for (const auto& figure : series.figures) figures.push_back(figure ? number(*figure) : "-");
    parts.push_back(std::string(marks.at(static_cast<std::size_t>(series.mark))) + " " +
                    together(figures, " ") + nameOf(series.color));
  }
  parts.push_back(shown(content.days.front()) + " to " + shown(content.days.back()) + ", steps of " +
                  number(content.scaleUnit) + ", " + content.scaleText(50));
  parts.push_back("\"" + readOut(content.readOut, content.days.size() - 1) + "\"");
  return parts;
}

inline std::string choices(const std::vector<ui::MenuItem>& items) {
  Lines titles;
  for (const auto& item : items) {
    titles.push_back((item.symbol == "checkmark" ? "*" : "") +
                     (item.isSeparator ? "---" : shown(item.title)));
  }
  return "{" + together(titles, "|") + "}";
}

inline std::string choices(const ui::SegmentedPickerContent& picker) {
  Lines titles;
  for (const auto& label : picker.labels) {
    const bool isSelected = static_cast<int>(titles.size()) == picker.selected;
    titles.push_back((isSelected ? "*" : "") + shown(label));
  }
  return "{" + together(titles, "|") + "}";
}

inline std::string question(const ui::AlertContent& alert) {
  Lines titles;
  for (const auto& choice : alert.choices)
    titles.push_back((choice.isCancel ? "*" : "") + shown(choice.title));
  return "!" + shown(alert.title) + " " + shown(alert.message) + " {" + together(titles, "|") + "}";
}

inline std::string leaf(const ui::View& view, ui::Color color) {
  if (const auto* text = view.as<ui::TextContent>()) return tinted(shown(*text), color);
  if (const auto* symbol = view.as<ui::SymbolContent>()) return tinted("(" + symbol->name + ")", color);
  if (const auto* icon = view.as<ui::IconContent>())
    return "(" + (icon->name.empty() ? icon->fallbackSymbol : icon->name) + ")";
  if (const auto* lines = view.as<ui::LineChartContent>()) return chart(*lines);
  if (const auto* bar = view.as<ui::BarContent>()) return "=" + number(bar->fraction) + nameOf(bar->fill);
  if (const auto* ring = view.as<ui::RingContent>()) return "o" + number(ring->fraction) + nameOf(ring->arc);
  if (const auto* picker = view.as<ui::SegmentedPickerContent>()) return choices(*picker);
  if (const auto* menu = view.as<ui::MenuContent>()) return choices(menu->items);
  if (const auto* alert = view.as<ui::AlertContent>()) return question(*alert);
  if (const auto* file = view.as<ui::FileExportContent>())
    return ">" + file->fileName + " (" + shown(file->fileKind) + ")";
  if (const auto* toggle = view.as<ui::SwitchContent>()) return toggle->isOn ? "[on]" : "[off]";
  if (const auto* slider = view.as<ui::SliderContent>()) {
    return "[" + number(slider->min) + ".." + number(slider->max) + "/" + number(slider->step) + " " +
           number(slider->value) + "]";
  }
  return {};
}

inline std::string traits(const ui::View& view) {
  if (!view.traits) return {};
  std::string found;
  if (view.traits->help) found += " ?" + shown(*view.traits->help);
  if (view.traits->accessibilityLabel) found += " «" + accessibilityLabel(view) + "»";
  if (view.traits->isDisabled) found += " !off";
  if (!view.traits->contextMenu.empty()) found += " " + choices(view.traits->contextMenu);
  return found;
}

inline Lines linesOf(const ui::View& view, ui::Color color);

inline Lines childLines(const ui::View& view, ui::Color color) {
  Lines lines;
  bool isOneLine = view.as<ui::HStackContent>() || view.as<ui::ZStackContent>();
  for (const auto& child : view.children) {
    const Lines more = linesOf(child, color);
    if (view.as<ui::FirstFitContent>() && !lines.empty()) continue;  // the others show the same
    isOneLine &= more.size() <= 1;
    lines.insert(lines.end(), more.begin(), more.end());
  }
  if (isOneLine && lines.size() > 1) lines = {together(lines, " ")};
  const bool isPair = view.as<ui::VStackContent>() && lines.size() == 2 &&
                      together(lines, "").find(" / ") == std::string::npos;
  if (isPair) lines = {together(lines, " / ")};
  return lines;
}

inline Lines linesOf(const ui::View& view, ui::Color inherited) {
  const ui::Color color = view.foreground.value_or(inherited);
  Lines lines;
  if (const auto own = leaf(view, color); !own.empty()) lines.push_back(own);
  if (const auto* days = view.as<ui::DayChartContent>()) lines = chart(*days);
  if (const auto* rows = view.as<ui::RowsContent>()) {
    for (std::size_t i = 0; i < rows->count; ++i) {
      for (auto& line : linesOf(MountedViews(rows->row(i)).resolved(), color)) lines.push_back(line);
    }
  }
  for (auto& line : childLines(view, color)) lines.push_back(line);
  const auto* surface = view.as<ui::BackgroundContent>();
  if (surface != nullptr && lines.empty()) lines.push_back("●" + nameOf(surface->fill));
  if (view.as<ui::ButtonContent>()) lines = {"<" + together(lines, " ") + ">"};
  if (view.as<ui::MenuContent>()) lines = {together(lines, " ")};
  if (!lines.empty()) lines.back() += traits(view);
  return lines;
}

}  // namespace transcript

// Begins with a line feed, so that a raw string of the same text can.
inline std::string transcriptOf(const MountedViews& views) {
  std::string all = "\n";
  for (const auto& line : transcript::linesOf(views.resolved(), {})) all += line + "\n";
  return all;
}

}  // namespace kestrune::test
