#pragma once

#include "base/types.h"

#include <optional>

class MetaBody;
class MetaFixture;
class MetaWorld;

/// Finding the item under a point. Items drawn later lie on top, so the
/// search runs from the last body and fixture backwards.
namespace HitTest
{
/// Distance from `p` to the segment a-b.
float segmentDistance(Vec2 p, Vec2 a, Vec2 b);
/// The point of the edge a-b nearest to `p` when it lies strictly between
/// a and b and within `tolerance` of `p` (where a click inserts a point).
std::optional<Vec2> pointOnEdge(Vec2 p, Vec2 a, Vec2 b, float tolerance);
/// True when `point` (world) lies in the fixture or within `tolerance` of its
/// outline (lines, loops, thin shapes).
bool fixtureContains(const MetaFixture& fixture, Vec2 point, float tolerance);
/// The topmost fixture at the point, or null.
MetaFixture* topmostFixture(const MetaWorld& world, Vec2 point, float tolerance);
/// The body of the topmost fixture at the point, or null.
MetaBody* topmostBody(const MetaWorld& world, Vec2 point, float tolerance);
} // namespace HitTest
