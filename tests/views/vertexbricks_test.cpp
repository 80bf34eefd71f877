// A redraw of a small area submits only the runs of vertices that reach it:
// the runs must hold every vertex that does, in order, and whole triangles.
#include "views/vertexbricks.h"

#include <gtest/gtest.h>

namespace
{
// Triangles along the x axis, one unit apart: triangle k lies at x = k.
std::vector<GeomVertex> row(size_t triangles)
{
    std::vector<GeomVertex> vertices;
    for (size_t k = 0; k < triangles; ++k) {
        for (int corner = 0; corner < 3; ++corner)
            vertices.push_back({float(k) + 0.1f * float(corner), float(corner), 0, 0, 0, 0, 0, 255});
    }
    return vertices;
}

// Every vertex whose point lies in [lo, hi] along x is in one of the runs.
bool runsHold(const std::vector<std::pair<int, int>>& runs, const std::vector<GeomVertex>& vertices, int first,
              int count, float lo, float hi)
{
    for (int i = first; i < first + count; ++i) {
        if (vertices[size_t(i)].x < lo || vertices[size_t(i)].x > hi)
            continue;
        bool held = false;
        for (const auto& [from, n] : runs)
            held = held || (i >= from && i < from + n);
        if (!held)
            return false;
    }
    return true;
}
} // namespace

TEST(VertexBricks, RunsHoldWhatReachesTheBoxAndLittleElse)
{
    std::vector<GeomVertex> vertices = row(5000); // 15,000 vertices, about 20 bricks
    VertexBricks bricks;
    bricks.rebuild(vertices);
    const auto runs = bricks.runs(0, int(vertices.size()), 2000, -1, 2100, 5);
    ASSERT_FALSE(runs.empty());
    EXPECT_TRUE(runsHold(runs, vertices, 0, int(vertices.size()), 2000, 2100));
    int drawn = 0;
    for (const auto& [from, n] : runs) {
        EXPECT_EQ(from % 3, 0) << "whole triangles";
        EXPECT_EQ(n % 3, 0);
        drawn += n;
    }
    EXPECT_LE(drawn, int(3 * VertexBricks::kSize)) << "a hundred triangles take at most a few bricks";
    EXPECT_EQ(runs.size(), 1u) << "neighbouring bricks are one run";

    // Within a chunk of the array only, and nothing outside the box.
    const auto inChunk = bricks.runs(3000, 6000, 2000, -1, 2100, 5);
    for (const auto& [from, n] : inChunk) {
        EXPECT_GE(from, 3000);
        EXPECT_LE(from + n, 9000);
    }
    EXPECT_TRUE(bricks.runs(0, int(vertices.size()), 9000, -1, 9100, 5).empty());
}

TEST(VertexBricks, RefreshedBoxesFollowMovedAndAddedVertices)
{
    std::vector<GeomVertex> vertices = row(3000);
    VertexBricks bricks;
    bricks.rebuild(vertices);
    // A triangle moves far away, and the array grows at its end.
    for (int corner = 0; corner < 3; ++corner)
        vertices[size_t(300 * 3 + corner)].x = 50000;
    bricks.refresh(vertices, 900, 3);
    const std::vector<GeomVertex> more = row(4000);
    vertices.insert(vertices.end(), more.begin() + 3000 * 3, more.end());
    bricks.refresh(vertices, 9000, 3000);
    const int count = int(vertices.size());
    EXPECT_TRUE(runsHold(bricks.runs(0, count, 49999, -1, 50001, 5), vertices, 0, count, 49999, 50001));
    EXPECT_FALSE(bricks.runs(0, count, 49999, -1, 50001, 5).empty());
    EXPECT_TRUE(runsHold(bricks.runs(0, count, 3500, -1, 3600, 5), vertices, 0, count, 3500, 3600));
    EXPECT_FALSE(bricks.runs(0, count, 3500, -1, 3600, 5).empty());
}
