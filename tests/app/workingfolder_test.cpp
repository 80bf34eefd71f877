// The working folder: finding the installed default configuration, choosing
// the folder the editor works in, and seeding it without overwriting anything.
#include "app/workingfolder.h"
#include "base/settings.h"
#include "support/logcapture.h"
#include "support/testfiles.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

namespace
{
// An installed tree: PREFIX/bin and PREFIX/share/plax/config holding a copy of
// the project's configuration; each test starts in an empty folder with no
// working directory configured and no per-user folder yet.
class WorkingFolderTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(root.isValid());
        startFolder = QDir(root.path()).filePath("start");
        QDir().mkpath(startFolder);
        QDir().mkpath(QDir(root.path()).filePath("prefix/bin"));
        installed = QDir(root.path()).filePath("prefix/share/plax/config");
        const QMap<QString, QByteArray> project = TestFiles::filesUnder(QStringLiteral(PLAX_SOURCE_DIR "/config"));
        ASSERT_TRUE(project.contains("actionMenu/default/layout.json"));
        for (auto it = project.begin(); it != project.end(); ++it)
            TestFiles::write(QDir(installed).filePath(it.key()), it.value());
        openAppSettings()->remove(QLatin1String(SettingsKeys::kWorkingDirectory));
        QDir(userWorkingFolder()).removeRecursively();
        previous = QDir::currentPath();
        ASSERT_TRUE(QDir::setCurrent(startFolder));
    }

    void TearDown() override
    {
        QDir::setCurrent(previous);
        openAppSettings()->remove(QLatin1String(SettingsKeys::kWorkingDirectory));
        QDir(userWorkingFolder()).removeRecursively();
    }

    QTemporaryDir root;
    QString startFolder;
    QString installed;
    QString previous;
};
} // namespace

TEST_F(WorkingFolderTest, InstalledConfigurationIsFoundFromTheProgramFolder)
{
    const QString bin = QDir(root.path()).filePath("prefix/bin");
    EXPECT_EQ(installedConfigFolder(bin, "../share/plax"), QDir::cleanPath(installed));
    EXPECT_EQ(installedConfigFolder(bin, "../share/elsewhere"), QString());
    // A file where the folder should be is not a configuration.
    TestFiles::write(QDir(root.path()).filePath("prefix/share/other/config"), "not a folder");
    EXPECT_EQ(installedConfigFolder(bin, "../share/other"), QString());
}

TEST_F(WorkingFolderTest, SeedingCopiesEveryFileOnceAndNeverAgain)
{
    const QString target = QDir(root.path()).filePath("fresh");
    QDir().mkpath(target);
    QString error;
    const int copied = seedConfiguration(installed, target, &error);
    EXPECT_EQ(error, QString());
    const QMap<QString, QByteArray> original = TestFiles::filesUnder(installed);
    EXPECT_EQ(copied, original.size());
    EXPECT_EQ(TestFiles::filesUnder(QDir(target).filePath("config")), original);
    EXPECT_EQ(QDir(target).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{"config"})
        << "no staging folder is left behind";

    // The user changes one file and deletes another: a later seeding leaves both so.
    const QString layout = QDir(target).filePath("config/actionMenu/default/layout.json");
    TestFiles::write(layout, "{\"children\": []}");
    const QString script = QDir(target).filePath("config/scripts/hello.rs");
    ASSERT_TRUE(QFile::remove(script));
    EXPECT_EQ(seedConfiguration(installed, target, &error), 0);
    EXPECT_EQ(TestFiles::read(layout), "{\"children\": []}");
    EXPECT_FALSE(QFile::exists(script));
}

TEST_F(WorkingFolderTest, AFolderWithItsOwnConfigIsLeftAlone)
{
    const QString target = QDir(root.path()).filePath("mine");
    TestFiles::write(QDir(target).filePath("config/notes.txt"), "mine");
    QString error;
    EXPECT_EQ(seedConfiguration(installed, target, &error), 0);
    EXPECT_EQ(TestFiles::filesUnder(QDir(target).filePath("config")).keys(), QStringList{"notes.txt"});
}

TEST_F(WorkingFolderTest, SeedingIntoSomethingThatIsNoFolderFails)
{
    const QString notAFolder = QDir(root.path()).filePath("plain-file");
    TestFiles::write(notAFolder, "x");
    QString error;
    EXPECT_EQ(seedConfiguration(installed, notAFolder, &error), -1);
    EXPECT_FALSE(error.isEmpty());
}

TEST_F(WorkingFolderTest, BatchRunsStayInTheStartFolderWithoutAPreference)
{
    const WorkingFolder folder = applyConfiguredWorkingFolder();
    EXPECT_EQ(folder.source, WorkingFolder::Source::StartFolder);
    EXPECT_FALSE(folder.changed);
    EXPECT_EQ(QDir::currentPath(), QDir(startFolder).canonicalPath());
    EXPECT_FALSE(QDir(userWorkingFolder()).exists()) << "batch runs create no per-user folder";
}

TEST_F(WorkingFolderTest, EditorKeepsAStartFolderThatHasTheDefaultMenu)
{
    TestFiles::write(QDir(startFolder).filePath(kDefaultActionMenuLayout), "{\"children\": []}");
    LogCapture log;
    const WorkingFolder folder = prepareEditorWorkingFolder(installed);
    EXPECT_EQ(folder.source, WorkingFolder::Source::StartFolder);
    EXPECT_EQ(folder.seededFiles, 0);
    EXPECT_EQ(QDir::currentPath(), QDir(startFolder).canonicalPath());
    EXPECT_EQ(TestFiles::filesUnder(QDir(startFolder).filePath("config")).size(), 1);
    reportWorkingFolder(folder);
    EXPECT_TRUE(log.has(LOG_DEBUG, "Current working directory is " + QDir::currentPath())) << log.dump().toStdString();
}

TEST_F(WorkingFolderTest, EditorOtherwiseWorksInTheSeededPerUserFolder)
{
    LogCapture log;
    WorkingFolder folder = prepareEditorWorkingFolder(installed);
    EXPECT_EQ(folder.source, WorkingFolder::Source::UserFolder);
    ASSERT_TRUE(folder.changed);
    EXPECT_EQ(QDir::currentPath(), QDir(userWorkingFolder()).canonicalPath());
    EXPECT_TRUE(userWorkingFolder().startsWith(qEnvironmentVariable("XDG_DATA_HOME")))
        << "the per-user folder follows XDG_DATA_HOME";
    EXPECT_EQ(folder.seededFiles, TestFiles::filesUnder(installed).size());
    EXPECT_EQ(TestFiles::filesUnder(QDir(userWorkingFolder()).filePath("config")), TestFiles::filesUnder(installed));
    reportWorkingFolder(folder);
    EXPECT_TRUE(log.hasLineStartingWith(LOG_INFO, "Set current working directory to " + QDir::currentPath()))
        << log.dump().toStdString();
    EXPECT_TRUE(log.has(LOG_INFO, QStringLiteral("Copied the default configuration (%1 files) from %2 into %3/config")
                                      .arg(folder.seededFiles)
                                      .arg(installed, QDir::currentPath())))
        << log.dump().toStdString();

    // Next start: the user's edit stays, nothing is copied.
    const QString layout = QDir(userWorkingFolder()).filePath(kDefaultActionMenuLayout);
    TestFiles::write(layout, "{\"children\": [{\"type\": \"menu\", \"name\": \"Mine\", \"children\": []}]}");
    ASSERT_TRUE(QDir::setCurrent(startFolder));
    log.clear();
    folder = prepareEditorWorkingFolder(installed);
    EXPECT_EQ(folder.source, WorkingFolder::Source::UserFolder);
    EXPECT_EQ(folder.seededFiles, 0);
    EXPECT_TRUE(TestFiles::read(layout).contains("Mine"));
    reportWorkingFolder(folder);
    EXPECT_FALSE(log.contains(LOG_INFO, "Copied the default configuration"));
}

TEST_F(WorkingFolderTest, AConfiguredFolderIsEnteredAndSeeded)
{
    const QString chosen = QDir(root.path()).filePath("chosen");
    QDir().mkpath(chosen);
    openAppSettings()->setValue(QLatin1String(SettingsKeys::kWorkingDirectory), chosen);
    const WorkingFolder folder = prepareEditorWorkingFolder(installed);
    EXPECT_EQ(folder.source, WorkingFolder::Source::Configured);
    EXPECT_TRUE(folder.changed);
    EXPECT_EQ(QDir::currentPath(), QDir(chosen).canonicalPath());
    EXPECT_TRUE(QFile::exists(QDir(chosen).filePath(kDefaultActionMenuLayout)));
    EXPECT_FALSE(QDir(userWorkingFolder()).exists());

    // Batch runs enter it too, as they always did, but copy nothing.
    const QString other = QDir(root.path()).filePath("other");
    QDir().mkpath(other);
    openAppSettings()->setValue(QLatin1String(SettingsKeys::kWorkingDirectory), other);
    const WorkingFolder batch = applyConfiguredWorkingFolder();
    EXPECT_TRUE(batch.changed);
    EXPECT_EQ(QDir::currentPath(), QDir(other).canonicalPath());
    EXPECT_FALSE(QDir(other).exists("config"));
}

TEST_F(WorkingFolderTest, AConfiguredFolderThatIsMissingIsReportedAndNotCreated)
{
    const QString missing = QDir(root.path()).filePath("missing");
    openAppSettings()->setValue(QLatin1String(SettingsKeys::kWorkingDirectory), missing);
    LogCapture log;
    const WorkingFolder folder = prepareEditorWorkingFolder(installed);
    EXPECT_FALSE(folder.changed);
    EXPECT_EQ(folder.failed, missing);
    EXPECT_EQ(QDir::currentPath(), QDir(startFolder).canonicalPath());
    EXPECT_FALSE(QFileInfo::exists(missing));
    EXPECT_FALSE(QDir(startFolder).exists("config")) << "the start folder is not seeded either";
    reportWorkingFolder(folder);
    EXPECT_TRUE(log.has(LOG_ERROR, "Could not set current working directory to " + missing));
    EXPECT_TRUE(log.has(LOG_WARNING, "Current working directory remains as " + QDir::currentPath()));
}

TEST_F(WorkingFolderTest, WithoutAnInstalledConfigurationNothingIsCopied)
{
    const WorkingFolder folder = prepareEditorWorkingFolder(QString());
    EXPECT_EQ(folder.source, WorkingFolder::Source::UserFolder);
    EXPECT_TRUE(folder.changed);
    EXPECT_EQ(folder.seededFiles, 0);
    EXPECT_FALSE(QFileInfo::exists(kDefaultActionMenuLayout));
}

TEST_F(WorkingFolderTest, ChangingTheFolderLaterSeedsItLikeAConfiguredOne)
{
    const QString later = QDir(root.path()).filePath("later");
    QDir().mkpath(later);
    const WorkingFolder folder = changeWorkingFolder(later, installed);
    EXPECT_TRUE(folder.changed);
    EXPECT_EQ(QDir::currentPath(), QDir(later).canonicalPath());
    EXPECT_EQ(folder.seededFiles, TestFiles::filesUnder(installed).size());

    const WorkingFolder failed = changeWorkingFolder(QDir(root.path()).filePath("nowhere"), installed);
    EXPECT_FALSE(failed.changed);
    EXPECT_EQ(QDir::currentPath(), QDir(later).canonicalPath());
}
