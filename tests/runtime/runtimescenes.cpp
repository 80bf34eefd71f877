#include "runtimescenes.h"

#include "model/metabody.h"
#include "model/metafixture.h"
#include "model/metaimage.h"
#include "model/metajoint.h"
#include "model/metashape.h"
#include "model/metaworld.h"

#include <random>

namespace RuntimeScenes
{
namespace
{
class Builder
{
public:
    Builder(MetaWorld& world, unsigned seed) : m_world(world), m_random(seed) {}

    float jitter(float amount) { return std::uniform_real_distribution<float>(-amount, amount)(m_random); }

    MetaBody* body(const char* name, BodyType type, Vec2 at, float angle = 0)
    {
        auto b = std::make_unique<MetaBody>();
        b->type = type;
        b->position = {at.x + jitter(0.2f), at.y + jitter(0.2f)};
        b->angle = angle + jitter(0.1f);
        return m_world.addBody(std::move(b), 0, QString::fromLatin1(name));
    }

    MetaFixture* fixture(MetaBody* body, const char* name, std::vector<Vec2> vertices, int shapeType,
                         float radius = 0, float density = 1)
    {
        auto f = std::make_unique<MetaFixture>();
        f->density = density;
        f->friction = 0.3f + jitter(0.1f);
        f->restitution = 0.2f + jitter(0.1f);
        f->setVertices(std::move(vertices));
        f->addShape(shapeType, radius);
        return m_world.addFixture(body, std::move(f), 0, QString::fromLatin1(name));
    }

    MetaJoint* joint(const char* name, JointType type, MetaBody* a, MetaBody* b, Vec2 anchorA, Vec2 anchorB)
    {
        auto j = std::make_unique<MetaJoint>();
        j->type = type;
        j->bodyA = a;
        j->bodyB = b;
        j->anchorA = anchorA;
        j->anchorB = anchorB;
        return m_world.addJoint(std::move(j), 0, QString::fromLatin1(name));
    }

private:
    MetaWorld& m_world;
    std::mt19937 m_random;
};

std::vector<Vec2> box(float h, Vec2 c = {})
{
    return {{c.x - h, c.y - h}, {c.x + h, c.y - h}, {c.x + h, c.y + h}, {c.x - h, c.y + h}};
}
} // namespace

std::unique_ptr<MetaWorld> everyShapeAndJoint(unsigned seed)
{
    auto world = std::make_unique<MetaWorld>();
    Builder s(*world, seed);
    world->customProperties.set(QStringLiteral("level"), 7);

    // Every body has a slot of its own, six metres apart, and lands on the
    // ground or hangs from it: the scene collides and moves, but no pile
    // makes it chaotic, so other physics engines can follow it closely.
    float slot = -63;
    auto next = [&slot] { return slot += 6; };

    // Ground: an open line, a closed loop around everything, a rounded line.
    MetaBody* ground = s.body("ground", BodyType::Static, {0, 0});
    ground->position = {0, 0};
    ground->angle = 0;
    s.fixture(ground, "floor", {{-90, 0}, {0, 0}, {90, 0}}, SHAPE_LINE);
    s.fixture(ground, "walls", {{-95, -5}, {95, -5}, {95, 60}, {-95, 60}}, SHAPE_LOOP);
    s.fixture(ground, "ramp", {{-88, 3}, {-82, 0.3f}}, SHAPE_LINE, 0.25f);
    ground->customProperties.set(QStringLiteral("role"), QStringLiteral("ground"));

    // Shapes on dynamic bodies.
    MetaBody* ball = s.body("ball", BodyType::Dynamic, {next(), 2});
    MetaFixture* ballFixture = s.fixture(ball, "ball", {{0, 0}}, SHAPE_CIRCLE, 0.6f);
    ballFixture->customProperties.set(QStringLiteral("bounce"), 0.5f);
    ball->bullet = true;
    MetaBody* twins = s.body("twin circles", BodyType::Dynamic, {next(), 2});
    s.fixture(twins, "pair", {{-0.5f, 0}, {0.5f, 0.2f}}, SHAPE_CIRCLE, 0.4f, 2);
    MetaBody* crate = s.body("crate", BodyType::Dynamic, {next(), 2}, 0.3f);
    MetaFixture* crateFixture = s.fixture(crate, "box", box(0.8f), SHAPE_POLYGON, 0, 2);
    crateFixture->filterCategoryBits = 0x0004;
    crateFixture->filterMaskBits = 0xFFFB;
    crateFixture->filterGroupIndex = -2;
    MetaBody* boomerang = s.body("boomerang", BodyType::Dynamic, {next(), 1});
    s.fixture(boomerang, "concave", {{0, 0}, {3, 0}, {3, 1}, {1, 1}, {1, 3}, {0, 3}}, SHAPE_POLYGON, 0, 1.5f);
    MetaBody* pill = s.body("rounded", BodyType::Dynamic, {next(), 2});
    s.fixture(pill, "rounded polygon", {{0, 0}, {2, 0}, {2.5f, 1}, {0, 1.2f}}, SHAPE_POLYGON, 0.15f);
    MetaBody* stick = s.body("stick", BodyType::Dynamic, {next(), 2});
    s.fixture(stick, "rounded line", {{0, 0}, {1.5f, 0.5f}, {3, 0}}, SHAPE_LINE, 0.1f);
    MetaBody* ring = s.body("ring", BodyType::Dynamic, {next(), 2});
    s.fixture(ring, "rounded loop", {{0, 0}, {1.5f, 0}, {1.5f, 1.5f}, {0, 1.5f}}, SHAPE_LOOP, 0.1f);
    s.fixture(ring, "core", box(0.4f, {0.75f, 0.75f}), SHAPE_POLYGON, 0, 3);
    MetaBody* cage = s.body("cage", BodyType::Dynamic, {next(), 2});
    s.fixture(cage, "thin loop", {{0, 0}, {2, 0}, {2, 2}, {0, 2}}, SHAPE_LOOP, 0, 0);
    s.fixture(cage, "weight", {{1, 0.5f}}, SHAPE_CIRCLE, 0.5f, 1);
    MetaBody* sensorBody = s.body("sensor", BodyType::Static, {next(), 1});
    s.fixture(sensorBody, "zone", box(1.5f), SHAPE_POLYGON)->sensor = true;

    // Bodies of every type and flag.
    MetaBody* heavy = s.body("override", BodyType::Dynamic, {next(), 2});
    s.fixture(heavy, "shell", box(0.7f), SHAPE_POLYGON);
    heavy->massDataMass = 5;
    heavy->massDataCenter = {0.2f, -0.1f};
    heavy->massDataI = 4.3f;
    MetaBody* upright = s.body("upright", BodyType::Dynamic, {next(), 2});
    s.fixture(upright, "post", box(0.5f), SHAPE_POLYGON);
    upright->fixedRotation = true;
    upright->linearDamping = 0.3f;
    upright->angularDamping = 0.2f;
    upright->gravityScale = 0.5f;
    MetaBody* mover = s.body("mover", BodyType::Kinematic, {next(), 40});
    s.fixture(mover, "platform", {{-2, -0.2f}, {2, -0.2f}, {2, 0.2f}, {-2, 0.2f}}, SHAPE_POLYGON);
    mover->linearVelocity = {-1, 0.5f};
    mover->angularVelocity = 0.2f;
    // Asleep, resting on the ground exactly: engines differ in whether a
    // new contact wakes a sleeping body.
    MetaBody* sleeper = s.body("sleeper", BodyType::Dynamic, {next(), 0});
    s.fixture(sleeper, "nap", box(0.5f), SHAPE_POLYGON);
    sleeper->position.y = 0.51f;
    sleeper->angle = 0;
    sleeper->awake = false;
    MetaBody* ghost = s.body("inactive", BodyType::Dynamic, {next(), 8});
    s.fixture(ghost, "faded", box(0.5f), SHAPE_POLYGON);
    ghost->active = false;
    MetaBody* insomniac = s.body("restless", BodyType::Dynamic, {next(), 2});
    s.fixture(insomniac, "wide", {{0, 0}, {0.6f, 0.1f}}, SHAPE_CIRCLE, 0.3f);
    insomniac->sleepingAllowed = false;

    // Joints of every type, on bodies hanging from the ground.
    auto hanging = [&](const char* name, Vec2 at) {
        MetaBody* b = s.body(name, BodyType::Dynamic, at);
        s.fixture(b, name, box(0.4f), SHAPE_POLYGON);
        return b;
    };
    float x = next();
    MetaJoint* hinge = s.joint("hinge", JOINT_REVOLUTE, ground, hanging("pendulum", {x, 25}), {x, 28}, {0, 3});
    hinge->enableLimit = true;
    hinge->lowerLimit = 0.6f;
    hinge->upperLimit = -0.4f;
    hinge->enableMotor = true;
    hinge->motorSpeed = 1.5f;
    hinge->maxMotorTorque = 30;
    hinge->referenceAngle = 0.1f;
    x = next();
    MetaJoint* slider = s.joint("slider", JOINT_PRISMATIC, ground, hanging("slide", {x, 25}), {x, 25}, {});
    slider->localAxisA = {1, 1};
    slider->enableLimit = true;
    slider->lowerLimit = -1;
    slider->upperLimit = 2;
    slider->enableMotor = true;
    slider->maxMotorForce = 50;
    slider->motorSpeed = 0.5f;
    x = next();
    MetaJoint* rod = s.joint("rod", JOINT_DISTANCE, ground, hanging("rod end", {x + 1, 24}), {x, 28}, {});
    rod->length = 4;
    x = next();
    MetaJoint* spring = s.joint("spring", JOINT_DISTANCE, ground, hanging("bob", {x, 24}), {x, 28}, {});
    spring->length = 3;
    spring->frequency = 2;
    spring->dampingRatio = 0.3f;
    x = next();
    MetaBody* chassis = s.body("chassis", BodyType::Dynamic, {x, 2});
    s.fixture(chassis, "frame", {{-1.5f, -0.3f}, {1.5f, -0.3f}, {1.5f, 0.3f}, {-1.5f, 0.3f}}, SHAPE_POLYGON);
    MetaBody* wheel = s.body("wheel", BodyType::Dynamic, {x - 1, 1});
    s.fixture(wheel, "tyre", {{0, 0}}, SHAPE_CIRCLE, 0.5f);
    MetaJoint* axle = s.joint("axle", JOINT_WHEEL, chassis, wheel, {-1, -0.8f}, {});
    axle->localAxisA = {0, 1};
    axle->enableMotor = true;
    axle->motorSpeed = -2;
    axle->maxMotorTorque = 10;
    axle->springFrequency = 4;
    axle->springDampingRatio = 0.7f;
    x = next();
    MetaBody* beam = s.body("beam", BodyType::Dynamic, {x, 25});
    s.fixture(beam, "beam", {{-1.5f, -0.3f}, {1.5f, -0.3f}, {1.5f, 0.3f}, {-1.5f, 0.3f}}, SHAPE_POLYGON);
    s.joint("beam hinge", JOINT_REVOLUTE, ground, beam, {x, 25}, {});
    MetaJoint* weld = s.joint("weld", JOINT_WELD, beam, hanging("welded", {x + 2, 26}), {1.5f, 0.5f}, {-0.5f, -0.5f});
    weld->frequency = 3;
    weld->dampingRatio = 0.5f;
    weld->referenceAngle = 0.2f;
    x = next();
    MetaJoint* drag = s.joint("drag", JOINT_FRICTION, ground, hanging("dragged", {x, 22}), {x, 22}, {});
    drag->maxForce = 5;
    drag->maxTorque = 2;
    x = next();
    MetaJoint* tether = s.joint("tether", JOINT_ROPE, ground, hanging("tethered", {x + 2, 24}), {x, 28}, {});
    tether->maxLength = 5;
    x = next();
    MetaJoint* motor = s.joint("motor", JOINT_MOTOR, ground, hanging("driven", {x, 22}), {x, 23}, {});
    motor->referenceAngle = 0.5f;
    motor->maxForce = 40;
    motor->maxTorque = 10;
    motor->correctionFactor = 0.4f;

    auto sprite = std::make_unique<MetaImage>();
    sprite->body = crate;
    sprite->file = QStringLiteral("crate.png");
    sprite->scale = 1.6f;
    sprite->renderOrder = 2;
    world->addImage(std::move(sprite), 0, QStringLiteral("crate sprite"));
    auto backdrop = std::make_unique<MetaImage>();
    backdrop->file = QStringLiteral("sky.png");
    backdrop->center = {0, 15};
    backdrop->scale = 30;
    backdrop->renderOrder = -5;
    world->addImage(std::move(backdrop), 0, QStringLiteral("sky"));
    return world;
}
} // namespace RuntimeScenes
