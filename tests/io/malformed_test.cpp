// Hostile and damaged scene files: each one either loads or fails cleanly.
#include "iotestsupport.h"

#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <cmath>

namespace
{
struct MalformedCase
{
    const char* name;
    QByteArray text;
    bool loads;
};

std::ostream& operator<<(std::ostream& out, const MalformedCase& c)
{
    return out << c.name;
}

QByteArray nested(int depth, const char* open, const char* close, const char* inner = "")
{
    QByteArray text;
    for (int i = 0; i < depth; ++i)
        text += open;
    text += inner;
    for (int i = 0; i < depth; ++i)
        text += close;
    return text;
}

std::vector<MalformedCase> cases()
{
    return {
        {"empty", "", false},
        {"whitespace", "  \n ", false},
        {"truncated", "{\"metaworld\": {\"metabody\": [{\"id\": 1", false},
        {"nanLiteral", "{\"metaworld\": {\"stepsPerSecond\": NaN}}", false},
        {"numberTooBig", "{\"metaworld\": {\"stepsPerSecond\": 1e400}}", false},
        {"trailingGarbage", "{\"metaworld\": {}} x", false},
        {"topArray", "[1, 2, 3]", false},
        {"topNull", "null", false},
        {"topNumber", "42", false},
        {"metaworldString", "{\"metaworld\": \"scene\"}", false},
        {"metaworldArray", "{\"metaworld\": [1]}", false},
        // A null "metaworld" marks raw info, which may be empty.
        {"metaworldNull", "{\"metaworld\": null}", true},
        {"deepArray", nested(100000, "[", "]"), false},
        {"deepObjectInMetaworld",
         sceneText("\"customProperties\": " + nested(50000, "[{\"a\":", "}]", "0")), true},
        {"emptyMetaworld", sceneText(""), true},
        {"wrongArrayTypes",
         sceneText("\"metabody\": \"x\", \"metajoint\": 5, \"metaimage\": true, \"metasampler\": {}, "
                   "\"metaobject\": null, \"customPropertyDefs\": {}, \"collisionbitplanes\": [], "
                   "\"systemhooks\": \"no\", \"exportOptions\": [], \"displayOptions\": 3, \"activeScript\": {}"),
         true},
        {"recordsOfWrongType", sceneText("\"metabody\": [1, \"a\", null, [], true, {\"id\": \"7\"}]"), true},
        {"membersOfWrongType",
         sceneText("\"gravity\": \"down\", \"positionIterations\": \"many\", \"stepsPerSecond\": [60], "
                   "\"metabody\": [{\"id\": 1, \"position\": \"zz\", \"angle\": [1], \"type\": {}, \"name\": 5, "
                   "\"fixture\": {\"a\": 1}, \"customProperties\": \"x\", \"bullet\": \"yes\"}, "
                   "{\"id\": 2, \"fixture\": [{\"id\": 3, \"shapes\": [{\"type\": 1, \"radius\": {}, "
                   "\"vertices\": [1, 2]}], \"filter-maskBits\": 1e30, \"friction\": \"FFFFFFFF\"}]}]"),
         true},
        {"mismatchedVertices",
         sceneText("\"metabody\": [{\"id\": 1, \"fixture\": [{\"id\": 1, \"shapes\": [{\"type\": \"polygon\", "
                   "\"vertices\": {\"x\": [1, 2, 3, 4], \"y\": [1]}}]}, {\"id\": 2, \"shapes\": [{\"type\": "
                   "\"loop\", \"vertices\": {\"x\": \"a\", \"y\": {}}}]}]}]"),
         true},
        {"hugeAndSpecialNumbers",
         sceneText("\"gravity\": {\"x\": 1e308, \"y\": -1e308}, \"velocityIterations\": 1e300, "
                   "\"positionIterations\": -99999999999999999999, \"metabody\": [{\"id\": 1, \"angle\": "
                   "\"7FC00000\", \"position\": {\"x\": \"7F800000\", \"y\": 1e-320}, \"fixture\": [{\"id\": 1, "
                   "\"density\": \"FF800000\", \"shapes\": [{\"type\": \"circle\", \"radius\": \"7FC00000\", "
                   "\"vertices\": {\"x\": [0], \"y\": [0]}}, {\"type\": \"polygon\", \"radius\": \"7FC00000\"}]}]}]"),
         true},
        {"extremeIds",
         sceneText("\"metabody\": [{\"id\": 4294967295}, {\"id\": 4294967295}, {\"id\": 4294967296}, {\"id\": -1}, "
                   "{\"id\": 1.5}], \"metajoint\": [{\"id\": 1, \"bodyA\": 4294967295, \"bodyB\": -4}]"),
         true},
        {"jointsWithoutBodies", sceneText("\"metajoint\": [{\"id\": 1}, {\"id\": 2, \"type\": []}]"), true},
        {"controlCharactersAndBadUtf8",
         sceneText("\"activeScript\": \"a\\u0000b\", \"metaobject\": [{\"id\": 1, \"name\": \"\xC3\x28\", "
                   "\"file\": \"\xFF\xFE\"}]"),
         true},
        {"byteOrderMark", "\xEF\xBB\xBF" + sceneText("\"allowSleep\": false"), true},
        {"duplicateMembers", sceneText("\"allowSleep\": false, \"allowSleep\": true, \"metabody\": [], \"metabody\": 1"),
         true},
    };
}

class MalformedScene : public ::testing::TestWithParam<MalformedCase>
{
};
} // namespace

TEST_P(MalformedScene, LoadsOrFailsCleanly)
{
    const MalformedCase& c = GetParam();
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("case.plax"));
    TestFiles::write(path, c.text);
    LogCapture log;
    std::unique_ptr<MetaWorld> world = loadSceneFile(path);
    EXPECT_EQ(world != nullptr, c.loads) << log.dump().toStdString();
    if (!world) {
        EXPECT_FALSE(log.texts(LOG_ERROR).isEmpty()) << "a refused file says why";
        return;
    }
    // Whatever was read can be written and read again.
    const QString resaved = dir.filePath(QStringLiteral("resaved.plax"));
    ASSERT_TRUE(saveSceneFile(*world, resaved));
    std::unique_ptr<MetaWorld> again = loadSceneFile(resaved);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->bodies().size(), world->bodies().size());
    EXPECT_EQ(again->fixtureCount(), world->fixtureCount());
    EXPECT_EQ(again->joints().size(), world->joints().size());
}

INSTANTIATE_TEST_SUITE_P(Inputs, MalformedScene, ::testing::ValuesIn(cases()),
                         [](const ::testing::TestParamInfo<MalformedCase>& info) { return info.param.name; });

TEST(MalformedValues, WrongTypesFallBackToDefaults)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("types.plax"));
    TestFiles::write(path, sceneText("\"gravity\": \"down\", \"stepsPerSecond\": [60], \"velocityIterations\": "
                                     "1e300, \"metabody\": [{\"id\": 1, \"position\": \"zz\", \"gravityScale\": "
                                     "{}, \"fixture\": [{\"id\": 2, \"filter-maskBits\": 1e30, \"shapes\": "
                                     "[{\"type\": \"polygon\", \"vertices\": {\"x\": [1, 2, 3, 4], \"y\": [5, "
                                     "6, 7]}}]}]}]"));
    std::unique_ptr<MetaWorld> world = loadSceneFile(path);
    ASSERT_TRUE(world);
    EXPECT_EQ(world->settings.gravity, (Vec2{0, -10}));
    EXPECT_EQ(world->settings.stepsPerSecond, 60.0f);
    EXPECT_EQ(world->settings.velocityIterations, std::numeric_limits<int>::max());
    const MetaBody* body = world->findBody(1);
    ASSERT_TRUE(body);
    EXPECT_EQ(body->position, (Vec2{0, 0}));
    EXPECT_EQ(body->gravityScale, 1.0f);
    const MetaFixture* fixture = world->findFixture(2);
    ASSERT_TRUE(fixture);
    EXPECT_EQ(fixture->filterMaskBits, std::numeric_limits<int>::max());
    EXPECT_EQ(fixture->vertices(), (std::vector<Vec2>{{1, 5}, {2, 6}, {3, 7}}));
}

TEST(MalformedValues, ExtremeIdsAreKeptOrSkipped)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("ids.plax"));
    TestFiles::write(path, sceneText("\"metabody\": [{\"id\": 4294967295}, {\"id\": 4294967295}, {\"id\": -1}, "
                                     "{\"id\": 1.5}, {\"id\": 4294967296}]"));
    LogCapture log;
    std::unique_ptr<MetaWorld> world = loadSceneFile(path);
    ASSERT_TRUE(world);
    ASSERT_EQ(world->bodies().size(), 1u);
    EXPECT_EQ(world->bodies()[0]->id(), 4294967295u);
    EXPECT_TRUE(log.has(LOG_ERROR, QStringLiteral("No unique body IDs available")));
    EXPECT_TRUE(log.contains(LOG_WARNING, QStringLiteral("Skipped creation of 3 bodies with no id.\n")));
}

TEST(MalformedValues, NonFiniteValuesSurviveAsHex)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("nan.plax"));
    TestFiles::write(path, sceneText("\"metabody\": [{\"id\": 1, \"angle\": \"7FC00000\", \"position\": "
                                     "{\"x\": \"FF800000\", \"y\": 1e300}}]"));
    std::unique_ptr<MetaWorld> world = loadSceneFile(path);
    ASSERT_TRUE(world);
    world->exportOptions.useHumanReadableFloats = true;
    ASSERT_TRUE(saveSceneFile(*world, path));
    const QByteArray text = TestFiles::read(path);
    EXPECT_TRUE(text.contains("\"angle\": \"7FC00000\"")) << text.toStdString();
    EXPECT_TRUE(text.contains("\"x\": \"FF800000\""));
    EXPECT_TRUE(text.contains("\"y\": \"7F800000\""));
    std::unique_ptr<MetaWorld> again = loadSceneFile(path);
    ASSERT_TRUE(again);
    EXPECT_TRUE(std::isnan(again->findBody(1)->angle));
    EXPECT_EQ(again->findBody(1)->position.y, std::numeric_limits<float>::infinity());
}
