#include <cmath>
#include <random>

#include <QPainter>
#include <gtest/gtest.h>

#include "ui/qt/charts/LinePainter.h"

namespace kestrune::ui::qt {
namespace {

using Points = std::vector<LinePoint>;

QImage blank(QSize size) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(0);
  return image;
}

QImage painted(QSize size, const Points& points, float width) {
  QImage image = blank(size);
  paintAscendingLine(image, points, width, qRgba(0, 0, 0, 255));
  return image;
}

// The same line as Qt strokes it.
QImage stroked(QSize size, const Points& points, float width) {
  QImage image = blank(size);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Qt::black, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  QPolygonF line;
  for (const LinePoint point : points) line << QPointF(point.x, point.y);
  painter.drawPolyline(line);
  return image;
}

// The mean over all pixels touched by either, as a share of full coverage.
double difference(const QImage& one, const QImage& other) {
  double sum = 0;
  int touched = 0;
  for (int i = 0; i < one.width() * one.height(); ++i) {
    const QPoint place(i % one.width(), i / one.width());
    const int difference = qAlpha(one.pixel(place)) - qAlpha(other.pixel(place));
    sum += std::abs(difference) / 255.0;
    touched += qAlpha(one.pixel(place) | other.pixel(place)) > 0 ? 1 : 0;
  }
  return touched == 0 ? 1 : sum / touched;
}

// Steps from one point to the next are at most `jump`, as a share of the height.
Points randomWalk(QSize size, int count, float jump) {
  std::mt19937 generator(11);
  std::uniform_real_distribution<float> step(-jump, jump);
  Points points;
  for (float share = 0.5F; std::ssize(points) < count;
       share = std::clamp(share + step(generator), 0.0F, 1.0F))
    points.push_back({static_cast<float>(std::ssize(points) * size.width()) / static_cast<float>(count - 1),
                      static_cast<float>(size.height()) * (1 - share)});
  return points;
}

TEST(LinePainter, coversWhatTheLineCovers) {
  const std::tuple<const char*, QSize, int, float, float> lines[] = {{"flat", {200, 14}, 60, 1.5F, 0},
                                                                     {"wild", {200, 14}, 60, 1.5F, 1},
                                                                     {"dense", {60, 12}, 60, 1.5F, 0.3F},
                                                                     {"large", {400, 60}, 120, 3, 0.5F}};
  for (const auto& [name, size, count, width, jump] : lines) {
    const Points points = randomWalk(size, count, jump);
    EXPECT_LT(difference(painted(size, points, width), stroked(size, points, width)), 0.03) << name;
  }
}

TEST(LinePainter, hasRoundEndsAndIsClippedToTheImage) {
  const Points inside{{5, 6}, {15, 3}};
  EXPECT_LT(difference(painted({20, 12}, inside, 4), stroked({20, 12}, inside, 4)), 0.03);
  const QImage atTop = painted({10, 4}, {{0, 0}, {10, 0}}, 1.5F);
  EXPECT_EQ(qAlpha(atTop.pixel(5, 0)), 191) << "half of 1.5";
  EXPECT_EQ(qAlpha(atTop.pixel(5, 1)), 0);
  const float nan = std::nanf("");
  const QImage wayOut = painted({10, 4}, {{-50, -1e9F}, {5, 1e9F}, {6, nan}, {70, nan}}, 1.5F);
  EXPECT_EQ(qAlpha(wayOut.pixel(9, 3)), 0);
  EXPECT_EQ(painted({10, 4}, {}, 1.5F), blank({10, 4}));
  EXPECT_EQ(painted({10, 4}, {{5, 2}}, 1.5F), blank({10, 4}));
}

TEST(LinePainter, blendsATranslucentLineOverAnother) {
  const Points level{{-5, 2}, {15, 2}};
  QImage image = blank({10, 4});
  paintAscendingLine(image, level, 2, qRgba(255, 0, 0, 255));
  paintAscendingLine(image, level, 2, qPremultiply(qRgba(0, 0, 255, 128)));
  EXPECT_EQ(image.pixel(5, 1), qRgba(127, 0, 128, 255));
  EXPECT_EQ(qAlpha(image.pixel(5, 0)), 0);
}

}  // namespace
}  // namespace kestrune::ui::qt
