// End-to-end runs of the real plax binary: exit codes, console output, plax.log.
#include "support/plaxrun.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

namespace
{
QStringList logLines(const PlaxRun& run)
{
    return run.log.split('\n', Qt::SkipEmptyParts);
}
} // namespace

TEST(BatchCli, VerboseVersionPrintsTheBlock)
{
    PlaxSandbox box;
    PlaxRun run = box.run({"-V", "-v"});
    EXPECT_EQ(run.exitCode, 0);
    QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_GE(lines.size(), 4);
    EXPECT_EQ(lines[0], "P.L.A.X editor 1.8.0");
    EXPECT_TRUE(QRegularExpression("^Built on [A-Z][a-z]{2} [ 0-9]\\d \\d{4} \\d\\d:\\d\\d:\\d\\d UTC$")
                    .match(lines[1])
                    .hasMatch())
        << lines[1].toStdString();
    EXPECT_EQ(lines[2], "Using Box2D 2.4.1");
    EXPECT_EQ(lines[3], "Using Angelscript 2.35.1");
    EXPECT_FALSE(run.out.contains("Usage:")) << "version stops before the usage text";
}

TEST(BatchCli, VerboseHelpPrintsTheUsageText)
{
    PlaxSandbox box;
    PlaxRun run = box.run({"--help", "-v"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.out.contains("Usage: plax -i INPUTFILE\n            [-s SCRIPTFILE]...\n"));
    EXPECT_TRUE(run.out.contains(
        "Example: plax -i scene.plax -s script1.rs -s script2.rs -e rawinfo.json\n"));
    EXPECT_FALSE(run.out.contains("No input file given.")) << "help stops the run";
}

TEST(BatchCli, MissingInputFails)
{
    PlaxSandbox box;
    for (const QStringList& args : {QStringList{"-v"}, QStringList{"scene.plax"}, QStringList{"-r", "x", "-i"}}) {
        PlaxRun run = box.run(args);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.err, "No input file given.\n") << "a usage error goes to standard error";
        EXPECT_FALSE(run.out.contains("No input file given.")) << run.out.toStdString();
    }
}

TEST(BatchCli, InputMustExistAndBeAFile)
{
    PlaxSandbox box;
    PlaxRun run = box.run({"-i", "nowhere.plax"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "Input file 'nowhere.plax' not found.\n");

    box.write("folder.plax/inner.txt", "x");
    run = box.run({"-i", "folder.plax"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "'folder.plax' is not a file.\n");
}

TEST(BatchCli, LastInputWinsAndValueIsAlsoAnOption)
{
    PlaxSandbox box;
    PlaxRun run = box.run({"-i", "a.plax", "-i", "b.plax"});
    EXPECT_EQ(run.out, "Input file 'b.plax' not found.\n");

    run = box.run({"-i", "-v"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.startsWith("P.L.A.X editor 1.8.0\n")) << "-v as a value also turns verbose on";
    EXPECT_TRUE(run.out.contains("Input file: -v\n"));
    EXPECT_TRUE(run.out.contains("Input file '-v' not found.\n"));
}

TEST(BatchCli, QuietKeepsErrors)
{
    PlaxSandbox box;
    PlaxRun run = box.run({"-q", "-i", "gone.plax"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "Input file 'gone.plax' not found.\n");

    // Verbose and quiet together: only errors pass, so no version block.
    run = box.run({"-v", "-q", "-i", "gone.plax"});
    EXPECT_EQ(run.out, "Input file 'gone.plax' not found.\n");
}

TEST(BatchCli, LogFileFramesTheRun)
{
    PlaxSandbox box;
    box.write("plax.log", "old content that must go\n");
    PlaxRun run = box.run({"-v", "-i", "gone.plax"});
    QStringList lines = logLines(run);
    ASSERT_GE(lines.size(), 3);
    EXPECT_FALSE(run.log.contains("old content")) << "the log is truncated at start";
    const QRegularExpression line("^\\d\\d:\\d\\d:\\d\\d \\[(.{9})\\]: (.*)$");
    EXPECT_TRUE(line.match(lines.first()).hasMatch());
    EXPECT_TRUE(lines.first().endsWith("Started log"));
    EXPECT_TRUE(lines.last().endsWith("Finished log"));
    EXPECT_TRUE(run.log.contains("[* ERROR  ]: Input file 'gone.plax' not found."));
    EXPECT_TRUE(run.log.contains("[  INFO   ]: Input file: gone.plax"));
    // Debug lines reach the file with -v but are not echoed without the debug-output preference.
    EXPECT_TRUE(run.log.contains("[  DEBUG  ]: Invoked with arguments: -v -i gone.plax"));
    EXPECT_FALSE(run.out.contains("Invoked with arguments"));
}
