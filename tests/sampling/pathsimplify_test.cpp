// Simplification of outlines: straight points go, the turn limit and the
// point limit hold, and a ring never falls below three points.

#include "samplingtestimages.h"

#include "sampling/pathsimplify.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
constexpr double kPi = 3.14159265358979323846;

std::vector<Vec2> circle(int count, float radius)
{
    std::vector<Vec2> points;
    for (int i = 0; i < count; ++i) {
        const double a = 2 * kPi * i / count;
        points.push_back({float(radius * std::cos(a)), float(radius * std::sin(a))});
    }
    return points;
}

double turnDegrees(Vec2 a, Vec2 b, Vec2 c)
{
    const double ux = b.x - a.x, uy = b.y - a.y, vx = c.x - b.x, vy = c.y - b.y;
    return std::fabs(std::atan2(ux * vy - uy * vx, ux * vx + uy * vy)) * 180 / kPi;
}
} // namespace

TEST(PathSimplify, StraightAndRepeatedPointsGo)
{
    const std::vector<Vec2> square = {{0, 0}, {1, 0}, {2, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 2}, {0, 2}, {0, 1}, {0, 0}};
    EXPECT_EQ(simplifyPath(square, true, 0, 0), (std::vector<Vec2>{{0, 0}, {2, 0}, {2, 2}, {0, 2}}));
    const std::vector<Vec2> line = {{0, 0}, {1, 0}, {2, 0}, {3, 1}};
    EXPECT_EQ(simplifyPath(line, false, 0, 0), (std::vector<Vec2>{{0, 0}, {2, 0}, {3, 1}})) << "open ends stay";
}

TEST(PathSimplify, TurnLimit)
{
    const std::vector<Vec2> points = simplifyPath(circle(360, 10), true, 0, 10);
    ASSERT_GE(points.size(), 3u);
    EXPECT_LE(points.size(), 36u);
    for (size_t i = 0; i < points.size(); ++i) {
        const size_t n = points.size();
        EXPECT_GE(turnDegrees(points[(i + n - 1) % n], points[i], points[(i + 1) % n]), 10 - 1e-3) << i;
    }
    EXPECT_GT(polygonArea(points), 0.9 * kPi * 100);
}

TEST(PathSimplify, PointLimit)
{
    for (int limit : {3, 12, 50}) {
        const std::vector<Vec2> points = simplifyPath(circle(720, 5), true, limit, 0);
        EXPECT_EQ(points.size(), size_t(limit));
        const double regular = 0.5 * limit * 25 * std::sin(2 * kPi / limit);
        if (limit > 3) {
            EXPECT_GT(polygonArea(points), 0.9 * regular) << "the points that stay keep the shape: " << limit;
        }
    }
    EXPECT_EQ(simplifyPath(circle(100, 5), true, 1, 0).size(), 3u) << "a ring keeps three points";
    EXPECT_EQ(simplifyPath(circle(100, 5), false, 1, 0).size(), 2u) << "a line keeps its ends";
    EXPECT_EQ(simplifyPath(circle(10, 5), true, 50, 0).size(), 10u);
}

TEST(PathSimplify, BadPointsAreDropped)
{
    const std::vector<Vec2> points = {{0, 0}, {NAN, 1}, {1, 0}, {1, 1}, {INFINITY, 0}, {0, 1}};
    EXPECT_EQ(simplifyPath(points, true, 0, 0).size(), 4u);
    EXPECT_TRUE(simplifyPath({}, true, 5, 5).empty());
}
