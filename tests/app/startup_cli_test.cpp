// The real plax binary without a display: help and version on standard
// output, and bare scene files choosing the editor instead of the batch tool.
#include "support/plaxrun.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
QByteArray example()
{
    QFile file(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

TEST(StartupCli, HelpPrintsTheUsageOnStandardOutputWhateverTheLevel)
{
    PlaxSandbox box;
    for (const QStringList& args : {QStringList{"--help"}, QStringList{"-h"}, QStringList{"--help", "-q"},
                                    QStringList{"-q", "--help", "-i", "x.plax"}}) {
        const PlaxRun run = box.run(args);
        const std::string what = args.join(' ').toStdString();
        EXPECT_EQ(run.exitCode, 0) << what;
        EXPECT_TRUE(run.out.startsWith("Usage: plax -i INPUTFILE\n            [-s SCRIPTFILE]...\n")) << what;
        EXPECT_TRUE(run.out.contains("Example: plax -i scene.plax -s script1.rs -s script2.rs -e rawinfo.json\n"))
            << what;
        EXPECT_TRUE(run.out.endsWith("plax opens the editor (with those files).\n")) << run.out.toStdString();
        EXPECT_EQ(run.out.count("Usage:"), 1) << what;
        EXPECT_FALSE(run.out.contains("P.L.A.X editor")) << "no version block without -v: " << what;
        EXPECT_EQ(run.err, "") << what;
    }
}

TEST(StartupCli, VersionPrintsTheBlockOnStandardOutputOnce)
{
    PlaxSandbox box;
    for (const QStringList& args : {QStringList{"-V"}, QStringList{"--version"}, QStringList{"-V", "-q"},
                                    QStringList{"-V", "-v"}, QStringList{"--help", "-V"}}) {
        const PlaxRun run = box.run(args);
        const std::string what = args.join(' ').toStdString();
        EXPECT_EQ(run.exitCode, 0) << what;
        const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
        ASSERT_GE(lines.size(), 4) << what;
        EXPECT_EQ(lines[0], "P.L.A.X editor 1.8.0") << what;
        EXPECT_TRUE(lines[1].startsWith("Built on ")) << what;
        EXPECT_EQ(lines[2], "Using Box2D 2.4.1") << what;
        EXPECT_EQ(lines[3], "Using Angelscript 2.35.1") << what;
        EXPECT_EQ(run.out.count("P.L.A.X editor"), 1) << what;
        EXPECT_FALSE(run.out.contains("Usage:")) << "version stops before the usage: " << what;
        EXPECT_EQ(run.err, "") << what;
    }
    // With -v the version block also reaches the log file.
    const PlaxRun verbose = box.run({"-V", "-v"});
    EXPECT_TRUE(verbose.log.contains("[  INFO   ]: P.L.A.X editor 1.8.0")) << verbose.log.toStdString();
}

TEST(StartupCli, BareSceneFilesAskForTheEditorAndAnythingElseIsBatch)
{
    PlaxSandbox box;
    box.write("demo.plax", example());
    box.write("notes.txt", "not a scene");

    // Only existing scene files: the editor, which needs a display (the
    // sandbox runs have none, and no platform is chosen here).
    const QMap<QString, QString> noPlatform = {{"QT_QPA_PLATFORM", ""}};
    for (const QStringList& args : {QStringList{"demo.plax"}, QStringList{box.path("demo.plax"), "demo.plax"}}) {
        const PlaxRun run = box.run(args, noPlatform);
        const std::string what = args.join(' ').toStdString();
        EXPECT_EQ(run.exitCode, 1) << what;
        EXPECT_TRUE(run.err.startsWith("No display found: the editor needs a window system.")) << what;
        EXPECT_EQ(run.out, "") << "the batch tool did not run: " << what;
        EXPECT_TRUE(run.log.contains("[* ERROR  ]: No display found")) << what;
    }

    // Anything else keeps the batch tool exactly as before.
    const QList<QStringList> batch = {{"missing.plax"}, {"demo.plax", "missing.plax"}, {"demo.plax", "notes.txt"},
                                      {"demo.plax", "-q"}, {"notes.txt"}};
    for (const QStringList& args : batch) {
        const PlaxRun run = box.run(args, noPlatform);
        const std::string what = args.join(' ').toStdString();
        EXPECT_EQ(run.exitCode, 1) << what;
        EXPECT_EQ(run.err, "No input file given.\n") << what;
        EXPECT_EQ(run.out, "") << what;
    }

    const PlaxRun exported = box.run({"-i", "demo.plax", "-e", "demo.json"});
    EXPECT_EQ(exported.exitCode, 0) << exported.out.toStdString();
    EXPECT_EQ(exported.out, "");
    const QJsonDocument json = QJsonDocument::fromJson(box.read("demo.json"));
    ASSERT_TRUE(json.isObject());
    EXPECT_TRUE(json.object().contains("body"));
}
