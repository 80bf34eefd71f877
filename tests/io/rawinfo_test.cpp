// The raw-info writer and reader: member sets, indices, exclusion, and
// that reading an export back rebuilds the same world.
#include "iotestsupport.h"

#include "io/exportfilter.h"
#include "io/filereferences.h"
#include "io/jsontext.h"
#include "io/jsonvalues.h"
#include "io/rawinfoexport.h"
#include "io/rawinfoscene.h"
#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"
#include "support/schemacheck.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QSet>
#include <QTemporaryDir>

using rapidjson::Value;

namespace
{
struct Export
{
    QByteArray text;
    rapidjson::Document doc;
};

Export exportScene(const MetaWorld& scene, const QStringList& excluded = {})
{
    WorldBuild build(scene);
    build.addScene(scene);
    Export e;
    e.text = rawInfoText(build, scene, ExportPropertyFilter(excluded));
    QString error;
    EXPECT_TRUE(parseJson(e.text, &e.doc, &error)) << error.toStdString();
    EXPECT_EQ(schemaViolation(FileSchema::RawInfo, e.text), QString());
    return e;
}

QStringList keys(const Value& object)
{
    QStringList k;
    for (auto it = object.MemberBegin(); it != object.MemberEnd(); ++it)
        k << QString::fromUtf8(it->name.GetString());
    return k;
}

const Value* findByName(const Value& array, const char* name)
{
    for (const Value& v : array.GetArray()) {
        if (v.HasMember("name") && QString::fromUtf8(v["name"].GetString()) == QLatin1String(name))
            return &v;
    }
    return nullptr;
}

MetaBody* addBody(MetaWorld& w, ItemId id, const char* name, BodyType type, Vec2 position)
{
    auto body = std::make_unique<MetaBody>();
    body->type = type;
    body->position = position;
    return w.addBody(std::move(body), id, name);
}

MetaFixture* addFixture(MetaWorld& w, MetaBody* body, const char* name, std::vector<Vec2> vertices, ShapeType type,
                        float radius = 0)
{
    MetaFixture* f = w.addFixture(body, std::make_unique<MetaFixture>(), 0, name);
    f->setVertices(std::move(vertices));
    f->addShape(type, radius);
    return f;
}

// A physically sensible scene with every shape kind, every joint type a
// scene holds, images on a body and loose, and an object instance.
std::unique_ptr<MetaWorld> makeExportScene()
{
    auto w = std::make_unique<MetaWorld>();
    w->collisionBitplaneNames = {"ground", "things"};
    w->customProperties.set("level", 3);
    MetaBody* ground = addBody(*w, 1, "ground", BodyType::Static, {0, 0});
    addFixture(*w, ground, "floor", {{-20, 0}, {20, 0}}, ShapeType::Line);
    addFixture(*w, ground, "pit", {{-5, -5}, {5, -5}, {5, 5}, {-5, 5}}, ShapeType::Loop);
    std::vector<MetaBody*> movers;
    for (int i = 0; i < 9; ++i) {
        MetaBody* b = addBody(*w, ItemId(10 + i), qPrintable(QStringLiteral("mover%1").arg(i)), BodyType::Dynamic,
                              {float(i) * 2 - 8, 3});
        b->customProperties.set("index", i);
        if (i % 3 == 0)
            addFixture(*w, b, "ball", {{0, 0}}, ShapeType::Circle, 0.4f);
        else if (i % 3 == 1)
            addFixture(*w, b, "ell", {{0, 0}, {1, 0}, {1, 0.4f}, {0.4f, 0.4f}, {0.4f, 1}, {0, 1}}, ShapeType::Polygon);
        else
            addFixture(*w, b, "stick", {{-0.5f, 0}, {0.5f, 0}}, ShapeType::Line, 0.1f);
        movers.push_back(b);
    }
    const std::vector<JointType> types = {JointType::Revolute, JointType::Prismatic, JointType::Distance, JointType::Wheel,
                                          JointType::Rope,     JointType::Weld,      JointType::Friction, JointType::Motor};
    for (size_t i = 0; i < types.size(); ++i) {
        auto j = std::make_unique<MetaJoint>();
        j->type = types[i];
        j->bodyA = i == 0 ? ground : movers[i - 1];
        j->bodyB = movers[i];
        j->anchorB = {0.1f, 0.2f};
        j->length = 2;
        j->maxLength = 2.5f;
        j->frequency = types[i] == JointType::Weld ? 3 : 0;
        j->dampingRatio = 0.5f;
        j->springFrequency = 4;
        j->springDampingRatio = 0.7f;
        j->localAxisA = {0, 1};
        j->customProperties.set("kind", QString::number(int(types[i])));
        w->addJoint(std::move(j), ItemId(i + 1), qPrintable(QStringLiteral("joint%1").arg(i)));
    }
    auto onBody = std::make_unique<MetaImage>();
    onBody->body = movers[3];
    onBody->file = "wheel.png";
    w->addImage(std::move(onBody), 4, "wheelImage");
    auto loose = std::make_unique<MetaImage>();
    loose->file = "sky.png";
    loose->center = {1, 2};
    w->addImage(std::move(loose), 9, "loose");
    auto object = std::make_unique<MetaObject>();
    object->file = "car.plax";
    object->position = {3, 4};
    w->addObject(std::move(object), 6, "car");
    return w;
}

std::vector<b2Vec2> positionsAfter(WorldBuild& build, int steps)
{
    for (int i = 0; i < steps; ++i)
        build.world().Step(1 / 60.0f, 8, 3);
    std::vector<b2Vec2> result;
    for (const BuiltBody& b : build.bodies())
        result.push_back(b.body->GetPosition());
    return result;
}
} // namespace

TEST(RawInfoExport, TopLevelAndBodyMembersInOrder)
{
    auto scene = makeExportScene();
    Export e = exportScene(*scene);
    EXPECT_EQ(keys(e.doc), (QStringList{"gravity", "allowSleep", "autoClearForces", "warmStarting", "continuousPhysics",
                                        "subStepping", "stepsPerSecond", "positionIterations", "velocityIterations",
                                        "collisionbitplanes", "customProperties", "body", "joint", "image", "object"}));
    const Value& body = e.doc["body"][0];
    QStringList expected{"name", "type", "position", "angle", "linearVelocity", "angularVelocity", "linearDamping",
                         "angularDamping", "gravityScale", "bullet", "allowSleep", "awake", "active", "fixedRotation",
                         "massData-mass", "massData-center", "massData-I", "fixture"};
    QStringList actual = keys(body);
    actual.removeAll("customProperties");
    EXPECT_EQ(actual, expected);
}

TEST(RawInfoExport, FixtureRecordsCarryExactlyOneShape)
{
    auto scene = makeExportScene();
    Export e = exportScene(*scene);
    const QSet<QString> shapeKeys{"circle", "polygon", "edge", "chain"};
    QSet<QString> seen;
    for (const Value& body : e.doc["body"].GetArray()) {
        for (const Value& fixture : body["fixture"].GetArray()) {
            QStringList k = keys(fixture);
            int shapes = 0;
            for (const QString& key : k) {
                if (shapeKeys.contains(key)) {
                    ++shapes;
                    seen.insert(key);
                }
            }
            EXPECT_EQ(shapes, 1) << k.join(',').toStdString();
            EXPECT_EQ(k.mid(0, 8).filter("filter-").size(), 3);
        }
    }
    EXPECT_TRUE(seen.contains("circle"));
    EXPECT_TRUE(seen.contains("polygon"));
    EXPECT_TRUE(seen.contains("chain"));
}

TEST(RawInfoExport, JointMembersByTypeAndIndicesResolve)
{
    auto scene = makeExportScene();
    Export e = exportScene(*scene);
    const QMap<QString, QStringList> perType = {
        {"revolute", {"anchorA", "anchorB", "refAngle", "jointSpeed", "enableLimit", "lowerLimit", "upperLimit",
                      "enableMotor", "motorSpeed", "maxMotorTorque"}},
        {"prismatic", {"anchorA", "anchorB", "localAxisA", "refAngle", "enableLimit", "lowerLimit", "upperLimit",
                       "enableMotor", "maxMotorForce", "motorSpeed"}},
        {"distance", {"anchorA", "anchorB", "length", "frequency", "dampingRatio"}},
        {"rope", {"anchorA", "anchorB", "maxLength"}},
        {"weld", {"anchorA", "anchorB", "refAngle", "frequency", "dampingRatio"}},
        {"motor", {"anchorA", "anchorB", "refAngle", "maxForce", "maxTorque", "correctionFactor"}},
        {"wheel", {"anchorA", "anchorB", "localAxisA", "enableMotor", "motorSpeed", "maxMotorTorque",
                   "springFrequency", "springDampingRatio"}},
        {"friction", {"anchorA", "anchorB", "maxForce", "maxTorque"}},
    };
    QSet<QString> typesSeen;
    const Value& bodies = e.doc["body"];
    ASSERT_EQ(e.doc["joint"].Size(), scene->joints().size());
    for (size_t i = 0; i < scene->joints().size(); ++i) {
        const MetaJoint& source = *scene->joints()[i];
        const Value& joint = e.doc["joint"][rapidjson::SizeType(i)];
        const QString type = QString::fromUtf8(joint["type"].GetString());
        typesSeen.insert(type);
        QStringList k = keys(joint);
        k.removeAll("customProperties");
        EXPECT_EQ(k.mid(0, 5), (QStringList{"type", "name", "bodyA", "bodyB", "collideConnected"}));
        EXPECT_EQ(k.mid(5), perType.value(type)) << type.toStdString();
        // The indices name the joint's own bodies.
        const int a = joint["bodyA"].GetInt();
        const int b = joint["bodyB"].GetInt();
        EXPECT_EQ(QString::fromUtf8(bodies[a]["name"].GetString()), source.bodyA->name());
        EXPECT_EQ(QString::fromUtf8(bodies[b]["name"].GetString()), source.bodyB->name());
    }
    EXPECT_EQ(typesSeen.size(), perType.size());
}

TEST(RawInfoExport, ImagesAndObjects)
{
    auto scene = makeExportScene();
    Export e = exportScene(*scene);
    const Value* onBody = findByName(e.doc["image"], "wheelImage");
    const Value* loose = findByName(e.doc["image"], "loose");
    ASSERT_TRUE(onBody && loose);
    EXPECT_EQ(keys(*loose), (QStringList{"body", "name", "file", "center", "angle", "scale", "aspectScale", "opacity",
                                         "flip", "filter", "renderOrder", "colorTint", "corners", "glVertexPointer",
                                         "glTexCoordPointer", "glDrawElements"}));
    EXPECT_EQ((*loose)["body"].GetInt(), -1);
    const int index = (*onBody)["body"].GetInt();
    ASSERT_GE(index, 0);
    const MetaImage* source = scene->findImage(4);
    EXPECT_EQ(QString::fromUtf8(e.doc["body"][index]["name"].GetString()), source->body->name());
    EXPECT_EQ((*loose)["glVertexPointer"].Size(), 8u);
    EXPECT_EQ((*loose)["glDrawElements"].Size(), 6u);
    const Value& object = e.doc["object"][0];
    QStringList k = keys(object);
    k.removeAll("customProperties");
    EXPECT_EQ(k, (QStringList{"name", "path", "position", "angle", "scale", "flip"}));
}

TEST(RawInfoExport, ExcludedPathRemovesExactlyThatMember)
{
    auto scene = makeExportScene();
    Export full = exportScene(*scene);
    Export cut = exportScene(*scene, {"/world/body/fixture/name"});
    int names = 0;
    for (const Value& body : full.doc["body"].GetArray()) {
        for (const Value& f : body["fixture"].GetArray())
            names += f.HasMember("name");
    }
    ASSERT_GT(names, 0);
    // Removing the fixture names from the full export gives the cut export.
    for (Value& body : full.doc["body"].GetArray()) {
        EXPECT_TRUE(body.HasMember("name")) << "body names stay";
        for (Value& f : body["fixture"].GetArray())
            f.EraseMember("name"); // keeps the order of the other members
    }
    EXPECT_EQ(jsonToText(full.doc, false), jsonToText(cut.doc, false));

    Export noImages = exportScene(*scene, {"/world/image", "/world/joint/refAngle"});
    EXPECT_FALSE(noImages.doc.HasMember("image"));
    for (const Value& j : noImages.doc["joint"].GetArray())
        EXPECT_FALSE(j.HasMember("refAngle"));
}

TEST(RawInfoExport, StyleChangesValuesNeverMembers)
{
    auto scene = makeExportScene();
    Export hex = exportScene(*scene);
    scene->exportOptions.useHumanReadableFloats = true;
    scene->exportOptions.usePrettyPrint = false;
    scene->exportOptions.compactZeroVecs = false;
    Export readable = exportScene(*scene);
    EXPECT_FALSE(readable.text.contains('\n'));
    EXPECT_NE(hex.text, readable.text);
    std::function<void(const Value&, const Value&)> sameShape = [&](const Value& a, const Value& b) {
        if (a.IsObject() && b.IsObject()) {
            ASSERT_EQ(keys(a), keys(b));
            for (auto it = a.MemberBegin(); it != a.MemberEnd(); ++it)
                sameShape(it->value, b[it->name]);
        } else if (a.IsArray() && b.IsArray()) {
            ASSERT_EQ(a.Size(), b.Size());
            for (rapidjson::SizeType i = 0; i < a.Size(); ++i)
                sameShape(a[i], b[i]);
        }
    };
    sameShape(hex.doc, readable.doc);
}

TEST(RawInfoRead, ExportReadBackExportsTheSameAndSimulatesTheSame)
{
    auto scene = makeExportScene();
    Export first = exportScene(*scene);
    std::unique_ptr<MetaWorld> readBack = createWorldFromRawInfo(first.doc, "x.json");
    ASSERT_TRUE(readBack);
    Export second = exportScene(*readBack);
    EXPECT_EQ(first.text, second.text);

    WorldBuild original(*scene);
    original.addScene(*scene);
    WorldBuild rebuilt(*readBack);
    rebuilt.addScene(*readBack);
    const auto a = positionsAfter(original, 100);
    const auto b = positionsAfter(rebuilt, 100);
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i) {
        EXPECT_EQ(a[i].x, b[i].x) << "body " << i;
        EXPECT_EQ(a[i].y, b[i].y) << "body " << i;
    }
}

TEST(RawInfoRead, ShapeRecordRules)
{
    LogCapture log;
    rapidjson::Document doc;
    QString error;
    ASSERT_TRUE(parseJson(R"({"body":[{"type":2,"fixture":[
        {"name":"two","polygon":{"vertices":{"x":[0,1],"y":[0,0]}}},
        {"name":"one","polygon":{"vertices":{"x":[0],"y":[0]}}},
        {"name":"nine","polygon":{"vertices":{"x":[0,1,2,3,4,5,6,7,8],"y":[0,0,1,2,3,4,5,6,7]}}},
        {"name":"loop","loop":{"vertices":{"x":[0,1,1],"y":[0,0,1]}}},
        {"name":"chain","chain":{"vertices":{"x":[0,1,1,0],"y":[0,0,1,0]},"hasPrevVertex":true,"hasNextVertex":true}},
        {"name":"odd","square":{}}]}],
        "joint":[{"type":"revolute","bodyA":0,"bodyB":5},{"type":"gear","bodyA":0,"bodyB":0}]})",
                          &doc, &error));
    auto world = createWorldFromRawInfo(doc, "t.json");
    ASSERT_TRUE(world);
    ASSERT_EQ(world->bodies().size(), 1u);
    const auto& fixtures = world->bodies()[0]->fixtures();
    ASSERT_EQ(fixtures.size(), 3u);
    EXPECT_EQ(fixtures[0]->name(), "two");
    EXPECT_EQ(fixtures[0]->shapes()[0].type(), ShapeType::Line);
    EXPECT_EQ(fixtures[1]->shapes()[0].type(), ShapeType::Loop);
    EXPECT_EQ(fixtures[2]->shapes()[0].type(), ShapeType::Loop) << "a closed chain is a loop";
    EXPECT_EQ(fixtures[2]->vertices().size(), 3u) << "without its repeated first vertex";
    EXPECT_TRUE(log.has(LOG_WARNING, "Creating edge shape instead of polygon with two vertices.\n"));
    EXPECT_TRUE(log.has(LOG_WARNING, "Ignoring polygon fixture less than two vertices.\n"));
    EXPECT_TRUE(log.has(LOG_WARNING, "Ignoring polygon fixture with too many vertices.\n"));
    EXPECT_TRUE(log.contains(LOG_WARNING, "Failed to load fixture of unknown type"));
    EXPECT_TRUE(log.contains(LOG_WARNING, "Could not find body B for joint"));
    EXPECT_TRUE(world->joints().empty());
}

TEST(RawInfoExport, NegativeZeroVelocitiesAreTheZeroVector)
{
    MetaWorld scene;
    MetaBody* body = addBody(scene, 1, "resting", BodyType::Dynamic, {0, 0});
    body->linearVelocity = {-0.0f, 0.0f};
    body->angularVelocity = -0.0f;
    addFixture(scene, body, "ball", {{0, 0}}, ShapeType::Circle, 0.5f);
    const Export e = exportScene(scene);
    const Value& record = e.doc["body"][0];
    EXPECT_TRUE(record["linearVelocity"].IsInt()) << e.text.toStdString();
    EXPECT_EQ(record["linearVelocity"].GetInt(), 0);
    EXPECT_TRUE(record["angularVelocity"].IsInt());
    EXPECT_FALSE(e.text.contains("80000000"));
}

TEST(RawInfoExport, StaticBodiesKeepTheScenesAwakeFlag)
{
    // Box2D 2.4.1 reports every static body asleep; the export writes what
    // the scene says, as Box2D 2.3 kept it. Other bodies keep Box2D's state.
    MetaWorld scene;
    MetaBody* awake = addBody(scene, 1, "awakeGround", BodyType::Static, {0, 0});
    MetaBody* asleep = addBody(scene, 2, "sleepingGround", BodyType::Static, {5, 0});
    asleep->awake = false;
    MetaBody* mover = addBody(scene, 3, "sleepingMover", BodyType::Dynamic, {0, 5});
    mover->awake = false;
    for (MetaBody* b : {awake, asleep, mover})
        addFixture(scene, b, "ball", {{0, 0}}, ShapeType::Circle, 0.5f);
    const Export e = exportScene(scene);
    EXPECT_TRUE((*findByName(e.doc["body"], "awakeGround"))["awake"].GetBool());
    EXPECT_FALSE((*findByName(e.doc["body"], "sleepingGround"))["awake"].GetBool());
    EXPECT_FALSE((*findByName(e.doc["body"], "sleepingMover"))["awake"].GetBool());

    // Read back and exported again, the flags stay.
    std::unique_ptr<MetaWorld> readBack = createWorldFromRawInfo(e.doc, "x.json");
    ASSERT_TRUE(readBack);
    EXPECT_EQ(exportScene(*readBack).text, e.text);
}

TEST(RawInfoRead, BadDensityIsReplacedByTheRuleOfTheSceneReader)
{
    // Negative and NaN densities: the raw-info reader applies the scene
    // reader's rule, so reading, resaving and exporting agree on one value.
    LogCapture log;
    rapidjson::Document doc;
    ASSERT_TRUE(parseJson(R"({"body":[{"type":2,"fixture":[
        {"name":"negative","density":"BF800000","circle":{"center":0,"radius":1}},
        {"name":"nan","density":"7FC00000","circle":{"center":0,"radius":1}},
        {"name":"fine","density":2.5,"circle":{"center":0,"radius":1}}]}]})",
                          &doc, nullptr));
    auto world = createWorldFromRawInfo(doc, "t.json");
    ASSERT_TRUE(world);
    const auto& fixtures = world->bodies()[0]->fixtures();
    ASSERT_EQ(fixtures.size(), 3u);
    EXPECT_EQ(fixtures[0]->density, 1.0f);
    EXPECT_EQ(fixtures[1]->density, 1.0f);
    EXPECT_EQ(fixtures[2]->density, 2.5f);
    EXPECT_TRUE(log.has(LOG_WARNING, QStringLiteral("Fixture density -1 is not valid, using 1")));
    EXPECT_TRUE(log.has(LOG_WARNING, QStringLiteral("Fixture density nan is not valid, using 1")));

    const Export e = exportScene(*world);
    for (const Value& fixture : e.doc["body"][0]["fixture"].GetArray())
        EXPECT_EQ(decodeFloat(&fixture["density"], -1), fixture["name"] == "fine" ? 2.5f : 1.0f);
}

TEST(RawInfoRead, RecordsNamingMissingBodiesOrOddFilesResaveToTheSameModel)
{
    // Found by fuzzing: the body array's name is misspelt, so the joint and
    // the image name bodies that do not exist, and the image's file name
    // ends in a slash, which reading the saved scene cleans away.
    const QByteArray input =
        R"({"gravity":{"x":0,"y":-10},"allowSleep":true,"$ody":[{"name":"a","T\u000088033742uype":2,"position":0,)"
        R"("awake":true,"fixtur":0,"fixture":[{"polygon":{"ver":{"x":[5,1],"y":[0,0]}}}]}],"joint":[{"type":"distance",)"
        R"("bodyA":0,"odyB":1}],"image":[{"body":0,"file":"x.pn/","scale":2}]})";
    LogCapture log;
    rapidjson::Document doc;
    ASSERT_TRUE(parseJson(input, &doc, nullptr));
    auto world = createWorldFromRawInfo(doc, "t.json");
    ASSERT_TRUE(world);
    EXPECT_TRUE(world->bodies().empty());
    EXPECT_TRUE(world->joints().empty());
    EXPECT_TRUE(log.contains(LOG_WARNING, "Could not find body A for joint (body id 0)"));
    ASSERT_EQ(world->images().size(), 1u);
    EXPECT_EQ(world->images()[0]->body, nullptr);

    QTemporaryDir dir;
    const QString first = dir.filePath("first.plax");
    ASSERT_TRUE(saveSceneFile(*world, first));
    auto again = loadSceneFile(first);
    ASSERT_TRUE(again);
    const QString second = dir.filePath("second.plax");
    ASSERT_TRUE(saveSceneFile(*again, second));
    EXPECT_EQ(TestFiles::read(first).toStdString(), TestFiles::read(second).toStdString());
    EXPECT_EQ(absoluteFileReference(*again, again->images()[0]->file), dir.filePath("x.pn"));
}
