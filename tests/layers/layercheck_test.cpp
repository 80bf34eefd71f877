// The layer rule of src/ checked on the source tree itself, and the checker
// on small made-up trees.
#include "layers/layercheck.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace
{
QString readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void writeFile(const QDir& root, const QString& path, const QByteArray& text)
{
    ASSERT_TRUE(root.mkpath(QFileInfo(root.filePath(path)).path()));
    QFile file(root.filePath(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

const char* const kTable = R"(# Layers

| folder | what | may use |
|---|---|---|
| `base/` | shared types | Qt Core |
| `model/` | the scene | base |
| `views/` | what the user sees | all above |

Text after the table may name `other/` folders without adding them.
)";
} // namespace

TEST(LayerCheck, TheOrderIsTheTablesFolderColumnFromTheBottomUp)
{
    EXPECT_EQ(LayerCheck::layerOrder(QString::fromLatin1(kTable)),
              (QStringList{"base", "model", "views"}));
    EXPECT_TRUE(LayerCheck::layerOrder(QStringLiteral("no table here")).isEmpty());
}

TEST(LayerCheck, OnlyIncludeLinesCount)
{
    const auto found = LayerCheck::folderIncludes(QStringLiteral("#include \"model/item.h\"\n"
                                                                 "/// Expands `#include \"name\"` lines\n"
                                                                 "// #include \"views/view.h\" (in a comment)\n"
                                                                 "#include <QString>\n"
                                                                 "  #  include \"base/log.h\"\n"
                                                                 "#include \"local.h\"\n"));
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0], std::make_pair(1, QStringLiteral("model/item.h")));
    EXPECT_EQ(found[1], std::make_pair(5, QStringLiteral("base/log.h")));
}

TEST(LayerCheck, AnIncludeFromALowerFolderToAHigherOneIsAViolation)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QDir root(dir.path());
    writeFile(root, "base/log.h", "#pragma once\n");
    writeFile(root, "model/item.h", "#pragma once\n#include \"base/log.h\"\n#include \"model/other.h\"\n");
    writeFile(root, "views/view.cpp", "#include \"model/item.h\"\n#include \"base/log.h\"\n");
    const QStringList order = LayerCheck::layerOrder(QString::fromLatin1(kTable));
    EXPECT_TRUE(LayerCheck::check(dir.path(), order).empty()) << "down and sideways are allowed";

    writeFile(root, "model/item.cpp", "#include \"model/item.h\"\n\n#include \"views/view.h\"\n");
    const std::vector<LayerCheck::Violation> found = LayerCheck::check(dir.path(), order);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].file, "model/item.cpp");
    EXPECT_EQ(found[0].line, 3);
    EXPECT_EQ(LayerCheck::describe(found),
              "src/model/item.cpp:3: includes \"views/view.h\": model/ may not use views/, which comes after it in "
              "the layer table");
}

TEST(LayerCheck, FoldersOutsideTheTableAreViolations)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QDir root(dir.path());
    writeFile(root, "model/item.h", "#include \"gadgets/gadget.h\"\n");
    writeFile(root, "gadgets/gadget.h", "#pragma once\n");
    const std::vector<LayerCheck::Violation> found =
        LayerCheck::check(dir.path(), LayerCheck::layerOrder(QString::fromLatin1(kTable)));
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].file, "gadgets/gadget.h") << "a folder of its own, unchecked, would hide anything";
    EXPECT_EQ(found[0].line, 0);
    EXPECT_EQ(found[1].file, "model/item.h");
    EXPECT_EQ(found[1].line, 1);
}

TEST(LayerCheck, TheSourceTreeKeepsTheLayersOfItsReadme)
{
    const QString src = QStringLiteral(PLAX_SOURCE_DIR "/src");
    const QStringList order = LayerCheck::layerOrder(readFile(src + "/README.md"));
    ASSERT_GE(order.size(), 10) << "src/README.md should hold the layer table";
    EXPECT_EQ(order.front(), "base");
    EXPECT_EQ(order.back(), "app");
    const std::vector<LayerCheck::Violation> found = LayerCheck::check(src, order);
    EXPECT_TRUE(found.empty()) << LayerCheck::describe(found).toStdString();
}
