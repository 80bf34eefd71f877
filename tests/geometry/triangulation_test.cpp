// Ear clipping with Delaunay edge flips.
#include "geometrytestutil.h"

#include "geometry/convexpiece.h"
#include "geometry/triangulation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>

namespace
{
std::vector<DVec2> wide(const std::vector<Vec2>& ring)
{
    std::vector<DVec2> out;
    for (const Vec2& v : ring)
        out.push_back(DVec2::from(v));
    return out;
}

double angleAt(const DVec2& apex, const DVec2& a, const DVec2& b)
{
    const DVec2 u = a - apex;
    const DVec2 v = b - apex;
    return std::atan2(std::fabs(cross(u, v)), u.x * v.x + u.y * v.y);
}

// Largest excess over pi of the two angles facing an interior edge (<= 0 when
// every interior edge is locally Delaunay).
double worstDelaunayExcess(const std::vector<DVec2>& pts, const std::vector<TriangleIndices>& tris)
{
    const int n = static_cast<int>(pts.size());
    std::map<std::pair<int, int>, std::vector<int>> opposite;
    for (const TriangleIndices& t : tris) {
        for (int e = 0; e < 3; ++e) {
            const int a = t[e], b = t[(e + 1) % 3];
            opposite[{std::min(a, b), std::max(a, b)}].push_back(t[(e + 2) % 3]);
        }
    }
    double worst = -INFINITY;
    for (const auto& [edge, apexes] : opposite) {
        const bool boundary = (edge.first + 1) % n == edge.second || (edge.second + 1) % n == edge.first;
        if (boundary || apexes.size() != 2)
            continue;
        const DVec2& a = pts[edge.first];
        const DVec2& b = pts[edge.second];
        const double sum = angleAt(pts[apexes[0]], a, b) + angleAt(pts[apexes[1]], a, b);
        worst = std::max(worst, sum - std::numbers::pi);
    }
    return worst;
}

void expectValidTriangulation(const std::vector<Vec2>& ring)
{
    const auto pts = wide(ring);
    const auto tris = triangulateRing(pts);
    ASSERT_EQ(tris.size(), ring.size() - 2);
    double sum = 0;
    for (const TriangleIndices& t : tris) {
        const double a = orient2d(pts[t[0]], pts[t[1]], pts[t[2]]) / 2;
        EXPECT_GT(a, 0);
        sum += a;
    }
    EXPECT_NEAR(sum, std::fabs(TestRings::area(ring)), 1e-6 * std::max(1.0, sum));
    EXPECT_LE(worstDelaunayExcess(pts, tris), 1e-9);
}
} // namespace

TEST(Triangulation, SquareGivesTwoTriangles)
{
    expectValidTriangulation(TestRings::square());
}

TEST(Triangulation, ClockwiseRingGivesCounterClockwiseTriangles)
{
    expectValidTriangulation(TestRings::reversed(TestRings::comb(6)));
}

TEST(Triangulation, CollinearVerticesAreUsedWithoutFlatTriangles)
{
    expectValidTriangulation(TestRings::withMidpoints(TestRings::square(2)));
    expectValidTriangulation(TestRings::withMidpoints(TestRings::withMidpoints(TestRings::comb(3))));
}

TEST(Triangulation, FlipsMakeThinFanDelaunay)
{
    // A flat ellipse-like ring: ear clipping alone produces long thin fans.
    std::vector<Vec2> ring;
    for (int i = 0; i < 40; ++i) {
        const double a = 2 * std::numbers::pi * i / 40;
        ring.push_back({static_cast<float>(10 * std::cos(a)), static_cast<float>(std::sin(a))});
    }
    expectValidTriangulation(ring);
}

TEST(Triangulation, RandomStarShapedRingsAreConstrainedDelaunay)
{
    std::mt19937 rng(11);
    for (int trial = 0; trial < 100; ++trial) {
        SCOPED_TRACE(trial);
        auto ring = TestRings::randomStarShaped(rng, 5 + trial % 60, 0.3f, 3);
        if (trial % 2)
            ring = TestRings::reversed(ring);
        expectValidTriangulation(ring);
    }
}

TEST(Triangulation, DegenerateAndNonSimpleRingsStillTerminate)
{
    const std::vector<DVec2> line{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}};
    EXPECT_EQ(triangulateRing(line).size(), 3u);
    const std::vector<DVec2> bowTie{{0, 0}, {1, 1}, {1, 0}, {0, 1}};
    EXPECT_EQ(triangulateRing(bowTie).size(), 2u);
    EXPECT_TRUE(triangulateRing({{0, 0}, {1, 1}}).empty());
    EXPECT_TRUE(triangulateRing({{0, 0}, {1, 1}, {NAN, 0}}).empty());
}
