#include "model/metajoint.h"
#include "physics/jointbuilder.h"

#include <box2d/box2d.h>
#include <gtest/gtest.h>

namespace
{
struct TwoBodies
{
    b2World world{b2Vec2(0, -10)};
    b2Body* a;
    b2Body* b;

    TwoBodies()
    {
        b2BodyDef def;
        def.type = b2_dynamicBody;
        a = world.CreateBody(&def);
        def.position.Set(3, 0);
        b = world.CreateBody(&def);
        b2CircleShape circle;
        circle.m_radius = 0.5f;
        a->CreateFixture(&circle, 1);
        b->CreateFixture(&circle, 1);
    }
};
} // namespace

TEST(JointBuilder, RopeIsASlackDistanceJoint)
{
    TwoBodies bodies;
    MetaJoint rope;
    rope.type = JointType::Rope;
    rope.maxLength = 4;
    b2Joint* joint = createJoint(bodies.world, rope, bodies.a, bodies.b);
    ASSERT_NE(joint, nullptr);
    ASSERT_EQ(joint->GetType(), e_distanceJoint);
    auto* d = static_cast<b2DistanceJoint*>(joint);
    EXPECT_FLOAT_EQ(d->GetMaxLength(), 4);
    EXPECT_LE(d->GetMinLength(), b2_linearSlop) << "a rope never pushes";
    EXPECT_EQ(d->GetStiffness(), 0);

    // The bodies fall freely while closer than the rope's length...
    for (int i = 0; i < 30; ++i)
        bodies.world.Step(1 / 60.0f, 8, 3);
    EXPECT_NEAR((bodies.b->GetPosition() - bodies.a->GetPosition()).Length(), 3, 0.01f);
}

TEST(JointBuilder, DistanceJointIsRigidWithoutFrequencyAndSpringyWithIt)
{
    TwoBodies bodies;
    MetaJoint rigid;
    rigid.type = JointType::Distance;
    rigid.length = 3;
    auto* d = static_cast<b2DistanceJoint*>(createJoint(bodies.world, rigid, bodies.a, bodies.b));
    ASSERT_NE(d, nullptr);
    EXPECT_FLOAT_EQ(d->GetMinLength(), 3);
    EXPECT_FLOAT_EQ(d->GetMaxLength(), 3);

    MetaJoint spring;
    spring.type = JointType::Distance;
    spring.length = 3;
    spring.frequency = 2;
    spring.dampingRatio = 0.5f;
    auto* s = static_cast<b2DistanceJoint*>(createJoint(bodies.world, spring, bodies.a, bodies.b));
    float stiffness = 0, damping = 0;
    b2LinearStiffness(stiffness, damping, 2, 0.5f, bodies.a, bodies.b);
    EXPECT_GT(stiffness, 0);
    EXPECT_FLOAT_EQ(s->GetStiffness(), stiffness);
    EXPECT_FLOAT_EQ(s->GetDamping(), damping);
    EXPECT_LT(s->GetMinLength(), s->GetMaxLength());
}

TEST(JointBuilder, WeldAndWheelUseTheirStiffnessFunctions)
{
    TwoBodies bodies;
    MetaJoint weld;
    weld.type = JointType::Weld;
    weld.frequency = 5;
    weld.dampingRatio = 0.7f;
    auto* w = static_cast<b2WeldJoint*>(createJoint(bodies.world, weld, bodies.a, bodies.b));
    float stiffness = 0, damping = 0;
    b2AngularStiffness(stiffness, damping, 5, 0.7f, bodies.a, bodies.b);
    EXPECT_FLOAT_EQ(w->GetStiffness(), stiffness);
    EXPECT_FLOAT_EQ(w->GetDamping(), damping);

    MetaJoint wheel;
    wheel.type = JointType::Wheel;
    wheel.localAxisA = {0, 5};
    wheel.springFrequency = 4;
    wheel.springDampingRatio = 0.2f;
    auto* wh = static_cast<b2WheelJoint*>(createJoint(bodies.world, wheel, bodies.a, bodies.b));
    b2LinearStiffness(stiffness, damping, 4, 0.2f, bodies.a, bodies.b);
    EXPECT_FLOAT_EQ(wh->GetStiffness(), stiffness);
    EXPECT_FLOAT_EQ(wh->GetLocalAxisA().y, 1) << "the axis is normalised";
}

TEST(JointBuilder, RefusesWhatBox2DCannotTake)
{
    TwoBodies bodies;
    MetaJoint joint;
    joint.type = JointType::Revolute;
    EXPECT_EQ(createJoint(bodies.world, joint, bodies.a, bodies.a), nullptr) << "same body twice";
    EXPECT_EQ(createJoint(bodies.world, joint, bodies.a, nullptr), nullptr);
    joint.type = JointType::Unknown;
    EXPECT_EQ(createJoint(bodies.world, joint, bodies.a, bodies.b), nullptr);

    // Limits given the wrong way round and non-finite values are made usable.
    joint.type = JointType::Revolute;
    joint.enableLimit = true;
    joint.lowerLimit = 1;
    joint.upperLimit = -1;
    joint.motorSpeed = std::nanf("");
    auto* r = static_cast<b2RevoluteJoint*>(createJoint(bodies.world, joint, bodies.a, bodies.b));
    ASSERT_NE(r, nullptr);
    EXPECT_FLOAT_EQ(r->GetLowerLimit(), -1);
    EXPECT_FLOAT_EQ(r->GetUpperLimit(), 1);
    EXPECT_EQ(r->GetMotorSpeed(), 0);
}
