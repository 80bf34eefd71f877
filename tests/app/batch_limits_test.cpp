// Batch runs whose script is stopped by a limit: the run fails, later
// scripts do not run and nothing is written. Also where batch runs keep
// their script log backups, and how many.
#include "support/plaxrun.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace
{
const QByteArray kScene = R"({"metaworld": {
  "metabody": [{"id": 1, "name": "ground", "type": "static"}]
}})";

// A script that leaves a trace before it runs away, so that the test sees
// the script did run.
QByteArray runaway(const QByteArray& body)
{
    return "void main() {\n  writeFile('started.txt', 'yes');\n" + body + "\n}\n";
}

// Runs `script` and then a second script with -r and -e requested and checks
// that the batch failed without writing anything after the first script.
PlaxRun runAndExpectNothingWritten(const PlaxSandbox& box, const QByteArray& script,
                                   const QMap<QString, QString>& environment = {})
{
    box.write("scene.plax", kScene);
    box.write("runaway.rs", script);
    box.write("after.rs", "writeFile('after.txt', 'ran');\n");
    PlaxRun run = box.run({"-i", "scene.plax", "-s", "runaway.rs", "-s", "after.rs", "-r", "out.plax", "-e",
                           "raw.json"},
                          environment);
    EXPECT_EQ(run.exitCode, 1) << run.out.toStdString();
    EXPECT_EQ(box.read("started.txt"), "yes") << "the script ran until it was stopped";
    EXPECT_FALSE(QFile::exists(box.path("after.txt"))) << "no later script runs";
    EXPECT_FALSE(QFile::exists(box.path("out.plax"))) << "no resave";
    EXPECT_FALSE(QFile::exists(box.path("raw.json"))) << "no export";
    EXPECT_TRUE(run.out.contains("Script 'runaway.rs' was aborted; no files are written.\n"))
        << run.out.toStdString();
    return run;
}
} // namespace

TEST(BatchLimits, TheTimeLimitFailsTheRun)
{
    PlaxSandbox box;
    PlaxRun run = runAndExpectNothingWritten(box, runaway("  while (true) {}"), {{"PLAX_SCRIPT_TIMEOUT", "1"}});
    EXPECT_TRUE(run.out.contains("Script aborted: the time limit of 1 seconds was reached. Raise it with the "
                                 "environment variable PLAX_SCRIPT_TIMEOUT or the setting \"script/timeoutseconds\""))
        << run.out.toStdString();

    // The setting gives the limit when the environment does not.
    box.setSetting("script/timeoutseconds", 1);
    QFile::remove(box.path("started.txt"));
    run = runAndExpectNothingWritten(box, runaway("  while (true) {}"));
    EXPECT_TRUE(run.out.contains("the time limit of 1 seconds was reached")) << run.out.toStdString();
}

TEST(BatchLimits, TheCallStackLimitFailsTheRun)
{
    PlaxSandbox box;
    box.setSetting("script/maxcalldepth", 200);
    PlaxRun run = runAndExpectNothingWritten(box, "void f(int n) { f(n + 1); }\n" + runaway("  f(0);"));
    EXPECT_TRUE(run.out.contains("Script aborted: the call stack limit of 200 nested calls was reached"))
        << run.out.toStdString();
}

TEST(BatchLimits, TheMemoryLimitFailsTheRun)
{
    PlaxSandbox box;
    box.setSetting("script/memorylimitmb", 16);
    PlaxRun run = runAndExpectNothingWritten(
        box, runaway("  array<array<int>> a;\n  while (true) a.insertLast(array<int>(50000));"));
    EXPECT_TRUE(run.out.contains("Script aborted: the memory limit of 16 MiB for one script run was reached"))
        << run.out.toStdString();
    EXPECT_TRUE(run.out.contains("script/memorylimitmb"));
}

TEST(BatchLimits, AScriptWithinTheLimitsStillWritesItsResults)
{
    PlaxSandbox box;
    box.setSetting("script/maxcalldepth", 200);
    box.setSetting("script/memorylimitmb", 16);
    box.write("scene.plax", kScene);
    box.write("fine.rs", "int d(int n) { return n == 0 ? 0 : 1 + d(n - 1); }\n"
                         "void main() { array<int> a(1000000); writeFile('depth.txt', '' + d(150)); }\n");
    PlaxRun run = box.run({"-i", "scene.plax", "-s", "fine.rs", "-r", "out.plax"});
    EXPECT_EQ(run.exitCode, 0) << run.out.toStdString();
    EXPECT_EQ(box.read("depth.txt"), "150");
    EXPECT_TRUE(QFile::exists(box.path("out.plax")));
}

TEST(BatchLimits, ScriptLogBackupsStayInTheSandboxAndAreBounded)
{
    PlaxSandbox box;
    box.setSetting("script/scriptlogbackups", 2);
    box.write("scene.plax", kScene);
    for (int i = 0; i < 4; ++i)
        ASSERT_EQ(box.run({"-i", "scene.plax"}).exitCode, 0);

    const QDir backups(box.settingsFolder() + "/backups");
    const QStringList folders = backups.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    ASSERT_EQ(folders.size(), 1) << folders.join(' ').toStdString();
    const QDir folder(backups.filePath(folders.first()));
    EXPECT_TRUE(folder.exists("scene.plax-scriptLog.rs"));
    EXPECT_EQ(folder.entryList({"scene.plax-scriptLog-*.rs"}, QDir::Files).size(), 2)
        << folder.entryList(QDir::Files).join(' ').toStdString();
}
