#include "scripttesting.h"

#include "base/settings.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "engine/scriptlog.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace
{
class ScriptLogTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_root.isValid());
        ASSERT_TRUE(m_scenes.isValid());
        ScriptLog::setBackupsRoot(m_root.path());
    }
    void TearDown() override { ScriptLog::setBackupsRoot(QString()); }

    QTemporaryDir m_root;
    QTemporaryDir m_scenes;
};
} // namespace

TEST_F(ScriptLogTest, NothingIsKeptWithoutAFileName)
{
    ScriptLog log;
    log.start(QString());
    log.append("addBody();");
    log.restart();
    EXPECT_TRUE(log.path().isEmpty());
    EXPECT_TRUE(QDir(m_root.path()).isEmpty());
}

TEST_F(ScriptLogTest, StartWritesTheHeaderAndAppendAddsLines)
{
    QString scene = m_scenes.filePath("level.plax");
    ScriptLog log;
    log.start(scene);
    EXPECT_EQ(log.path(), ScriptLog::backupFolderFor(scene) + "/level.plax-scriptLog.rs");
    EXPECT_TRUE(log.path().startsWith(m_root.path() + "/"));
    log.append("getBody(1).setAngle(0.5);");
    log.append("getBody(2).delete();");
    QStringList lines = readText(log.path()).split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith("//Started script log at "));
    EXPECT_EQ(lines.mid(1), QStringList({"getBody(1).setAngle(0.5);", "getBody(2).delete();", ""}));
}

TEST_F(ScriptLogTest, StartingAgainBacksUpTheOldLog)
{
    QString scene = m_scenes.filePath("level.plax");
    ScriptLog log;
    log.start(scene);
    log.append("first();");
    QString previous = readText(log.path());
    log.start(scene);
    EXPECT_FALSE(readText(log.path()).contains("first();"));

    QStringList backups = QDir(ScriptLog::backupFolderFor(scene))
                              .entryList({"level.plax-scriptLog-*.rs"}, QDir::Files);
    ASSERT_EQ(backups.size(), 1);
    EXPECT_EQ(readText(ScriptLog::backupFolderFor(scene) + "/" + backups.first()), previous);
}

TEST_F(ScriptLogTest, RestartTruncates)
{
    ScriptLog log;
    log.start(m_scenes.filePath("level.plax"));
    log.append("first();");
    log.restart();
    QString text = readText(log.path());
    EXPECT_TRUE(text.startsWith("//Restarted script log at "));
    EXPECT_EQ(text.count('\n'), 1);
}

TEST_F(ScriptLogTest, EqualNamesInDifferentFoldersGetTheirOwnLogs)
{
    EXPECT_NE(ScriptLog::backupFolderFor(m_scenes.filePath("a/level.plax")),
              ScriptLog::backupFolderFor(m_scenes.filePath("b/level.plax")));
    EXPECT_EQ(ScriptLog::backupFolderFor(m_scenes.filePath("a/level.plax")),
              ScriptLog::backupFolderFor(m_scenes.filePath("a/level.plax")));
}

TEST_F(ScriptLogTest, LoadingADocumentStartsItsLog)
{
    QString scene = m_scenes.filePath("saved.plax");
    {
        EditorDocument document;
        ASSERT_TRUE(document.save(scene, false));
        EXPECT_TRUE(document.scripting().scriptLog().path().isEmpty()) << "writing a copy starts no log";
    }
    EditorDocument document;
    ASSERT_TRUE(document.load(scene));
    QString path = document.scripting().scriptLog().path();
    ASSERT_FALSE(path.isEmpty());
    EXPECT_TRUE(readText(path).startsWith("//Started script log at "));
}

TEST_F(ScriptLogTest, OnlyTheNewestBackupsAreKept)
{
    SettingScope kept(ScriptLog::kBackupsSettingsKey, 3);
    const QString scene = m_scenes.filePath("level.plax");
    const QDir folder(ScriptLog::backupFolderFor(scene));
    ScriptLog log;
    for (int run = 1; run <= 6; ++run) {
        log.start(scene);
        log.append(QStringLiteral("run%1();").arg(run));
    }
    // A log of another scene in the same folder is none of this log's business.
    writeText(folder.filePath("level.json-scriptLog-20000101-000000000.rs"), "other();\n");

    const QStringList backups = folder.entryList({"level.plax-scriptLog-*.rs"}, QDir::Files, QDir::Name);
    ASSERT_EQ(backups.size(), 3) << backups.join(' ').toStdString();
    QStringList contents;
    for (const QString& name : backups)
        contents.append(readText(folder.filePath(name)).section('\n', 1, 1));
    contents.sort();
    EXPECT_EQ(contents, QStringList({"run3();", "run4();", "run5();"})) << "the oldest went first";
    EXPECT_TRUE(readText(log.path()).contains("run6();"));

    log.start(scene);
    EXPECT_TRUE(QFile::exists(folder.filePath("level.json-scriptLog-20000101-000000000.rs")));
    EXPECT_EQ(folder.entryList({"level.plax-scriptLog-*.rs"}, QDir::Files).size(), 3);
}

TEST_F(ScriptLogTest, NoBackupsWhenNoneAreToBeKept)
{
    const QString scene = m_scenes.filePath("level.plax");
    const QDir folder(ScriptLog::backupFolderFor(scene));
    ScriptLog log;
    log.start(scene);
    log.start(scene);
    ASSERT_EQ(folder.entryList({"level.plax-scriptLog-*.rs"}, QDir::Files).size(), 1);

    SettingScope none(ScriptLog::kBackupsSettingsKey, 0);
    log.start(scene);
    EXPECT_TRUE(folder.entryList({"level.plax-scriptLog-*.rs"}, QDir::Files).isEmpty())
        << "lowering the number removes the surplus";
    EXPECT_TRUE(QFile::exists(log.path()));
}

TEST(ScriptLogLocation, TestRunsKeepTheirSettingsAndBackupsOutOfTheHome)
{
    // The test programs point the user's settings at a temporary folder, so
    // neither these tests nor the plax runs they start leave backups behind.
    const QString settingsFile = openAppSettings()->fileName();
    const QString configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
    ASSERT_FALSE(configHome.isEmpty());
    EXPECT_TRUE(configHome.startsWith(QDir::tempPath() + "/")) << configHome.toStdString();
    EXPECT_TRUE(settingsFile.startsWith(configHome + "/")) << settingsFile.toStdString();
    EXPECT_TRUE(ScriptLog::backupsRoot().startsWith(configHome + "/"));
    EXPECT_FALSE(ScriptLog::backupsRoot().startsWith(QDir::homePath() + "/"));
}
