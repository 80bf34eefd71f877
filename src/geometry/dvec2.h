#pragma once

#include "base/types.h"

/// A point in double precision, the working type of the decomposition methods.
struct DVec2
{
    double x = 0;
    double y = 0;

    friend bool operator==(const DVec2&, const DVec2&) = default;
    DVec2 operator+(const DVec2& o) const { return {x + o.x, y + o.y}; }
    DVec2 operator-(const DVec2& o) const { return {x - o.x, y - o.y}; }
    DVec2 operator*(double s) const { return {x * s, y * s}; }

    /// Widens a scene point.
    static DVec2 from(const Vec2& v) { return {v.x, v.y}; }
    /// Narrows to a scene point.
    Vec2 toVec2() const { return {static_cast<float>(x), static_cast<float>(y)}; }
};

/// Cross product of two vectors.
inline double cross(const DVec2& a, const DVec2& b)
{
    return a.x * b.y - a.y * b.x;
}

/// Twice the signed area of the triangle a, b, c (positive when counter-clockwise).
inline double orient2d(const DVec2& a, const DVec2& b, const DVec2& c)
{
    return cross(b - a, c - a);
}

/// Squared distance of two points.
inline double distanceSquared(const DVec2& a, const DVec2& b)
{
    const DVec2 d = a - b;
    return d.x * d.x + d.y * d.y;
}
