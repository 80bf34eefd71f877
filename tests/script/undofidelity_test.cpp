// Running a script and undoing it must give back the scene exactly: the
// saved file is byte-identical to the one saved before the run, and redo
// gives the scripted scene's bytes again.

#include "itemscene.h"
#include "scripttesting.h"

#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "objects/instanceattach.h"
#include "objects/objectmanager.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <random>

namespace
{
// Calls every scene-changing function of the body, fixture, shape, vertex
// and world API at least once, on whatever scene it is given (it needs two
// bodies with fixtures).
const char* const kEverySetter = R"(
void main()
{
    body[] bodies = ab();
    body b = bodies[0];
    b.setName("renamed body");
    b.setType(2);
    b.setPosition(1.25, -3.5);
    b.setPos(mv(1.5, -3.25));
    b.setAngle(0.123456789);
    b.setGravityScale(0.5);
    b.setAngularVelocity(1.1);
    b.setLinearDamping(0.2);
    b.setAngularDamping(0.4);
    b.setLinearVelocity(2, 3);
    b.setLinearVelocity(mv(2.5, 3.75));
    b.setBullet(1);
    b.setFixedRotation(1);
    b.setSleepingAllowed(0);
    b.setAwake(0);
    b.setActive(0);
    b.setMass(3.3);
    b.select();
    b.deselect();
    b.select();

    fixture f = b.getFixtures()[0];
    f.setName("renamed fixture");
    f.setFriction(0.7);
    f.setRestitution(0.1);
    f.setDensity(2.5);
    f.setSensor(1);
    f.setFilterCategoryBits(4);
    f.setFilterMaskBits(3);
    f.setFilterGroupIndex(-2);
    f.select();
    f.addVertex(1, 0.1, 0.2);
    f.addVertex(0, mv(0.15, 0.25));
    f.setVertex(0, mv(0.3, 0.4));
    f.setVertex(1, 0.35, 0.45);
    f.getVertex(1).select();
    f.getVertex(2).setPos(0.01, 0.02);
    f.getVertex(2).setWorldPos(mv(3, 4));
    f.deleteVertex(1);
    f.reverseWinding();
    f.getShape(0).setRadius(0.25);
    vec2[] ring = {mv(0, 0), mv(1, 0), mv(1, 1), mv(0.5, 1.5), mv(0, 1)};
    f.setVertices(ring);
    f.getShape(0).setType(1);
    f.getShape(0).setType(3);
    f.setMass(4);

    setGravity(1, -5);
    setGravity(mv(1.5, -5.5));
    setSimulationStepsPerSecond(30);
    setSimulationPositionIterations(5);
    setSimulationVelocityIterations(9);
    setCollisionBitplaneName(3, "walls");
    setCollisionBitplaneName(0, "it's a \\ name");
    setCursor(2, 3);
    setCursor(mv(2.5, 3.5));

    addCustomProperty("body", "speed", "Speed", "float");
    addCustomProperty("world", "level", "Level", "int");
    setCustomPropertyNames("body", "speed", "velocity", "Velocity");

    world w = getWorld();
    w.setCustomInt("i", 4);
    w.setCustomFloat("f", 0.1);
    w.setCustomString("s", "it's \\ fine");
    w.setCustomVec2("v", mv(1.1, 2.2));
    w.setCustomBool("b", true);
    w.setCustomBool("b2", 1);
    w.setCustomColor("c", mc255(10, 20, 30, 40));
    b.setCustomFloat("velocity", 7.5);
    b.setCustomInt("velocity", 2);
    f.setCustomString("label", "x");
    f.clearCustomProperty("label");
    w.clearCustomProperty("i");

    body nb = addBody(0, '{"name":"added","type":"dynamic","position":{"x":1,"y":2},"fixture":[{"name":"nf","density":1,"shapes":[{"type":"polygon","vertices":{"x":[0,1,1],"y":[0,0,1]}}]}]}');
    nb.addFixture(0, '{"name":"nf2","density":2,"shapes":[{"type":"circle","radius":0.5,"vertices":{"x":[0],"y":[0]}}]}');
    nb.select();
    nb.getFixtures()[0].delete();
    bodies[1].select();
    bodies[1].delete();
    if (bodies.length() > 2)
        bodies[2].getFixtures()[0].delete();
}
)";

// Calls every scene-changing function of the joint, image, sampler, object
// and path API, every add, duplicate, delete and transform, step and
// createFixture at least once, on the scene of writeItemScene.
const char* const kEveryItemChange = R"(
void main()
{
    joint h = getJoint('hinge');
    h.setName("hinge 2");
    h.setBodyA(3);
    h.setBodyA(getBody(1));
    h.setBodyB(getBody('wheel'));
    h.setBodyB(2);
    h.setLocalAnchorA(0.3, 0.7);
    h.setLocalAnchorA(mv(0.31, 0.71));
    h.setLocalAnchorB(0.1, 0.123456789);
    h.setLocalAnchorB(mv(0.2, 0.3));
    h.setCollideConnected(1);
    h.setEnableLimit(0);
    h.setEnableLimit(true);
    h.setEnableMotor(false);
    h.setEnableMotor(1);
    h.setReferenceAngle(0.7);
    h.setLowerLimit(-0.3);
    h.setUpperLimit(0.9);
    h.setMotorSpeed(1.7);
    h.setMaxMotorTorque(3.3);
    h.setCustomInt("k", 3);
    h.select();
    h.deselect();
    joint slider = getJoint('slider');
    slider.setMaxMotorForce(4.4);
    slider.setLocalAxis(0.6, 0.8);
    slider.setLocalAxis(mv(0.28, 0.96));
    getJoint('spring').setLength(1.1);
    getJoint('spring').setFrequency(2.2);
    getJoint('spring').setDampingRatio(0.33);
    getJoint('servo').setCorrectionFactor(0.123456789);

    image i = getImage(1);
    i.setName("picture");
    i.setBody(2);
    i.setBody(getBody(1));
    i.setFile("other.png");
    i.setCenter(0.1, 0.2);
    i.setCenter(mv(0.3, 0.4));
    i.setAngle(2.5);
    i.setScale(3.25);
    i.setHeight(3.5);
    i.setAspectScale(1.5);
    i.setOpacity(0.333);
    i.setFlip(1);
    i.setFlip(false);
    i.setFlip(true);
    i.setFilter(2);
    i.setRenderOrder(4.5);
    i.setColorTint(1, 2, 3, 4);
    i.setColorTint(mc255(5, 6, 7, 8));
    i.setCustomString("s", "it's");
    i.select();

    sampler s = getSampler(1);
    s.setName("sampler one");
    s.setBody(3);
    s.setBody(getBody(2));
    s.setFile("other.png");
    s.setCenter(0.5, 0.6);
    s.setCenter(mv(0.7, 0.8));
    s.setAngle(0.9);
    s.setHeight(1.25);
    s.setOutputWidth(100);
    s.setOutputHeight(50);
    s.setOpacity(0.6);
    s.setAlphaEdgeThreshold(0.3);
    s.setFlip(1);
    s.setFlip(false);
    s.setColorTint(9, 10, 11, 12);
    s.setColorTint(mc1(0.5, 0.25, 1, 1));
    s.setAutoUpdate(1);
    s.setAutoUpdate(false);
    s.setAutoUpdate(true);
    s.setUseColor(1);
    s.setUseColor(false);
    s.setUseColor(true);
    s.setCustomFloat("f", 0.1);

    object o = getObject(1);
    o.setName("box instance");
    o.setFile("other.plax");
    o.setPosition(1, 2);
    o.setPos(1.5, 2.5);
    o.setPosition(mv(3, 4));
    o.setPos(mv(3.5, 4.5));
    o.setAngle(0.77);
    o.setScale(1.3);
    o.setFlip(1);
    o.setFlip(false);
    o.setFlip(true);

    path p = getPath(1, 0);
    p.setType(3);
    p.setRadius(0.3);
    p.setMaxPoints(9);
    p.setMinAngle(12);
    p.addControlPoint(1, mv(0.5, -0.25));
    p.addControlPoint(0, 0.25, 0.75);
    p.setControlPoint(2, mv(0.6, -0.3));
    p.setControlPoint(3, 1.1, 0.1);
    p.deleteControlPoint(5);

    joint nj = addJoint(0, '{"type":"revolute","name":"added joint","bodyA":1,"bodyB":3,"anchorA":0,"anchorB":0}');
    image ni = addImage("sprite.png", mv(1, 1));
    image nij = addImage(0, '{"name":"json image","file":"sprite.png","center":{"x":2,"y":1},"scale":2}');
    sampler ns = addSampler(mv(2, 2));
    sampler nsj = addSampler(0, '{"name":"json sampler","file":"sprite.png","center":0,"paths":[{"type":"polygon","controlPoints":{"x":[0,1,0],"y":[0,0,1]}}]}');
    object no = addObject("object.plax", mv(3, 3));
    object noj = addObject(0, '{"name":"json object","file":"object.plax","position":{"x":-3,"y":1}}');
    duplicate(getBody(3));
    duplicate(getBody(2), true);
    duplicate(getFixture(2));
    duplicate(getJoint(2));
    duplicate(getImage(1));
    duplicate(getSampler(1));
    duplicate(getObject(1));
    duplicate(aj());
    duplicate(si());

    translate(getBody(2), mv(1, 1));
    translate(getFixture(1), 0.5, 0.5);
    translate(getVertex(1, 0), mv(0.1, 0.1));
    translate(getJoint(3), 2, mv(0.2, 0.2));
    translate(getImage(1), 1, 2);
    translate(getSampler(1), mv(-1, 0));
    translate(getObject(1), 0, 1);
    translate(ai(), mv(0.25, 0));
    rotate(getBody(3), 0, 0.5);
    rotate(getFixture(3), 1, -0.5);
    rotate(getVertex(2, 1), 2, 0.01);
    rotate(getJoint(4), 2, 0, 0.3);
    rotate(getImage(1), 0, 1.2);
    rotate(getSampler(1), 1, 0.4);
    rotate(getObject(1), 2, -0.2);
    scale(getBody(3), 0, 1.5, 1.5);
    scale(getFixture(2), 1, -1, 1);
    scale(getVertex(1, 1), 2, 2, 2);
    scale(getImage(1), 0, 2, 0.5);
    scale(getSampler(1), 0, 0.5, 0.5);
    scale(getObject(1), 0, 1.2, 1.2);
    step(ab(), 3);
    createFixture(getBody(3), getPath(1, 0));
    createFixture(getBody(2), getPath(1, 1));

    nj.delete();
    ni.delete();
    ns.delete();
    no.delete();
    getJoint(5).delete();
    delete(getSamplers("json sampler"));
    delete(getObjects("json object"));
    delete(getImages("json image"));
    getImage(1).delete();
    getSampler(1).delete();
    getObject(1).delete();
}
)";

QByteArray savedBytes(EditorDocument& document, const QString& path)
{
    return TestFiles::savedScene(document.world(), path);
}

// Scripts run, undone and redone; the saved bytes must match at each end.
void expectExactUndoRedo(EditorDocument& document, const QString& folder, const char* script = kEverySetter)
{
    const QByteArray before = savedBytes(document, folder + "/before.plax");
    {
        LogCapture capture;
        ASSERT_TRUE(document.scripting().runOneShot(QString::fromUtf8(script), QString()));
        EXPECT_EQ(capture.texts(LOG_WARNING) + capture.texts(LOG_ERROR), QStringList()) << "every call was applied";
    }
    const QByteArray after = savedBytes(document, folder + "/after.plax");
    ASSERT_NE(before, after);
    ASSERT_EQ(document.undoStack().count(), 1) << "a whole script run is one undo step";

    {
        LogCapture capture;
        document.undoStack().undo();
        EXPECT_EQ(capture.texts(LOG_WARNING) + capture.texts(LOG_ERROR), QStringList()) << "undo ran cleanly";
    }
    EXPECT_EQ(savedBytes(document, folder + "/undone.plax"), before);
    EXPECT_TRUE(document.selection().items(ItemKind::Body).empty());

    document.undoStack().redo();
    EXPECT_EQ(savedBytes(document, folder + "/redone.plax"), after);

    document.undoStack().undo();
    EXPECT_EQ(savedBytes(document, folder + "/undone-again.plax"), before);
}

// A scene of random bodies and fixtures of every shape type, with joints.
void writeGeneratedScene(const QString& path, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> coordinate(-50, 50);
    std::uniform_real_distribution<float> unit(0, 1);
    MetaWorld world;
    for (int i = 0; i < 12; ++i) {
        auto body = std::make_unique<MetaBody>();
        body->type = BodyType(i % 3);
        body->position = {coordinate(random), coordinate(random)};
        body->angle = unit(random) * 6;
        body->linearDamping = unit(random);
        for (int k = 0; k < 2; ++k) {
            auto fixture = std::make_unique<MetaFixture>();
            fixture->friction = unit(random);
            fixture->density = unit(random) * 3;
            const ShapeType type = ShapeType((i + k) % 4);
            std::vector<Vec2> vertices;
            const int count = type == ShapeType::Circle ? 1 : 4 + int(unit(random) * 4);
            for (int v = 0; v < count; ++v) {
                const float a = float(v) / float(count) * 6.2831853f;
                const float r = 1 + unit(random);
                vertices.push_back({r * std::cos(a), r * std::sin(a)});
            }
            fixture->setVertices(vertices);
            fixture->addShape(type, type == ShapeType::Circle ? 0.5f + unit(random) : 0);
            body->adoptFixture(std::move(fixture));
        }
        world.addBody(std::move(body), 0, QStringLiteral("gen%1").arg(i));
    }
    for (int i = 0; i + 1 < 12; i += 3) {
        auto joint = std::make_unique<MetaJoint>();
        joint->bodyA = world.bodies()[size_t(i)].get();
        joint->bodyB = world.bodies()[size_t(i + 1)].get();
        joint->anchorB = {coordinate(random) / 10, 0};
        world.addJoint(std::move(joint), 0, QStringLiteral("j%1").arg(i));
    }
    ASSERT_TRUE(saveSceneFile(world, path));
}
} // namespace

TEST(UndoFidelity, ExampleSceneComesBackByteForByte)
{
    QTemporaryDir dir;
    EditorDocument document;
    ASSERT_TRUE(document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax")));
    expectExactUndoRedo(document, dir.path());
}

TEST(UndoFidelity, GeneratedScenesComeBackByteForByte)
{
    QTemporaryDir dir;
    for (unsigned seed : {1u, 2u, 3u}) {
        SCOPED_TRACE(seed);
        const QString path = dir.filePath(QStringLiteral("generated%1.plax").arg(seed));
        writeGeneratedScene(path, seed);
        EditorDocument document;
        ASSERT_TRUE(document.load(path));
        expectExactUndoRedo(document, dir.path());
    }
}

TEST(UndoFidelity, EveryItemChangeComesBackByteForByte)
{
    QTemporaryDir dir;
    const QString scene = writeItemScene(dir.filePath("scene"));
    QImage other(3, 5, QImage::Format_ARGB32);
    other.fill(Qt::blue);
    ASSERT_TRUE(other.save(dir.filePath("scene/other.png")));
    ASSERT_TRUE(QFile::copy(dir.filePath("scene/object.plax"), dir.filePath("scene/other.plax")));
    EditorDocument document;
    ASSERT_TRUE(document.load(scene));
    ObjectManager cache;
    SceneObjectsAttachment objects(document, cache);
    expectExactUndoRedo(document, dir.path(), kEveryItemChange);
    EXPECT_EQ(document.world().objects().size(), 1u);
    EXPECT_TRUE(document.world().objects()[0]->objectDocument->filePath().endsWith("object.plax"))
        << "undo attached the instance to its first file again";
}
