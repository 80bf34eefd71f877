// The batch tool running scripts that change a scene through the script
// API, then resaving it.
#include "support/plaxrun.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
const QByteArray kScene = R"({"metaworld": {
  "metabody": [
    {"id": 1, "name": "ground", "type": "static",
     "fixture": [{"id": 1, "shapes": [{"type": "line", "vertices": {"x": [-5, 5], "y": [0, 0]}}]}]},
    {"id": 2, "name": "box", "type": "dynamic", "position": {"x": 0, "y": 2},
     "fixture": [{"id": 2, "name": "square",
                  "shapes": [{"type": "polygon", "vertices": {"x": [-1, 1, 1, -1], "y": [-1, -1, 1, 1]}}]}]}
  ]
}})";

QJsonArray bodiesOf(const PlaxSandbox& box, const QString& name)
{
    return QJsonDocument::fromJson(box.read(name)).object()["metaworld"].toObject()["metabody"].toArray();
}
} // namespace

TEST(BatchScriptApi, ScriptEditsAreResaved)
{
    PlaxSandbox box;
    box.write("scene.plax", kScene);
    box.write("edit.rs", R"(
body b = getBody("box");
b.setName("crate");
b.setPosition(3, 4);
fixture f = b.getFixtures()[0];
f.setDensity(2.5);
f.setVertex(0, -2, -2);
body added = addBody(0, '{"name":"new","type":"dynamic","position":{"x":7,"y":0}}');
getBody("ground").delete();
setGravity(0, -5);
)");
    const PlaxRun run = box.run({"-v", "-i", "scene.plax", "-s", "edit.rs", "-r", "out.plax"});
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_FALSE(run.log.contains("created:")) << "command-line runs do not log each command";

    const QJsonArray bodies = bodiesOf(box, "out.plax");
    ASSERT_EQ(bodies.size(), 2);
    const QJsonObject crate = bodies[0].toObject();
    EXPECT_EQ(crate["name"].toString(), "crate");
    EXPECT_EQ(crate["position"].toObject()["x"].toString(), "40400000") << "3 as a bit pattern";
    EXPECT_EQ(bodies[1].toObject()["name"].toString(), "new");
    const QJsonObject fixture = crate["fixture"].toArray()[0].toObject();
    EXPECT_EQ(fixture["density"].toString(), "40200000") << "2.5 as a bit pattern";
    const QJsonObject gravity =
        QJsonDocument::fromJson(box.read("out.plax")).object()["metaworld"].toObject()["gravity"].toObject();
    EXPECT_EQ(gravity["y"].toString(), "C0A00000") << "-5 as a bit pattern";
}

TEST(BatchScriptApi, RefusedValuesAreLoggedAndTheRunGoesOn)
{
    PlaxSandbox box;
    box.write("scene.plax", kScene);
    box.write("edit.rs", R"(
getBody(99).setAngle(1);
getBody("box").getFixtures()[0].setDensity(-3);
getBody("box").setName("fine");
)");
    const PlaxRun run = box.run({"-i", "scene.plax", "-s", "edit.rs", "-r", "out.plax"});
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_TRUE(run.log.contains("Script attempted to use invalid body"));
    EXPECT_TRUE(run.log.contains("Ignoring negative value for fixture::setDensity: -3"));
    EXPECT_EQ(bodiesOf(box, "out.plax")[1].toObject()["name"].toString(), "fine");
}
