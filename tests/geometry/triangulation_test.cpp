// Ear clipping with Delaunay edge flips.
#include "geometrytestutil.h"

#include "model/ringcheck.h"

#include "geometry/convexpiece.h"
#include "geometry/delaunayinsertion.h"
#include "geometry/earclipping.h"
#include "geometry/triangulation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <set>

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

namespace
{
std::vector<int> identity(size_t n)
{
    std::vector<int> order(n);
    for (size_t i = 0; i < n; ++i)
        order[i] = int(i);
    return order;
}

std::set<std::array<int, 3>> normalised(std::vector<TriangleIndices> tris)
{
    std::set<std::array<int, 3>> out;
    for (TriangleIndices& t : tris) {
        std::rotate(t.begin(), std::min_element(t.begin(), t.end()), t.end());
        out.insert(t);
    }
    return out;
}
} // namespace

TEST(Triangulation, InsertionAndEarClippingAgreeOnTheConstrainedDelaunayTriangles)
{
    // In general position the constrained Delaunay triangulation is unique:
    // incremental insertion with forced ring edges and ear clipping must both
    // reach it once the flips have settled the edges next to forced ones.
    std::mt19937 rng(404);
    std::vector<std::vector<Vec2>> rings;
    for (int k = 0; k < 30; ++k)
        rings.push_back(TestRings::randomStarShaped(rng, 10 + 37 * k, 0.3f, 3));
    for (int teeth : {3, 17, 60})
        rings.push_back(TestRings::comb(teeth));
    // A long spiral corridor: most of its edges are not Delaunay edges of the
    // points alone and have to be forced in.
    std::vector<Vec2> spiral;
    for (int i = 0; i <= 300; ++i) {
        const double a = 0.05 * i, r = 1 + 0.3 * a;
        spiral.push_back({float(r * std::cos(a)), float(r * std::sin(a))});
    }
    for (int i = 300; i >= 0; --i) {
        const double a = 0.05 * i, r = 1.12 + 0.3 * a;
        spiral.push_back({float(r * std::cos(a)), float(r * std::sin(a))});
    }
    rings.push_back(TestRings::reversed(spiral)); // counter-clockwise
    for (size_t k = 0; k < rings.size(); ++k) {
        SCOPED_TRACE(k);
        const auto pts = wide(rings[k]);
        std::vector<TriangleIndices> inserted;
        ASSERT_TRUE(delaunayByInsertion(pts, identity(pts.size()), inserted));
        EXPECT_EQ(inserted.size(), pts.size() - 2);
        // Ear clipping alone, then the flips that triangulateRing applies.
        std::vector<TriangleIndices> clipped = clipEars(pts, identity(pts.size()));
        EXPECT_EQ(clipped.size(), pts.size() - 2);
        flipToDelaunay(pts, inserted);
        flipToDelaunay(pts, clipped);
        EXPECT_EQ(normalised(inserted), normalised(clipped));
        EXPECT_EQ(normalised(inserted), normalised(triangulateRing(pts)));
        EXPECT_LE(worstDelaunayExcess(pts, inserted), 1e-9);
    }
    // Not handled: repeated points; triangulateRing still gives n - 2 by ear clipping.
    const std::vector<DVec2> pinched{{0, 0}, {2, 0}, {1, 1}, {2, 2}, {0, 2}, {1, 1}};
    std::vector<TriangleIndices> none;
    EXPECT_FALSE(delaunayByInsertion(pinched, identity(pinched.size()), none));
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(triangulateRing(pinched).size(), 4u);
}

TEST(Triangulation, BigSmoothRingIsDelaunay)
{
    // 20,000 points on a flat ellipse: ear clipping alone would leave the
    // flips most of the work; insertion hands them a finished triangulation.
    std::vector<Vec2> ring;
    for (int i = 0; i < 20000; ++i) {
        const double a = 2 * std::numbers::pi * i / 20000;
        ring.push_back({static_cast<float>(400 * std::cos(a)), static_cast<float>(100 * std::sin(a))});
    }
    expectValidTriangulation(ring);
}

TEST(Triangulation, SimpleRingsOnAnIntegerLatticeAreTriangulatedExactly)
{
    // Lattice points make co-linear runs and co-circular quads common: the
    // insertion either handles them or hands over to ear clipping, and either
    // way the result covers the ring with n - 2 counter-clockwise triangles.
    std::mt19937 rng(8);
    int tested = 0;
    for (int trial = 0; tested < 300 && trial < 5000; ++trial) {
        const int n = 5 + trial % 40;
        std::uniform_int_distribution<int> radius(2, 12);
        std::vector<Vec2> ring;
        for (int i = 0; i < n; ++i) {
            const double a = 2 * std::numbers::pi * i / n;
            const int r = radius(rng);
            ring.push_back({float(std::lround(r * std::cos(a))), float(std::lround(r * std::sin(a)))});
        }
        // Consecutive repeats collapse; rings that touch themselves are skipped.
        ring.erase(std::unique(ring.begin(), ring.end()), ring.end());
        while (ring.size() > 1 && ring.front() == ring.back())
            ring.pop_back();
        if (ring.size() < 3 || ringSelfIntersects(ring) || !(std::fabs(TestRings::area(ring)) > 0))
            continue;
        SCOPED_TRACE(trial);
        ++tested;
        const auto pts = wide(ring);
        const auto tris = triangulateRing(pts);
        ASSERT_EQ(tris.size(), ring.size() - 2);
        double sum = 0;
        for (const TriangleIndices& t : tris) {
            const double a = orient2d(pts[size_t(t[0])], pts[size_t(t[1])], pts[size_t(t[2])]) / 2;
            EXPECT_GE(a, 0);
            sum += a;
        }
        EXPECT_NEAR(sum, std::fabs(TestRings::area(ring)), 1e-9);
    }
    EXPECT_EQ(tested, 300);
}
