// The body, fixture, shape, vertex and world handles on a loaded scene:
// getters, setters, invalid handles and the rules that refuse bad values.

#include "scripttesting.h"

#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

namespace
{
class ScriptHandles : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax"))); }

    // Runs a text, expecting it to run to its end; returns its prints.
    QStringList run(const QString& text)
    {
        bool ok = false;
        QStringList printed = runAndCollectPrints(m_document, text, &ok);
        EXPECT_TRUE(ok) << text.toStdString();
        return printed;
    }

    // Runs a text without capturing the log (the caller captures it).
    void runLogged(const QString& text) { EXPECT_TRUE(m_document.scripting().runOneShot(text, QString())); }

    MetaBody& body(const char* name)
    {
        return *static_cast<MetaBody*>(m_document.world().registry(ItemKind::Body).findByName(name));
    }

    EditorDocument m_document;
};
} // namespace

TEST_F(ScriptHandles, LookupsAndGettersReadTheScene)
{
    const MetaBody& crate = body("crate");
    const QStringList printed = run(QStringLiteral(
        "body b = getBody('crate'); print(b.valid); print(b.id); print(b.getName()); print(b.pos.x);"
        "print(getBody(int(b.id)) == b); print(getBodies('crate').length()); print(ab().length());"
        "print(b.getFixtures().length()); print(getAllFixtures().length()); print(b.getType());"
        "print(b.getWorldPoint(mv(0,0)) == b.pos);"));
    EXPECT_EQ(printed[0], "true");
    EXPECT_EQ(printed[1], QString::number(crate.id()));
    EXPECT_EQ(printed[2], "crate");
    EXPECT_EQ(printed[3], QString::number(double(crate.position.x), 'g', 6));
    EXPECT_EQ(printed[4], "true");
    EXPECT_EQ(printed[5], "1");
    EXPECT_EQ(printed[6], QString::number(m_document.world().bodies().size()));
    EXPECT_EQ(printed[7], QString::number(crate.fixtures().size()));
    EXPECT_EQ(printed[8], QString::number(m_document.world().fixtureCount()));
    EXPECT_EQ(printed[9], QString::number(int(crate.type)));
    EXPECT_EQ(printed[10], "true");
}

TEST_F(ScriptHandles, SettersChangeTheSceneAndSelectionFollowsTheHandles)
{
    run(QStringLiteral("body b = getBody('ball'); b.setAngle(1.5); b.setLinearVelocity(mv(1, 2)); b.setBullet(7);"
                       "b.select(); fixture f = b.getFixtures()[0]; f.setDensity(3); f.setSensor(1);"
                       "f.getVertex(0).select();"));
    MetaBody& ball = body("ball");
    EXPECT_EQ(ball.angle, 1.5f);
    EXPECT_EQ(ball.linearVelocity, (Vec2{1, 2}));
    EXPECT_TRUE(ball.bullet) << "any non-zero int is true";
    EXPECT_EQ(ball.fixtures()[0]->density, 3.0f);
    EXPECT_TRUE(ball.fixtures()[0]->sensor);
    EXPECT_TRUE(m_document.selection().contains(ItemKind::Body, ball.id()));
    EXPECT_TRUE(m_document.selection().containsVertex(ball.fixtures()[0]->id(), 0));
    EXPECT_EQ(run("print(sb().length()); print(sv().length()); print(sb()[0].isSelected());"),
              QStringList({"1", "1", "true"}));
}

TEST_F(ScriptHandles, InvalidHandlesAreReportedAndChangeNothing)
{
    LogCapture capture;
    runLogged("body b = getBody(12345); b.setAngle(1);");
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Script attempted to use invalid body"));

    capture.clear();
    runLogged("body b = getBody('crate'); fixture f = b.getFixtures()[0]; b.delete(); f.setDensity(2);"
              "f.getBody(); body nothing; nothing.getWorldPoint(mv(1,1));");
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Script attempted to use invalid fixture"));
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("getBody called on invalid fixture"));
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("getWorldPoint called on invalid body"));
    EXPECT_EQ(m_document.world().registry(ItemKind::Body).findByName("crate"), nullptr);
    EXPECT_EQ(run("body b = getBody(12345); print(b.valid); print(b.getAngle()); body n; print(n.valid);"
                  "print(n.getWorldPoint(mv(1,1)));"),
              QStringList({"false", "0", "false", "(0, 0)"}));
}

TEST_F(ScriptHandles, BadValuesAreRefusedWithTheirMessages)
{
    MetaBody& ball = body("ball");
    const float density = ball.fixtures()[0]->density;
    const float angle = ball.angle;
    const int count = m_document.undoStack().count();
    LogCapture capture;
    runLogged("body b = getBody('ball'); fixture f = b.getFixtures()[0]; f.setDensity(-1); b.setAngle(sqrt(-1));"
              "f.getShape(0).setType(9); f.getShape(0).setRadius(-2); f.setVertex(99, 1, 1); b.setName(\"bad'name\");"
              "body added = addBody(0, '{not json'); setSimulationStepsPerSecond(0);");
    EXPECT_EQ(ball.fixtures()[0]->density, density);
    EXPECT_EQ(ball.angle, angle);
    EXPECT_EQ(ball.name(), "ball");
    const QStringList warnings = capture.texts(LOG_WARNING);
    EXPECT_TRUE(warnings.contains("Ignoring negative value for fixture::setDensity: -1"));
    EXPECT_TRUE(warnings.contains("Ignoring attempt to set invalid shape type: 9"));
    EXPECT_TRUE(warnings.contains("Ignoring attempt to set negative radius for shape"));
    EXPECT_TRUE(warnings.contains(QStringLiteral("Invalid vertex index: %1:99").arg(ball.fixtures()[0]->id())));
    EXPECT_TRUE(warnings.contains("Ignoring attempt to set name with invalid characters"));
    EXPECT_TRUE(std::any_of(warnings.begin(), warnings.end(), [](const QString& w) {
        return w.startsWith("Ignoring invalid value for body::setAngle");
    }));
    const QStringList errors = capture.texts(LOG_ERROR);
    EXPECT_TRUE(std::any_of(errors.begin(), errors.end(),
                            [](const QString& e) { return e.startsWith("Failed to parse body JSON"); }));
    ASSERT_EQ(m_document.undoStack().count(), count + 1);
    EXPECT_EQ(m_document.undoStack().command(count)->childCount(), 0) << "the run recorded no change";
}

TEST_F(ScriptHandles, DeletingABodyTakesItsFixturesAndJointsAndUndoBringsThemBack)
{
    MetaBody& chassis = body("chassis");
    const ItemId chassisId = chassis.id();
    const size_t joints = m_document.world().joints().size();
    const size_t fixtures = m_document.world().fixtureCount();
    run("getBody('chassis').select(); getBody('chassis').delete();");
    EXPECT_EQ(m_document.world().findBody(chassisId), nullptr);
    EXPECT_LT(m_document.world().joints().size(), joints);
    EXPECT_LT(m_document.world().fixtureCount(), fixtures);
    EXPECT_TRUE(m_document.selection().items(ItemKind::Body).empty());
    m_document.undoStack().undo();
    ASSERT_NE(m_document.world().findBody(chassisId), nullptr);
    EXPECT_EQ(m_document.world().findBody(chassisId)->name(), "chassis");
    EXPECT_EQ(m_document.world().joints().size(), joints);
    EXPECT_EQ(m_document.world().fixtureCount(), fixtures);
}

TEST_F(ScriptHandles, WorldSettingsBitplanesAndCustomProperties)
{
    run("setGravity(1, -2); setSimulationVelocityIterations(12); setCollisionBitplaneName(2, 'walls');"
        "addCustomProperty('body', 'speed', 'Speed', 'float'); getBody('ball').setCustomFloat('speed', 2.5);"
        "getWorld().setCustomColor('tint', mc255(255, 0, 51, 255));");
    const MetaWorld& world = m_document.world();
    EXPECT_EQ(world.settings.gravity, (Vec2{1, -2}));
    EXPECT_EQ(world.settings.velocityIterations, 12);
    ASSERT_GT(world.collisionBitplaneNames.size(), 2);
    EXPECT_EQ(world.collisionBitplaneNames[2], "walls");
    EXPECT_EQ(run("print(getCollisionBitplaneName(2)); print(getBody('ball').getCustomFloat('speed'));"
                  "print(getBody('ball').getCustomFloat('missing', 7)); print(getBody('ball').getCustomPropertyType('speed'));"
                  "print(getWorld().getCustomColor('tint').getStr255()); print(getCustomProperties('body').length() > 0);"
                  "print(getBody('ball').hasCustomProperty('speed'));"),
              QStringList({"walls", "2.5", "7", "float", "255, 0, 51, 255", "true", "true"}));
}

TEST_F(ScriptHandles, ComboboxEntriesAreInsertedAndRemovedAndUndoneOneRunAtATime)
{
    run("addCustomProperty('body', 'size', 'Size', 'string');");
    const auto entries = [this] {
        for (const CustomPropertyDef& d : m_document.world().customPropertyDefs)
            if (d.name == "size")
                return d.comboboxEntries;
        return QStringList({"<no definition>"});
    };
    run("insertCustomPropertyComboboxEntry('body', 'size', 'large');"
        "insertCustomPropertyComboboxEntry('body', 'size', 'small', 0);");
    EXPECT_EQ(entries(), QStringList({"small", "large"}));
    run("removeCustomPropertyComboboxEntry('body', 'size', 1);");
    EXPECT_EQ(entries(), QStringList({"small"}));
    EXPECT_EQ(run("print(removeCustomPropertyComboboxEntry('body', 'size', 5));"), QStringList({"false"}));
    run("removeCustomProperty('body', 'size');");
    EXPECT_EQ(entries(), QStringList({"<no definition>"}));

    QUndoStack& undo = m_document.undoStack();
    undo.undo(); // the run that only printed
    undo.undo();
    EXPECT_EQ(entries(), QStringList({"small"})) << "the definition comes back with its entries";
    undo.undo();
    EXPECT_EQ(entries(), QStringList({"small", "large"}));
    undo.undo();
    EXPECT_TRUE(entries().isEmpty());
    undo.redo();
    EXPECT_EQ(entries(), QStringList({"small", "large"}));
}

TEST_F(ScriptHandles, PrintNamesHandlesAndArrays)
{
    const ItemId crate = body("crate").id();
    EXPECT_EQ(run("print(getBody('crate')); print(getBody(999)); print(getWorld());"),
              QStringList({QStringLiteral("body %1").arg(crate), "invalid body", "world"}));
    const QStringList printed = run("body[] two = {getBody('crate'), getBody('ball')}; print(two);");
    EXPECT_EQ(printed[0], QStringLiteral("[body %1, body %2]").arg(crate).arg(body("ball").id()));
}
