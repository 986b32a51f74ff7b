#include "ui/qt/charts/DayChartLeaf.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "ui/qt/theme/Theme.h"

namespace kestrune::ui::qt {
namespace {

using Mark = DayChartContent::Mark;

constexpr Font axisFont{9, FontWeight::regular, true};
constexpr double axisGap = 6;
constexpr double daysHeight = 16;
// The width of a bar relative to its day.
constexpr double barShare = 0.8;
constexpr double lineThickness = 2;
constexpr double dotRadius = 2.5;
constexpr int maxSteps = 4;

bool isKnown(const std::optional<double>& figure) {
  return figure && std::isfinite(*figure);
}

// The greatest figure that has to fit; bars are stacked.
double highestOf(const DayChartContent& content) {
  double highest = 0;
  for (std::size_t day = 0; day < content.days.size(); ++day) {
    double stacked = 0;
    for (const auto& series : content.series) {
      if (day >= series.figures.size() || !isKnown(series.figures[day])) continue;
      const double figure = *series.figures[day];
      if (series.mark == Mark::bars) stacked += std::max(figure, 0.0);
      highest = std::max({highest, stacked, figure});
    }
  }
  return highest;
}

}  // namespace

std::vector<double> roundScale(double highest, double unit) {
  const double wanted = std::max(highest / unit / maxSteps, 1.0);
  const double power = std::pow(10, std::floor(std::log10(wanted)));
  double step = 10 * power;
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power < wanted * (1 - 1e-9)) continue;
    step = factor * power;
    break;
  }
  std::vector<double> scale{0};
  for (int i = 1; scale.size() < 2 || scale.back() < highest * (1 - 1e-9); ++i) {
    scale.push_back(i * step * unit);
  }
  return scale;
}

DayChartLeaf::DayChartLeaf(Theme& theme, QWidget* parent) : ChartLeaf(theme, parent) {}

bool DayChartLeaf::show(const Content& content, const LeafStyle& style) {
  const Change change = adopt(style);
  const auto& next = std::get<DayChartContent>(content);
  const bool looksTheSame = next == content_ && !scale_.empty() && change != Change::font;
  content_ = next;
  setReadOut(content_.readOut);
  if (looksTheSame) return false;
  scale_ = roundScale(highestOf(content_), content_.scaleUnit);
  scaleWidth_ = 0;
  for (const double line : scale_) {
    const QString text = QString::fromStdString(content_.scaleText(line));
    scaleWidth_ = std::max(scaleWidth_, std::ceil(theme().metrics(axisFont).horizontalAdvance(text)));
  }
  update();
  refreshReadOut();
  return false;
}

QRectF DayChartLeaf::plot() const {
  // The top line's label extends half a line above it.
  constexpr double above = 6;
  return {0, above, std::max(width() - scaleWidth_ - axisGap, 1.0),
          std::max(height() - daysHeight - above, 1.0)};
}

double DayChartLeaf::dayWidth() const {
  return plot().width() / static_cast<double>(std::max<std::size_t>(content_.days.size(), 1));
}

double DayChartLeaf::middleOf(std::size_t day) const {
  return plot().left() + (static_cast<double>(day) + 0.5) * dayWidth();
}

double DayChartLeaf::heightOf(double figure) const {
  const double share = std::clamp(figure / scale_.back(), 0.0, 1.0);
  return plot().bottom() - share * plot().height();
}

std::optional<std::size_t> DayChartLeaf::pointedAt() const {
  if (!pointer() || content_.days.empty() || pointer()->x() < 0 || pointer()->x() >= plot().right()) {
    return std::nullopt;
  }
  const auto day = static_cast<std::size_t>(pointer()->x() / dayWidth());
  return std::min(day, content_.days.size() - 1);
}

void DayChartLeaf::paint(QPainter& painter) {
  if (content_.days.empty()) return;
  painter.setRenderHint(QPainter::Antialiasing);
  paintScale(painter);
  paintDays(painter);
  if (const auto day = pointedAt()) paintMark(painter, *day);
  std::vector<double> stacked(content_.days.size(), 0);
  for (const auto& series : content_.series) paintSeries(painter, series, stacked);
}

void DayChartLeaf::paintScale(QPainter& painter) {
  painter.setFont(theme().font(axisFont));
  const QRectF area = plot();
  for (const double line : scale_) {
    const double y = std::floor(heightOf(line));
    painter.fillRect(QRectF(area.left(), y, area.width(), 1),
                     color(Color(ColorRole::primary, line == 0 ? 0.18 : 0.08)));
    painter.setPen(color(ColorRole::tertiary));
    painter.drawText(QRectF(area.right() + axisGap, y - 6, scaleWidth_, 12),
                     Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip,
                     QString::fromStdString(content_.scaleText(line)));
  }
}

void DayChartLeaf::paintDays(QPainter& painter) {
  std::vector<QString> texts;
  double widest = 1;
  for (const TextContent& day : content_.days) {
    texts.push_back(theme().text(day));
    widest = std::max(widest, theme().metrics(axisFont).horizontalAdvance(texts.back()));
  }
  const auto every = static_cast<std::size_t>(std::max(std::ceil((widest + 12) / dayWidth()), 1.0));
  painter.setPen(color(ColorRole::tertiary));
  // Counted back from the last day, which readers look for first.
  for (std::size_t back = 0; back < texts.size(); back += every) {
    const std::size_t day = texts.size() - 1 - back;
    const double wide = theme().metrics(axisFont).horizontalAdvance(texts[day]);
    const double left = std::clamp(middleOf(day) - wide / 2, 0.0, std::max(plot().right() - wide, 0.0));
    painter.drawText(QRectF(left, plot().bottom() + 3, wide, daysHeight - 3),
                     Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, texts[day]);
  }
}

void DayChartLeaf::paintMark(QPainter& painter, std::size_t day) const {
  const double wide = std::max(dayWidth(), 2.0);
  painter.fillRect(QRectF(middleOf(day) - wide / 2, plot().top(), wide, plot().height()),
                   color(Color(ColorRole::primary, 0.07)));
}

void DayChartLeaf::paintSeries(QPainter& painter, const DayChartContent::Series& series,
                               std::vector<double>& stacked) const {
  const std::size_t count = std::min(series.figures.size(), content_.days.size());
  if (series.mark == Mark::bars) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(series.color));
    for (std::size_t day = 0; day < count; ++day) {
      if (!isKnown(series.figures[day]) || *series.figures[day] <= 0) continue;
      const double bottom = heightOf(stacked[day]);
      stacked[day] += *series.figures[day];
      const double top = heightOf(stacked[day]);
      const double wide = dayWidth() * barShare;
      painter.drawRoundedRect(QRectF(middleOf(day) - wide / 2, top, wide, bottom - top), 1.5, 1.5);
    }
    return;
  }
  for (std::size_t first = 0; first < count; ++first) {
    if (!isKnown(series.figures[first])) continue;
    std::size_t last = first;
    while (last + 1 < count && isKnown(series.figures[last + 1])) ++last;
    paintRun(painter, series, first, last);
    first = last;
  }
}

// Consecutive days with none missing.
void DayChartLeaf::paintRun(QPainter& painter, const DayChartContent::Series& series, std::size_t first,
                            std::size_t last) const {
  QPolygonF points;
  for (std::size_t day = first; day <= last; ++day)
    points << QPointF(middleOf(day), heightOf(*series.figures[day]));
  const bool isArea = series.mark == Mark::area;
  if (first == last) {
    // A single day is as wide as a dot.
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(series.color));
    if (isArea) {
      const double top = points.first().y();
      painter.drawRect(QRectF(points.first().x() - dotRadius, top, 2 * dotRadius, plot().bottom() - top));
    } else {
      painter.drawEllipse(points.first(), dotRadius, dotRadius);
    }
    return;
  }
  if (isArea) {
    points << QPointF(middleOf(last), plot().bottom()) << QPointF(middleOf(first), plot().bottom());
    painter.setPen(Qt::NoPen);
    painter.setBrush(color(series.color));
    painter.drawPolygon(points);
    return;
  }
  painter.setPen(QPen(color(series.color), lineThickness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(points);
}

}  // namespace kestrune::ui::qt
