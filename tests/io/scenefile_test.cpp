#include "iotestsupport.h"

#include "base/notify.h"
#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "support/schemacheck.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>

namespace
{
class SceneFileTest : public ::testing::Test
{
protected:
    QString path(const QString& name) const { return m_dir.filePath(name); }

    // Writes text to a file of the temporary folder and loads it.
    std::unique_ptr<MetaWorld> loadText(const QByteArray& text, const QString& name = QStringLiteral("t.plax"))
    {
        TestFiles::write(path(name), text);
        return loadSceneFile(path(name));
    }

    QTemporaryDir m_dir;
};

class SceneRoundTrip : public SceneFileTest, public ::testing::WithParamInterface<bool>
{
};
} // namespace

TEST_P(SceneRoundTrip, EveryMemberSurvivesAndResavingIsStable)
{
    std::unique_ptr<MetaWorld> original = makeFullScene();
    original->exportOptions.useHumanReadableFloats = GetParam();
    original->exportOptions.usePrettyPrint = GetParam();
    ASSERT_TRUE(saveSceneFile(*original, path("a.plax")));

    LogCapture log;
    std::unique_ptr<MetaWorld> loaded = loadSceneFile(path("a.plax"));
    ASSERT_TRUE(loaded);
    EXPECT_TRUE(log.texts(LOG_WARNING).isEmpty()) << log.dump().toStdString();
    EXPECT_TRUE(log.texts(LOG_ERROR).isEmpty()) << log.dump().toStdString();
    expectSameWorld(*original, *loaded);

    ASSERT_TRUE(saveSceneFile(*loaded, path("b.plax")));
    std::unique_ptr<MetaWorld> again = loadSceneFile(path("b.plax"));
    ASSERT_TRUE(again);
    ASSERT_TRUE(saveSceneFile(*again, path("c.plax")));
    const QByteArray first = TestFiles::read(path("a.plax"));
    EXPECT_FALSE(first.isEmpty());
    // The original scene was never read from a file, so its references are
    // written as they are; once read, the full-path options of the scene
    // apply and every later save is the same.
    EXPECT_TRUE(first.contains("\"images/wheel.png\""));
    EXPECT_TRUE(TestFiles::read(path("b.plax")).contains(QDir::cleanPath(path("images/wheel.png")).toUtf8()));
    EXPECT_EQ(TestFiles::read(path("b.plax")), TestFiles::read(path("c.plax")));
    for (const char* name : {"a.plax", "b.plax", "c.plax"})
        EXPECT_EQ(fileSchemaViolation(FileSchema::Scene, path(QString::fromLatin1(name))), QString());
    EXPECT_EQ(first.contains("\n   "), GetParam());
}

INSTANTIATE_TEST_SUITE_P(HexAndReadable, SceneRoundTrip, ::testing::Bool());

TEST_F(SceneFileTest, WritesMembersInFileOrderWithItsEncodings)
{
    std::unique_ptr<MetaWorld> world = makeFullScene();
    world->exportOptions.useHumanReadableFloats = true;
    world->exportOptions.usePrettyPrint = false;
    ASSERT_TRUE(saveSceneFile(*world, path("order.plax")));
    const QByteArray text = TestFiles::read(path("order.plax"));

    const char* keys[] = {"\"gravity\"", "\"allowSleep\"", "\"positionIterations\"", "\"velocityIterations\"",
                          "\"stepsPerSecond\"", "\"autoClearForces\"", "\"warmStarting\"", "\"continuousPhysics\"",
                          "\"subStepping\"", "\"exportOptions\"", "\"displayOptions\"", "\"customPropertyDefs\"",
                          "\"metabody\"", "\"metajoint\"", "\"metaimage\"", "\"metasampler\"", "\"metaobject\"",
                          "\"collisionbitplanes\"", "\"systemhooks\"", "\"excludedJsonExportProperties\"",
                          "\"activeScript\""};
    qsizetype last = -1;
    for (const char* key : keys) {
        const qsizetype at = text.indexOf(key);
        EXPECT_GT(at, last) << key;
        last = at;
    }
    EXPECT_TRUE(text.startsWith("{\"metaworld\":{\"gravity\":{\"x\":0.5,\"y\":-9.81}"));
    EXPECT_TRUE(text.contains("\"angle\":0.1,")) << "shortest human-readable text";
    // The unnamed body has no "name"; the named ones have.
    EXPECT_TRUE(text.contains("{\"id\":8,\"type\":\"dynamic\""));
    EXPECT_TRUE(text.contains("{\"id\":3,\"name\":\"ground\",\"type\":\"static\""));
    // Radius only when not zero; vertices in every shape record.
    EXPECT_TRUE(text.contains("\"shapes\":[{\"type\":\"polygon\",\"vertices\":{\"x\":[-1.0,1,1,-1.0],"
                              "\"y\":[-1.0,-1.0,1,1]}},{\"type\":\"loop\",\"radius\":0.25,\"vertices\""));
    EXPECT_TRUE(text.contains("\"comboboxEntries\":[{\"entry\":\"wood\"},{\"entry\":\"steel\"},{\"entry\":\"ice\"}]"));
    EXPECT_TRUE(text.contains("\"systemhooks\":{\"afterExport\":{\"directory\":\"/tmp/out\",\"enabled\":true,"));
    EXPECT_TRUE(text.contains("\"massData-I\":\"7FC00000\"")) << "NaN is written as hex";
}

TEST_F(SceneFileTest, MissingSettingsKeepNewSceneDefaults)
{
    std::unique_ptr<MetaWorld> world = loadText(sceneText("\"allowSleep\": false"));
    ASSERT_TRUE(world);
    const MetaWorld fresh;
    EXPECT_FALSE(world->settings.allowSleep);
    EXPECT_EQ(world->settings.gravity, (Vec2{0, -10}));
    EXPECT_EQ(world->settings.stepsPerSecond, 60.0f);
    EXPECT_EQ(world->settings.velocityIterations, 8);
    EXPECT_EQ(world->settings.positionIterations, 3);
    EXPECT_TRUE(world->exportOptions == fresh.exportOptions);
    EXPECT_TRUE(world->bodies().empty());
}

TEST_F(SceneFileTest, ProgressLinesFollowBatchAndVerboseFlags)
{
    const QByteArray text = sceneText("\"metabody\": []");
    {
        FlagScope flags(false, false);
        LogCapture log;
        ASSERT_TRUE(loadText(text));
        // In the editor the steps are details of plax.log, not news for the user.
        const QStringList expected = {" Opened file OK", " Parsed file OK", " File appears to be a .plax file",
                                      " Creating world", " Loading custom property definitions", " Loading bodies",
                                      " Loading joints", " Loading images", " Loading samplers", " Loading objects",
                                      " Loading active script", " Post-load setup"};
        EXPECT_EQ(log.texts(LOG_DEBUG), expected);
        EXPECT_TRUE(log.texts(LOG_INFO).isEmpty());
    }
    {
        FlagScope flags(true, false);
        LogCapture log;
        ASSERT_TRUE(loadText(text));
        EXPECT_TRUE(log.texts(LOG_INFO).isEmpty());
    }
    {
        FlagScope flags(true, true);
        LogCapture log;
        ASSERT_TRUE(loadText(text));
        EXPECT_TRUE(log.has(LOG_INFO, QStringLiteral(" Loading bodies")));
    }
}

TEST_F(SceneFileTest, SkippedRecordsAreReportedOnce)
{
    struct Shown
    {
        QString title;
        QString text;
    };
    auto shown = std::make_shared<QList<Shown>>();
    UserNotifier::setHandlers([shown](UserNotifier::Kind, const QString& t, const QString& s) { shown->append({t, s}); },
                              {});
    LogCapture log;
    std::unique_ptr<MetaWorld> world = loadText(sceneText(R"(
        "metabody": [{"id": 0}, {"type": "dynamic"}, {"id": 1, "fixture": [{"id": 0}, {"id": 4}]}],
        "metajoint": [{"type": "weld"}],
        "metaimage": [{"id": 0}],
        "metasampler": [{}],
        "metaobject": [{"id": 2}, {"name": "x"}])"));
    UserNotifier::setHandlers({}, {});
    ASSERT_TRUE(world);
    EXPECT_EQ(world->bodies().size(), 1u);
    EXPECT_EQ(world->fixtureCount(), 1u);
    EXPECT_EQ(world->objects().size(), 1u);
    const QString expected = QStringLiteral(
        "\nScene file '%1' was opened but with errors.Skipped creation of 2 bodies with no id.\n"
        "Skipped creation of 1 fixtures with no id.\nSkipped creation of 1 joints with no id.\n"
        "Skipped creation of 1 images with no id.\nSkipped creation of 1 samplers with no id.\n"
        "Skipped creation of 1 objects with no id.\n")
                                 .arg(path("t.plax"));
    EXPECT_TRUE(log.has(LOG_WARNING, expected)) << log.dump().toStdString();
    ASSERT_EQ(shown->size(), 1);
    EXPECT_EQ(shown->at(0).title, QStringLiteral("P.L.A.X"));
    EXPECT_EQ(shown->at(0).text, expected);
}

TEST_F(SceneFileTest, ManyBodiesComeInFileOrderWithTheirWarningsAndSkips)
{
    // Enough bodies that they are read into the model on a helper thread
    // while the parser reads on: the scene, its warnings and the skipped
    // counts are those of reading the records one by one.
    QByteArray bodies;
    int kept = 0, skippedBodies = 0, skippedFixtures = 0, unknownTypes = 0, reused = 0;
    for (int i = 0; i < 400; ++i) {
        if (i > 0)
            bodies += ", ";
        if (i % 37 == 5) {
            bodies += "{\"type\": \"dynamic\"}";
            ++skippedBodies;
            continue;
        }
        // Every 50th repeats the id of the body before it.
        const int id = i % 50 == 49 ? i : i + 1;
        reused += i % 50 == 49 ? 1 : 0;
        const bool unknown = i % 41 == 7;
        unknownTypes += unknown ? 1 : 0;
        bodies += "{\"id\": " + QByteArray::number(id) + ", \"name\": \"b" + QByteArray::number(i) +
                  "\", \"type\": \"" + (unknown ? "wobbly" : "dynamic") + "\", \"fixture\": [{\"id\": " +
                  QByteArray::number(1000 + i) + "}" + (i % 9 == 0 ? ", {\"name\": \"no id\"}" : "") + "]}";
        skippedFixtures += i % 9 == 0 ? 1 : 0;
        ++kept;
    }
    LogCapture log;
    UserNotifier::setHandlers([](UserNotifier::Kind, const QString&, const QString&) {}, {});
    std::unique_ptr<MetaWorld> world = loadText(sceneText("\"metabody\": [" + bodies + "]"));
    UserNotifier::setHandlers({}, {});
    ASSERT_TRUE(world);
    ASSERT_EQ(world->bodies().size(), size_t(kept));
    EXPECT_EQ(world->fixtureCount(), size_t(kept));
    int at = 0;
    for (int i = 0; i < 400; ++i) {
        if (i % 37 == 5)
            continue;
        ASSERT_EQ(world->bodies()[size_t(at)]->name(), QStringLiteral("b%1").arg(i));
        EXPECT_EQ(world->bodies()[size_t(at)]->type, i % 41 == 7 ? BodyType::Static : BodyType::Dynamic);
        ++at;
    }
    const QStringList warnings = log.texts(LOG_WARNING);
    QStringList types, ids;
    for (const QString& line : warnings) {
        if (line.startsWith(QLatin1String("Unknown body type")))
            types << line;
        if (line.contains(QLatin1String("is already in use")))
            ids << line;
    }
    EXPECT_EQ(types.size(), unknownTypes);
    ASSERT_EQ(ids.size(), reused);
    // In file order: the first repeated id is the first warned about.
    EXPECT_TRUE(ids.front().contains(QLatin1String("id 49 "))) << ids.front().toStdString();
    EXPECT_TRUE(ids.back().contains(QLatin1String("id 399 "))) << ids.back().toStdString();
    const QString skipped = QStringLiteral("Skipped creation of %1 bodies with no id.\nSkipped creation of %2 "
                                           "fixtures with no id.\n")
                                .arg(skippedBodies)
                                .arg(skippedFixtures);
    EXPECT_TRUE(std::any_of(warnings.begin(), warnings.end(), [&](const QString& w) { return w.endsWith(skipped); }))
        << log.dump().toStdString();
}

TEST_F(SceneFileTest, OneBodyWithoutIdReportsOne)
{
    LogCapture log;
    ASSERT_TRUE(loadText(sceneText(R"("metabody": [{"id": 0, "type": "static"}])")));
    EXPECT_TRUE(log.contains(LOG_WARNING, QStringLiteral("Skipped creation of 1 bodies with no id.\n")));
    EXPECT_FALSE(log.contains(LOG_WARNING, QStringLiteral("fixtures with no id")));
}

TEST_F(SceneFileTest, OldImageKeysAreRead)
{
    std::unique_ptr<MetaWorld> world = loadText(sceneText(R"(
        "metabody": [{"id": 5}],
        "backingimage": {"id": 3, "file": "back.png", "body": 5},
        "image": [{"id": 7, "file": "old.png"}])"));
    ASSERT_TRUE(world);
    ASSERT_EQ(world->images().size(), 2u);
    EXPECT_EQ(world->findImage(3)->file, QStringLiteral("back.png"));
    EXPECT_EQ(world->findImage(3)->body, world->findBody(5));
    EXPECT_EQ(world->findImage(7)->file, QStringLiteral("old.png"));
}

TEST_F(SceneFileTest, ShapesAreConformedToTheirVertexCountAfterLoading)
{
    LogCapture log;
    std::unique_ptr<MetaWorld> world = loadText(sceneText(R"("metabody": [{"id": 1, "name": "b", "fixture": [
        {"id": 1, "name": "dot", "shapes": [{"type": "polygon", "vertices": {"x": [1], "y": [2]}},
                                            {"type": "line", "radius": 0.2}]},
        {"id": 2, "name": "pair", "shapes": [{"type": "loop", "vertices": {"x": [0, 1], "y": [0, 0]}}]}]}])"));
    ASSERT_TRUE(world);
    const MetaFixture* dot = world->findFixture(1);
    ASSERT_EQ(dot->shapes().size(), 2u);
    EXPECT_EQ(dot->shapes()[0].type(), ShapeType::Circle);
    EXPECT_EQ(dot->shapes()[0].radius(), 0.5f);
    EXPECT_EQ(dot->shapes()[1].type(), ShapeType::Circle);
    EXPECT_EQ(dot->shapes()[1].radius(), 0.2f);
    EXPECT_EQ(world->findFixture(2)->shapes()[0].type(), ShapeType::Line);
    EXPECT_TRUE(log.has(LOG_WARNING, QStringLiteral("Shape radius set to 0.5: b/dot:0 (This happens when a shape has a "
                                                    "radius of zero and only one vertex, to avoid having a zero "
                                                    "radius circle.)")));
    EXPECT_TRUE(log.has(LOG_WARNING, QStringLiteral("Shape type forced to circle: b/dot:0")));
    EXPECT_TRUE(log.has(LOG_WARNING, QStringLiteral("Shape type forced to circle: b/dot:1")));
    EXPECT_TRUE(log.has(LOG_WARNING, QStringLiteral("Shape type forced to line: b/pair:0")));
    EXPECT_EQ(log.count(LOG_WARNING, QStringLiteral("Shape radius set to 0.5")), 1);
}

TEST_F(SceneFileTest, OpenAndParseFailuresFailTheLoad)
{
    auto shown = std::make_shared<QStringList>();
    UserNotifier::setHandlers([shown](UserNotifier::Kind, const QString& title, const QString&) { shown->append(title); },
                              {});
    LogCapture log;
    EXPECT_FALSE(loadSceneFile(path("missing.plax")));
    EXPECT_TRUE(log.has(LOG_ERROR, QStringLiteral("Could not open file '%1' for reading.").arg(path("missing.plax"))));
    EXPECT_EQ(*shown, QStringList{QStringLiteral("P.L.A.X")});
    EXPECT_FALSE(loadSceneFile(m_dir.path()));
    UserNotifier::setHandlers({}, {});

    EXPECT_FALSE(loadText("{\"metaworld\": {", QStringLiteral("broken.plax")));
    EXPECT_TRUE(log.contains(LOG_ERROR, QStringLiteral("Failed to parse JSON from file '%1' : ")
                                            .arg(path("broken.plax"))));
}

TEST_F(SceneFileTest, RawInfoAsksOnlyForPlaxFiles)
{
    const QByteArray rawInfo = R"({"gravity": {"x": 0, "y": -10}, "body": []})";
    auto questions = std::make_shared<QStringList>();
    UserNotifier::setHandlers([](UserNotifier::Kind, const QString&, const QString&) {},
                              [questions](const QString& title, const QString& text) {
                                  questions->append(title + "|" + text);
                                  return false;
                              });
    {
        FlagScope flags(false, false);
        LogCapture log;
        EXPECT_TRUE(loadText(rawInfo, QStringLiteral("scene.json")));
        EXPECT_TRUE(questions->isEmpty());
        EXPECT_TRUE(log.has(LOG_DEBUG, QStringLiteral(" File appears to be raw info")));

        EXPECT_FALSE(loadText(rawInfo, QStringLiteral("scene.plax")));
        ASSERT_EQ(questions->size(), 1);
        EXPECT_EQ(questions->at(0),
                  QStringLiteral("Invalid file|The file '%1' \nhas the file extension .plax but the information "
                                 "necessary\nfor a .plax file was not found. You can attempt to load the\nfile as raw "
                                 "info, but some information in the scene may not\nbe fully restored. Would you like "
                                 "to continue?")
                      .arg(path("scene.plax")));
        EXPECT_EQ(log.count(LOG_ERROR, QStringLiteral("Failed to create world")), 0)
            << "declining ends the load before any attempt to build a world";
    }
    {
        FlagScope flags(true, false);
        LogCapture log;
        EXPECT_TRUE(loadText(rawInfo, QStringLiteral("batch.plax")));
        EXPECT_EQ(questions->size(), 1) << "batch mode never asks";
        EXPECT_TRUE(log.contains(LOG_WARNING, QStringLiteral("has the file extension .plax")));
        // Something that is not an object cannot become a world.
        EXPECT_FALSE(loadText("[1, 2]", QStringLiteral("list.json")));
        EXPECT_TRUE(log.contains(LOG_ERROR, QStringLiteral("Failed to create world from JSON value")));
    }
    UserNotifier::setHandlers({}, {});
}

TEST_F(SceneFileTest, FailedSaveLeavesTargetUntouched)
{
    std::unique_ptr<MetaWorld> world = makeFullScene();
    LogCapture log;
    const QString nowhere = path("no/such/folder/x.plax");
    EXPECT_FALSE(saveSceneFile(*world, nowhere));
    EXPECT_TRUE(log.contains(LOG_ERROR, QStringLiteral("'%1'").arg(nowhere))) << log.dump().toStdString();

    ASSERT_TRUE(QDir(m_dir.path()).mkdir(QStringLiteral("taken.plax")));
    EXPECT_FALSE(saveSceneFile(*world, path("taken.plax")));
    EXPECT_TRUE(QFileInfo(path("taken.plax")).isDir());

    TestFiles::write(path("keep.plax"), "old");
    ASSERT_TRUE(saveSceneFile(*world, path("keep.plax")));
    EXPECT_TRUE(TestFiles::read(path("keep.plax")).startsWith("{\"metaworld\""));
    const QStringList left = QDir(m_dir.path()).entryList(QDir::Files);
    EXPECT_EQ(left, QStringList{QStringLiteral("keep.plax")}) << "no temporary files are left behind";
}
