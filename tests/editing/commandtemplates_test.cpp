#include "edittestsupport.h"

#include "editing/custompropertycommands.h"
#include "editing/itemcommands.h"
#include "editing/propertycommands.h"
#include "editing/vertexcommands.h"
#include "model/metabody.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
struct Expected
{
    QString redo;
    QString undo;
};

void expectTexts(RecordingHost& host, const ScriptCommand& command, const Expected& expected)
{
    EXPECT_EQ(command.redoScript(), expected.redo);
    EXPECT_EQ(command.undoScript(), expected.undo);
    EXPECT_EQ(command.text(), expected.redo) << "the history lists the redo script";
    EXPECT_EQ(host.logLines.last(), expected.redo) << "and the script log gets it";
}
} // namespace

TEST(CommandTemplates, ItemCommands)
{
    RecordingHost h;
    expectTexts(h, SelectCommand(&h, ItemKind::Body, 3), {"getBody(3).select();", "getBody(3).deselect();"});
    expectTexts(h, DeselectCommand(&h, ItemKind::Joint, 4), {"getJoint(4).deselect();", "getJoint(4).select();"});
    expectTexts(h, SetNameCommand(&h, ItemKind::Fixture, 5, "old", "new"),
                {"getFixture(5).setName(\"new\");", "getFixture(5).setName(\"old\");"});
    expectTexts(h, AddBodyCommand(&h, 2, "{\"name\":\"it's\"}"),
                {"addBody(2, '{\"name\":\"it\\'s\"}');", "getBody(2).delete();"});
    expectTexts(h, DeleteBodyCommand(&h, 2, "{}"), {"getBody(2).delete();", "addBody(2, '{}');"});
    expectTexts(h, AddFixtureCommand(&h, 2, 9, "{}"), {"getBody(2).addFixture(9, '{}');", "getFixture(9).delete();"});
    expectTexts(h, DeleteFixtureCommand(&h, 2, 9, "{}"), {"getFixture(9).delete();", "getBody(2).addFixture(9, '{}');"});
    expectTexts(h, AddJointCommand(&h, 1, "{}"), {"addJoint(1, '{}');", "getJoint(1).delete();"});
    expectTexts(h, DeleteImageCommand(&h, 6, "{}"), {"getImage(6).delete();", "addImage(6, '{}');"});
    expectTexts(h, AddSamplerCommand(&h, 7, "{}"), {"addSampler(7, '{}');", "getSampler(7).delete();"});
    expectTexts(h, DeleteObjectCommand(&h, 8, "{}"), {"getObject(8).delete();", "addObject(8, '{}');"});
    expectTexts(h, ReverseFixureWindingCommand(&h, 4),
                {"getFixture(4).reverseWinding();", "getFixture(4).reverseWinding();"});
}

TEST(CommandTemplates, PropertyCommands)
{
    RecordingHost h;
    expectTexts(h, SetItemPropertyIntCommand(&h, "getFixture", "setFilterGroupIndex", 3, -1, 2),
                {"getFixture(3).setFilterGroupIndex(2);", "getFixture(3).setFilterGroupIndex(-1);"});
    expectTexts(h, SetItemPropertyUintCommand(&h, "getBody", "setThing", 3, 1, 4000000000u),
                {"getBody(3).setThing(4000000000);", "getBody(3).setThing(1);"});
    expectTexts(h, SetItemPropertyFloatCommand(&h, "getBody", "setAngle", 3, 0.5f, 1.25f),
                {"getBody(3).setAngle(1.25);", "getBody(3).setAngle(0.5);"});
    expectTexts(h, SetItemPropertyVecCommand(&h, "getBody", "setPosition", 3, {1, 2}, {-3.5f, 1e6f}),
                {"getBody(3).setPosition(-3.5,1e+06);", "getBody(3).setPosition(1,2);"});
    expectTexts(h, SetItemPropertyStringCommand(&h, "getImage", "setFile", 2, "a.png", "it's.png"),
                {"getImage(2).setFile('it\\'s.png');", "getImage(2).setFile('a.png');"});
    expectTexts(h, SetItemPropertyColorCommand(&h, "getImage", "setColorTint", 2, {1, 2, 3, 4}, {5, 6, 7, 8}),
                {"getImage(2).setColorTint(5,6,7,8);", "getImage(2).setColorTint(1,2,3,4);"});
    expectTexts(h, SetCollisionBitPlaneNameCommand(&h, 3, "", "walls"),
                {"setCollisionBitplaneName(3, 'walls');", "setCollisionBitplaneName(3, '');"});
    SetCursorPositionCommand cursor(&h, {0, 0}, {1.5f, 2});
    expectTexts(h, cursor, {"setCursor(1.5, 2);", "setCursor(0, 0);"});
    EXPECT_FALSE(cursor.modifiesScene());
    expectTexts(h, SetWorldGravityCommand(&h, {0, -10}, {0, -9.8f}), {"setGravity(0, -9.8);", "setGravity(0, -10);"});
    expectTexts(h, SetWorldPropertyIntCommand(&h, "setSimulationVelocityIterations", 8, 10),
                {"setSimulationVelocityIterations(10);", "setSimulationVelocityIterations(8);"});
    expectTexts(h, SetWorldPropertyFloatCommand(&h, "setSimulationStepsPerSecond", 60, 30),
                {"setSimulationStepsPerSecond(30);", "setSimulationStepsPerSecond(60);"});
}

TEST(CommandTemplates, VertexShapeAndPathCommands)
{
    RecordingHost h;
    SelectVertexCommand select(&h, 4, 2);
    expectTexts(h, select, {"getVertex(4,2).select();", "getVertex(4,2).deselect();"});
    EXPECT_FALSE(select.modifiesScene());
    expectTexts(h, DeselectVertexCommand(&h, 4, 2), {"getVertex(4,2).deselect();", "getVertex(4,2).select();"});
    expectTexts(h, SetVertexPositionCommand(&h, 4, 2, {1, 2}, {3, 4}),
                {"getVertex(4,2).setPos(3, 4);", "getVertex(4,2).setPos(1, 2);"});
    expectTexts(h, AddVertexCommand(&h, 4, 2, {0.5f, 0.25f}),
                {"getFixture(4).addVertex(2, 0.5, 0.25);", "getVertex(4,2).delete();"});
    expectTexts(h, DeleteVertexCommand(&h, 4, 2, {0.5f, 0.25f}),
                {"getVertex(4,2).delete();", "getFixture(4).addVertex(2, 0.5, 0.25);"});
    expectTexts(h, SetShapeTypeCommand(&h, 4, 0, ShapeType(1), ShapeType(3)), {"getShape(4,0).setType(3);", "getShape(4,0).setType(1);"});
    expectTexts(h, SetShapeRadiusCommand(&h, 4, 0, 0, 0.5f), {"getShape(4,0).setRadius(0.5);", "getShape(4,0).setRadius(0);"});
    expectTexts(h, SetPathTypeCommand(&h, 5, 1, ShapeType(0), ShapeType(2)), {"getPath(5,1).setType(2);", "getPath(5,1).setType(0);"});
    expectTexts(h, SetPathRadiusCommand(&h, 5, 1, 1, 2), {"getPath(5,1).setRadius(2);", "getPath(5,1).setRadius(1);"});
    expectTexts(h, SetPathPropertyIntCommand(&h, 5, 1, "setMaxPoints", 10, 20),
                {"getPath(5,1).setMaxPoints(20);", "getPath(5,1).setMaxPoints(10);"});
    expectTexts(h, SetControlPointCommand(&h, 5, 1, 3, {1, 2}, {3, 4}),
                {"getPath(5,1).setControlPoint(3, 3, 4);", "getPath(5,1).setControlPoint(3, 1, 2);"});
    expectTexts(h, AddControlPointCommand(&h, 5, 1, 3, {1, 2}),
                {"getPath(5,1).addControlPoint(3, 1, 2);", "getPath(5,1).deleteControlPoint(3);"});
    expectTexts(h, DeleteControlPointCommand(&h, 5, 1, 3, {0.1f, -2.5f}),
                {"getPath(5,1).deleteControlPoint(3);", "getPath(5,1).addControlPoint(3, 0.1, -2.5);"});
}

TEST(CommandTemplates, CustomPropertyCommands)
{
    RecordingHost h;
    MetaBody* body = h.world().addBody(std::make_unique<MetaBody>(), 2);
    expectTexts(h, AddCustomPropertyCommand(&h, "body", "speed", "Speed", "float"),
                {"addCustomProperty('body','speed','Speed','float');", "removeCustomProperty('body','speed');"});
    expectTexts(h, RemoveCustomPropertyCommand(&h, "body", "speed", "Speed", "float"),
                {"removeCustomProperty('body','speed');", "addCustomProperty('body','speed','Speed','float');"});
    expectTexts(h, SetCustomPropertyNamesCommand(&h, "body", "speed", "Speed", "velocity", "Velocity"),
                {"setCustomPropertyNames('body','speed','velocity','Velocity');",
                 "setCustomPropertyNames('body','velocity','speed','Speed');"});
    expectTexts(h, SetCustomPropertyValueCommand(&h, body, "n", false, CustomValue(), CustomValue(5)),
                {"getBody(2).setCustomInt('n',5);", "getBody(2).clearCustomProperty('n');"});
    expectTexts(h, SetCustomPropertyValueCommand(&h, nullptr, "f", true, CustomValue(1.5f), CustomValue(2.5f)),
                {"getWorld().setCustomFloat('f',2.5);", "getWorld().setCustomFloat('f',1.5);"});
    expectTexts(h, SetCustomPropertyValueCommand(&h, body, "s", true, CustomValue(QString("a")), CustomValue(QString("b'"))),
                {"getBody(2).setCustomString('s','b\\'');", "getBody(2).setCustomString('s','a');"});
    expectTexts(h, SetCustomPropertyValueCommand(&h, body, "b", true, CustomValue(false), CustomValue(true)),
                {"getBody(2).setCustomBool('b',1);", "getBody(2).setCustomBool('b',0);"});
    expectTexts(h, SetCustomPropertyValueCommand(&h, body, "v", false, CustomValue(), CustomValue(Vec2{1, 2})),
                {"{vec2 plaxscript_tmp_v;plaxscript_tmp_v.set(1,2); getBody(2).setCustomVec2('v',plaxscript_tmp_v);}",
                 "getBody(2).clearCustomProperty('v');"});
    expectTexts(h, SetCustomPropertyValueCommand(&h, body, "c", false, CustomValue(), CustomValue(Color{1, 2, 3, 4})),
                {"{color plaxscript_tmp_v;plaxscript_tmp_v.set255(1,2,3,4); getBody(2).setCustomColor('c',plaxscript_tmp_v);}",
                 "getBody(2).clearCustomProperty('c');"});
    ClearCustomPropertyValueCommand clear(&h, body, "c", CustomValue(Color{255, 0, 51, 255}));
    expectTexts(h, clear, {"getBody(2).clearCustomProperty('c');", "getBody(2).setCustomColor('c',mc1(1,0,0.2,1));"});
}
