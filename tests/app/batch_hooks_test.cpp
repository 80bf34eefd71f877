// End-to-end runs of plax with the working folder's export hooks, the
// scene's after-export system command and its export filter script.
#include "support/plaxrun.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
// Three bodies; "gone" is left out by the filter, so "box" moves up to
// position 1 and the joint to it follows.
QByteArray scene(const QByteArray& command)
{
    return R"({"metaworld": {
  "metabody": [
    {"id": 1, "name": "ground", "type": "static",
     "fixture": [{"id": 1, "shapes": [{"type": "line", "vertices": {"x": [-5, 5], "y": [0, 0]}}]}]},
    {"id": 2, "name": "gone", "type": "dynamic", "position": {"x": 4, "y": 2},
     "fixture": [{"id": 2, "shapes": [{"type": "circle", "radius": 0.5}]}]},
    {"id": 3, "name": "box", "type": "dynamic", "position": {"x": 0, "y": 2},
     "fixture": [{"id": 3, "name": "square", "density": 2,
                  "shapes": [{"type": "polygon", "vertices": {"x": [-1, 1, 1, -1], "y": [-1, -1, 1, 1]}}]}]}
  ],
  "metajoint": [{"id": 1, "name": "hinge", "type": "revolute", "bodyA": 1, "bodyB": 3, "anchorA": 0, "anchorB": 0},
                {"id": 2, "name": "dropped", "type": "revolute", "bodyA": 2, "bodyB": 3, "anchorA": 0, "anchorB": 0}],
  "exportOptions": {"propertyExportFilterScriptFile": "scripts/filter.rs"},
  "systemhooks": {"afterExport": {"enabled": true, "directory": "", "command": ")" +
           command + R"("}}
}})";
}

const QByteArray kHooks = R"({"events": [
  {"trigger": "BEFORE_EXPORT", "scripts": ["hooks/before.rs"]},
  {"trigger": "AFTER_EXPORT", "scripts": ["hooks/after.rs"]}
]})";

// The before-export hook moves the box: the export must show it moved.
const QByteArray kBefore = R"(void main() {
  writeFile("before.txt", getHookEventName());
  getBody("box").setAngle(1);
})";
const QByteArray kAfter = R"(void main() {
  writeFile("after.txt", getHookEventName() + " " + (fileExists("out.json") ? "found" : "missing"));
})";
const QByteArray kFilter = R"(
bool shouldExportItem(body b) { return b.getName() != "gone"; }
bool shouldExportProperty(fixture f, const string& in path) { return path != "/world/body/fixture/density"; }
bool shouldExportProperty(body b, const string& in path) {
  if (b.getName() == "ground") { array<int> a; a[3] = 1; }
  return path != "/world/body/angularDamping";
}
void main() {}
)";

QJsonObject readJson(const PlaxSandbox& box, const QString& name)
{
    return QJsonDocument::fromJson(box.read(name)).object();
}

void writeFolder(const PlaxSandbox& box, const QByteArray& command)
{
    box.write("scene.plax", scene(command));
    box.write("config/scripthooks.json", kHooks);
    box.write("hooks/before.rs", kBefore);
    box.write("hooks/after.rs", kAfter);
    box.write("scripts/filter.rs", kFilter);
}
} // namespace

TEST(BatchHooks, ExportRunsTheHooksTheFilterAndTheSystemCommand)
{
    PlaxSandbox box;
    writeFolder(box, "echo exported %{ EXPORTFILE } from %{PLAXFILE} > marker.txt");
    const PlaxRun run = box.run({"-i", "scene.plax", "-e", "out.json", "-v"});
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString() << run.log.toStdString();

    EXPECT_EQ(box.read("before.txt"), "Before export");
    EXPECT_EQ(box.read("after.txt"), "After export found") << "the after hook runs once the file is written";
    EXPECT_EQ(box.read("marker.txt"), "exported out.json from scene.plax\n");

    const QJsonObject raw = readJson(box, "out.json");
    const QJsonArray bodies = raw["body"].toArray();
    ASSERT_EQ(bodies.size(), 2) << "the filter leaves 'gone' out";
    EXPECT_EQ(bodies[0].toObject()["name"].toString(), "ground");
    const QJsonObject boxBody = bodies[1].toObject();
    EXPECT_EQ(boxBody["name"].toString(), "box");
    EXPECT_FALSE(boxBody.contains("angularDamping")) << "a member the filter refuses";
    EXPECT_TRUE(boxBody.contains("angle")) << "the before hook's change is exported";
    const QJsonObject fixture = boxBody["fixture"].toArray()[0].toObject();
    EXPECT_TRUE(fixture.contains("name"));
    EXPECT_FALSE(fixture.contains("density"));
    EXPECT_TRUE(fixture.contains("friction"));
    // The filter throws for "ground": it is exported whole, and said once.
    EXPECT_TRUE(bodies[0].toObject().contains("angularDamping"));
    EXPECT_EQ(run.log.count("The export filter script failed for body 'ground'"), 1) << run.log.toStdString();

    const QJsonArray joints = raw["joint"].toArray();
    ASSERT_EQ(joints.size(), 1) << "a joint to a body left out goes with it";
    EXPECT_EQ(joints[0].toObject()["name"].toString(), "hinge");
    EXPECT_EQ(joints[0].toObject()["bodyA"].toInt(), 0);
    EXPECT_EQ(joints[0].toObject()["bodyB"].toInt(), 1) << "the box moved up one place";

    // -v names every script and command it runs.
    const QString said = run.out + run.log;
    EXPECT_TRUE(said.contains("hooks/before.rs")) << said.toStdString();
    EXPECT_TRUE(said.contains("hooks/after.rs"));
    EXPECT_TRUE(said.contains("scripts/filter.rs"));
    EXPECT_TRUE(said.contains("Running system command: echo exported"));
}

TEST(BatchHooks, HostileFileNamesCannotBreakOrInjectIntoTheCommand)
{
    PlaxSandbox box;
    writeFolder(box, "cp %{EXPORTDIR}/%{EXPORTFILE} 'copy of %{EXPORTFILE}'");
    const QString name = QStringLiteral("it's \"a\"; touch PWNED $(touch PWNED2) `touch PWNED3`.json");
    const PlaxRun run = box.run({"-i", "scene.plax", "-e", name});
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString() << run.log.toStdString();
    ASSERT_TRUE(QFile::exists(box.path(name)));
    EXPECT_EQ(box.read("copy of " + name), box.read(name)) << run.log.toStdString();
    for (const char* injected : {"PWNED", "PWNED2", "PWNED3", "a\"", "touch"})
        EXPECT_FALSE(QFile::exists(box.path(injected))) << injected;
}

TEST(BatchHooks, AFailingCommandIsReportedWithItsOutputAndDoesNotFailTheExport)
{
    PlaxSandbox box;
    writeFolder(box, "echo about to fail; exit 3");
    const PlaxRun run = box.run({"-i", "scene.plax", "-e", "out.json"});
    EXPECT_EQ(run.exitCode, 0) << run.log.toStdString();
    EXPECT_TRUE(QFile::exists(box.path("out.json")));
    EXPECT_TRUE(run.log.contains("Error executing system command [echo about to fail; exit 3]")) << run.log.toStdString();
    EXPECT_TRUE(run.log.contains("3"));
    EXPECT_TRUE(run.log.contains("about to fail"));

    PlaxSandbox missing;
    writeFolder(missing, "no-such-program-anywhere %{EXPORTFILE}");
    const PlaxRun second = missing.run({"-i", "scene.plax", "-e", "out.json"});
    EXPECT_EQ(second.exitCode, 0);
    EXPECT_TRUE(second.log.contains("Error executing system command [no-such-program-anywhere out.json]"))
        << second.log.toStdString();
}
