// Unrounded lines and loops collide from both sides in a running world.
#include "geometry/fixturebuilder.h"
#include "geometry/fixturedef.h"
#include "model/metafixture.h"

#include <box2d/box2d.h>

#include <gtest/gtest.h>

namespace
{
// A static scene fixture of one shape and one ball, simulated for a while.
class ChainCollision : public ::testing::Test
{
protected:
    ChainCollision() : m_world(b2Vec2(0, 0))
    {
        b2BodyDef def;
        m_ground = m_world.CreateBody(&def);
    }

    void buildGround(std::vector<Vec2> vertices, ShapeType type)
    {
        m_fixture.setVertices(std::move(vertices));
        MetaShape& shape = m_fixture.addShape(type, 0);
        createFixtures(shape, "ground", m_ground, fixtureDefFor(m_fixture), DecompositionMethod::Bayazit);
        ASSERT_EQ(shape.createdFixtures.size(), 2u);
    }

    b2Body* ball(b2Vec2 position, b2Vec2 velocity)
    {
        b2BodyDef def;
        def.type = b2_dynamicBody;
        def.position = position;
        def.linearVelocity = velocity;
        def.bullet = true;
        b2Body* body = m_world.CreateBody(&def);
        b2CircleShape circle;
        circle.m_radius = 0.25f;
        body->CreateFixture(&circle, 1);
        return body;
    }

    void run(float seconds)
    {
        for (int i = 0; i < static_cast<int>(seconds * 60); ++i)
            m_world.Step(1.0f / 60, 8, 3);
    }

    b2World m_world;
    b2Body* m_ground = nullptr;
    MetaFixture m_fixture;
};
} // namespace

TEST_F(ChainCollision, BallFallingOntoLineFromAboveIsStopped)
{
    m_world.SetGravity(b2Vec2(0, -10));
    buildGround({{-5, 0}, {5, 0}}, ShapeType::Line);
    b2Body* b = ball({0, 2}, {0, 0});
    run(2);
    EXPECT_GT(b->GetPosition().y, 0.2f);
    EXPECT_LT(b->GetPosition().y, 0.3f);
}

TEST_F(ChainCollision, BallRisingIntoLineFromBelowIsStopped)
{
    buildGround({{-5, 0}, {5, 0}}, ShapeType::Line);
    b2Body* b = ball({0, -2}, {0, 6});
    run(2);
    EXPECT_LT(b->GetPosition().y, -0.2f);
}

TEST_F(ChainCollision, BallHittingTheEndOfALineIsStopped)
{
    buildGround({{-5, 0}, {5, 0}}, ShapeType::Line);
    // Head on: the end point stops the ball before it.
    b2Body* headOn = ball({-8, 0}, {6, 0});
    // Slightly above or below the line (apart, so they never touch each other):
    // deflected around the end, never through.
    b2Body* above = ball({8, 0.05f}, {-6, 0});
    b2Body* below = ball({11, -0.05f}, {-6, 0});
    run(2);
    EXPECT_LT(headOn->GetPosition().x, -5.2f);
    EXPECT_GT(above->GetPosition().x, 3.0f);
    EXPECT_GT(above->GetPosition().y, 0.2f);
    EXPECT_GT(below->GetPosition().x, 3.0f);
    EXPECT_LT(below->GetPosition().y, -0.2f);
}

TEST_F(ChainCollision, LoopStopsBallsInsideAndOutside)
{
    buildGround({{-3, -3}, {3, -3}, {3, 3}, {-3, 3}}, ShapeType::Loop);
    b2Body* inside = ball({0, 0}, {0, -6});
    b2Body* outside = ball({0, -6}, {0, 6});
    run(2);
    EXPECT_GT(inside->GetPosition().y, -3);
    EXPECT_LT(outside->GetPosition().y, -3);
}
