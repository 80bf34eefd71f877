// Choosing between the editor and the batch tool from the command line.
#include "app/launchmode.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <string>
#include <vector>

namespace
{
class LaunchModeTest : public ::testing::Test
{
protected:
    QString make(const QString& name)
    {
        const QString path = QDir(dir.path()).filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("{}");
        return path;
    }

    LaunchMode choose(const QStringList& arguments)
    {
        std::vector<std::string> texts{"plax"};
        for (const QString& argument : arguments)
            texts.push_back(QFile::encodeName(argument).toStdString());
        std::vector<const char*> argv;
        for (const std::string& text : texts)
            argv.push_back(text.c_str());
        return chooseLaunchMode(int(argv.size()), argv.data());
    }

    QTemporaryDir dir;
};
} // namespace

TEST_F(LaunchModeTest, NoArgumentsOrOnlyWindowingOptionsOpenTheEditor)
{
    EXPECT_EQ(choose({}).kind, LaunchMode::Kind::Editor);
    const LaunchMode qtOnly = choose({"-platform", "offscreen", "-reverse", "-style", "fusion"});
    EXPECT_EQ(qtOnly.kind, LaunchMode::Kind::Editor);
    EXPECT_TRUE(qtOnly.files.isEmpty()) << "a windowing option's value is not a file to open";
}

TEST_F(LaunchModeTest, NothingButExistingSceneFilesOpenThemInTheEditorInOrder)
{
    const QString scene = make("level.plax");
    const QString raw = make("export.JSON");
    const LaunchMode mode = choose({scene, "-platform", "xcb", raw});
    EXPECT_EQ(mode.kind, LaunchMode::Kind::Editor);
    EXPECT_EQ(mode.files, (QStringList{scene, raw}));

    // Relative names become absolute, as the editor may change its folder.
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(dir.path()));
    const LaunchMode relative = choose({"level.plax"});
    QDir::setCurrent(before);
    EXPECT_EQ(relative.kind, LaunchMode::Kind::Editor);
    EXPECT_EQ(relative.files, QStringList{scene});
}

TEST_F(LaunchModeTest, AnyOtherArgumentListIsTheBatchTool)
{
    const QString scene = make("level.plax");
    const QString notes = make("notes.txt");
    QDir(dir.path()).mkdir("folder.plax");
    make("-odd.plax");
    const QList<QStringList> batchLists = {
        {"-i", scene},
        {scene, "-e", "out.json"},
        {scene, "-v"},
        {"--help"},
        {"-V"},
        {QDir(dir.path()).filePath("missing.plax")},
        {scene, QDir(dir.path()).filePath("missing.plax")},
        {notes},
        {QDir(dir.path()).filePath("folder.plax")},
        {"-odd.plax"}, // an existing file, but named like an option
        {""},
    };
    // In the folder of the files, so that "-odd.plax" names one.
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(dir.path()));
    for (const QStringList& arguments : batchLists) {
        const LaunchMode mode = choose(arguments);
        EXPECT_EQ(mode.kind, LaunchMode::Kind::Batch) << arguments.join(' ').toStdString();
        EXPECT_TRUE(mode.files.isEmpty()) << arguments.join(' ').toStdString();
    }
    QDir::setCurrent(before);
}

TEST_F(LaunchModeTest, FileToOpenNeedsARegularSceneOrRawInfoFile)
{
    EXPECT_TRUE(isFileToOpen(make("a.plax")));
    EXPECT_TRUE(isFileToOpen(make("b.Plax")));
    EXPECT_TRUE(isFileToOpen(make("c.json")));
    EXPECT_FALSE(isFileToOpen(make("d.rs")));
    EXPECT_FALSE(isFileToOpen(make("plax")));
    EXPECT_FALSE(isFileToOpen(QDir(dir.path()).filePath("gone.plax")));
    EXPECT_FALSE(isFileToOpen(QString()));
}
