// The joint, image, sampler, object and path handles on a loaded scene:
// getters, setters, the refusals, invalid handles, and the commands each
// change pushes (the text on the undo stack and in the script log).

#include "itemscene.h"
#include "scripttesting.h"

#include "document/editordocument.h"
#include "editing/scriptcommand.h"
#include "engine/documentscripting.h"
#include "engine/scriptlog.h"
#include "model/metaworld.h"
#include "objects/instanceattach.h"
#include "objects/objectmanager.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <memory>

namespace
{
class ItemHandles : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        ScriptLog::setBackupsRoot(m_dir.filePath("backups"));
        ASSERT_TRUE(m_document.load(writeItemScene(m_dir.filePath("scene"))));
        m_objects = std::make_unique<SceneObjectsAttachment>(m_document, m_cache);
        skipRecorded();
    }
    void TearDown() override
    {
        m_objects.reset();
        ScriptLog::setBackupsRoot(QString());
    }

    QStringList run(const QString& text)
    {
        bool ok = false;
        QStringList printed = runAndCollectPrints(m_document, text, &ok);
        EXPECT_TRUE(ok) << text.toStdString();
        return printed;
    }
    void runLogged(const QString& text) { EXPECT_TRUE(m_document.scripting().runOneShot(text, QString())); }

    QStringList scriptLogLines() { return readText(m_document.scripting().scriptLog().path()).split('\n', Qt::SkipEmptyParts); }

    // The redo texts of the commands pushed since the last call, in order,
    // as the script log received them. They must also be what the last undo
    // step holds: the commands of one run merge into one, whose redo script
    // is the first text followed by the others joined by newlines.
    QStringList recorded()
    {
        const QStringList log = scriptLogLines();
        const QStringList lines = log.mid(m_logLinesSeen);
        m_logLinesSeen = int(log.size());
        const QUndoCommand* step = m_document.undoStack().command(m_document.undoStack().count() - 1);
        EXPECT_NE(step, nullptr);
        if (step && !lines.isEmpty()) {
            EXPECT_EQ(step->childCount(), 1) << "one merged command";
            auto* command = dynamic_cast<ScriptCommand*>(const_cast<QUndoCommand*>(step->childCount() ? step->child(0) : step));
            EXPECT_NE(command, nullptr);
            if (command) {
                command->flushMergedScripts();
                EXPECT_EQ(command->redoScript(), lines.first() + lines.mid(1).join('\n'));
            }
        }
        return lines;
    }
    void skipRecorded() { m_logLinesSeen = int(scriptLogLines().size()); }

    // True when the last script run recorded no command (its undo step is
    // an empty "script execution").
    bool lastRunChangedNothing()
    {
        const int count = m_document.undoStack().count();
        return count == 0 || m_document.undoStack().command(count - 1)->childCount() == 0;
    }

    MetaWorld& world() { return m_document.world(); }

    QTemporaryDir m_dir;
    EditorDocument m_document;
    ObjectManager m_cache;
    std::unique_ptr<SceneObjectsAttachment> m_objects;
    int m_logLinesSeen = 0;
};
} // namespace

TEST_F(ItemHandles, JointGettersFollowTheJointType)
{
    const QStringList printed = run(R"(
joint[] j = aj();
for (uint i = 0; i < j.length(); i++) print(j[i].getType());
print(getJoint('spring').getLength()); print(getJoint('tether').getLength());
print(getJoint('spring').getFrequency()); print(getJoint('axle').getFrequency()); print(getJoint('glue').getDampingRatio());
print(getJoint('axle').getDampingRatio());
print(getJoint('hinge').getReferenceAngle()); print(getJoint('servo').getReferenceAngle());
print(getJoint('hinge').getLowerLimit()); print(getJoint('slider').getUpperLimit());
print(getJoint('hinge').getEnableMotor()); print(getJoint('hinge').getEnableLimit()); print(getJoint('axle').getEnableMotor());
print(getJoint('axle').getMotorSpeed()); print(getJoint('hinge').getMaxMotorTorque()); print(getJoint('drag').getMaxMotorTorque());
print(getJoint('slider').getMaxMotorForce()); print(getJoint('servo').getMaxMotorForce()); print(getJoint('servo').getCorrectionFactor());
print(getJoint('slider').getLocalAxis()); print(getJoint('hinge').getCollideConnected());
print(getJoint('hinge').getBodyA().getName()); print(getJoint('hinge').getBodyB().getName());
print(getJoint('hinge').getLocalAnchorA()); print(getJoint('hinge').getWorldAnchorB() == getBody('arm').pos);
)");
    EXPECT_EQ(printed.mid(0, 8), QStringList({"1", "2", "3", "7", "8", "9", "10", "11"})) << "Box2D's type numbers";
    EXPECT_EQ(printed.mid(8), QStringList({"2", "4", "3", "4", "0.2", "0.7", "0.25", "0.3", "-1", "2", "true", "true", "true",
                                           "-4", "10", "8", "5", "9", "0.4", "(0, 1)", "false", "base", "arm", "(1, 2)",
                                           "true"}));
}

TEST_F(ItemHandles, JointGettersOfOtherTypesWarnAndGiveZero)
{
    const struct
    {
        const char* call;
        const char* joint;
    } cases[] = {{"getLength", "hinge"},         {"getFrequency", "hinge"},     {"getDampingRatio", "drag"},
                 {"getReferenceAngle", "spring"}, {"getLowerLimit", "axle"},     {"getUpperLimit", "glue"},
                 {"getEnableMotor", "tether"},    {"getEnableLimit", "axle"},    {"getMotorSpeed", "servo"},
                 {"getMaxMotorTorque", "slider"}, {"getMaxMotorForce", "hinge"}, {"getCorrectionFactor", "drag"}};
    for (const auto& c : cases) {
        LogCapture capture;
        runLogged(QStringLiteral("print(getJoint('%1').%2());").arg(c.joint, c.call));
        const QStringList printed = capture.texts(LOG_SCRIPT);
        EXPECT_TRUE(printed == QStringList({"0"}) || printed == QStringList({"false"})) << c.call;
        EXPECT_EQ(capture.texts(LOG_WARNING), QStringList({QStringLiteral("%1 failed: wrong joint type").arg(c.call)}));
    }
}

TEST_F(ItemHandles, JointSettersKeepTheAuthoredValues)
{
    run(R"(
joint s = getJoint('spring');
s.setLength(2.5); s.setFrequency(6); s.setDampingRatio(0.9);
getJoint('tether').setLength(7);
joint a = getJoint('axle'); a.setFrequency(1.5); a.setDampingRatio(0.3); a.setLocalAxis(1, 0);
joint h = getJoint('hinge');
h.setEnableLimit(false); h.setEnableMotor(0); h.setReferenceAngle(-0.5); h.setLowerLimit(-2); h.setUpperLimit(2);
h.setMotorSpeed(3); h.setMaxMotorTorque(12); h.setCollideConnected(1);
h.setLocalAnchorA(mv(0.5, 0.5)); h.setLocalAnchorB(0.1, 0.2); h.setBodyB(3);
getJoint('servo').setCorrectionFactor(0.8); getJoint('servo').setMaxMotorForce(4); getJoint('drag').setMaxMotorTorque(2);
getJoint('slider').setMaxMotorForce(6);
)");
    const MetaJoint& spring = *world().findJoint(3);
    EXPECT_EQ(spring.length, 2.5f);
    EXPECT_EQ(spring.frequency, 6.0f);
    EXPECT_EQ(spring.dampingRatio, 0.9f);
    EXPECT_EQ(world().findJoint(7)->maxLength, 7.0f) << "a rope's length is its maximum length";
    const MetaJoint& axle = *world().findJoint(4);
    EXPECT_EQ(axle.springFrequency, 1.5f);
    EXPECT_EQ(axle.springDampingRatio, 0.3f);
    EXPECT_EQ(axle.localAxisA, (Vec2{1, 0}));
    const MetaJoint& hinge = *world().findJoint(1);
    EXPECT_FALSE(hinge.enableLimit);
    EXPECT_FALSE(hinge.enableMotor);
    EXPECT_EQ(hinge.referenceAngle, -0.5f);
    EXPECT_EQ(hinge.lowerLimit, -2.0f);
    EXPECT_EQ(hinge.upperLimit, 2.0f);
    EXPECT_EQ(hinge.motorSpeed, 3.0f);
    EXPECT_EQ(hinge.maxMotorTorque, 12.0f);
    EXPECT_TRUE(hinge.collideConnected);
    EXPECT_EQ(hinge.anchorA, (Vec2{0.5f, 0.5f}));
    EXPECT_EQ(hinge.anchorB, (Vec2{0.1f, 0.2f}));
    EXPECT_EQ(hinge.bodyB, world().findBody(3));
    EXPECT_EQ(world().findJoint(8)->correctionFactor, 0.8f);
    EXPECT_EQ(world().findJoint(8)->maxForce, 4.0f);
    EXPECT_EQ(world().findJoint(6)->maxTorque, 2.0f);
    EXPECT_EQ(world().findJoint(2)->maxMotorForce, 6.0f);
    EXPECT_EQ(m_document.undoStack().count(), 1);
    const QStringList texts = recorded();
    EXPECT_EQ(texts.size(), 22);
    for (const char* text : {"getJoint(3).setLength(2.5);", "getJoint(7).setLength(7);", "getJoint(4).setFrequency(1.5);",
                             "getJoint(1).setBodyB(3);", "getJoint(1).setEnableLimit(0);",
                             "getJoint(1).setLocalAnchorA(0.5,0.5);", "getJoint(4).setLocalAxis(1,0);",
                             "getJoint(8).setCorrectionFactor(0.8);", "getJoint(1).setCollideConnected(1);"})
        EXPECT_TRUE(texts.contains(text)) << text;
}

TEST_F(ItemHandles, JointSettersRefuseWhatTheJointCannotHold)
{
    LogCapture capture;
    runLogged(R"(
getJoint('hinge').setLength(3); getJoint('spring').setEnableMotor(true); getJoint('drag').setLocalAxis(0, 1);
getJoint('spring').setLength(-1); getJoint('servo').setCorrectionFactor(1.5); getJoint('hinge').setBodyA(2);
getJoint('hinge').setBodyB(99); getJoint('hinge').setMotorSpeed(sqrt(-1.0f));
)");
    EXPECT_EQ(capture.texts(LOG_WARNING),
              QStringList({"setLength failed: wrong joint type", "setEnableMotor failed: wrong joint type",
                           "setLocalAxis failed: wrong joint type", "Ignoring negative value for joint::setLength: -1",
                           "Ignoring value above 1 for joint::setCorrectionFactor: 1.5",
                           "Ignoring invalid value for joint::setMotorSpeed: nan"}));
    EXPECT_EQ(capture.texts(LOG_ERROR), QStringList({"Cannot set same body for both bodyA and bodyB of joint.",
                                                     "Could not find id for new body being set in joint"}));
    EXPECT_TRUE(lastRunChangedNothing()) << "nothing was changed, so nothing was recorded";
    EXPECT_EQ(world().findJoint(1)->bodyA, world().findBody(1));
}

TEST_F(ItemHandles, ImageSettersAndGetters)
{
    const QStringList before = run(R"(
image i = getImage('sprite');
print(i.getFile()); print(i.getCenter()); print(i.getAngle()); print(i.getScale()); print(i.getHeight());
print(i.getAspectScale()); print(i.getOpacity()); print(i.getFlip()); print(i.getFilter()); print(i.getRenderOrder());
print(i.getPixelWidth()); print(i.getPixelHeight()); print(i.getColorTint().getStr255()); print(i.getBody().getName());
print(i.center);
)");
    EXPECT_EQ(before, QStringList({"sprite.png", "(1, 2)", "0.5", "2", "2", "1", "0.75", "false", "1", "3", "40", "20",
                                   "255, 128, 0, 255", "base", "(1, 2)"}));

    run(R"(
image i = getImage(1);
i.setCenter(3, 4); i.setAngle(1); i.setScale(5); i.setAspectScale(0.5); i.setOpacity(0.25); i.setFlip(true);
i.setFilter(0); i.setRenderOrder(-1); i.setColorTint(1, 2, 3, 4); i.setBody(0);
)");
    const MetaImage& image = *world().findImage(1);
    EXPECT_EQ(image.center, (Vec2{3, 4}));
    EXPECT_EQ(image.angle, 1.0f);
    EXPECT_EQ(image.scale, 5.0f);
    EXPECT_EQ(image.aspectScale, 0.5f);
    EXPECT_EQ(image.opacity, 0.25f);
    EXPECT_TRUE(image.flip);
    EXPECT_EQ(image.filter, 0);
    EXPECT_EQ(image.renderOrder, -1.0f);
    EXPECT_EQ(image.colorTint, (Color{1, 2, 3, 4}));
    EXPECT_EQ(image.body, nullptr);
    EXPECT_EQ(recorded(), QStringList({"getImage(1).setCenter(3,4);", "getImage(1).setAngle(1);",
                                       "getImage(1).setScale(5);", "getImage(1).setAspectScale(0.5);",
                                       "getImage(1).setOpacity(0.25);", "getImage(1).setFlip(1);",
                                       "getImage(1).setFilter(0);", "getImage(1).setRenderOrder(-1);",
                                       "getImage(1).setColorTint(1,2,3,4);", "getImage(1).setBody(0);"}));

    run("getImage(1).setHeight(1.5); getImage(1).setColorTint(mc255(9, 8, 7, 6)); getImage(1).setBody(getBody('arm'));");
    EXPECT_EQ(image.scale, 1.5f) << "an image's height is its scale";
    EXPECT_EQ(image.colorTint, (Color{9, 8, 7, 6}));
    EXPECT_EQ(image.body, world().findBody(2));
    EXPECT_EQ(recorded(), QStringList({"getImage(1).setHeight(1.5);", "getImage(1).setColorTint(9,8,7,6);",
                                       "getImage(1).setBody(2);"}));
}

TEST_F(ItemHandles, ImageFileAndNewImages)
{
    QImage other(7, 9, QImage::Format_ARGB32);
    other.fill(Qt::red);
    ASSERT_TRUE(other.save(m_dir.filePath("scene/other.png")));
    const QStringList printed = run(R"(
image i = getImage(1); i.setFile('other.png'); print(i.getPixelWidth()); print(i.getPixelHeight());
image n = addImage('sprite.png', mv(-3, 2)); print(n.valid); print(n.getName()); print(n.getCenter());
print(n.getPixelWidth()); print(n.getBody().valid); print(ai().length());
)");
    EXPECT_EQ(printed, QStringList({"7", "9", "true", "image0", "(-3, 2)", "40", "false", "2"}));
    const QStringList step = recorded();
    ASSERT_EQ(step.size(), 2);
    EXPECT_EQ(step[0], "getImage(1).setFile('other.png');");
    EXPECT_TRUE(step[1].startsWith("addImage(2, '{")) << step[1].toStdString();
    m_document.undoStack().undo();
    EXPECT_EQ(world().findImage(1)->file, "sprite.png");
    EXPECT_EQ(world().images().size(), 1u);
}

TEST_F(ItemHandles, ImageAndSamplerRefusals)
{
    LogCapture capture;
    runLogged(R"(
image i = getImage(1);
i.setOpacity(1.5); i.setScale(0); i.setAspectScale(-1); i.setFilter(-1); i.setColorTint(256, 0, 0, 0); i.setBody(42);
sampler s = getSampler(1);
s.setAlphaEdgeThreshold(2); s.setOutputWidth(-5); s.setOutputHeight(100000); s.setHeight(-1); s.setBody(getBody(77));
)");
    EXPECT_EQ(capture.texts(LOG_WARNING),
              QStringList({"Ignoring invalid value for image::setOpacity: 1.5", "Ignoring invalid value for image::setScale: 0",
                           "Ignoring invalid value for image::setAspectScale: -1",
                           "Ignoring invalid value for image::setFilter: -1",
                           "Ignoring invalid value for image::setColorTint: 256",
                           "Could not find body of id 42 to set for image.",
                           "Ignoring invalid value for sampler::setAlphaEdgeThreshold: 2",
                           "Ignoring invalid value for sampler::setOutputWidth: -5",
                           "Ignoring invalid value for sampler::setOutputHeight: 100000",
                           "Ignoring invalid value for sampler::setHeight: -1",
                           "Could not find body of id 0 to set for sampler."}));
    EXPECT_TRUE(lastRunChangedNothing());
}

TEST_F(ItemHandles, SamplerSettersAndGetters)
{
    const QStringList before = run(R"(
sampler s = getSampler('tracer');
print(s.getFile()); print(s.getCenter()); print(s.getAngle()); print(s.getHeight()); print(s.getOpacity());
print(s.getAlphaEdgeThreshold()); print(s.getFlip()); print(s.getOutputWidth()); print(s.getOutputHeight());
print(s.getColorTint().getStr255()); print(s.getAutoUpdate()); print(s.getUseColor()); print(s.getBody().getName());
)");
    EXPECT_EQ(before, QStringList({"sprite.png", "(0, 1)", "0", "2", "1", "0.5", "false", "64", "32", "255, 255, 255, 255",
                                   "false", "false", "arm"}));
    run(R"(
sampler s = getSampler(1);
s.setFile('other.png'); s.setCenter(mv(2, 3)); s.setAngle(0.5); s.setHeight(4); s.setOutputWidth(128); s.setOutputHeight(0);
s.setOpacity(0.5); s.setAlphaEdgeThreshold(0.25); s.setFlip(1); s.setColorTint(mc1(1, 0, 0, 1)); s.setAutoUpdate(true);
s.setUseColor(1); s.setBody(3);
)");
    const MetaSampler& sampler = *world().findSampler(1);
    EXPECT_EQ(sampler.file, "other.png");
    EXPECT_EQ(sampler.center, (Vec2{2, 3}));
    EXPECT_EQ(sampler.angle, 0.5f);
    EXPECT_EQ(sampler.height, 4.0f);
    EXPECT_EQ(sampler.outputWidth, 128);
    EXPECT_EQ(sampler.outputHeight, 0);
    EXPECT_EQ(sampler.opacity, 0.5f);
    EXPECT_EQ(sampler.alphaEdgeThreshold, 0.25f);
    EXPECT_TRUE(sampler.flip);
    EXPECT_EQ(sampler.colorTint, (Color{255, 0, 0, 255}));
    EXPECT_TRUE(sampler.autoUpdate);
    EXPECT_TRUE(sampler.useColor);
    EXPECT_EQ(sampler.body, world().findBody(3));
    EXPECT_EQ(recorded(), QStringList({"getSampler(1).setFile('other.png');", "getSampler(1).setCenter(2,3);",
                                       "getSampler(1).setAngle(0.5);", "getSampler(1).setHeight(4);",
                                       "getSampler(1).setOutputWidth(128);", "getSampler(1).setOutputHeight(0);",
                                       "getSampler(1).setOpacity(0.5);", "getSampler(1).setAlphaEdgeThreshold(0.25);",
                                       "getSampler(1).setFlip(1);", "getSampler(1).setColorTint(255,0,0,255);",
                                       "getSampler(1).setAutoUpdate(1);", "getSampler(1).setUseColor(1);",
                                       "getSampler(1).setBody(3);"}));
    const QStringList added = run("sampler n = addSampler(mv(1, -1)); print(n.getName()); print(n.getCenter()); print(n.getFile());");
    EXPECT_EQ(added, QStringList({"sampler0", "(1, -1)", ""}));
}

TEST_F(ItemHandles, ObjectsAttachAtOnce)
{
    MetaObject& crate = *world().findObject(1);
    ASSERT_NE(crate.objectDocument, nullptr) << "attached when the scene was";
    const QString objectFile = m_dir.filePath("scene/object.plax");
    EXPECT_EQ(m_cache.referenceCount(objectFile), 1);

    const QStringList printed = run(R"(
object o = getObject('crate');
print(o.getFile()); print(o.pos); print(o.getAngle()); print(o.getScale()); print(o.getFlip());
o.setPosition(1, 2); o.setAngle(0.5); o.setScale(2); o.setFlip(true); print(o.getScale());
object n = addObject('object.plax', mv(7, 8)); print(n.getName()); print(n.pos); print(n.id);
)");
    EXPECT_EQ(printed, QStringList({"object.plax", "(5, 5)", "0", "1", "false", "2", "object0", "(7, 8)", "2"}));
    EXPECT_EQ(crate.position, (Vec2{1, 2}));
    EXPECT_EQ(crate.angle, 0.5f);
    EXPECT_TRUE(crate.flip);
    EXPECT_EQ(m_cache.referenceCount(objectFile), 2) << "the new instance is attached at once";

    run("getObject(2).delete();");
    EXPECT_EQ(m_cache.referenceCount(objectFile), 1) << "a deleted instance lets go of its file";
    m_document.undoStack().undo();
    EXPECT_EQ(m_cache.referenceCount(objectFile), 2) << "and undo attaches it again";
    EXPECT_NE(world().findObject(2)->objectDocument, nullptr);
}

TEST_F(ItemHandles, ObjectSetFileRefusesMissingAndLoopingFiles)
{
    MetaObject& crate = *world().findObject(1);
    EditorDocument* attached = crate.objectDocument;
    ASSERT_NE(attached, nullptr);
    {
        LogCapture capture;
        runLogged("getObject(1).setFile('missing.plax');");
        EXPECT_TRUE(capture.texts(LOG_WARNING).contains("Could not load object file: missing.plax"));
        EXPECT_EQ(crate.file, "object.plax");
        EXPECT_EQ(crate.objectDocument, attached) << "the instance is left as it was";
    }
    {
        LogCapture capture;
        runLogged("getObject(1).setFile('scene.plax');");
        EXPECT_TRUE(capture.texts(LOG_WARNING).contains("Detected loop in object instances, ignoring object file: scene.plax"));
        EXPECT_EQ(crate.file, "object.plax");
        EXPECT_EQ(crate.objectDocument, attached);
    }
    EXPECT_TRUE(lastRunChangedNothing());

    ASSERT_TRUE(QFile::copy(m_dir.filePath("scene/object.plax"), m_dir.filePath("scene/other.plax")));
    run("getObject(1).setFile('other.plax');");
    EXPECT_EQ(recorded(), QStringList({"getObject(1).setFile('other.plax');"}));
    ASSERT_NE(crate.objectDocument, nullptr);
    EXPECT_TRUE(crate.objectDocument->filePath().endsWith("other.plax")) << "the new file takes effect at once";
    EXPECT_EQ(m_cache.referenceCount(m_dir.filePath("scene/object.plax")), 0);
    m_document.undoStack().undo();
    EXPECT_TRUE(crate.objectDocument->filePath().endsWith("object.plax"));
}

TEST_F(ItemHandles, PathsAreEditedThroughTheirCommands)
{
    const QStringList printed = run(R"(
path p = getPath(1, 0);
print(p.valid); print(p.type); print(p.getType()); print(p.getRadius()); print(p.getMaxPoints()); print(p.getMinAngle());
print(p.getNumControlPoints()); print(p.getControlPoint(2)); print(getPath(1, 1).getType()); print(getPath(1, 2).valid);
print(p == getPath(1, 0)); print(p == getPath(1, 1));
)");
    EXPECT_EQ(printed, QStringList({"true", "1", "1", "0", "20", "5", "4", "(1, 1)", "2", "false", "true", "false"}));

    run(R"(
path p = getPath(1, 0);
p.setType(3); p.setRadius(0.25); p.setMaxPoints(8); p.setMinAngle(10);
p.addControlPoint(4, mv(0.5, 1.5)); p.addControlPoint(0, -0.5, 0.5); p.setControlPoint(1, mv(0.1, 0.2));
p.setControlPoint(2, 1.25, 0); p.deleteControlPoint(3);
)");
    const MetaPath& path = world().findSampler(1)->paths[0];
    EXPECT_EQ(path.type, ShapeType(3));
    EXPECT_EQ(path.radius, 0.25f);
    EXPECT_EQ(path.maxPoints, 8);
    EXPECT_EQ(path.minAngle, 10);
    EXPECT_EQ(path.controlPoints, (std::vector<Vec2>{{-0.5f, 0.5f}, {0.1f, 0.2f}, {1.25f, 0}, {0, 1}, {0.5f, 1.5f}}));
    const QStringList expected = {"getPath(1,0).setType(3);",
                                  "getPath(1,0).setRadius(0.25);",
                                  "getPath(1,0).setMaxPoints(8);",
                                  "getPath(1,0).setMinAngle(10);",
                                  "getPath(1,0).addControlPoint(4, 0.5, 1.5);",
                                  "getPath(1,0).addControlPoint(0, -0.5, 0.5);",
                                  "getPath(1,0).setControlPoint(1, 0.1, 0.2);",
                                  "getPath(1,0).setControlPoint(2, 1.25, 0);",
                                  "getPath(1,0).deleteControlPoint(3);"};
    EXPECT_EQ(recorded(), expected);
    m_document.undoStack().undo();
    const MetaPath& undone = world().findSampler(1)->paths[0];
    EXPECT_EQ(undone.controlPoints, (std::vector<Vec2>{{0, 0}, {1, 0}, {1, 1}, {0, 1}}));
    EXPECT_EQ(undone.type, ShapeType(1));
    EXPECT_EQ(undone.maxPoints, 20);
}

TEST_F(ItemHandles, PathWorldPointsFollowTheSamplerAndItsBody)
{
    // The sampler sits at (0, 1) on body "arm" at (1, 2) turned by 0.5.
    const QStringList printed = run(R"(
path p = getPath(1, 0);
body arm = getBody('arm');
print(p.getWorldControlPoint(1) == arm.getWorldPoint(mv(1, 1)));
getSampler(1).setFlip(true);
print(p.getWorldControlPoint(1) == arm.getWorldPoint(mv(-1, 1)));
)");
    EXPECT_EQ(printed, QStringList({"true", "true"}));
}

TEST_F(ItemHandles, PathRefusals)
{
    LogCapture capture;
    runLogged(R"(
path p = getPath(1, 0);
p.setType(7); p.setRadius(-1); p.setMaxPoints(-2); p.setMinAngle(181); p.addControlPoint(9, 0, 0);
p.setControlPoint(-1, mv(0, 0)); p.deleteControlPoint(4); p.getControlPoint(4);
)");
    EXPECT_EQ(capture.texts(LOG_WARNING),
              QStringList({"Ignoring attempt to set invalid path type: 7", "Ignoring attempt to set negative radius for path",
                           "Ignoring invalid value for path::setMaxPoints: -2",
                           "Ignoring invalid value for path::setMinAngle: 181", "Invalid control point index: 1:0:9",
                           "Invalid control point index: 1:0:-1", "Invalid control point index: 1:0:4",
                           "Invalid control point index: 1:0:4"}));
    EXPECT_TRUE(lastRunChangedNothing());
}

TEST_F(ItemHandles, InvalidHandlesAreReported)
{
    LogCapture capture;
    runLogged(R"(
joint j = getJoint(99); j.setLength(1); j.getType();
image i = getImage('none'); i.setAngle(1); i.getPixelWidth();
sampler s = getSampler(12); s.setHeight(2); s.getOutputWidth();
object o = getObject(5); o.setFile('x.plax'); o.getScale();
path p = getPath(1, 9); p.setRadius(1); p.getNumControlPoints();
path q = getPath(77, 0); q.getType();
)");
    EXPECT_EQ(capture.texts(LOG_ERROR),
              QStringList({"Script attempted to use invalid joint", "Script attempted to use invalid joint",
                           "Script attempted to use invalid image", "Script attempted to use invalid image",
                           "Script attempted to use invalid sampler", "Script attempted to use invalid sampler",
                           "Script attempted to use invalid object", "Script attempted to use invalid object",
                           "Script attempted to use invalid path", "Script attempted to use invalid path",
                           "Script attempted to use invalid path"}));
    EXPECT_TRUE(lastRunChangedNothing());
}

TEST_F(ItemHandles, PrintNamesEachHandle)
{
    const QStringList printed = run(R"(
print(getJoint(3)); print(getImage(1)); print(getSampler(1)); print(getObject(1)); print(getPath(1, 1));
print(aj()); print(getImage(4)); print(getPath(3, 0));
)");
    EXPECT_EQ(printed, QStringList({"joint 3", "image 1", "sampler 1", "object 1", "path 1 of sampler 1",
                                    "[joint 1, joint 2, joint 3, joint 4, joint 5, joint 6, joint 7, joint 8]",
                                    "invalid image", "invalid path"}));
}

TEST_F(ItemHandles, EachPathEditIsUndoneOnItsOwn)
{
    const MetaSampler& sampler = *world().findSampler(1);
    auto path = [&]() -> const MetaPath& { return sampler.paths[0]; };
    const char* edits[] = {"setType(3)",          "setRadius(0.5)",          "setMaxPoints(7)",
                           "setMinAngle(30)",     "addControlPoint(2, 0.5, -0.5)", "setControlPoint(0, mv(-1, -1))",
                           "deleteControlPoint(4)"};
    std::vector<MetaPath> states = {path()};
    for (const char* edit : edits) {
        run(QStringLiteral("getPath(1, 0).%1;").arg(QLatin1String(edit)));
        states.push_back(path());
        EXPECT_NE(states.back(), states[states.size() - 2]) << edit << " changed the path";
    }
    EXPECT_EQ(path().controlPoints, (std::vector<Vec2>{{-1, -1}, {1, 0}, {0.5f, -0.5f}, {1, 1}}));
    for (size_t i = states.size() - 1; i > 0; --i) {
        m_document.undoStack().undo();
        EXPECT_EQ(path(), states[i - 1]) << "undo of " << edits[i - 1];
    }
    for (size_t i = 1; i < states.size(); ++i) {
        m_document.undoStack().redo();
        EXPECT_EQ(path(), states[i]) << "redo of " << edits[i - 1];
    }
}
