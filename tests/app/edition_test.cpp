// What the restricted edition refuses and the full edition does, through
// the real batch tool: resaving, raw-info and source export, printing
// strings and writing files from scripts, and the version block naming the
// edition. The cases run in both builds; CI also builds the restricted
// edition (PLAX_TRIAL=ON) and runs them there.
#include "base/version.h"
#include "support/plaxrun.h"

#include <gtest/gtest.h>

#include <QFile>

namespace
{
const QByteArray kScene = R"({"metaworld": {"metabody": [
  {"id": 1, "name": "box", "type": "dynamic", "position": {"x": 0, "y": 2},
   "fixture": [{"id": 1, "shapes": [{"type": "polygon", "vertices": {"x": [-1, 1, 1, -1], "y": [-1, -1, 1, 1]}}]}]}
]}})";

const char* const kNoResave = "Resaving is disabled in the trial version.";
const char* const kNoExport = "Exporting raw info is disabled in the trial version.";
const char* const kNoSource = "Exporting source code is disabled in the trial version.";
const char* const kNoPrint = "Printing strings in plaxscript is disabled in the trial version.";
const char* const kNoWrite = "Writing files in plaxscript is disabled in the trial version.";
} // namespace

TEST(Edition, BatchOutputsAreRefusedInTheRestrictedEditionAndTheRunStillSucceeds)
{
    PlaxSandbox box;
    box.write("scene.plax", kScene);
    const PlaxRun run = box.run({"-i", "scene.plax", "-r", "again.plax", "-e", "raw.json", "-c", "world.cpp"});
    EXPECT_EQ(run.exitCode, 0) << run.out.toStdString();
    const QStringList outputs = {"again.plax", "raw.json", "world.cpp"};
    if (Version::kTrial) {
        EXPECT_EQ(run.out, QStringList({kNoResave, kNoExport, kNoSource}).join('\n') + '\n');
        for (const QString& name : outputs)
            EXPECT_FALSE(QFile::exists(box.path(name))) << name.toStdString();
        EXPECT_TRUE(run.log.contains(QStringLiteral("* ERROR  ]: %1").arg(kNoExport))) << run.log.toStdString();
    } else {
        EXPECT_EQ(run.out, "");
        for (const QString& name : outputs)
            EXPECT_FALSE(box.read(name).isEmpty()) << name.toStdString();
    }
}

TEST(Edition, ScriptsPrintStringsAndWriteFilesOnlyInTheFullEdition)
{
    PlaxSandbox box;
    box.write("scene.plax", kScene);
    box.write("note.rs", "print('hello'); print(7); writeFile('note.txt', 'written');\n");
    const PlaxRun run = box.run({"-v", "-i", "scene.plax", "-s", "note.rs"});
    EXPECT_EQ(run.exitCode, 0) << run.out.toStdString();
    const QStringList lines = run.out.split('\n');
    EXPECT_TRUE(lines.contains("7")) << "numbers print in both editions";
    if (Version::kTrial) {
        EXPECT_TRUE(lines.contains(kNoPrint)) << run.out.toStdString();
        EXPECT_FALSE(lines.contains("hello"));
        EXPECT_TRUE(lines.contains(kNoWrite)) << run.out.toStdString();
        EXPECT_FALSE(QFile::exists(box.path("note.txt")));
    } else {
        EXPECT_TRUE(lines.contains("hello")) << run.out.toStdString();
        EXPECT_FALSE(run.out.contains("trial version"));
        EXPECT_EQ(box.read("note.txt"), "written");
    }
}

TEST(Edition, TheVersionBlockNamesTheRestrictedEdition)
{
    PlaxSandbox box;
    const PlaxRun run = box.run({"-V", "-v"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out.split('\n').contains("Trial version"), Version::kTrial) << run.out.toStdString();
}
