#pragma once

#include "base/types.h"

#include <QImage>

#include <vector>

// Pictures the sampling tests draw with QPainter on a transparent square,
// and measures of the outlines traced from them.
namespace TestImages
{
/// A transparent square `size` pixels wide.
QImage blank(int size);
/// A filled disc.
QImage disc(int size, double cx, double cy, double radius);
/// A disc with a round hole in its middle (a ring).
QImage ring(int size, double cx, double cy, double outer, double inner);
/// Two discs apart.
QImage twoDiscs(int size, double radius);
/// An L: the square's left strip and bottom strip, `thickness` wide, inset by `margin`.
QImage letterL(int size, int margin, int thickness);
} // namespace TestImages

/// Writes a square RGBA PNG of `side` pixels, transparent with an opaque
/// square in its middle half, row by row (never the whole picture in
/// memory). Returns success.
bool writeHugePng(const QString& path, int side);

/// Shoelace area (positive counter-clockwise with y up).
double polygonArea(const std::vector<Vec2>& points);
/// Even-odd point-in-polygon test.
bool pointInPolygon(const std::vector<Vec2>& polygon, Vec2 point);
