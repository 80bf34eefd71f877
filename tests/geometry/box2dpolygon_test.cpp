// Judging points the way b2PolygonShape::Set will take them.
#include "geometrytestutil.h"

#include "geometry/box2dpolygon.h"
#include "geometry/convexpiece.h"

#include <box2d/box2d.h>

#include <gtest/gtest.h>

namespace
{
b2PolygonShape box2DPolygon(const std::vector<Vec2>& points)
{
    std::vector<b2Vec2> v;
    for (const Vec2& p : points)
        v.push_back({p.x, p.y});
    b2PolygonShape shape;
    shape.Set(v.data(), int(v.size()));
    return shape;
}

// Would Box2D build a polygon without asserting? Only then may the real
// constructor be called.
bool box2DBuildsIt(const Box2DPolygonJudgement& j)
{
    return (j.verdict == Box2DPolygonVerdict::Unchanged || j.verdict == Box2DPolygonVerdict::HullChanged) &&
           j.hull.size() >= 3 && j.area > b2_epsilon;
}
} // namespace

TEST(Box2DPolygon, HullMatchesBox2DOnRandomPointSets)
{
    // Random 3 to 8 points, near and far from the origin, some nearly in a
    // line: wherever Box2D builds a polygon, its vertices are the judged hull.
    std::mt19937 rng(31);
    int built = 0, unchanged = 0, changed = 0;
    for (int trial = 0; trial < 20000; ++trial) {
        const int n = 3 + trial % 6;
        const float offset = (trial / 6) % 3 == 0 ? 0 : ((trial / 6) % 3 == 1 ? 500 : 8000);
        const float spread = (trial / 18) % 2 ? 1 : 0.05f;
        std::uniform_real_distribution<float> coord(-spread, spread);
        std::vector<Vec2> points;
        if (trial % 5 == 0) {
            // Points on a convex arc: Box2D must keep them all, or tell.
            for (int i = 0; i < n; ++i) {
                const float a = 6.2831853f * float(i) / float(n) + coord(rng) * 0.01f;
                points.push_back({offset + spread * std::cos(a), offset * 0.5f + spread * std::sin(a)});
            }
        } else {
            for (int i = 0; i < n; ++i)
                points.push_back({offset + coord(rng), offset * 0.7f + coord(rng) * (trial % 3 == 0 ? 1e-3f : 1.0f)});
        }
        const Box2DPolygonJudgement judgement = judgeBox2DPolygon(points);
        if (!box2DBuildsIt(judgement))
            continue;
        const b2PolygonShape shape = box2DPolygon(points);
        ASSERT_EQ(shape.m_count, int(judgement.hull.size())) << "trial " << trial;
        for (int k = 0; k < shape.m_count; ++k) {
            EXPECT_EQ(shape.m_vertices[k].x, judgement.hull[size_t(k)].x) << "trial " << trial;
            EXPECT_EQ(shape.m_vertices[k].y, judgement.hull[size_t(k)].y) << "trial " << trial;
        }
        ++built;
        (judgement.verdict == Box2DPolygonVerdict::Unchanged ? unchanged : changed) += 1;
    }
    EXPECT_GT(built, 10000);
    EXPECT_GT(unchanged, 1000);
    EXPECT_GT(changed, 1000);
}

TEST(Box2DPolygon, VerdictsForWeldedFlatSmallAndReorderedPoints)
{
    EXPECT_EQ(judgeBox2DPolygon({{0, 0}, {1, 0}, {0, 1}}).verdict, Box2DPolygonVerdict::Unchanged);
    EXPECT_EQ(judgeBox2DPolygon({{0, 0}, {0, 1}, {1, 0}}).verdict, Box2DPolygonVerdict::HullChanged)
        << "clockwise points come back in the other order";
    EXPECT_EQ(judgeBox2DPolygon({{0, 0}, {0.002f, 0}, {0.001f, 1}}).verdict, Box2DPolygonVerdict::Welded);
    EXPECT_EQ(judgeBox2DPolygon({{0, 0}, {1, 0}, {2, 0}}).verdict, Box2DPolygonVerdict::HullChanged);
    EXPECT_EQ(judgeBox2DPolygon({{0, 0}, {0.1f, 0}, {0.05f, 0.000002f}}).verdict, Box2DPolygonVerdict::AreaTooSmall);
    EXPECT_EQ(judgeBox2DPolygon({{0, 0}, {1, 0}}).verdict, Box2DPolygonVerdict::BadCount);
    const auto square = judgeBox2DPolygon({{0, 0}, {1, 0}, {1, 1}, {0.5f, 1}, {0, 1}});
    EXPECT_EQ(square.verdict, Box2DPolygonVerdict::HullChanged);
    EXPECT_EQ(square.droppedIndex, 3) << "the straight corner";
}

TEST(Box2DPolygon, FarPieceThatDoublePrecisionCallsConvexLosesAPointInBox2D)
{
    // Two points 0.015 apart and one 8,000 units away: every corner turns left
    // clearly enough in double precision, but Box2D's hull keeps 3 points.
    const std::vector<Vec2> piece{
        {0.979342222f, -0.0532799549f}, {2.6081388f, -2.57265067f}, {6739.87744f, 4309.7627f}, {0.991977811f, -0.0451965556f}};
    std::vector<DVec2> wide;
    for (const Vec2& v : piece)
        wide.push_back(DVec2::from(v));
    EXPECT_EQ(checkConvexPiece(wide), PieceCheck::Ok);
    const Box2DPolygonJudgement judgement = judgeBox2DPolygon(piece);
    EXPECT_EQ(judgement.verdict, Box2DPolygonVerdict::HullChanged);
    EXPECT_EQ(box2DPolygon(piece).m_count, 3);
    EXPECT_EQ(judgement.hull.size(), 3u);
    EXPECT_EQ(checkBox2DPolygon(piece), PieceCheck::CoLinear);
}
