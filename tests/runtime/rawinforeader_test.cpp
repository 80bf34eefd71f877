// The runtime's raw-info reader: value encodings, records, and malformed
// input reported with the JSON pointer of the member at fault.
#include <plax/rawinforeader.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <string>

namespace
{
plax::SceneDescription read(const std::string& json)
{
    plax::SceneDescription scene;
    std::string error;
    EXPECT_TRUE(plax::readRawInfo(json, scene, &error)) << error;
    return scene;
}

std::string errorOf(const std::string& json)
{
    plax::SceneDescription scene;
    std::string error;
    EXPECT_FALSE(plax::readRawInfo(json, scene, &error)) << "accepted: " << json;
    EXPECT_TRUE(scene.bodies.empty() && scene.joints.empty()) << "a failed read leaves the scene empty";
    return error;
}

std::uint32_t bits(float f)
{
    std::uint32_t b;
    std::memcpy(&b, &f, sizeof b);
    return b;
}
} // namespace

TEST(RuntimeReader, AcceptsEveryFloatEncodingTheEditorWrites)
{
    const auto scene = read(R"({"body": [
        {"angle": "3FC00000", "linearDamping": 1, "angularDamping": 0, "gravityScale": 0.1,
         "angularVelocity": "bf800000", "position": {"x": "40490FDB", "y": -2.5}}]})");
    ASSERT_EQ(scene.bodies.size(), 1u);
    const plax::BodyDescription& b = scene.bodies[0];
    EXPECT_EQ(b.angle, 1.5f) << "eight hex digits are the bit pattern";
    EXPECT_EQ(b.linearDamping, 1.0f) << "the integer 1";
    EXPECT_EQ(b.angularDamping, 0.0f);
    EXPECT_EQ(bits(b.gravityScale), bits(0.1f)) << "a real reads as the nearest float";
    EXPECT_EQ(b.angularVelocity, -1.0f) << "lower-case hex digits too";
    EXPECT_EQ(b.position.x, 3.14159274f);
    EXPECT_EQ(b.position.y, -2.5f);
}

TEST(RuntimeReader, VectorsAndPointListsInBothForms)
{
    const auto scene = read(R"({"body": [{"position": 0, "linearVelocity": {"x": 1, "y": "40000000"},
        "fixture": [{"polygon": {"vertices": {"x": [0, 1, 1], "y": [0, 0, 1]}}},
                    {"polygon": {"vertices": [{"x": 0, "y": 0}, {"x": 2, "y": 0}, 0]}}]}]})");
    const plax::BodyDescription& b = scene.bodies.at(0);
    EXPECT_EQ(b.position, (plax::Vec2{0, 0}));
    EXPECT_EQ(b.linearVelocity, (plax::Vec2{1, 2}));
    ASSERT_EQ(b.fixtures.size(), 2u);
    ASSERT_EQ(b.fixtures[0].shape.vertices.size(), 3u);
    EXPECT_EQ(b.fixtures[0].shape.vertices[2], (plax::Vec2{1, 1}));
    ASSERT_EQ(b.fixtures[1].shape.vertices.size(), 3u);
    EXPECT_EQ(b.fixtures[1].shape.vertices[1], (plax::Vec2{2, 0}));
    EXPECT_EQ(b.fixtures[1].shape.vertices[2], (plax::Vec2{0, 0}));
}

TEST(RuntimeReader, MissingMembersTakeTheirDefaults)
{
    const auto scene = read(R"({"body": [{"fixture": [{"circle": {}}]}], "joint": [{"type": "wheel",
        "bodyA": 0, "bodyB": 0}]})");
    EXPECT_EQ(scene.world.gravity, (plax::Vec2{0, -10}));
    EXPECT_EQ(scene.world.stepsPerSecond, 60.0f);
    EXPECT_EQ(scene.world.velocityIterations, 8);
    EXPECT_EQ(scene.world.positionIterations, 3);
    const plax::BodyDescription& b = scene.bodies.at(0);
    EXPECT_EQ(b.type, plax::BodyType::Static);
    EXPECT_TRUE(b.awake);
    EXPECT_TRUE(b.active);
    EXPECT_FALSE(b.hasMassData);
    const plax::FixtureDescription& f = b.fixtures.at(0);
    EXPECT_EQ(f.friction, 0.2f);
    EXPECT_EQ(f.categoryBits, 1);
    EXPECT_EQ(f.maskBits, 0xFFFF);
    EXPECT_EQ(scene.joints.at(0).values.localAxisA, (plax::Vec2{1, 0}));
    EXPECT_EQ(scene.joints.at(0).values.correctionFactor, 0.3f);
}

TEST(RuntimeReader, ReadsEveryRecordKind)
{
    const auto scene = read(R"({
      "gravity": {"x": 0, "y": -9.8}, "stepsPerSecond": 30, "velocityIterations": 6, "positionIterations": 2,
      "subStepping": true, "collisionbitplanes": {"names": ["ground", "hero"]},
      "customProperties": [{"name": "level", "int": 4}],
      "joint": [{"type": "revolute", "name": "hinge", "bodyA": 0, "bodyB": 1, "anchorA": {"x": 1, "y": 0},
                 "refAngle": 0.5, "enableLimit": true, "lowerLimit": 1, "upperLimit": -1},
                {"type": "prismatic", "bodyA": 0, "bodyB": 1, "localAxisA": {"x": 0, "y": 1}},
                {"type": "gear", "name": "gears", "joint1": 0, "joint2": 1, "ratio": 2},
                {"type": "pulley", "bodyA": 0, "bodyB": 1, "groundAnchorA": {"x": -1, "y": 5},
                 "groundAnchorB": {"x": 1, "y": 5}, "lengthA": 3, "lengthB": 4, "ratio": 1.5},
                {"type": "mouse", "bodyA": 0, "bodyB": 1, "target": {"x": 2, "y": 2}, "maxForce": 100,
                 "frequency": 5, "dampingRatio": 0.7}],
      "body": [{"name": "ground", "type": 0, "fixture": [{"name": "floor", "edge": {"vertex1": {"x": -5, "y": 0},
                  "vertex2": {"x": 5, "y": 0}, "hasVertex0": false, "hasVertex3": false}}]},
               {"name": "hero", "type": 2, "massData-mass": 2, "massData-center": 0, "massData-I": 3,
                "customProperties": [{"name": "lives", "int": 3}, {"name": "speed", "float": 2.5},
                                     {"name": "title", "string": "Bob"}, {"name": "aim", "vec2": {"x": 1, "y": 2}},
                                     {"name": "brave", "bool": true}, {"name": "tint", "color": [1, 2, 3, 4]}],
                "fixture": [{"sensor": true, "filter-categoryBits": 2, "filter-maskBits": 65533,
                             "filter-groupIndex": -3, "chain": {"vertices": {"x": [0, 1, 2], "y": [0, 1, 0]},
                             "hasPrevVertex": true, "prevVertex": {"x": -1, "y": 0}}},
                            {"loop": {"vertices": {"x": [0, 1, 1], "y": [0, 0, 1]}}}]}],
      "image": [{"name": "sprite", "file": "hero.png", "body": 1, "center": {"x": 0, "y": 1}, "scale": 2,
                 "aspectScale": 0.5, "flip": true, "filter": 0, "renderOrder": -1, "colorTint": [10, 20, 30, 40],
                 "opacity": 0.5, "corners": {"x": [-0.5, 0.5, 0.5, -0.5], "y": [0, 0, 2, 2]},
                 "glVertexPointer": [-0.5, 0, 0.5, 0, 0.5, 2, -0.5, 2], "glTexCoordPointer": [1, 1, 0, 1, 0, 0, 1, 0],
                 "glDrawElements": [0, 1, 2, 2, 3, 0]},
                {"name": "sky", "body": -1}],
      "object": [{"name": "crate1", "path": "crate.plax", "position": {"x": 3, "y": 4}, "scale": 2, "flip": true}]
    })");
    EXPECT_EQ(scene.world.stepsPerSecond, 30.0f);
    EXPECT_EQ(scene.world.velocityIterations, 6);
    EXPECT_TRUE(scene.world.subStepping);
    ASSERT_EQ(scene.world.collisionBitplanes.size(), 2u);
    EXPECT_EQ(scene.world.collisionBitplanes[1], "hero");
    EXPECT_EQ(scene.properties.getInt("level"), 4);

    const plax::BodyDescription& hero = scene.bodies.at(1);
    EXPECT_EQ(hero.type, plax::BodyType::Dynamic);
    EXPECT_TRUE(hero.hasMassData);
    EXPECT_EQ(hero.inertia, 3.0f);
    EXPECT_EQ(hero.properties.getInt("lives"), 3);
    EXPECT_EQ(hero.properties.getFloat("speed"), 2.5f);
    EXPECT_EQ(hero.properties.getString("title"), "Bob");
    EXPECT_EQ(hero.properties.getVec2("aim"), (plax::Vec2{1, 2}));
    EXPECT_TRUE(hero.properties.getBool("brave"));
    EXPECT_EQ(hero.properties.getColor("tint"), (plax::Color{1, 2, 3, 4}));
    EXPECT_EQ(hero.properties.getInt("speed", -1), -1) << "a property of another type does not count";
    EXPECT_EQ(hero.properties.getString("nothing", "none"), "none");

    const plax::FixtureDescription& chain = hero.fixtures.at(0);
    EXPECT_TRUE(chain.sensor);
    EXPECT_EQ(chain.maskBits, 65533);
    EXPECT_EQ(chain.groupIndex, -3);
    EXPECT_EQ(chain.shape.type, plax::ShapeType::Chain);
    EXPECT_TRUE(chain.shape.hasPrevVertex);
    EXPECT_FALSE(chain.shape.hasNextVertex);
    EXPECT_FALSE(chain.shape.isLoop());
    const plax::ShapeDescription& loop = hero.fixtures.at(1).shape;
    EXPECT_TRUE(loop.isLoop()) << "a \"loop\" member is a closed chain";
    EXPECT_EQ(loop.vertices.size(), 4u);
    EXPECT_EQ(scene.bodies[0].fixtures.at(0).shape.type, plax::ShapeType::Edge);

    ASSERT_EQ(scene.joints.size(), 5u);
    EXPECT_EQ(scene.joints[0].values.type, plax::JointType::Revolute);
    EXPECT_EQ(scene.joints[0].values.referenceAngle, 0.5f);
    EXPECT_EQ(scene.joints[0].values.lowerLimit, 1.0f) << "the reader keeps what was written";
    EXPECT_EQ(scene.joints[2].values.type, plax::JointType::Gear);
    EXPECT_EQ(scene.joints[2].joint1, 0);
    EXPECT_EQ(scene.joints[2].joint2, 1);
    EXPECT_EQ(scene.joints[2].values.ratio, 2.0f);
    EXPECT_EQ(scene.joints[3].values.groundAnchorB, (plax::Vec2{1, 5}));
    EXPECT_EQ(scene.joints[3].values.lengthB, 4.0f);
    EXPECT_EQ(scene.joints[4].values.target, (plax::Vec2{2, 2}));

    ASSERT_EQ(scene.images.size(), 2u);
    const plax::ImageDescription& sprite = scene.images[0];
    EXPECT_EQ(sprite.body, 1);
    EXPECT_EQ(sprite.file, "hero.png");
    EXPECT_TRUE(sprite.flip);
    EXPECT_EQ(sprite.filter, 0);
    EXPECT_EQ(sprite.renderOrder, -1.0f);
    EXPECT_EQ(sprite.colorTint, (plax::Color{10, 20, 30, 40}));
    EXPECT_TRUE(sprite.hasCorners);
    EXPECT_EQ(sprite.corners[2], (plax::Vec2{0.5f, 2}));
    EXPECT_EQ(sprite.texCoordPointer.size(), 8u);
    EXPECT_EQ(sprite.drawElements.size(), 6u);
    EXPECT_EQ(scene.images[1].body, -1);
    ASSERT_EQ(scene.objects.size(), 1u);
    EXPECT_EQ(scene.objects[0].path, "crate.plax");
    EXPECT_TRUE(scene.objects[0].flip);
}

// Each malformed input fails with the JSON pointer of the member at fault.
TEST(RuntimeReader, MalformedInputNamesTheMember)
{
    const struct
    {
        const char* json;
        const char* pointer;
    } cases[] = {
        {R"({"body": [{"angle": [1]}]})", "/body/0/angle: expected a float"},
        {R"({"body": [{"angle": "3FC0000G"}]})", "/body/0/angle: expected a float"},
        {R"({"body": [{"angle": "123456789"}]})", "/body/0/angle: expected a float"},
        {R"({"body": [{}, {"position": {"x": 1}}]})", "/body/1/position: expected a vector"},
        {R"({"body": [{"position": 3}]})", "/body/0/position: expected a vector"},
        {R"({"body": [{"position": {"x": "7F800000", "y": 0}}]})", "/body/0/position/x: expected a finite float"},
        {R"({"body": [{"type": 3}]})", "/body/0/type: expected an integer from 0 to 2"},
        {R"({"body": [{"fixture": [{"name": "x"}]}]})", "/body/0/fixture/0: a fixture needs one of"},
        {R"({"body": [{"fixture": [{"circle": {}, "polygon": {"vertices": []}}]}]})",
         "/body/0/fixture/0/polygon: a fixture has one shape"},
        {R"({"body": [{"fixture": [{"polygon": {"vertices": {"x": [0, 1], "y": [0]}}}]}]})",
         "/body/0/fixture/0/polygon/vertices: the \"x\" and \"y\" arrays differ"},
        {R"({"body": [{"fixture": [{"circle": {"radius": "x"}}]}]})", "/body/0/fixture/0/circle/radius"},
        {R"({"body": [{"fixture": [{"filter-maskBits": 70000, "circle": {}}]}]})",
         "/body/0/fixture/0/filter-maskBits: expected an integer from 0 to 65535"},
        {R"({"body": [{"customProperties": [{"name": "a"}]}]})", "/body/0/customProperties/0: a custom property needs"},
        {R"({"body": [{"customProperties": [{"name": "a", "int": 1.5}]}]})", "/body/0/customProperties/0/int"},
        {R"({"body": [{}], "joint": [{"type": "revolute", "bodyA": 0, "bodyB": 1}]})",
         "/joint/0/bodyB: body 1 does not exist"},
        {R"({"body": [{}], "joint": [{"type": "spring", "bodyA": 0, "bodyB": 0}]})",
         "/joint/0/type: unknown joint type \"spring\""},
        {R"({"body": [{}, {}], "joint": [{"type": "weld", "bodyA": 0, "bodyB": 1},
             {"type": "gear", "joint1": 0, "joint2": 0}]})", "/joint/1/joint1: a gear joint couples two revolute"},
        {R"({"body": [{}, {}], "joint": [{"type": "gear", "joint1": 0, "joint2": 5}]})",
         "/joint/0/joint2: joint 5 does not exist"},
        {R"({"image": [{"body": 0}]})", "/image/0/body: body 0 does not exist"},
        {R"({"image": [{"corners": {"x": [0, 1], "y": [0, 1]}}]})", "/image/0/corners: an image has four corners"},
        {R"({"image": [{"colorTint": [1, 2]}]})", "/image/0/colorTint: expected a colour"},
        {R"({"body": {}})", "/body: expected an array"},
        {R"([1, 2])", "/: expected an object"},
        {R"({"object": [{"name": 5}]})", "/object/0/name: expected a string"},
        {R"({"body": [)", "not JSON:"},
    };
    for (const auto& c : cases) {
        const std::string error = errorOf(c.json);
        EXPECT_EQ(error.rfind(c.pointer, 0), 0u) << "input " << c.json << "\n gave: " << error;
    }
}

TEST(RuntimeReader, DeepNestingIsAnErrorNotACrash)
{
    const std::string deep = "{\"body\": " + std::string(100000, '[') + std::string(100000, ']') + "}";
    const std::string error = errorOf(deep);
    EXPECT_EQ(error.rfind("/body/0: expected an object", 0), 0u) << error;
}

TEST(RuntimeReader, ReadsFilesAndNamesThoseItCannot)
{
    plax::SceneDescription scene;
    std::string error;
    EXPECT_FALSE(plax::readRawInfoFile("/nonexistent/level.json", scene, &error));
    EXPECT_EQ(error, "cannot open '/nonexistent/level.json'");

    const std::string path = testing::TempDir() + "runtime-reader.json";
    {
        std::ofstream out(path, std::ios::binary);
        out << "\xEF\xBB\xBF" << R"({"body": [{"name": "a"}, {"name": "b", "angle": {}}]})";
    }
    EXPECT_FALSE(plax::readRawInfoFile(path, scene, &error));
    EXPECT_EQ(error, "'" + path + "': /body/1/angle: expected a float, found an object");
    {
        std::ofstream out(path, std::ios::binary);
        out << "\xEF\xBB\xBF" << R"({"body": [{"name": "a"}, {"name": "b"}]})";
    }
    ASSERT_TRUE(plax::readRawInfoFile(path, scene, &error)) << error;
    EXPECT_TRUE(error.empty());
    ASSERT_EQ(scene.bodies.size(), 2u);
    EXPECT_EQ(scene.bodies[1].name, "b");
}

TEST(RuntimeReader, CustomPropertyFloatsMayBeAnything)
{
    const auto scene = read(R"({"customProperties": [{"name": "nan", "float": "7FC00000"},
        {"name": "big", "float": 1e300}, {"name": "same", "int": 1}, {"name": "same", "int": 2}]})");
    EXPECT_TRUE(std::isnan(scene.properties.getFloat("nan")));
    EXPECT_TRUE(std::isinf(scene.properties.getFloat("big")));
    EXPECT_EQ(scene.properties.getInt("same"), 1) << "the first of a name";
    EXPECT_EQ(scene.properties.all().size(), 4u);
    EXPECT_TRUE(scene.properties.has("nan", plax::CustomPropertyType::Float));
    EXPECT_FALSE(scene.properties.has("nan", plax::CustomPropertyType::Int));
}
