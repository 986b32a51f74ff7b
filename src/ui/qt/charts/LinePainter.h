#pragma once

#include <span>

#include <QImage>

namespace kestrune::ui::qt {

struct LinePoint {
  float x = 0;
  float y = 0;  // downwards
};

// Draws the line through the points over the image: `width` thick, with round caps and joins, antialiased by
// exact area up to a small bound. Lengths are the image's own pixels, (0, 0) is its top left corner; what
// lies outside is cut off. The image has the format ARGB32_Premultiplied, as has the colour. From each point
// to the next x must grow; fewer than two points draw nothing.
//
// Far cheaper than stroking a path: a line that never turns back has but one upper and one lower edge over
// each x.
void paintAscendingLine(QImage& image, std::span<const LinePoint> points, float width, QRgb color);

}  // namespace kestrune::ui::qt
