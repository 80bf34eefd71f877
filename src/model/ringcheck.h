#pragma once

#include "base/types.h"

#include <vector>

/// True when two non-adjacent edges of the closed ring through the points
/// intersect (touching counts). Rings of fewer than four points never do.
bool ringSelfIntersects(const std::vector<Vec2>& ring);

/// The same answer, found by a sweep over the edges whatever the ring's size
/// (ringSelfIntersects tests every pair of edges of small rings instead).
bool ringSelfIntersectsBySweep(const std::vector<Vec2>& ring);

/// ringSelfIntersects(after) for a ring known not to intersect itself as
/// `before`. When `after` has as many points and only a few of them moved,
/// just the edges at the moved points are tested against the others (an
/// edit that drags a vertex of a huge outline costs one pass over its edges);
/// otherwise the whole ring is checked.
bool ringSelfIntersectsAfterEdit(const std::vector<Vec2>& before, const std::vector<Vec2>& after);
