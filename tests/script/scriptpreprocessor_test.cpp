#include "scripttesting.h"

#include "base/log.h"
#include "engine/scriptpreprocessor.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{
class ScriptPreprocessor : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_dir.isValid()); }

    QString path(const QString& relative) const { return m_dir.filePath(relative); }
    void file(const QString& relative, const QString& text) { writeText(path(relative), text); }

    // Preprocesses a text as if it were the script file "main.rs" of the folder.
    QString expand(QString text, QStringList* included = nullptr)
    {
        QStringList list;
        preprocessScriptIncludes(path("main.rs"), included ? *included : list, text);
        return text;
    }

    QTemporaryDir m_dir;
};
} // namespace

TEST_F(ScriptPreprocessor, IncludeOnTheFirstLineNeedsTheInsertedNewline)
{
    file("a.inc", "A");
    EXPECT_EQ(expand("\n#include \"a.inc\"\nrest"), "\nA\nrest");
    EXPECT_EQ(expand("#include \"a.inc\"\nrest"), "#include \"a.inc\"\nrest");
}

TEST_F(ScriptPreprocessor, WhiteSpaceAroundTheIncludeLine)
{
    file("a.inc", "A");
    EXPECT_EQ(expand("x\n   #include\t \"a.inc\"  \ny"), "x\nA\ny");
    EXPECT_EQ(expand("x\n#include\"a.inc\"\ny"), "x\n#include\"a.inc\"\ny") << "white space after #include is required";
    EXPECT_EQ(expand("x\n#include \"a.inc\"y\n"), "x\n#include \"a.inc\"y\n") << "nothing may follow the name";
}

TEST_F(ScriptPreprocessor, RelativeNamesFollowTheIncluderAndNestedFilesTheirOwnFolder)
{
    file("lib/outer.inc", "outer1\n#include \"inner.inc\"\nouter2");
    file("lib/inner.inc", "inner");
    file("inner.inc", "wrong folder");
    QStringList included;
    EXPECT_EQ(expand("\n#include \"lib/outer.inc\"\nend", &included), "\nouter1\ninner\nouter2\nend");
    EXPECT_EQ(included, QStringList({path("lib/outer.inc"), path("lib/inner.inc")}));
}

TEST_F(ScriptPreprocessor, AbsoluteNamesStandAsTheyAre)
{
    file("elsewhere/abs.inc", "ABS");
    EXPECT_EQ(expand(QStringLiteral("x\n#include \"%1\"\ny").arg(path("elsewhere/abs.inc"))), "x\nABS\ny");
}

TEST_F(ScriptPreprocessor, AllIncludeLinesOfAPassGetTheFirstFile)
{
    file("a.inc", "A");
    file("b.inc", "B");
    LogCapture capture;
    QStringList included;
    EXPECT_EQ(expand("\n#include \"a.inc\"\nX\n#include \"b.inc\"\nY", &included), "\nA\nX\nA\nY");
    EXPECT_EQ(included, QStringList({path("a.inc")}));
    EXPECT_TRUE(capture.texts(LOG_WARNING).isEmpty());
}

TEST_F(ScriptPreprocessor, AnAdjacentRepeatIsARedundantInclusion)
{
    file("a.inc", "A");
    LogCapture capture;
    // The second line is matched from the newline that ends the first replacement.
    EXPECT_EQ(expand("\n#include \"a.inc\"\n#include \"a.inc\"\nY"), "\nA\n\nY");
    EXPECT_EQ(capture.texts(LOG_WARNING),
              QStringList({QStringLiteral("Ignoring redundant inclusion of file '%1'").arg(path("a.inc"))}));
}

TEST_F(ScriptPreprocessor, AnAdjacentDifferentFileIsFoundInTheNextPass)
{
    file("a.inc", "A");
    file("b.inc", "B");
    EXPECT_EQ(expand("\n#include \"a.inc\"\n#include \"b.inc\"\nY"), "\nA\nB\nY");
}

TEST_F(ScriptPreprocessor, AFileIncludedByTwoFilesIsInsertedOnce)
{
    file("one.inc", "one\n#include \"common.inc\"\n");
    file("two.inc", "two\n#include \"common.inc\"\n");
    file("common.inc", "common");
    LogCapture capture;
    EXPECT_EQ(expand("\n#include \"one.inc\"\n#include \"two.inc\"\nend"), "\none\ncommon\ntwo\n\n\nend");
    EXPECT_EQ(capture.texts(LOG_WARNING),
              QStringList({QStringLiteral("Ignoring redundant inclusion of file '%1'").arg(path("common.inc"))}));
}

TEST_F(ScriptPreprocessor, MissingFilesYieldEmptyText)
{
    LogCapture capture;
    EXPECT_EQ(expand("a\n#include \"nope.inc\"\nb"), "a\n\nb");
    EXPECT_TRUE(capture.texts(LOG_WARNING).contains(QStringLiteral("File '%1' does not exist").arg(path("nope.inc"))));
}

TEST_F(ScriptPreprocessor, IncludedTextIsInsertedVerbatim)
{
    file("a.inc", "string s = \"\\\\1 $1 %1 \\\\0\";");
    EXPECT_EQ(expand("\n#include \"a.inc\"\n"), "\nstring s = \"\\\\1 $1 %1 \\\\0\";\n");
}
