#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <typeindex>
#include <variant>
#include <vector>

#include "ui/view/Style.h"

// What a view can be: one plain value for each kind of view.
namespace kestrune::ui {

struct View;

// A part of the interface with state of its own: created when it appears on screen, destroyed when it leaves.
// Its body is evaluated again when a published property that the last evaluation read has changed; the views
// around it are not.
class Component {
 public:
  Component() = default;
  virtual ~Component() = default;
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  virtual View body() = 0;
};

struct View;

// A text. As a key it is looked up in the string catalogue; verbatim it is data and shown as it is.
struct TextContent {
  std::string string;
  bool isKey = true;
  // 0: as many lines as the width requires; 1: elided at the end, with the whole text as tooltip.
  int lineLimit = 0;
  std::vector<std::string> arguments;  // of a key: the values for each "%@"
  friend bool operator==(const TextContent&, const TextContent&) = default;
};

// A symbol by its name in the symbol table, as large as the current font.
struct SymbolContent {
  std::string name;
  friend bool operator==(const SymbolContent&, const SymbolContent&) = default;
};

// An application's icon: a name in the desktop's icon theme, or the path of a picture. If there is none, the
// fallback symbol is shown, as large as the current font.
struct IconContent {
  std::string name;
  std::string fallbackSymbol;
  friend bool operator==(const IconContent&, const IconContent&) = default;
};

struct SpacerContent {
  double minLength = 8;
  friend bool operator==(const SpacerContent&, const SpacerContent&) = default;
};

// A hairline across the surrounding stack's direction.
struct DividerContent {
  friend bool operator==(const DividerContent&, const DividerContent&) = default;
};

// Returns the text for one point of a chart, in parts that are joined without blanks; empty for no text.
using ReadOut = std::function<std::vector<TextContent>(std::size_t point)>;

// Lines over a common width: point i of n is at x = i·w/(n−1), its height between the bottom and the top
// edge; at either edge the whole thickness of the line shows. A line of fewer than two points is not drawn.
// Later lines are drawn in front. Fills the space it is given.
struct LineChartContent {
  struct Line {
    std::vector<double> heights;  // 0 bottom to 1 top
    Color color;
    friend bool operator==(const Line&, const Line&) = default;
  };
  std::vector<Line> lines;
  double lineWidth = 1.5;
  // Text for the point under the pointer; covers every line drawn.
  ReadOut readOut;
  // True if both look the same.
  friend bool operator==(const LineChartContent& one, const LineChartContent& other) {
    return one.lines == other.lines && one.lineWidth == other.lineWidth;
  }
};

// A track with a filled part that starts at the leading edge, both with rounded corners. Fills the space it
// is given.
struct BarContent {
  double fraction = 0;  // 0 to 1
  Color track;
  Color fill;
  double cornerRadius = 0;
  double animationSeconds = 0;  // ease-in-out when the fraction changes
  friend bool operator==(const BarContent&, const BarContent&) = default;
};

// A ring with an arc that starts at twelve o'clock. Fills the largest square in the space it is given.
struct RingContent {
  double fraction = 0;  // 0 to 1
  double lineWidth = 1;
  Color track;
  Color arc;
  double animationSeconds = 0;
  friend bool operator==(const RingContent&, const RingContent&) = default;
};

// What is drawn for each of a row of days, over a common scale from 0 up. Fills the space it is given.
struct DayChartContent {
  enum class Mark : std::uint8_t {
    area,  // from 0 to the figure
    line,
    bars,  // stacked on the bars of the series before
  };
  struct Series {
    Mark mark = Mark::line;
    std::vector<std::optional<double>> figures;  // one for each day; absent: a gap
    Color color;
    friend bool operator==(const Series&, const Series&) = default;
  };
  std::vector<TextContent> days;  // the axis labels, one for each day
  std::vector<Series> series;     // later series in front
  double scaleUnit = 1;           // the scale's lines are at round multiples of this, and no closer
  std::function<std::string(double)> scaleText;
  ReadOut readOut;  // text for the day under the pointer
  // True if both look the same.
  friend bool operator==(const DayChartContent& one, const DayChartContent& other) {
    return one.days == other.days && one.series == other.series && one.scaleUnit == other.scaleUnit;
  }
};

// One child: the label. No border of its own; shows focus, hover and press.
struct ButtonContent {
  std::function<void()> action;
};

struct MenuItem {
  TextContent title;
  std::string symbol;  // empty for none
  bool isSeparator = false;
  std::function<void()> action;
};

// One child: the label. Pressing it opens the items.
struct MenuContent {
  std::vector<MenuItem> items;
};

struct SegmentedPickerContent {
  std::vector<TextContent> labels;
  int selected = 0;
  std::function<void(int index)> onSelect;
};

struct SwitchContent {
  bool isOn = false;
  std::function<void(bool isOn)> onChange;
};

// A number between two limits, in steps from the lower limit. As wide as it is offered.
struct SliderContent {
  double value = 0;
  double min = 0;
  double max = 1;
  double step = 1;
  std::function<void(double value)> onChange;
};

// A question that is open over the window for as long as this is in the tree. Takes no space.
struct AlertContent {
  struct Choice {
    TextContent title;
    bool isDestructive = false;
    bool isCancel = false;  // what closing the question means
    std::function<void()> action;
  };
  TextContent title;
  TextContent message;
  std::vector<Choice> choices;
};

// The desktop's dialog for writing a file, open for as long as this is in the tree. Takes no space.
struct FileExportContent {
  std::string fileName;   // the proposed name, with its extension
  TextContent fileKind;   // what the dialog calls such files
  std::string extension;  // "csv"
  std::string content;
  std::function<void()> onEnd;  // called whether or not the file was written
};

struct HStackContent {
  double spacing = 0;
  VerticalAlignment alignment = VerticalAlignment::center;
  bool isEvenlyTall = false;  // every child is offered the height of the tallest
  friend bool operator==(const HStackContent&, const HStackContent&) = default;
};

struct VStackContent {
  double spacing = 0;
  HorizontalAlignment alignment = HorizontalAlignment::center;
  friend bool operator==(const VStackContent&, const VStackContent&) = default;
};

struct ZStackContent {
  Alignment alignment;
  friend bool operator==(const ZStackContent&, const ZStackContent&) = default;
};

// As many columns of equal width as fit with at least `minColumnWidth`, filled row by row. A row is as tall
// as its tallest cell.
struct AdaptiveGridContent {
  double minColumnWidth = 0;
  double spacing = 0;
  friend bool operator==(const AdaptiveGridContent&, const AdaptiveGridContent&) = default;
};

// A fixed number of columns of equal width, filled row by row; the cells of a row are offered the height of
// the tallest.
struct ColumnsContent {
  int columns = 1;
  double spacing = 0;
  std::vector<int> spans;  // number of columns that each child spans; 1 if missing
  friend bool operator==(const ColumnsContent&, const ColumnsContent&) = default;
};

// Alternative arrangements: shows the first child whose ideal width fits, or else the last.
struct FirstFitContent {
  friend bool operator==(const FirstFitContent&, const FirstFitContent&) = default;
};

// One child, inset.
struct PaddingContent {
  Insets insets;
  friend bool operator==(const PaddingContent&, const PaddingContent&) = default;
};

// One child, aligned in a box of the given size.
struct FrameContent {
  Extent width;
  Extent height;
  Alignment alignment;
  friend bool operator==(const FrameContent&, const FrameContent&) = default;
};

// One child, with a surface of exactly its bounds behind it.
struct BackgroundContent {
  Color fill = ColorRole::clear;
  double cornerRadius = 0;
  Color border = ColorRole::clear;
  double borderWidth = 0;
  Color shadow = ColorRole::clear;
  double shadowRadius = 0;
  double shadowOffsetY = 0;
  friend bool operator==(const BackgroundContent&, const BackgroundContent&) = default;
};

// One child, scrolled vertically, as wide as the space it is given. The position survives updates.
struct ScrollContent {
  friend bool operator==(const ScrollContent&, const ScrollContent&) = default;
};

// Rows of one height below each other, made as they scroll into view; for long lists in a scroll view. To the
// keyboard the list is one stop: rows are tapped without taking the focus.
struct RowsContent {
  std::size_t count = 0;
  double rowHeight = 1;                        // whole pixels
  std::function<View(std::size_t index)> row;  // the same kind of view for every row
  std::function<void()> onBack;                // the backspace key
};

// Two children: a sidebar whose width the user can drag, and the detail beside it.
struct SplitContent {
  double sidebarMinWidth = 0;
  double sidebarIdealWidth = 0;
  friend bool operator==(const SplitContent&, const SplitContent&) = default;
};

// A component, made when it is mounted. `update` hands it its input, whenever the view around it is
// evaluated.
struct ComponentContent {
  std::type_index type;
  std::function<std::shared_ptr<Component>()> make;
  std::function<void(Component&)> update;
};

using Content =
    std::variant<std::monostate, TextContent, SymbolContent, IconContent, SpacerContent, DividerContent,
                 LineChartContent, DayChartContent, BarContent, RingContent, ButtonContent, MenuContent,
                 SegmentedPickerContent, SwitchContent, SliderContent, AlertContent, FileExportContent,
                 HStackContent, VStackContent, ZStackContent, AdaptiveGridContent, ColumnsContent,
                 FirstFitContent, PaddingContent, FrameContent, BackgroundContent, ScrollContent, RowsContent,
                 SplitContent, ComponentContent>;

}  // namespace kestrune::ui
