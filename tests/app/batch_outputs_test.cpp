// End-to-end runs of plax that load a scene, run scripts and write results.
#include "support/plaxrun.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

namespace
{
const QByteArray kScene = R"({"metaworld": {
  "metabody": [
    {"id": 1, "name": "ground", "type": "static",
     "fixture": [{"id": 1, "shapes": [{"type": "line", "vertices": {"x": [-5, 5], "y": [0, 0]}}]}]},
    {"id": 2, "name": "box", "type": "dynamic", "position": {"x": 0, "y": 2},
     "fixture": [{"id": 2, "name": "square",
                  "shapes": [{"type": "polygon", "vertices": {"x": [-1, 1, 1, -1], "y": [-1, -1, 1, 1]}}]}]}
  ],
  "metajoint": [{"id": 1, "type": "revolute", "bodyA": 1, "bodyB": 2, "anchorA": 0, "anchorB": 0}],
  "excludedJsonExportProperties": ["/world/body/fixture/name"]
}})";

QJsonObject readJson(const PlaxSandbox& box, const QString& name)
{
    return QJsonDocument::fromJson(box.read(name)).object();
}
} // namespace

TEST(BatchOutputs, ResaveExportAndSourceCode)
{
    PlaxSandbox box;
    box.write("scene.plax", kScene);
    PlaxRun run = box.run({"-i", "scene.plax", "-r", "again.plax", "-e", "raw.json", "-c", "world.cpp"});
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_EQ(run.out, "");

    const QJsonObject again = readJson(box, "again.plax");
    ASSERT_TRUE(again.contains("metaworld"));
    EXPECT_EQ(again["metaworld"]["metabody"].toArray().size(), 2);

    const QJsonObject raw = readJson(box, "raw.json");
    const QJsonArray bodies = raw["body"].toArray();
    ASSERT_EQ(bodies.size(), 2);
    EXPECT_EQ(bodies[1].toObject()["name"].toString(), "box");
    EXPECT_EQ(bodies[0].toObject()["fixture"].toArray().size(), 1) << "a line is one chain record";
    EXPECT_FALSE(bodies[1].toObject()["fixture"].toArray()[0].toObject().contains("name")) << "excluded";
    const QJsonObject joint = raw["joint"].toArray()[0].toObject();
    EXPECT_EQ(joint["bodyA"].toInt(), 0);
    EXPECT_EQ(joint["bodyB"].toInt(), 1);

    const QByteArray source = box.read("world.cpp");
    EXPECT_TRUE(source.contains("m_world->CreateBody"));
    EXPECT_TRUE(source.contains("m_world->CreateJoint"));
    EXPECT_FALSE(QFile::exists(box.path("box2d_dump.inl"))) << "no stray dump file";
}

TEST(BatchOutputs, ExportReadBackGivesTheSameExport)
{
    PlaxSandbox box;
    box.write("scene.plax", kScene);
    ASSERT_EQ(box.run({"-i", "scene.plax", "-e", "first.json"}).exitCode, 0);
    PlaxRun run = box.run({"-i", "first.json", "-e", "second.json"});
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_EQ(box.read("first.json"), box.read("second.json"));

    // The same raw info named .plax is read after a warning, as no question can be asked.
    QFile::copy(box.path("first.json"), box.path("raw.plax"));
    run = box.run({"-i", "raw.plax", "-e", "third.json"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains("has the file extension .plax"));
}

TEST(BatchOutputs, ScriptsRunInOrderBeforeTheOutputs)
{
    PlaxSandbox box;
    box.write("scene.plax", kScene);
    box.write("first.rs", "writeFile('order.txt', 'first;');\n");
    box.write("second.rs", "void main() {\n  writeFile('order.txt', readFile('order.txt') + 'second;');\n}\n");
    PlaxRun run = box.run({"-i", "scene.plax", "-s", "first.rs", "-s", "second.rs", "-r", "out.plax"});
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_EQ(box.read("order.txt"), "first;second;");
    EXPECT_TRUE(QFile::exists(box.path("out.plax")));
}

TEST(BatchOutputs, ScriptFailuresStopTheRunBeforeAnyOutput)
{
    PlaxSandbox box;
    box.write("scene.plax", kScene);
    box.write("broken.rs", "int x = ;\n");
    PlaxRun run = box.run({"-i", "scene.plax", "-s", "broken.rs", "-r", "out.plax"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.contains("Line 1, col")) << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("Failed to compile script 'broken.rs'.\n"));
    EXPECT_FALSE(QFile::exists(box.path("out.plax"))) << "no partial resave";

    run = box.run({"-i", "scene.plax", "-s", "missing.rs", "-r", "out.plax"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "Script file 'missing.rs' not found.\n");

    // A script that raises an exception does not stop the batch.
    box.write("throws.rs", "array<int> a;\na[3] = 1;\n");
    run = box.run({"-i", "scene.plax", "-s", "throws.rs", "-r", "out.plax"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains("Index out of bounds")) << run.out.toStdString();
    EXPECT_TRUE(QFile::exists(box.path("out.plax")));
}

TEST(BatchOutputs, UnloadableSceneAndUnwritableTargets)
{
    PlaxSandbox box;
    box.write("broken.plax", "{\"metaworld\": {");
    PlaxRun run = box.run({"-i", "broken.plax", "-r", "out.plax"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.contains("Failed to load scene from 'broken.plax'.")) << run.out.toStdString();

    box.write("scene.plax", kScene);
    run = box.run({"-i", "scene.plax", "-e", "no/such/dir/raw.json"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.contains("Failed to export raw info to 'no/such/dir/raw.json'."));
}

TEST(BatchOutputs, DevicesAndPipesAreWrittenInPlace)
{
    PlaxSandbox box;
    box.write("scene.plax", kScene);
    ASSERT_EQ(box.run({"-i", "scene.plax", "-e", "raw.json"}).exitCode, 0);
    const QByteArray expected = box.read("raw.json");
    ASSERT_FALSE(expected.isEmpty());

    // Standard output is a pipe to the test: the export arrives there whole.
    PlaxRun run = box.run({"-i", "scene.plax", "-e", "/dev/stdout"});
    ASSERT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_EQ(run.out.toUtf8(), expected);

    // Replacing /dev/null would need to write into /dev; writing it in place does not.
    run = box.run({"-i", "scene.plax", "-e", "/dev/null", "-c", "/dev/null", "-r", "/dev/null"});
    EXPECT_EQ(run.exitCode, 0) << run.out.toStdString();
    struct stat null = {};
    ASSERT_EQ(::lstat("/dev/null", &null), 0);
    EXPECT_TRUE(S_ISCHR(null.st_mode));

    // A named pipe with a reader at the other end gets the export and stays a pipe.
    const QString fifo = box.path("export.pipe");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    QByteArray received;
    std::thread reader([&] {
        QFile pipe(fifo);
        if (pipe.open(QIODevice::ReadOnly))
            received = pipe.readAll();
    });
    run = box.run({"-i", "scene.plax", "-e", "export.pipe"});
    // Lets the reader go should plax never have opened the pipe.
    if (const int fd = ::open(QFile::encodeName(fifo).constData(), O_WRONLY | O_NONBLOCK); fd >= 0)
        ::close(fd);
    reader.join();
    EXPECT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_EQ(received, expected);
    struct stat pipe = {};
    ASSERT_EQ(::lstat(QFile::encodeName(fifo).constData(), &pipe), 0);
    EXPECT_TRUE(S_ISFIFO(pipe.st_mode));
}
