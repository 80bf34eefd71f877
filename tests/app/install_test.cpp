// The installed program: `cmake --install` into a temporary root (DESTDIR),
// the installed files, and the installed binary run from an empty folder as
// the batch tool and as the editor on the test's display.
#include "support/guitesting.h"
#include "app/toolrun.h"
#include "support/testfiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace
{
const QString kPrefix = QStringLiteral("/usr");

// Starts the editor in `folder`, waits until its log in that folder shows
// `line` (or it ends), then stops it and returns the log. `*reached` tells
// whether the line came while the editor was still running.
QString runEditorUntil(const QString& program, const QString& folder, const QMap<QString, QString>& environment,
                       const QString& line, bool* reached)
{
    // A log left by an earlier run must not be mistaken for this one's.
    QFile::remove(QDir(folder).filePath(QStringLiteral("plax.log")));
    QProcess editor;
    editor.setWorkingDirectory(folder);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (auto it = environment.begin(); it != environment.end(); ++it)
        env.insert(it.key(), it.value());
    editor.setProcessEnvironment(env);
    QStringList arguments;
    if (!env.contains(QStringLiteral("DISPLAY")))
        arguments = {QStringLiteral("-platform"), QStringLiteral("offscreen")};
    editor.start(program, arguments);
    QString log;
    *reached = editor.waitForStarted() &&
               GuiTesting::waitFor(
                   [&] {
                       log = TestFiles::readText(QDir(folder).filePath(QStringLiteral("plax.log")));
                       return log.contains(line) || editor.state() == QProcess::NotRunning;
                   },
                   60000) &&
               editor.state() == QProcess::Running;
    editor.terminate();
    if (!editor.waitForFinished(10000)) {
        editor.kill();
        editor.waitForFinished();
    }
    return TestFiles::readText(QDir(folder).filePath(QStringLiteral("plax.log")));
}

// One installation per test under a fresh DESTDIR, with fresh user folders
// for the programs it starts.
class InstalledPlax : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(root.isValid());
        destdir = root.filePath("destdir");
        const ToolRun install = runTool(QStringLiteral(PLAX_CMAKE_COMMAND),
                                        {"--install", QStringLiteral(PLAX_BUILD_DIR), "--prefix", kPrefix}, QString(),
                                        {{"DESTDIR", destdir}});
        ASSERT_EQ(install.exitCode, 0) << install.out.toStdString() << install.err.toStdString();
        usr = destdir + kPrefix;
        plax = usr + "/bin/plax";
        environment = {{"XDG_CONFIG_HOME", root.filePath("config-home")},
                       {"XDG_DATA_HOME", root.filePath("data-home")}};
    }

    QString emptyFolder(const QString& name)
    {
        const QString folder = root.filePath(name);
        QDir().mkpath(folder);
        return folder;
    }

    QTemporaryDir root;
    QString destdir;
    QString usr;
    QString plax;
    QMap<QString, QString> environment;
};
} // namespace

TEST_F(InstalledPlax, InstallsTheProgramItsDataAndTheDesktopFilesUnderThePrefix)
{
    EXPECT_EQ(QDir(destdir).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"usr"})
        << "nothing is installed outside the prefix";
    EXPECT_TRUE(QFileInfo(plax).isExecutable());
    EXPECT_EQ(TestFiles::filesUnder(usr + "/share/plax/config"), TestFiles::filesUnder(QStringLiteral(PLAX_SOURCE_DIR "/config")))
        << "the whole default configuration";
    EXPECT_TRUE(QFileInfo::exists(usr + "/share/plax/examples/demo.plax"));
    for (const char* file :
         {"share/applications/org.quoxel2d.plax.desktop", "share/metainfo/org.quoxel2d.plax.metainfo.xml",
          "share/mime/packages/org.quoxel2d.plax.xml", "share/icons/hicolor/scalable/apps/org.quoxel2d.plax.svg",
          "share/icons/hicolor/scalable/mimetypes/application-x-plax.svg",
          "share/icons/hicolor/48x48/apps/org.quoxel2d.plax.png",
          "share/icons/hicolor/256x256/apps/org.quoxel2d.plax.png",
          "share/icons/hicolor/48x48/mimetypes/application-x-plax.png", "share/doc/plax/README.md",
          "share/doc/plax/scripting.md"}) {
        EXPECT_TRUE(QFileInfo::exists(usr + "/" + file)) << file;
    }
    EXPECT_TRUE(QFileInfo::exists(usr + "/share/man/man1/plax.1.gz") || QFileInfo::exists(usr + "/share/man/man1/plax.1"));
    EXPECT_EQ(QDir(usr + "/share/mime").entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"packages"})
        << "a DESTDIR install leaves the MIME database to the package system";
}

TEST_F(InstalledPlax, DesktopEntryFileTypeAndMetadataAreValid)
{
    const QString desktopFile = usr + "/share/applications/org.quoxel2d.plax.desktop";
    const QString validateDesktop = findTool("desktop-file-validate");
    ASSERT_FALSE(validateDesktop.isEmpty()) << "desktop-file-validate (desktop-file-utils) is needed";
    const ToolRun desktop = runTool(validateDesktop, {desktopFile});
    EXPECT_EQ(desktop.exitCode, 0) << desktop.out.toStdString() << desktop.err.toStdString();
    EXPECT_EQ(desktop.out + desktop.err, "") << "not even a hint";

    const QString entry = TestFiles::readText(desktopFile);
    EXPECT_TRUE(entry.contains("\nExec=plax %F\n")) << "scenes opened from a file manager reach the editor";
    EXPECT_TRUE(entry.contains("\nMimeType=application/x-plax;\n"));
    EXPECT_TRUE(entry.contains("\nIcon=org.quoxel2d.plax\n"));

    const QString appstream = findTool("appstreamcli");
    ASSERT_FALSE(appstream.isEmpty()) << "appstreamcli (appstream) is needed";
    const ToolRun meta = runTool(appstream, {"validate", "--no-net", "--pedantic",
                                             usr + "/share/metainfo/org.quoxel2d.plax.metainfo.xml"});
    EXPECT_EQ(meta.exitCode, 0) << meta.out.toStdString() << meta.err.toStdString();
    const QString metainfo = TestFiles::readText(usr + "/share/metainfo/org.quoxel2d.plax.metainfo.xml");
    EXPECT_TRUE(metainfo.contains("<launchable type=\"desktop-id\">org.quoxel2d.plax.desktop</launchable>"));
    EXPECT_TRUE(metainfo.contains("<binary>plax</binary>"));

    // The shared MIME database built from the installed file maps *.plax to the type and its icon.
    const QString updateMime = findTool("update-mime-database");
    ASSERT_FALSE(updateMime.isEmpty()) << "update-mime-database (shared-mime-info) is needed";
    const QString mime = emptyFolder("mime");
    QDir().mkpath(mime + "/packages");
    ASSERT_TRUE(QFile::copy(usr + "/share/mime/packages/org.quoxel2d.plax.xml", mime + "/packages/plax.xml"));
    const ToolRun database = runTool(updateMime, {mime});
    EXPECT_EQ(database.exitCode, 0) << database.err.toStdString();
    EXPECT_TRUE(TestFiles::readText(mime + "/globs2").contains("application/x-plax:*.plax")) << TestFiles::readText(mime + "/globs2").toStdString();
    EXPECT_TRUE(TestFiles::readText(mime + "/icons").contains("application/x-plax:application-x-plax"));
    EXPECT_TRUE(TestFiles::readText(mime + "/subclasses").contains("application/x-plax application/json"));
}

TEST_F(InstalledPlax, InstalledBatchToolExportsTheExampleFromAnEmptyFolder)
{
    const QString folder = emptyFolder("work");
    const QString example = usr + "/share/plax/examples/demo.plax";
    const ToolRun run = runTool(plax, {"-i", example, "-e", "demo.json", "-r", "resaved.plax"}, folder, environment);
    EXPECT_EQ(run.exitCode, 0) << run.out.toStdString() << run.err.toStdString();

    // The same export as the program in the build folder writes.
    const QString reference = emptyFolder("reference");
    const ToolRun built = runTool(QStringLiteral(PLAX_BINARY), {"-i", example, "-e", "demo.json"}, reference, environment);
    ASSERT_EQ(built.exitCode, 0) << built.out.toStdString();
    const QString exported = TestFiles::readText(folder + "/demo.json");
    EXPECT_TRUE(exported.contains("\"body\"")) << exported.left(200).toStdString();
    EXPECT_EQ(exported, TestFiles::readText(reference + "/demo.json"));
    EXPECT_TRUE(QFileInfo::exists(folder + "/resaved.plax"));
    EXPECT_FALSE(QFileInfo::exists(root.filePath("data-home/quoxel2d/plax")))
        << "batch runs leave the per-user folder alone";

    const ToolRun help = runTool(plax, {"--help"}, folder, environment);
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.out.startsWith("Usage: plax -i INPUTFILE"));
}

TEST_F(InstalledPlax, InstalledEditorSeedsTheUserFolderOnceAndFindsItsMenu)
{
    const QString folder = emptyFolder("desktop-start");
    const QString installedConfig = QDir(usr + "/share/plax/config").canonicalPath();
    bool reached = false;
    // "Supported image formats" follows the check for the default action menu.
    QString log = runEditorUntil(plax, folder, environment, "Supported image formats:", &reached);
    ASSERT_TRUE(reached) << log.toStdString();
    EXPECT_FALSE(log.contains("Could not find default action menu")) << log.toStdString();
    const QString userFolder = QDir(root.filePath("data-home/quoxel2d/plax")).canonicalPath();
    ASSERT_FALSE(userFolder.isEmpty()) << "the per-user folder was made";
    EXPECT_TRUE(log.contains("Set current working directory to " + userFolder + " (the per-user folder"))
        << log.toStdString();
    const int files = TestFiles::filesUnder(installedConfig).size();
    EXPECT_TRUE(log.contains(QStringLiteral("Copied the default configuration (%1 files) from %2 into %3/config")
                                 .arg(files)
                                 .arg(installedConfig, userFolder)))
        << log.toStdString();
    EXPECT_EQ(TestFiles::filesUnder(userFolder + "/config"), TestFiles::filesUnder(installedConfig));

    // The user's own menu survives the next start.
    const QString layout = userFolder + "/config/actionMenu/default/layout.json";
    const QByteArray mine = "{\"children\": [{\"type\": \"menu\", \"name\": \"Mine\", \"children\": []}]}";
    {
        QFile file(layout);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(mine);
    }
    log = runEditorUntil(plax, folder, environment, "Supported image formats:", &reached);
    ASSERT_TRUE(reached) << log.toStdString();
    EXPECT_FALSE(log.contains("Could not find default action menu")) << log.toStdString();
    EXPECT_FALSE(log.contains("Copied the default configuration")) << log.toStdString();
    QFile file(layout);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), mine);
}
