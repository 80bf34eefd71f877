#include "iotestsupport.h"

#include "io/bodyrecord.h"
#include "io/customrecord.h"
#include "io/jointrecord.h"
#include "io/jsontext.h"
#include "io/recordtext.h"
#include "io/samplerrecord.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

namespace
{
rapidjson::Document parse(const char* text)
{
    rapidjson::Document document;
    EXPECT_TRUE(parseJson(QByteArray(text), &document, nullptr)) << text;
    return document;
}

MetaBody* addBody(MetaWorld& world, ItemId id)
{
    return world.addBody(std::make_unique<MetaBody>(), id);
}

class RecordTest : public ::testing::Test
{
protected:
    MetaWorld m_world;
    LogCapture m_log;
};
} // namespace

TEST_F(RecordTest, UsedIdsAreReplacedWithAWarning)
{
    addBody(m_world, 5);
    addBody(m_world, 6);
    MetaBody* body = readBodyRecord(m_world, parse(R"({"id": 5, "name": "again"})"), 5);
    ASSERT_TRUE(body);
    EXPECT_EQ(body->id(), 7u);
    EXPECT_EQ(body->name(), QStringLiteral("again"));
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Body id 5 is already in use, using id 7")));

    const rapidjson::Document joint = parse(R"({"type": "weld", "bodyA": 5, "bodyB": 6})");
    ASSERT_TRUE(readJointRecord(m_world, joint, 2));
    MetaJoint* second = readJointRecord(m_world, joint, 2);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->id(), 3u);
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Joint id 2 is already in use, using id 3")));

    m_world.addImage(std::make_unique<MetaImage>(), 1);
    EXPECT_EQ(readImageJson(m_world, QStringLiteral("{}"), 1)->id(), 2u);
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Image id 1 is already in use, using id 2")));
    m_world.addSampler(std::make_unique<MetaSampler>(), 4);
    EXPECT_EQ(readSamplerJson(m_world, QStringLiteral("{}"), 4)->id(), 5u);
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Sampler id 4 is already in use, using id 5")));

    // Id 0 allocates without a warning.
    const int warnings = int(m_log.texts(LOG_WARNING).size());
    EXPECT_EQ(readObjectJson(m_world, QStringLiteral("{\"id\": 9}"), 0)->id(), 1u);
    EXPECT_EQ(m_log.texts(LOG_WARNING).size(), warnings);
}

TEST_F(RecordTest, UnknownBodyTypeBecomesStatic)
{
    MetaBody* body = readBodyRecord(m_world, parse(R"({"type": "wobbly"})"), 1);
    ASSERT_TRUE(body);
    EXPECT_EQ(body->type, BodyType::Static);
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Unknown body type wobbly. Setting body type to static")));
    EXPECT_EQ(readBodyRecord(m_world, parse(R"({"type": "kinematic"})"), 2)->type, BodyType::Kinematic);
    EXPECT_EQ(readBodyRecord(m_world, parse(R"({"type": 2})"), 3)->type, BodyType::Static);
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Unknown body type 2. Setting body type to static")));
}

TEST_F(RecordTest, JointTypeAndBodyRepairs)
{
    addBody(m_world, 1);
    addBody(m_world, 2);
    MetaJoint* joint = readJointRecord(m_world, parse(R"({"type": "pulley", "bodyA": 1, "bodyB": 2,
        "referenceAngle": "3FC00000", "maxLength": 9})"), 1);
    ASSERT_TRUE(joint);
    EXPECT_EQ(joint->type, JointType::Revolute);
    EXPECT_EQ(joint->referenceAngle, 1.5f);
    EXPECT_EQ(joint->maxLength, 1.0f) << "members of other types are not read";
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Unknown joint type pulley. Setting joint type to revolute")));

    EXPECT_FALSE(readJointRecord(m_world, parse(R"({"type": "rope", "bodyA": 99, "bodyB": 2})"), 0));
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Could not find body A for joint (body id 99)")));
    EXPECT_FALSE(readJointRecord(m_world, parse(R"({"type": "rope", "bodyA": 1})"), 0));
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Could not find body B for joint (body id 0)")));
    EXPECT_FALSE(readJointRecord(m_world, parse(R"({"type": "rope", "bodyA": 2, "bodyB": 2})"), 0));
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Ignoring addJoint (both bodies are the same)")));
    EXPECT_EQ(m_world.joints().size(), 1u);
}

TEST_F(RecordTest, CopyFlagUsesTheCopyReferences)
{
    MetaBody* original = addBody(m_world, 1);
    MetaBody* copyA = addBody(m_world, 10);
    MetaBody* copyB = addBody(m_world, 11);
    addBody(m_world, 2);
    const char* jointText = R"({"type": "distance", "bodyA": 1, "bodyB": 2, "bodyA-copy": 10, "bodyB-copy": 11})";
    MetaJoint* copied = readJointJson(m_world, QString::fromLatin1(jointText), 0, true);
    ASSERT_TRUE(copied);
    EXPECT_EQ(copied->bodyA, copyA);
    EXPECT_EQ(copied->bodyB, copyB);
    MetaJoint* plain = readJointJson(m_world, QString::fromLatin1(jointText), 0, false);
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->bodyA, original);

    const QString imageText = QStringLiteral(R"({"body": 1, "body-copy": 10})");
    EXPECT_EQ(readImageJson(m_world, imageText, 0, true)->body, copyA);
    EXPECT_EQ(readImageJson(m_world, imageText, 0, false)->body, original);
    EXPECT_EQ(readSamplerJson(m_world, imageText, 0, true)->body, copyA);
    EXPECT_EQ(readSamplerJson(m_world, imageText, 0, false)->body, original);
    EXPECT_EQ(readImageJson(m_world, QStringLiteral(R"({"body": 77})"), 0)->body, nullptr);
}

TEST_F(RecordTest, UnknownPathTypeIsReported)
{
    MetaSampler* sampler = readSamplerJson(m_world, QStringLiteral(R"({"paths": [{"type": "spline", "maxPoints": 5},
        {"type": "unknown"}, {"type": "circle", "controlPoints": {"x": [1], "y": [2]}}, 17]})"), 0);
    ASSERT_TRUE(sampler);
    ASSERT_EQ(sampler->paths.size(), 3u);
    EXPECT_EQ(sampler->paths[0].type, ShapeType(-1));
    EXPECT_EQ(sampler->paths[0].maxPoints, 5);
    EXPECT_EQ(sampler->paths[1].type, ShapeType(-1));
    EXPECT_EQ(sampler->paths[2].type, ShapeType::Circle);
    EXPECT_EQ(sampler->paths[2].controlPoints, (std::vector<Vec2>{{1, 2}}));
    EXPECT_EQ(m_log.texts(LOG_WARNING), QStringList{QStringLiteral("Unknown path type: spline")});
}

TEST_F(RecordTest, TextThatIsNotAnObjectIsRefused)
{
    EXPECT_FALSE(readBodyJson(m_world, QStringLiteral("{\"id\": "), 0));
    const QStringList errors = m_log.texts(LOG_ERROR);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].startsWith(QStringLiteral("Failed to parse body JSON:\n"))) << errors[0].toStdString();
    EXPECT_GT(errors[0].size(), QStringLiteral("Failed to parse body JSON:\n").size());

    EXPECT_FALSE(readJointJson(m_world, QStringLiteral("nope"), 0));
    EXPECT_TRUE(m_log.contains(LOG_ERROR, QStringLiteral("Failed to parse joint JSON:\n")));
    EXPECT_FALSE(readObjectJson(m_world, QStringLiteral("[1, 2]"), 0));
    EXPECT_TRUE(m_log.has(LOG_ERROR, QStringLiteral("Parsed object JSON but value is not object type.")));
    EXPECT_FALSE(readImageJson(m_world, QStringLiteral("\"text\""), 0));
    EXPECT_TRUE(m_log.has(LOG_ERROR, QStringLiteral("Parsed image JSON but value is not object type.")));
    EXPECT_FALSE(readSamplerJson(m_world, QStringLiteral("3"), 0));
    EXPECT_TRUE(m_log.has(LOG_ERROR, QStringLiteral("Parsed sampler JSON but value is not object type.")));
    MetaBody* body = addBody(m_world, 1);
    EXPECT_FALSE(readFixtureJson(m_world, body, QStringLiteral("{,}"), 0));
    EXPECT_TRUE(m_log.contains(LOG_ERROR, QStringLiteral("Failed to parse fixture JSON:\n")));
    EXPECT_TRUE(m_world.joints().empty() && m_world.images().empty() && m_world.objects().empty());
}

TEST_F(RecordTest, ItemTextRoundTripsThroughTheRecordReaders)
{
    std::unique_ptr<MetaWorld> scene = makeFullScene();
    MetaWorld target;
    for (const auto& body : scene->bodies())
        ASSERT_TRUE(readBodyJson(target, itemRecordToJson(*body, JsonStyle{}, false), body->id()));
    for (const auto& joint : scene->joints())
        ASSERT_TRUE(readJointJson(target, itemRecordToJson(*joint, JsonStyle{}, true), joint->id()));
    for (const auto& image : scene->images())
        ASSERT_TRUE(readImageJson(target, itemRecordToJson(*image, JsonStyle{}, false), image->id()));
    for (const auto& sampler : scene->samplers())
        ASSERT_TRUE(readSamplerJson(target, itemRecordToJson(*sampler, JsonStyle{}, false), sampler->id()));
    for (const auto& object : scene->objects())
        ASSERT_TRUE(readObjectJson(target, itemRecordToJson(*object, JsonStyle{}, false), object->id()));
    // Scene-level members are not part of the item records.
    target.settings = scene->settings;
    target.exportOptions = scene->exportOptions;
    target.displayOptions = scene->displayOptions;
    target.customPropertyDefs = scene->customPropertyDefs;
    target.customProperties = scene->customProperties;
    target.collisionBitplaneNames = scene->collisionBitplaneNames;
    target.afterExportHook = scene->afterExportHook;
    target.excludedJsonExportProperties = scene->excludedJsonExportProperties;
    target.activeScript = scene->activeScript;
    expectSameWorld(*scene, target);

    const MetaFixture& fixture = *scene->bodies()[0]->fixtures()[0];
    MetaBody* holder = target.findBody(7);
    MetaFixture* pasted = readFixtureJson(target, holder, itemRecordToJson(fixture, JsonStyle{}, false), 0);
    ASSERT_TRUE(pasted);
    EXPECT_EQ(pasted->vertices(), fixture.vertices());
    EXPECT_EQ(pasted->body(), holder);
    EXPECT_EQ(pasted->name(), fixture.name());
}

TEST_F(RecordTest, FixtureVerticesComeFromTheFirstShapeHoldingThem)
{
    MetaBody* body = readBodyRecord(m_world, parse(R"({"fixture": [
        {"id": 1, "shapes": [{"type": "polygon"}, {"type": "loop", "vertices": {"x": [0, 1, 1], "y": [0, 0, 1]}},
                             {"type": "line", "vertices": {"x": [5], "y": [5]}}],
         "vertices": {"x": [9], "y": [9]}},
        {"id": 2, "shapes": [{"type": "circle", "radius": "3F000000"}], "vertices": {"x": [3, 4], "y": [1, 2]}},
        {"id": 3, "shapes": "none"}]})"), 0);
    ASSERT_TRUE(body);
    ASSERT_EQ(body->fixtures().size(), 3u);
    const MetaFixture& first = *body->fixtures()[0];
    EXPECT_EQ(first.vertices(), (std::vector<Vec2>{{0, 0}, {1, 0}, {1, 1}}));
    ASSERT_EQ(first.shapes().size(), 3u);
    EXPECT_EQ(first.shapes()[1].type(), ShapeType::Loop);
    EXPECT_EQ(first.shapes()[0].radius(), 0.0f);
    const MetaFixture& second = *body->fixtures()[1];
    EXPECT_EQ(second.vertices(), (std::vector<Vec2>{{3, 1}, {4, 2}}));
    EXPECT_EQ(second.shapes()[0].radius(), 0.5f);
    EXPECT_TRUE(body->fixtures()[2]->shapes().empty());

    // Written back, every shape carries the shared list.
    rapidjson::Document document;
    const JsonEncoder encoder(document.GetAllocator(), JsonStyle{});
    const QByteArray text = jsonToText(writeFixtureRecord(first, encoder), false);
    EXPECT_EQ(text.count("\"vertices\":{\"x\":[0,1,1],\"y\":[0,0,1]}"), 3);
}

TEST_F(RecordTest, FixtureIdsInUseAreReplacedAndDensityIsValidated)
{
    MetaBody* first = readBodyRecord(m_world, parse(R"({"fixture": [{"id": 4, "density": -2}]})"), 0);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->fixtures()[0]->id(), 4u);
    EXPECT_EQ(first->fixtures()[0]->density, 1.0f);
    EXPECT_TRUE(m_log.has(LOG_WARNING, QStringLiteral("Fixture density -2 is not valid, using 1")));
    MetaBody* second = readBodyRecord(m_world, parse(R"({"fixture": [{"id": 4, "density": "7FC00000"}]})"), 0);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->fixtures()[0]->id(), 5u);
    EXPECT_EQ(second->fixtures()[0]->density, 1.0f);
    EXPECT_EQ(m_world.fixtureCount(), 2u);
}

TEST_F(RecordTest, CustomPropertiesPickTheirTypedMember)
{
    CustomProperties properties;
    const rapidjson::Document values = parse(R"([{"name": "i", "int": 3}, {"name": "f", "float": "3FC00000"},
        {"name": "s", "string": "x"}, {"name": "v", "vec2": 0}, {"name": "b", "bool": true},
        {"name": "c", "color": [1, 2, 3, 4]}, {"name": "bad", "int": "zz"}, {"int": 1}, {"name": 5, "int": 1},
        {"name": "none"}, 7, {"name": "i", "string": "replaced"}])");
    readCustomProperties(&values, &properties);
    ASSERT_EQ(properties.values().size(), 6u);
    EXPECT_EQ(std::get<QString>(properties.find(QStringLiteral("i"))->value), QStringLiteral("replaced"));
    EXPECT_EQ(std::get<float>(properties.find(QStringLiteral("f"))->value), 1.5f);
    EXPECT_EQ(std::get<Vec2>(properties.find(QStringLiteral("v"))->value), (Vec2{0, 0}));
    EXPECT_EQ(std::get<bool>(properties.find(QStringLiteral("b"))->value), true);
    EXPECT_EQ(std::get<Color>(properties.find(QStringLiteral("c"))->value), (Color{1, 2, 3, 4}));
    EXPECT_EQ(properties.find(QStringLiteral("bad")), nullptr);

    const rapidjson::Document defText = parse(R"([{"class": "body", "name": "n",
        "displayName": "N", "type": "int", "comboboxEntries": [{"entry": "a"}, {"other": 1}, "b", {"entry": "c"}]},
        "junk"])");
    const std::vector<CustomPropertyDef> defs = readCustomPropertyDefs(&defText);
    ASSERT_EQ(defs.size(), 1u);
    EXPECT_EQ(defs[0].comboboxEntries, (QStringList{QStringLiteral("a"), QStringLiteral("c")}));
    EXPECT_EQ(defs[0].itemClass, QStringLiteral("body"));
}
