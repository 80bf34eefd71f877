#pragma once

#include "base/types.h"

#include <cstdint>
#include <vector>

/// A closed outline found in a field of values: its points in pixel
/// coordinates (x right, y down, the field spanning 0..width x 0..height),
/// without repeating the first point at the end.
struct TracedRing
{
    std::vector<Vec2> points;
    /// True for the boundary of a hole (inside another ring), false for the
    /// outside of a solid part (an island when it lies inside a hole).
    bool hole = false;
    /// Index of the ring that directly encloses this one, or -1.
    int parent = -1;
    /// Signed area in pixel units: positive for solid outlines, negative for holes.
    double area = 0;
};

/// A field of values sampled at pixel centres (row-major, `width` x `height`).
struct ScalarField
{
    int width = 0;
    int height = 0;
    std::vector<float> values;

    /// The value at a pixel.
    float at(int x, int y) const { return values[size_t(y) * size_t(width) + size_t(x)]; }
};

/// Finds every outline where the field crosses `threshold` (a value at or
/// above it is solid). Values outside the field count as empty, so an
/// outline that reaches the border follows the border exactly. The crossing
/// is placed on each pixel-to-pixel step by linear interpolation, so outlines
/// have sub-pixel precision. Rings never cross each other. Each is ordered
/// so that its signed (shoelace) area in pixel coordinates is positive when
/// it bounds a solid part and negative when it bounds a hole. Rings come in
/// the order their first step is met, scanning rows from the top.
std::vector<TracedRing> traceOutlines(const ScalarField& field, float threshold);
