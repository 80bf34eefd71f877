// Search, duplicate, transforms, step, sorting, hook data and queries.
#include "scripttesting.h"

#include "api/scripthookdata.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{
class ScriptGlobals : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax"))); }

    QStringList run(const QString& text)
    {
        bool ok = false;
        QStringList printed = runAndCollectPrints(m_document, text, &ok);
        EXPECT_TRUE(ok) << text.toStdString();
        return printed;
    }

    MetaBody& body(const char* name)
    {
        return *static_cast<MetaBody*>(m_document.world().registry(ItemKind::Body).findByName(name));
    }

    QByteArray saved() { return TestFiles::savedScene(m_document.world(), m_dir.filePath("saved.plax")); }

    std::vector<Vec2> worldPoints()
    {
        std::vector<Vec2> points;
        for (const auto& b : m_document.world().bodies()) {
            const float c = std::cos(b->angle), s = std::sin(b->angle);
            for (const auto& f : b->fixtures())
                for (const Vec2& v : f->vertices())
                    points.push_back({b->position.x + c * v.x - s * v.y, b->position.y + s * v.x + c * v.y});
        }
        return points;
    }

    QTemporaryDir m_dir;
    EditorDocument m_document;
};
} // namespace

TEST_F(ScriptGlobals, SearchByCustomProperty)
{
    run("getBody('ball').setCustomInt('team', 2); getBody('crate').setCustomInt('team', 2);"
        "getBody('pendulum').setCustomInt('team', 3); getBody('ball').setCustomString('tag', 'x');"
        "getBody('crate').getFixtures()[0].setCustomVec2('v', mv(1, 2));");
    EXPECT_EQ(run("print(getBodiesByCustomInt('team', 2).length()); print(getBodiesByCustomInt('team', 3)[0].getName());"
                  "print(getBodiesByCustomString('tag', 'x').length()); print(getBodiesByCustomFloat('team', 2).length());"
                  "print(getFixturesByCustomVector('v', mv(1, 2)).length()); print(getJointsByCustomBool('b', true).length());"),
              QStringList({"2", "pendulum", "1", "0", "1", "0"}));
}

TEST_F(ScriptGlobals, DuplicateMakesFreshItemsInOneUndoStep)
{
    const QByteArray before = saved();
    const size_t bodies = m_document.world().bodies().size();
    const MetaBody& crate = body("crate");
    const QStringList printed = run("body c = duplicate(getBody('crate'), true); print(c.valid);"
                                    "print(c.id != getBody('crate').id); print(c.getName() != 'crate');"
                                    "print(c.getFixtures().length()); print(c.isSelected());"
                                    "fixture[] f = duplicate(getBody('ball').getFixtures()); print(f.length());");
    EXPECT_EQ(printed, QStringList({"true", "true", "true", QString::number(crate.fixtures().size()), "true", "1"}));
    EXPECT_EQ(m_document.world().bodies().size(), bodies + 1);
    EXPECT_EQ(body("ball").fixtures().size(), 2u);
    m_document.undoStack().undo();
    EXPECT_EQ(saved(), before);
}

TEST_F(ScriptGlobals, TranslateRotateAndScaleEachKind)
{
    const Vec2 crate = body("crate").position;
    run("translate(getBody('crate'), mv(1, 2));");
    EXPECT_EQ(body("crate").position, (Vec2{crate.x + 1, crate.y + 2}));

    const Vec2 first = body("ball").fixtures()[0]->vertices()[0];
    run("body b = getBody('ball'); b.setAngle(0); translate(b.getFixtures()[0], 0.5, 0);");
    EXPECT_FLOAT_EQ(body("ball").fixtures()[0]->vertices()[0].x, first.x + 0.5f);

    run("setCursor(0, 0); body b = getBody('crate'); b.setPosition(2, 0); b.setAngle(0); rotate(b, 2, dr(90));");
    EXPECT_NEAR(body("crate").position.x, 0, 1e-5);
    EXPECT_NEAR(body("crate").position.y, 2, 1e-5);
    EXPECT_NEAR(body("crate").angle, 1.5707963f, 1e-5);

    run("body b = getBody('crate'); b.setPosition(2, 4); scale(b, 2, 2, 3);");
    EXPECT_EQ(body("crate").position, (Vec2{4, 12}));

    const MetaJoint& joint = *m_document.world().joints()[0];
    const Vec2 anchorA = joint.anchorA;
    const Vec2 anchorB = joint.anchorB;
    run("translate(getJoint(" + QString::number(joint.id()) + "), 1, mv(0, 0.5));");
    EXPECT_EQ(joint.anchorA, anchorA) << "anchor selector 1 moves only anchor B";
    EXPECT_NE(joint.anchorB, anchorB);

    LogCapture capture;
    EXPECT_TRUE(m_document.scripting().runOneShot("scale(getBody('crate'), 0, 0, 1); translate(ab(), sqrt(-1), 0);", QString()));
    EXPECT_EQ(body("crate").position, (Vec2{4, 12})) << "degenerate transforms are refused";
    EXPECT_TRUE(capture.texts(LOG_WARNING).contains("Ignoring scale by 0"));
}

TEST_F(ScriptGlobals, FourQuarterTurnsComeBackAndOneUndoRestoresTheScene)
{
    const QByteArray before = saved();
    const std::vector<Vec2> points = worldPoints();
    run("for (int i = 0; i < 4; i++) { rotate(ab(), 1, dr(90)); rotate(af(), 2, dr(90)); }");
    const std::vector<Vec2> after = worldPoints();
    ASSERT_EQ(after.size(), points.size());
    for (size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(after[i].x, points[i].x, 1e-5);
        EXPECT_NEAR(after[i].y, points[i].y, 1e-5);
    }
    m_document.undoStack().undo();
    EXPECT_EQ(saved(), before);
}

TEST_F(ScriptGlobals, StepSimulatesTheGivenBodiesAsOneUndoStep)
{
    const QByteArray before = saved();
    const float y = body("crate").position.y;
    run("body[] one = {getBody('crate')}; step(one, 30);");
    EXPECT_LT(body("crate").position.y, y) << "the crate falls";
    EXPECT_EQ(m_document.undoStack().count(), 1);
    m_document.undoStack().undo();
    EXPECT_EQ(saved(), before);
}

TEST_F(ScriptGlobals, SortAndFilterWithCallbacks)
{
    const QStringList printed = run(R"(
bool byName(body a, body b) { return a.getName() < b.getName(); }
bool dynamicOnly(body b) { return b.getType() == 2; }
bool throws(body b) { int z = 0; return 1 / z == 0; }
void main()
{
    body[] sorted = sortBodies(ab(), byName);
    print(sorted[0].getName());
    print(sorted[sorted.length() - 1].getName());
    print(filterBodies(ab(), dynamicOnly).length());
    print(filterBodies(ab(), throws).length() == ab().length());
}
)");
    size_t dynamic = 0;
    QStringList names;
    for (const auto& b : m_document.world().bodies()) {
        dynamic += b->type == BodyType::Dynamic;
        names << b->name();
    }
    names.sort();
    EXPECT_EQ(printed, QStringList({names.first(), names.last(), QString::number(dynamic), "true"}));
}

TEST_F(ScriptGlobals, HookDataIsEmptyOutsideHooks)
{
    EXPECT_EQ(run("print(getHookEventName()); print(getManipulatedBodies().length());"), QStringList({"", "0"}));
    ScriptHookData data;
    data.eventName = "after translate";
    data.manipulationType = "translate";
    data.bodies = {body("ball").id()};
    ScriptHookDataScope scope(data);
    EXPECT_EQ(run("print(getHookEventName()); print(getManipulationType()); print(getManipulatedBodies()[0].getName());"),
              QStringList({"after translate", "translate", "ball"}));
}

TEST_F(ScriptGlobals, QueriesWithoutDialogsGiveTheirDefaults)
{
    LogCapture capture;
    EXPECT_TRUE(m_document.scripting().runOneShot(
        "print(queryNumericValue('n', 4.5)); print(queryVectorValue('v', 1, 2)); print(queryStringValue('s', 'x'));"
        "print(queryYesNo('q')); print(queryOpenFile('f') == '');",
        QString()));
    EXPECT_EQ(capture.texts(LOG_SCRIPT), QStringList({"4.5", "(1, 2)", "x", "false", "true"}));
    EXPECT_EQ(capture.texts(LOG_WARNING).size(), 5);
}

TEST_F(ScriptGlobals, SelectionCenter)
{
    run("getBody('crate').select(); getBody('ball').select();");
    const Vec2 a = body("crate").position, b = body("ball").position;
    const QStringList printed = run("vec2 c = getSelectionCenter(0); print(c.x); print(c.y);");
    EXPECT_EQ(printed, QStringList({QString::number((a.x + b.x) / 2, 'g', 6), QString::number((a.y + b.y) / 2, 'g', 6)}));
}
