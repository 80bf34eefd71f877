#pragma once

#include "base/types.h"

#include <random>
#include <vector>

/// Ring generators and checks shared by the geometry tests.
namespace TestRings
{
/// Regular convex polygon, counter-clockwise.
std::vector<Vec2> regular(int n, float radius = 1, Vec2 centre = {});
/// Star: alternating outer and inner radius (2 * points vertices), counter-clockwise.
std::vector<Vec2> star(int points, float outer = 2, float inner = 0.8f);
/// Random star-shaped ring around the origin with radii in [minR, maxR].
std::vector<Vec2> randomStarShaped(std::mt19937& rng, int n, float minR, float maxR);
/// Comb: a base bar with `teeth` teeth pointing up, counter-clockwise. The
/// right corner of each gap's floor is raised by `slant` (0 gives rectangular
/// gaps, whose floors line up: any convex cover then has co-linear vertices).
std::vector<Vec2> comb(int teeth, float toothWidth = 0.5f, float gap = 0.4f, float toothHeight = 2, float slant = 0.15f);
/// The ring with extra vertices inserted at the midpoints of every `every`-th edge.
std::vector<Vec2> withMidpoints(const std::vector<Vec2>& ring, int every = 1);
/// The ring in reverse order.
std::vector<Vec2> reversed(std::vector<Vec2> ring);
/// Square of the given side, counter-clockwise from (0,0).
std::vector<Vec2> square(float side = 1);

/// Signed area in double precision.
double area(const std::vector<Vec2>& ring);
/// Convex and counter-clockwise (every corner turns strictly left).
bool isConvexCcw(const std::vector<Vec2>& piece);
} // namespace TestRings
