#pragma once

#include <span>

#include <QImage>

namespace kestrune::ui::qt {

// In pixels; y points down.
struct LinePoint {
  float x = 0;
  float y = 0;
};

// Draws the line through the points onto the image: `width` thick, with round caps and joins, antialiased by
// exact area within a small tolerance. Lengths are in the image's pixels, (0, 0) is its top left corner, and
// anything outside is clipped. Image and colour are in ARGB32_Premultiplied. x must grow from each point to
// the next; fewer than two points draw nothing.
//
// Far cheaper than stroking a path: a line that never turns back has but one upper and one lower edge over
// each x.
void paintAscendingLine(QImage& image, std::span<const LinePoint> points, float width, QRgb color);

}  // namespace kestrune::ui::qt
