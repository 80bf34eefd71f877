// Outlines traced from pictures drawn here: their areas and positions
// against the drawn shapes, holes and islands, and the empty and full cases.

#include "samplingtestimages.h"

#include "sampling/outlinetracer.h"
#include "sampling/pathsimplify.h"
#include "sampling/sampleranalysis.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
constexpr double kPi = 3.14159265358979323846;

// Traces a 1024-pixel picture sampled at 256, as a sampler with threshold 0.5 does.
std::vector<TracedRing> traced(const QImage& picture)
{
    return analyseImage(picture, QSize(256, 256), 0.5f, false)->tracedRings;
}

double netArea(const std::vector<TracedRing>& rings)
{
    double sum = 0;
    for (const TracedRing& r : rings)
        sum += r.area;
    return sum;
}

ScalarField field(int w, int h, std::vector<float> values)
{
    return ScalarField{w, h, std::move(values)};
}
} // namespace

TEST(OutlineTracer, DiscAreaAndOutlineMatchTheCircle)
{
    const std::vector<TracedRing> rings = traced(TestImages::disc(1024, 512, 512, 300));
    ASSERT_EQ(rings.size(), 1u);
    EXPECT_FALSE(rings[0].hole);
    EXPECT_EQ(rings[0].parent, -1);
    const double r = 300.0 / 4; // at output resolution
    EXPECT_NEAR(rings[0].area, kPi * r * r, 0.02 * kPi * r * r);
    EXPECT_NEAR(polygonArea(rings[0].points), rings[0].area, 1e-6 * rings[0].area);
    double worst = 0;
    for (const Vec2& p : rings[0].points)
        worst = std::max(worst, std::fabs(std::hypot(p.x - 128.0, p.y - 128.0) - r));
    EXPECT_LT(worst, 1.0) << "every point within one pixel of the circle";
}

TEST(OutlineTracer, RingHasItsHole)
{
    const std::vector<TracedRing> rings = traced(TestImages::ring(1024, 512, 512, 400, 200));
    ASSERT_EQ(rings.size(), 2u);
    const int solid = rings[0].hole ? 1 : 0;
    const int hole = 1 - solid;
    EXPECT_FALSE(rings[size_t(solid)].hole);
    EXPECT_TRUE(rings[size_t(hole)].hole);
    EXPECT_LT(rings[size_t(hole)].area, 0) << "holes run the other way";
    EXPECT_EQ(rings[size_t(hole)].parent, solid);
    EXPECT_EQ(rings[size_t(solid)].parent, -1);
    const double expected = kPi * (100.0 * 100.0 - 50.0 * 50.0);
    EXPECT_NEAR(netArea(rings), expected, 0.02 * expected);
    EXPECT_NEAR(-rings[size_t(hole)].area, kPi * 50 * 50, 0.02 * kPi * 50 * 50);
}

TEST(OutlineTracer, IslandsAndAnIslandInAHole)
{
    const std::vector<TracedRing> two = traced(TestImages::twoDiscs(1024, 150));
    ASSERT_EQ(two.size(), 2u);
    for (const TracedRing& r : two) {
        EXPECT_FALSE(r.hole);
        EXPECT_EQ(r.parent, -1);
        EXPECT_NEAR(r.area, kPi * 37.5 * 37.5, 0.02 * kPi * 37.5 * 37.5);
    }
    EXPECT_LT(two[0].points[0].x, 128) << "rings come in the order they are met: the left disc's top is met first";

    QImage nested = TestImages::ring(1024, 512, 512, 450, 300);
    {
        const QImage island = TestImages::disc(1024, 512, 512, 120);
        for (int y = 0; y < 1024; ++y)
            for (int x = 0; x < 1024; ++x)
                if (qAlpha(island.pixel(x, y)) > qAlpha(nested.pixel(x, y)))
                    nested.setPixel(x, y, island.pixel(x, y));
    }
    const std::vector<TracedRing> rings = traced(nested);
    ASSERT_EQ(rings.size(), 3u);
    int outer = -1, hole = -1, island = -1;
    for (size_t i = 0; i < rings.size(); ++i) {
        if (rings[i].hole)
            hole = int(i);
        else if (rings[i].parent < 0)
            outer = int(i);
        else
            island = int(i);
    }
    ASSERT_GE(outer, 0);
    ASSERT_GE(hole, 0);
    ASSERT_GE(island, 0);
    EXPECT_EQ(rings[size_t(hole)].parent, outer);
    EXPECT_EQ(rings[size_t(island)].parent, hole);
    EXPECT_GT(rings[size_t(island)].area, 0);
}

TEST(OutlineTracer, LetterL)
{
    const std::vector<TracedRing> rings = traced(TestImages::letterL(1024, 64, 256));
    ASSERT_EQ(rings.size(), 1u);
    const double expected = (256.0 * 896 * 2 - 256.0 * 256) / 16;
    EXPECT_NEAR(rings[0].area, expected, 0.02 * expected);
    // Each corner is cut by half a pixel: two turns of 45 degrees, which a
    // limit above that folds into one.
    EXPECT_EQ(simplifyPath(rings[0].points, true, 0, 10).size(), 12u);
    const std::vector<Vec2> corners = simplifyPath(rings[0].points, true, 0, 50);
    ASSERT_EQ(corners.size(), 6u) << "an L has six corners";
    EXPECT_NEAR(polygonArea(corners), expected, 0.02 * expected);
}

TEST(OutlineTracer, EmptyAndFullFields)
{
    EXPECT_TRUE(traceOutlines(field(5, 4, std::vector<float>(20, 0.0f)), 0.5f).empty());
    EXPECT_TRUE(traceOutlines(field(0, 0, {}), 0.5f).empty());
    EXPECT_TRUE(traceOutlines(field(3, 3, {1, 1}), 0.5f).empty()) << "a field of the wrong size is refused";

    const std::vector<TracedRing> full = traceOutlines(field(64, 48, std::vector<float>(64 * 48, 1.0f)), 0.5f);
    ASSERT_EQ(full.size(), 1u);
    EXPECT_DOUBLE_EQ(full[0].area, 64.0 * 48.0) << "the outline of a full field is its border";
    const std::vector<Vec2> corners = simplifyPath(full[0].points, true, 0, 0);
    ASSERT_EQ(corners.size(), 4u);
    for (const Vec2& c : corners)
        EXPECT_TRUE((c.x == 0 || c.x == 64) && (c.y == 0 || c.y == 48)) << c.x << "," << c.y;
}

TEST(OutlineTracer, CrossingsAreInterpolated)
{
    // One column rising from 0 to 1: the edge lies where the values pass 0.25.
    const std::vector<TracedRing> rings = traceOutlines(field(1, 3, {0.0f, 0.5f, 1.0f}), 0.25f);
    ASSERT_EQ(rings.size(), 1u);
    float top = 10;
    for (const Vec2& p : rings[0].points)
        top = std::min(top, p.y);
    EXPECT_FLOAT_EQ(top, 1.0f) << "halfway between the centres of the first two pixels";
}

TEST(OutlineTracer, SaddlesFollowTheCentre)
{
    // Two diagonal pixels: joined when the cell's centre is solid, apart when not.
    const ScalarField diagonal = field(2, 2, {1.0f, 0.2f, 0.2f, 1.0f});
    EXPECT_EQ(traceOutlines(diagonal, 0.5f).size(), 1u);
    EXPECT_EQ(traceOutlines(diagonal, 0.7f).size(), 2u);
    const ScalarField checker = field(3, 3, {1, 0, 1, 0, 1, 0, 1, 0, 1});
    EXPECT_EQ(traceOutlines(checker, 0.4f).size(), 1u) << "five pixels joined corner to corner";
    const std::vector<TracedRing> apart = traceOutlines(checker, 0.6f);
    ASSERT_EQ(apart.size(), 5u);
    for (const TracedRing& r : apart) {
        EXPECT_FALSE(r.hole);
        EXPECT_EQ(r.parent, -1);
        EXPECT_GE(r.points.size(), 4u);
    }
}
