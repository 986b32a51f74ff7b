#include <cmath>
#include <random>
#include <vector>

#include <QImage>
#include <gtest/gtest.h>

#include "ui/qt/charts/LinePainter.h"

namespace kestrune::ui::qt {
namespace {

struct Series {
  const char* name;
  int width;
  int height;
  int count;
  float lineWidth;
  float jump;  // the largest step from one point to the next, as a part of the height
};

QImage blank(int width, int height) {
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  image.fill(0);
  return image;
}

std::vector<LinePoint> randomWalk(const Series& series) {
  std::mt19937 generator(11);
  std::uniform_real_distribution<float> step(-series.jump, series.jump);
  std::vector<LinePoint> points;
  float height = 0.5F;
  for (int i = 0; i < series.count; ++i) {
    height = std::clamp(height + step(generator), 0.0F, 1.0F);
    points.push_back({static_cast<float>(i * series.width) / static_cast<float>(series.count - 1),
                      static_cast<float>(series.height) * (1 - height)});
  }
  return points;
}

bool isOnLine(float x, float y, const std::vector<LinePoint>& points, float lineWidth) {
  for (std::size_t i = 1; i < points.size(); ++i) {
    const LinePoint a = points[i - 1];
    const float dx = points[i].x - a.x;
    const float dy = points[i].y - a.y;
    const float t = std::clamp(((x - a.x) * dx + (y - a.y) * dy) / (dx * dx + dy * dy), 0.0F, 1.0F);
    if (std::hypot(x - a.x - t * dx, y - a.y - t * dy) <= lineWidth / 2) return true;
  }
  return false;
}

// Counts what of each pixel lies on the line.
QImage sampled(const Series& series, const std::vector<LinePoint>& points) {
  constexpr int grid = 8;
  QImage image = blank(series.width, series.height);
  for (int y = 0; y < series.height; ++y) {
    for (int x = 0; x < series.width; ++x) {
      int hits = 0;
      for (int i = 0; i < grid * grid; ++i) {
        const int row = i / grid;
        const float sx = static_cast<float>(x) + (static_cast<float>(i % grid) + 0.5F) / grid;
        const float sy = static_cast<float>(y) + (static_cast<float>(row) + 0.5F) / grid;
        hits += isOnLine(sx, sy, points, series.lineWidth) ? 1 : 0;
      }
      image.setPixel(x, y, qRgba(0, 0, 0, hits * 255 / (grid * grid)));
    }
  }
  return image;
}

// Over the pixels that either of both touches, as a part of full coverage.
double meanDifference(const QImage& a, const QImage& b) {
  double sum = 0;
  int touched = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) {
      const int first = qAlpha(a.pixel(x, y));
      const int second = qAlpha(b.pixel(x, y));
      if (first == 0 && second == 0) continue;
      ++touched;
      sum += std::abs(first - second) / 255.0;
    }
  }
  return touched == 0 ? 1 : sum / touched;
}

TEST(LinePainter, CoversWhatTheLineCovers) {
  for (const Series& series : {
           Series{"flat", 200, 14, 60, 1.5F, 0},
           Series{"wild", 200, 14, 60, 1.5F, 1},
           Series{"dense", 60, 12, 60, 1.5F, 0.3F},
           Series{"large, twice the pixels", 400, 60, 120, 3, 0.5F},
       }) {
    const std::vector<LinePoint> points = randomWalk(series);
    QImage drawn = blank(series.width, series.height);
    paintAscendingLine(drawn, points, series.lineWidth, qRgba(0, 0, 0, 255));
    EXPECT_LT(meanDifference(drawn, sampled(series, points)), 0.02) << series.name;
  }
}

TEST(LinePainter, HasRoundEndsAndIsCutOffAtTheImage) {
  const Series series{"short", 20, 12, 2, 4, 0};
  const std::vector<LinePoint> points{{5, 6}, {15, 3}};
  QImage drawn = blank(series.width, series.height);
  paintAscendingLine(drawn, points, series.lineWidth, qRgba(0, 0, 0, 255));
  EXPECT_LT(meanDifference(drawn, sampled(series, points)), 0.03);

  QImage atTop = blank(10, 4);
  paintAscendingLine(atTop, std::vector<LinePoint>{{0, 0}, {10, 0}}, 1.5F, qRgba(0, 0, 0, 255));
  EXPECT_EQ(qAlpha(atTop.pixel(5, 0)), 191);  // the half of 1.5
  EXPECT_EQ(qAlpha(atTop.pixel(5, 1)), 0);

  QImage wayOut = blank(10, 4);
  const float nan = std::nanf("");
  paintAscendingLine(wayOut, std::vector<LinePoint>{{-50, -1e9F}, {5, 1e9F}, {6, nan}, {70, nan}}, 1.5F, ~0U);
  EXPECT_EQ(qAlpha(wayOut.pixel(9, 3)), 0);

  QImage tooFew = blank(10, 4);
  paintAscendingLine(tooFew, {}, 1.5F, ~0U);
  paintAscendingLine(tooFew, std::vector<LinePoint>{{5, 2}}, 1.5F, ~0U);
  EXPECT_EQ(tooFew, blank(10, 4));
}

TEST(LinePainter, LaysATranslucentLineOverAnother) {
  QImage image = blank(10, 4);
  const std::vector<LinePoint> level{{-5, 2}, {15, 2}};
  paintAscendingLine(image, level, 2, qRgba(255, 0, 0, 255));
  paintAscendingLine(image, level, 2, qPremultiply(qRgba(0, 0, 255, 128)));
  EXPECT_EQ(image.pixel(5, 1), qRgba(127, 0, 128, 255));
  EXPECT_EQ(qAlpha(image.pixel(5, 0)), 0);
}

}  // namespace
}  // namespace kestrune::ui::qt
