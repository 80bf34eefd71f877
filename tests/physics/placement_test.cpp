#include "physics/placement.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
constexpr float kPi = 3.14159265f;

void expectNear(Vec2 a, Vec2 b)
{
    EXPECT_NEAR(a.x, b.x, 1e-5f);
    EXPECT_NEAR(a.y, b.y, 1e-5f);
}
} // namespace

TEST(Placement, MirrorsThenScalesThenRotatesThenMoves)
{
    Placement p{{10, 0}, kPi / 2, 2, true};
    // (1, 0) mirrored is (-1, 0), scaled (-2, 0), rotated a quarter turn (0, -2), moved (10, -2).
    expectNear(p.applyToPoint({1, 0}), {10, -2});
    expectNear(p.applyToVector({0, 1}), {-2, 0});
    expectNear(p.applyToLocalPoint({1, 3}), {-2, 6});
    EXPECT_NEAR(p.applyToAngle(0.25f), kPi / 2 - 0.25f, 1e-6f);
    EXPECT_NEAR(p.applyToRelativeAngle(0.25f), -0.25f, 1e-6f);
}

TEST(Placement, MirroredZerosArePositive)
{
    const Placement mirror{{}, 0, 1, true};
    EXPECT_FALSE(std::signbit(mirror.applyToRelativeAngle(0)));
    EXPECT_FALSE(std::signbit(mirror.applyToLocalPoint({0, 1}).x));
    EXPECT_EQ(mirror.applyToLocalPoint({2, 1}).x, -2);
}

TEST(Placement, CompositionEqualsApplyingInnerThenOuter)
{
    const Placement outer{{3, -1}, 0.7f, 1.5f, true};
    const Placement inner{{-2, 4}, -1.2f, 0.5f, false};
    const Placement both = outer.then(inner);
    for (Vec2 q : {Vec2{0, 0}, Vec2{1, 2}, Vec2{-3.5f, 0.25f}}) {
        expectNear(both.applyToPoint(q), outer.applyToPoint(inner.applyToPoint(q)));
        expectNear(both.applyToVector(q), outer.applyToVector(inner.applyToVector(q)));
    }
    EXPECT_NEAR(both.applyToAngle(0.3f), outer.applyToAngle(inner.applyToAngle(0.3f)), 1e-5f);
    EXPECT_FLOAT_EQ(both.scale, 0.75f);
    EXPECT_TRUE(both.flip);
    EXPECT_FALSE(outer.then(Placement{{}, 0, 1, true}).flip) << "two mirrors cancel";
}

TEST(Placement, BodyFramePlacementMatchesPointPlacement)
{
    // A vertex v of a body at b with angle t lands where the placed body puts its placed local vertex.
    const Placement p{{1, 2}, 0.4f, 3, true};
    const Vec2 b{2, -1};
    const float t = 0.9f;
    const Vec2 v{0.5f, 1.5f};
    auto rotate = [](Vec2 x, float a) {
        return Vec2{std::cos(a) * x.x - std::sin(a) * x.y, std::sin(a) * x.x + std::cos(a) * x.y};
    };
    const Vec2 direct = p.applyToPoint(b + rotate(v, t));
    const Vec2 viaBody = p.applyToPoint(b) + rotate(p.applyToLocalPoint(v), p.applyToAngle(t));
    expectNear(direct, viaBody);
}
