#include <cmath>
#include <memory>
#include <random>
#include <vector>

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <benchmark/benchmark.h>

#include "texts/Catalogue.h"
#include "ui/qt/charts/LinePainter.h"
#include "ui/qt/mount/LeafFactory.h"
#include "ui/qt/theme/Theme.h"

// What painting the most common parts of a page costs, compared with Qt's own ways to draw a line.
namespace {

using namespace kestrune::ui;
using namespace kestrune::ui::qt;

// A random walk between 0 and 1.
std::vector<double> wanderingLoad(int count) {
  std::mt19937 generator(5);
  std::uniform_real_distribution<double> step(-0.2, 0.2);
  std::vector<double> heights;
  double height = 0.4;
  for (int i = 0; i < count; ++i) {
    height = std::clamp(height + step(generator), 0.0, 1.0);
    heights.push_back(height);
  }
  return heights;
}

struct Chart {
  explicit Chart(const benchmark::State& state)
      : width(static_cast<int>(state.range(0))), height(static_cast<int>(state.range(1))) {
    const std::vector<double> heights = wanderingLoad(static_cast<int>(state.range(2)));
    for (const double value : heights) {
      const double x = static_cast<double>(points.size()) * width / static_cast<double>(heights.size() - 1);
      points.emplace_back(x, height * (1 - value));
    }
    target = QImage(width, height, QImage::Format_RGB32);
    target.fill(Qt::white);
  }

  void prepare(QPainter& painter) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x30, 0x8c, 0xc6), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }

  int width;
  int height;
  std::vector<QPointF> points;
  QImage target;
};

void chartByScanLine(benchmark::State& state) {
  Chart chart(state);
  for (auto _ : state) {
    QPainter painter(&chart.target);
    QImage image(chart.width, chart.height, QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    std::vector<LinePoint> points;
    points.reserve(chart.points.size());
    for (const QPointF& point : chart.points) {
      points.push_back({static_cast<float>(point.x()), static_cast<float>(point.y())});
    }
    paintAscendingLine(image, points, 1.5F, 0xff308cc6U);
    painter.drawImage(0, 0, image);
  }
}

void chartByPath(benchmark::State& state) {
  Chart chart(state);
  for (auto _ : state) {
    QPainter painter(&chart.target);
    chart.prepare(painter);
    QPainterPath path(chart.points.front());
    for (const QPointF& point : chart.points) path.lineTo(point);
    painter.drawPath(path);
  }
}

void chartByPolyline(benchmark::State& state) {
  Chart chart(state);
  for (auto _ : state) {
    QPainter painter(&chart.target);
    chart.prepare(painter);
    painter.drawPolyline(chart.points.data(), static_cast<int>(chart.points.size()));
  }
}

// Cheaper, but the joints are visible in a translucent colour.
void chartBySegments(benchmark::State& state) {
  Chart chart(state);
  for (auto _ : state) {
    QPainter painter(&chart.target);
    chart.prepare(painter);
    for (std::size_t i = 1; i < chart.points.size(); ++i)
      painter.drawLine(chart.points[i - 1], chart.points[i]);
  }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Args({200, 14, 60})->Args({800, 60, 120})->Unit(benchmark::kMicrosecond);
}
BENCHMARK(chartByScanLine)->Apply(sizes);
BENCHMARK(chartByPath)->Apply(sizes);
BENCHMARK(chartByPolyline)->Apply(sizes);
BENCHMARK(chartBySegments)->Apply(sizes);

// A leaf as painted in a window: background and content.
void paintLeaf(benchmark::State& state, const Content& content, int width, int height) {
  const kestrune::Catalogue catalogue{};
  Theme theme(catalogue);
  QWidget window;
  Leaf* leaf = makeLeaf(content, theme, &window);
  LeafStyle style;
  style.backdrop = Color(ColorRole::controlBackground);
  leaf->show(content, style);
  leaf->setGeometry(0, 0, width, height);
  QImage target(width, height, QImage::Format_RGB32);
  for (auto _ : state) leaf->render(&target, {}, {}, QWidget::RenderFlags());
}

void textLeaf(benchmark::State& state) {
  paintLeaf(state, verbatimText("CPU Usage 33%"), 110, 18);
}
void chartLeaf(benchmark::State& state) {
  paintLeaf(state, LineChartContent{{{wanderingLoad(60), Color(ColorRole::accent, 0.6)}}, 1.5}, 200, 14);
}
void barLeaf(benchmark::State& state) {
  paintLeaf(state, BarContent{0.4, ColorRole::quaternary, ColorRole::accent, 3, 0}, 200, 5);
}
void symbolLeaf(benchmark::State& state) {
  paintLeaf(state, SymbolContent{"cpu"}, 16, 16);
}
// Qt's own share of a leaf's cost.
void emptyLeaf(benchmark::State& state) {
  paintLeaf(state, verbatimText(""), 110, 18);
}
BENCHMARK(textLeaf)->Unit(benchmark::kMicrosecond);
BENCHMARK(chartLeaf)->Unit(benchmark::kMicrosecond);
BENCHMARK(barLeaf)->Unit(benchmark::kMicrosecond);
BENCHMARK(symbolLeaf)->Unit(benchmark::kMicrosecond);
BENCHMARK(emptyLeaf)->Unit(benchmark::kMicrosecond);

// A figure that changes every tick, so its text is shaped again.
void changeText(benchmark::State& state) {
  const kestrune::Catalogue catalogue{};
  Theme theme(catalogue);
  QWidget window;
  LeafStyle style;
  style.font = {14, FontWeight::medium, true};
  const std::vector<Content> texts{verbatimText("33%"), verbatimText("71%")};
  Leaf* leaf = makeLeaf(texts[0], theme, &window);
  std::size_t next = 0;
  for (auto _ : state) benchmark::DoNotOptimize(leaf->show(texts[next++ % 2], style));
}
BENCHMARK(changeText)->Unit(benchmark::kMicrosecond);

}  // namespace
