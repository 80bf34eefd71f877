// Big rings keep their triangles; a ring with a few corners moved is
// triangulated again only around them, and the triangles must still fill
// exactly the ring: every one turning counter-clockwise, their areas adding
// up to the ring's.
#include "model/ringcheck.h"
#include "views/ringfill.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace
{
std::vector<Vec2> star(int corners, float inner, float outer)
{
    std::vector<Vec2> ring;
    for (int i = 0; i < corners; ++i) {
        const double a = 2 * std::numbers::pi * i / corners;
        const double r = i % 2 ? outer : inner;
        ring.push_back({float(r * std::cos(a)), float(r * std::sin(a))});
    }
    return ring;
}

double ringArea(const std::vector<Vec2>& ring)
{
    double sum = 0;
    for (size_t i = 0; i < ring.size(); ++i) {
        const Vec2 &a = ring[i], &b = ring[(i + 1) % ring.size()];
        sum += double(a.x) * b.y - double(b.x) * a.y;
    }
    return std::fabs(sum) / 2;
}

// The triangles fill the ring: none turns clockwise and their areas add up.
void expectFilled(const std::vector<Vec2>& ring, const std::vector<TriangleIndices>& triangles, const std::string& what)
{
    ASSERT_EQ(triangles.size(), ring.size() - 2) << what;
    double sum = 0;
    for (const TriangleIndices& t : triangles) {
        const Vec2 &a = ring[size_t(t[0])], &b = ring[size_t(t[1])], &c = ring[size_t(t[2])];
        const double twice = (double(b.x) - a.x) * (double(c.y) - a.y) - (double(b.y) - a.y) * (double(c.x) - a.x);
        ASSERT_GE(twice, 0) << what;
        sum += twice / 2;
    }
    EXPECT_NEAR(sum, ringArea(ring), 1e-6 * ringArea(ring)) << what;
}
} // namespace

TEST(RingFill, MovedCornersAreTriangulatedAgainAroundThemAndTheRingStaysFilled)
{
    RingFill fill;
    std::vector<Vec2> ring = star(2000, 50, 100);
    expectFilled(ring, fill.triangles(ring), "first drawing");
    EXPECT_EQ(fill.lastSource(), RingFill::Source::Triangulated);
    const std::vector<TriangleIndices> kept = fill.triangles(ring);
    EXPECT_EQ(fill.lastSource(), RingFill::Source::Kept);

    std::mt19937 random(3);
    int patched = 0;
    for (int step = 0; step < 200; ++step) {
        std::vector<Vec2> moved = ring;
        // One to three corners, each moved along its spoke (inwards or out, by
        // up to a fifth), which may or may not keep the ring simple.
        const int count = 1 + int(random() % 3);
        for (int k = 0; k < count; ++k) {
            const size_t i = random() % ring.size();
            const float scale = 0.8f + 0.4f * float(random() % 1000) / 1000.f;
            moved[i] = moved[i] * scale;
        }
        const std::string what = "step " + std::to_string(step);
        const std::vector<TriangleIndices> triangles = fill.triangles(moved);
        if (ringSelfIntersects(moved)) {
            EXPECT_EQ(fill.lastSource(), RingFill::Source::Triangulated) << what;
            continue;
        }
        expectFilled(moved, triangles, what);
        patched += fill.lastSource() == RingFill::Source::Patched ? 1 : 0;
        ring = moved;
    }
    EXPECT_GT(patched, 100) << "simple edits are patched";
}

TEST(RingFill, ACornerMovedFarIsPatchedWhileTheRingStaysSimpleAndNotWhenItCrossesItself)
{
    const std::vector<Vec2> before = star(4000, 50, 100);
    RingFill fill;
    fill.triangles(before);
    // An inner corner pulled to the middle: a slit deep into the star, far
    // past the triangles the corner had.
    std::vector<Vec2> slit = before;
    slit[10] = {0, 0};
    ASSERT_FALSE(ringSelfIntersects(slit));
    expectFilled(slit, fill.triangles(slit), "slit");
    EXPECT_EQ(fill.lastSource(), RingFill::Source::Patched);
    // Pulled out through the other side: the ring crosses itself, and the
    // whole ring is triangulated as before.
    std::vector<Vec2> crossing = before;
    crossing[10] = {-150, 3};
    ASSERT_TRUE(ringSelfIntersects(crossing));
    EXPECT_EQ(fill.triangles(crossing).size(), crossing.size() - 2);
    EXPECT_EQ(fill.lastSource(), RingFill::Source::Triangulated);
}
