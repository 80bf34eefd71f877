// The runtime's Box2D worlds: lookups by name, custom properties, images,
// merging into a game's world, joint types a scene file cannot hold, and
// records Box2D cannot take reported instead of asserted on.
#include <plax/box2d/box2dscene.h>
#include <plax/rawinforeader.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace
{
// Two bodies on a ground: enough for lookups, joints and images.
const char* const kLevel = R"({
  "gravity": {"x": 0, "y": -10}, "stepsPerSecond": 30, "velocityIterations": 4, "positionIterations": 2,
  "customProperties": [{"name": "title", "string": "Level 1"}],
  "body": [
    {"name": "ground", "type": 0, "fixture": [{"name": "floor", "chain": {"vertices": {"x": [-20, 20], "y": [0, 0]}}},
                                              {"name": "wall", "edge": {"vertex1": {"x": 20, "y": 0}, "vertex2": {"x": 20, "y": 9}}}]},
    {"name": "crate", "type": 2, "position": {"x": -2, "y": 3}, "angle": 0.5,
     "customProperties": [{"name": "points", "int": 50}, {"name": "fragile", "bool": true}],
     "fixture": [{"name": "box", "density": 1, "friction": 0.6,
                  "polygon": {"vertices": {"x": [0.5, 0.5, -0.5, -0.5], "y": [-0.5, 0.5, 0.5, -0.5]}},
                  "customProperties": [{"name": "surface", "color": [1, 2, 3, 255]}]}]},
    {"name": "crate", "type": 2, "position": {"x": 2, "y": 3},
     "fixture": [{"name": "lid", "density": 1, "circle": {"center": {"x": 0, "y": 0.2}, "radius": 0.5}}]},
    {"name": "hook", "type": 2, "position": {"x": 0, "y": 8},
     "fixture": [{"density": 1, "circle": {"radius": 0.3}}]}
  ],
  "joint": [
    {"type": "revolute", "name": "left hinge", "bodyA": 0, "bodyB": 1, "anchorA": {"x": -2, "y": 4}, "anchorB": {"x": 0, "y": 1},
     "customProperties": [{"name": "strength", "float": 12.5}]},
    {"type": "prismatic", "name": "right slide", "bodyA": 0, "bodyB": 2, "anchorA": {"x": 2, "y": 3}, "anchorB": 0,
     "localAxisA": {"x": 0, "y": 1}},
    {"type": "gear", "name": "gears", "joint1": 0, "joint2": 1, "ratio": 2},
    {"type": "pulley", "name": "pulley", "bodyA": 1, "bodyB": 3, "groundAnchorA": {"x": -2, "y": 10},
     "groundAnchorB": {"x": 0, "y": 10}, "anchorA": 0, "anchorB": 0, "lengthA": 7, "lengthB": 2, "ratio": 1.5},
    {"type": "mouse", "name": "drag", "bodyA": 0, "bodyB": 3, "target": {"x": 1, "y": 9}, "anchorB": {"x": 0.1, "y": 0},
     "maxForce": 100, "frequency": 5, "dampingRatio": 0.7}
  ],
  "image": [
    {"name": "crate sprite", "file": "crate.png", "body": 1, "center": {"x": 0, "y": 0}, "renderOrder": 2,
     "corners": {"x": [-0.5, 0.5, 0.5, -0.5], "y": [-0.5, -0.5, 0.5, 0.5]}},
    {"name": "sky", "file": "sky.png", "body": -1, "center": {"x": 0, "y": 5}, "renderOrder": -1,
     "corners": {"x": [-10, 10, 10, -10], "y": [0, 0, 10, 10]}, "glVertexPointer": [-10, 0, 10, 0, 10, 10, -10, 10]},
    {"name": "lid sprite", "file": "lid.png", "body": 2, "renderOrder": 2,
     "corners": {"x": [-0.5, 0.5, 0.5, -0.5], "y": [-0.5, -0.5, 0.5, 0.5]}}
  ]
})";

std::unique_ptr<plax::Box2DScene> load(const std::string& json, std::string* error = nullptr)
{
    std::string e;
    auto scene = plax::loadBox2DSceneFromText(json, &e);
    if (error)
        *error = e;
    else
        EXPECT_TRUE(scene) << e;
    return scene;
}

// The level with one member replaced by another text.
std::string with(std::string text, const std::string& from, const std::string& to)
{
    const size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}
} // namespace

TEST(RuntimeBox2DScene, FindsItemsByNameAndGivesTheirProperties)
{
    auto scene = load(kLevel);
    ASSERT_TRUE(scene);
    ASSERT_EQ(scene->bodies().size(), 4u);
    EXPECT_EQ(scene->body("crate"), scene->bodies()[1]) << "the first of a name";
    const std::vector<b2Body*> crates = scene->bodiesNamed("crate");
    ASSERT_EQ(crates.size(), 2u);
    EXPECT_EQ(crates[1], scene->bodies()[2]);
    EXPECT_EQ(scene->body("nobody"), nullptr);
    EXPECT_TRUE(scene->bodiesNamed("nobody").empty());

    b2Body* crate = scene->body("crate");
    EXPECT_EQ(crate->GetType(), b2_dynamicBody);
    EXPECT_FLOAT_EQ(crate->GetAngle(), 0.5f);
    EXPECT_EQ(scene->properties(crate).getInt("points"), 50);
    EXPECT_TRUE(scene->properties(crate).getBool("fragile"));
    EXPECT_EQ(scene->name(crate), "crate");
    EXPECT_EQ(scene->record(crate), &scene->description().bodies[1]);

    b2Fixture* box = scene->fixture("box");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->GetBody(), crate);
    EXPECT_FLOAT_EQ(box->GetFriction(), 0.6f);
    EXPECT_EQ(scene->properties(box).getColor("surface"), (plax::Color{1, 2, 3, 255}));
    EXPECT_EQ(scene->fixturesNamed("floor").size(), 1u) << "a chain's reversed twin is not listed";
    EXPECT_EQ(scene->fixtures().size(), 5u);
    EXPECT_EQ(scene->name(scene->fixture("wall")), "wall");

    b2Joint* hinge = scene->joint("left hinge");
    ASSERT_NE(hinge, nullptr);
    EXPECT_EQ(hinge->GetType(), e_revoluteJoint);
    EXPECT_EQ(scene->properties(hinge).getFloat("strength"), 12.5f);
    EXPECT_EQ(scene->jointsNamed("right slide").size(), 1u);
    EXPECT_EQ(scene->worldProperties().getString("title"), "Level 1");

    // Objects of other scenes are unknown, not a crash.
    b2BodyDef def;
    b2Body* stranger = scene->world().CreateBody(&def);
    EXPECT_EQ(scene->record(stranger), nullptr);
    EXPECT_EQ(scene->name(stranger), "");
    EXPECT_TRUE(scene->properties(stranger).empty());
}

TEST(RuntimeBox2DScene, ChainsCollideFromBothSidesThroughAReversedTwin)
{
    auto scene = load(kLevel);
    ASSERT_TRUE(scene);
    b2Body* ground = scene->body("ground");
    int chains = 0;
    for (b2Fixture* f = ground->GetFixtureList(); f; f = f->GetNext()) {
        if (f->GetType() == b2Shape::e_chain) {
            ++chains;
            EXPECT_EQ(scene->name(f), "floor") << "the twin maps to the floor's record";
            EXPECT_EQ(f->GetShape()->m_radius, 0.01f) << "the editor's skin radius";
        }
    }
    EXPECT_EQ(chains, 2);
    const auto* wall = static_cast<const b2EdgeShape*>(scene->fixture("wall")->GetShape());
    EXPECT_FALSE(wall->m_oneSided);
}

TEST(RuntimeBox2DScene, BuildsJointTypesScenesCannotHold)
{
    auto scene = load(kLevel);
    ASSERT_TRUE(scene);
    ASSERT_EQ(scene->joints().size(), 5u);
    auto* gear = static_cast<b2GearJoint*>(scene->joint("gears"));
    ASSERT_NE(gear, nullptr);
    ASSERT_EQ(gear->GetType(), e_gearJoint);
    EXPECT_EQ(gear->GetJoint1(), scene->joint("left hinge"));
    EXPECT_EQ(gear->GetJoint2(), scene->joint("right slide"));
    EXPECT_EQ(gear->GetRatio(), 2.0f);

    auto* pulley = static_cast<b2PulleyJoint*>(scene->joint("pulley"));
    ASSERT_EQ(pulley->GetType(), e_pulleyJoint);
    EXPECT_EQ(pulley->GetGroundAnchorB(), b2Vec2(0, 10));
    EXPECT_EQ(pulley->GetLengthA(), 7.0f);
    EXPECT_EQ(pulley->GetRatio(), 1.5f);

    auto* mouse = static_cast<b2MouseJoint*>(scene->joint("drag"));
    ASSERT_EQ(mouse->GetType(), e_mouseJoint);
    EXPECT_EQ(mouse->GetTarget(), b2Vec2(1, 9));
    EXPECT_NEAR(mouse->GetAnchorB().x, 0.1f, 1e-6f) << "body B is held at its anchor";
    EXPECT_EQ(mouse->GetMaxForce(), 100.0f);
    float stiffness = 0, damping = 0;
    b2LinearStiffness(stiffness, damping, 5, 0.7f, scene->bodies()[0], scene->bodies()[3]);
    EXPECT_EQ(mouse->GetStiffness(), stiffness);
    EXPECT_EQ(mouse->GetDamping(), damping);

}

TEST(RuntimeBox2DScene, StepsAtTheFilesRate)
{
    auto scene = load(kLevel);
    ASSERT_TRUE(scene);
    EXPECT_EQ(scene->settings().stepsPerSecond, 30.0f);
    b2World reference(b2Vec2(0, -10));
    b2BodyDef def;
    def.type = b2_dynamicBody;
    b2Body* free = reference.CreateBody(&def);
    b2CircleShape circle;
    circle.m_radius = 0.3f;
    free->CreateFixture(&circle, 1);
    b2Body* hook = scene->body("hook");
    scene->world().DestroyJoint(scene->joint("drag"));
    scene->world().DestroyJoint(scene->joint("gears"));
    scene->world().DestroyJoint(scene->joint("pulley"));
    scene->step();
    reference.Step(1.0f / 30, 4, 2);
    EXPECT_EQ(hook->GetLinearVelocity().y, free->GetLinearVelocity().y) << "one step of 1/30 s";
}

TEST(RuntimeBox2DScene, ImagesCarryWhatASpriteNeeds)
{
    auto scene = load(kLevel);
    ASSERT_TRUE(scene);
    ASSERT_EQ(scene->images().size(), 3u);
    const plax::ImageDescription* sprite = scene->image("crate sprite");
    ASSERT_NE(sprite, nullptr);
    b2Body* crate = scene->body("crate");
    EXPECT_EQ(scene->imageBody(*sprite), crate);
    EXPECT_EQ(scene->imageBody(*scene->image("sky")), nullptr);
    ASSERT_EQ(scene->imagesOf(crate).size(), 1u);
    EXPECT_EQ(scene->imagesOf(crate)[0], sprite);

    // Corners follow the body: rotated by its angle, moved to its position.
    const std::array<b2Vec2, 4> corners = scene->imageCorners(*sprite);
    const b2Vec2 expected = crate->GetWorldPoint(b2Vec2(-0.5f, -0.5f));
    EXPECT_EQ(corners[0], expected);
    EXPECT_NEAR(corners[0].x, -2 + std::cos(0.5f) * -0.5f - std::sin(0.5f) * -0.5f, 1e-5f);
    EXPECT_EQ(scene->imageCorners(*scene->image("sky"))[2], b2Vec2(10, 10));

    const auto order = scene->imagesInRenderOrder();
    ASSERT_EQ(order.size(), 3u);
    EXPECT_EQ(order[0]->name, "sky");
    EXPECT_EQ(order[1]->name, "crate sprite") << "equal render orders keep file order";
    EXPECT_EQ(order[2]->name, "lid sprite");
}

TEST(RuntimeBox2DScene, MergesIntoAGamesWorldAtAnOffset)
{
    b2World world(b2Vec2(0, -3));
    b2BodyDef def;
    b2Body* own = world.CreateBody(&def);
    std::string error;
    plax::SceneDescription description;
    ASSERT_TRUE(plax::readRawInfo(kLevel, description, &error)) << error;
    auto first = plax::Box2DScene::merge(world, description, b2Vec2(100, 0), &error);
    ASSERT_TRUE(first) << error;
    auto second = plax::Box2DScene::merge(world, description, b2Vec2(200, 5), &error);
    ASSERT_TRUE(second) << error;
    EXPECT_FALSE(first->ownsWorld());
    EXPECT_EQ(world.GetBodyCount(), 9);
    EXPECT_EQ(world.GetGravity(), b2Vec2(0, -3)) << "the game's settings stay";
    EXPECT_EQ(first->body("crate")->GetPosition(), b2Vec2(98, 3));
    EXPECT_EQ(second->body("crate")->GetPosition(), b2Vec2(198, 8));
    EXPECT_EQ(second->body("crate")->GetWorld(), &world);
    auto* pulley = static_cast<b2PulleyJoint*>(second->joint("pulley"));
    EXPECT_EQ(pulley->GetGroundAnchorA(), b2Vec2(198, 15));
    EXPECT_EQ(static_cast<b2MouseJoint*>(second->joint("drag"))->GetTarget(), b2Vec2(201, 14));
    const plax::ImageDescription* sky = second->image("sky");
    EXPECT_EQ(sky->center.x, 200.0f);
    EXPECT_EQ(second->imageCorners(*sky)[0], b2Vec2(190, 5));
    EXPECT_EQ(sky->vertexPointer[0], 190.0f);
    EXPECT_EQ(second->image("crate sprite")->corners[0].x, -0.5f) << "images on bodies stay in the body's frame";
    first.reset();
    EXPECT_EQ(world.GetBodyCount(), 9) << "a merged scene leaves its bodies in the world";
    EXPECT_EQ(own->GetWorld(), &world);

    // A record Box2D cannot take adds nothing.
    ASSERT_TRUE(plax::readRawInfo(with(kLevel, "\"radius\": 0.3", "\"radius\": -1"), description, &error));
    EXPECT_FALSE(plax::Box2DScene::merge(world, description, b2Vec2(0, 0), &error));
    EXPECT_EQ(error, "/body/3/fixture/0/circle/radius: a radius from 0 to 1e7 is needed");
    EXPECT_EQ(world.GetBodyCount(), 9);
}

// Values Box2D would assert on are reported with the record, never built.
TEST(RuntimeBox2DScene, RecordsBox2DCannotTakeAreReported)
{
    const struct
    {
        const char* from;
        const char* to;
        const char* error;
    } cases[] = {
        {"\"y\": [-0.5, 0.5, 0.5, -0.5]}", "\"y\": [0, 0, 0, 0]}",
         "/body/1/fixture/0/polygon/vertices: Box2D cannot make a polygon"},
        {"\"x\": [0.5, 0.5, -0.5, -0.5], \"y\": [-0.5, 0.5, 0.5, -0.5]",
         "\"x\": [0, 0.001, 0.002, 0.001], \"y\": [0, 0, 0, 0.001]",
         "/body/1/fixture/0/polygon/vertices: Box2D cannot make a polygon"},
        {"\"vertices\": {\"x\": [-20, 20], \"y\": [0, 0]}", "\"vertices\": {\"x\": [-20, -20.001, 5], \"y\": [0, 0, 0]}",
         "/body/0/fixture/0/chain/vertices/1: too close to the vertex before it"},
        {"\"vertices\": {\"x\": [-20, 20], \"y\": [0, 0]}", "\"vertices\": {\"x\": [-20], \"y\": [0]}",
         "/body/0/fixture/0/chain/vertices: a chain needs at least two vertices"},
        {"\"vertex2\": {\"x\": 20, \"y\": 9}", "\"vertex2\": {\"x\": 20, \"y\": 0}",
         "/body/0/fixture/1/edge: the two vertices of an edge are too close together"},
        {"\"density\": 1, \"friction\": 0.6", "\"density\": -1",
         "/body/1/fixture/0/density: Box2D needs a density of 0 or more"},
        {"\"position\": {\"x\": -2, \"y\": 3}", "\"linearDamping\": -0.5",
         "/body/1/linearDamping: Box2D needs a damping of 0 or more"},
        {"\"position\": {\"x\": 0, \"y\": 8}", "\"position\": {\"x\": 3e30, \"y\": 8}",
         "/body/3/position: a position beyond"},
        {"\"radius\": 0.3", "\"center\": {\"x\": 1e9, \"y\": 0}, \"radius\": 0.3", "/body/3/fixture/0/circle/center"},
        {"\"bodyA\": 0, \"bodyB\": 1", "\"bodyA\": 1, \"bodyB\": 1", "/joint/0/bodyB: a joint needs two different bodies"},
        {"\"bodyA\": 0, \"bodyB\": 2", "\"bodyA\": 0, \"bodyB\": 1",
         "/joint/2: the two joints of a gear joint need different second bodies"},
        {"\"name\": \"crate\", \"type\": 2, \"position\": {\"x\": 2, \"y\": 3}",
         "\"name\": \"crate\", \"type\": 0, \"position\": {\"x\": 2, \"y\": 3}",
         "/joint/2: the second bodies (bodyB) of a gear joint's two joints must be dynamic"},
        {"\"position\": {\"x\": 0, \"y\": 8}",
         "\"position\": {\"x\": 0, \"y\": 8}, \"massData-mass\": 1, \"massData-center\": {\"x\": 5, \"y\": 0}, "
         "\"massData-I\": 2",
         "/body/3/massData-I: Box2D needs a rotational inertia"},
    };
    for (const auto& c : cases) {
        std::string error;
        EXPECT_FALSE(load(with(kLevel, c.from, c.to), &error)) << c.to;
        EXPECT_EQ(error.rfind(c.error, 0), 0u) << c.to << "\n gave: " << error;
    }
}

TEST(RuntimeBox2DScene, AppliesTheFilesMassWhereItDiffersFromTheComputedOne)
{
    const std::string heavy = with(kLevel, "\"position\": {\"x\": 0, \"y\": 8}",
                                   "\"position\": {\"x\": 0, \"y\": 8}, \"massData-mass\": 4, "
                                   "\"massData-center\": {\"x\": 0.1, \"y\": 0}, \"massData-I\": 3");
    auto scene = load(heavy);
    ASSERT_TRUE(scene);
    b2Body* hook = scene->body("hook");
    EXPECT_EQ(hook->GetMass(), 4.0f);
    EXPECT_EQ(hook->GetLocalCenter(), b2Vec2(0.1f, 0));
    EXPECT_FLOAT_EQ(hook->GetInertia(), 3.0f);

    auto plain = load(kLevel);
    const float computed = b2_pi * 0.3f * 0.3f;
    EXPECT_FLOAT_EQ(plain->body("hook")->GetMass(), computed) << "without mass data Box2D's own";
}
