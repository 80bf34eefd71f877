#pragma once

#include "base/types.h"

#include <array>

/// The four corners of the rounded-edge quad from a to b: with d the edge
/// direction (normalised unless the edge is shorter than the edge-direction
/// epsilon) and o = (-d.y, d.x) * radius, the corners a - o, b - o, b + o, a + o.
std::array<Vec2, 4> edgeQuad(const Vec2& a, const Vec2& b, float radius);
