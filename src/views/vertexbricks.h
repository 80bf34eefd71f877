#pragma once

#include "views/scenegeometry.h"

#include <cstddef>
#include <utility>
#include <vector>

/// World boxes of fixed runs ("bricks") of a vertex array, so that drawing a
/// small part of the world submits only the runs that reach it, not whole
/// chunks. A brick holds a whole number of triangles and of line segments.
/// Boxes take the vertices' points, not their pixel offsets: callers widen
/// the box they ask about by the markers' reach, as for chunks.
class VertexBricks
{
public:
    /// Vertices per brick: 256 triangles or 384 line segments.
    static constexpr size_t kSize = 768;

    /// Boxes for the whole array.
    void rebuild(const std::vector<GeomVertex>& vertices);
    /// Brings the boxes of the bricks holding [first, first + count) up to
    /// date (the array may have grown or shrunk).
    void refresh(const std::vector<GeomVertex>& vertices, size_t first, size_t count);

    /// The runs of [first, first + count) whose bricks reach the box
    /// [lo, hi], in order, neighbouring runs joined: (first, count) pairs.
    std::vector<std::pair<int, int>> runs(int first, int count, double loX, double loY, double hiX,
                                          double hiY) const;

private:
    struct Box
    {
        float loX, loY, hiX, hiY;
    };
    void measure(const std::vector<GeomVertex>& vertices, size_t brick);

    std::vector<Box> m_boxes;
};
