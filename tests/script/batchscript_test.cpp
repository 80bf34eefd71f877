#include "scripttesting.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "script/batchscript.h"
#include "script/documentscripting.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace
{
class BatchScript : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_dir.isValid()); }

    QString script(const QString& name, const QString& text)
    {
        QString path = m_dir.filePath(name);
        writeText(path, text);
        return path;
    }

    QTemporaryDir m_dir;
    BatchModeScope m_batch{true};
};
} // namespace

TEST_F(BatchScript, ScriptsRunInOrderOnOneDocument)
{
    QString out = m_dir.filePath("out.txt");
    QString first = script("first.rs", QStringLiteral("writeFile('%1', 'one');").arg(out));
    QString second = script("second.rs", QStringLiteral("void main() {\n"
                                                       "    string s = readFile('%1');\n"
                                                       "    writeFile('%1', s + ',two');\n"
                                                       "}\n")
                                             .arg(out));
    QString third = script("third.rs", QStringLiteral("print(readFile('%1'));").arg(out));

    EditorDocument document;
    LogCapture capture;
    for (const QString& path : {first, second, third}) {
        bool compiled = false;
        EXPECT_TRUE(compileAndRunBatchScript(document, path, &compiled)) << path.toStdString();
        EXPECT_TRUE(compiled);
    }
    EXPECT_EQ(capture.texts(LOG_SCRIPT), QStringList({"one,two"}));
}

TEST_F(BatchScript, CompileFailuresAreReportedAtTheUsersRow)
{
    QString path = script("broken.rs", "int a = 1;\nint b = ;\n");
    EditorDocument document;
    LogCapture capture;
    bool compiled = true;
    EXPECT_FALSE(compileAndRunBatchScript(document, path, &compiled));
    EXPECT_FALSE(compiled);
    EXPECT_TRUE(capture.hasLineStartingWith(LOG_ERROR, "Line 2, col ")) << capture.texts(LOG_ERROR).join('|').toStdString();
}

TEST_F(BatchScript, AnExceptionDoesNotStopTheNextScript)
{
    QString failing = script("failing.rs", "int z = 0;\nprint(1 / z);\n");
    QString next = script("next.rs", "print('still here');");
    EditorDocument document;
    LogCapture capture;
    bool compiled = false;
    EXPECT_FALSE(compileAndRunBatchScript(document, failing, &compiled));
    EXPECT_TRUE(compiled) << "it compiled, it only failed while running";
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Divide by zero"));
    EXPECT_TRUE(compileAndRunBatchScript(document, next, &compiled));
    EXPECT_TRUE(capture.texts(LOG_SCRIPT).contains("still here"));
}

TEST_F(BatchScript, IncludesResolveAgainstTheScriptAndBecomeTheLiveScript)
{
    script("lib/helpers.inc", "int triple(int v) { return 3 * v; }");
    QString path = script("uses.rs", "#include \"lib/helpers.inc\"\nvoid main() {\n  print(triple(5));\n}\n");
    EditorDocument document;
    LogCapture capture;
    bool compiled = false;
    EXPECT_TRUE(compileAndRunBatchScript(document, path, &compiled));
    EXPECT_EQ(capture.texts(LOG_SCRIPT), QStringList({"15"}));
    EXPECT_EQ(document.scripting().liveScript(),
              "int triple(int v) { return 3 * v; }\nvoid main() {\n  print(triple(5));\n}\n");
}

TEST_F(BatchScript, AnUnreadableFileIsNotCompiled)
{
    EditorDocument document;
    LogCapture capture;
    bool compiled = true;
    EXPECT_FALSE(compileAndRunBatchScript(document, m_dir.filePath("absent.rs"), &compiled));
    EXPECT_FALSE(compiled);
}
