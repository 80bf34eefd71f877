#include "scripttesting.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "engine/batchscript.h"
#include "engine/documentscripting.h"

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

// Order, compile errors at the user's row and exceptions are seen end to end
// through the real plax in tests/app/batch_outputs_test.cpp.

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
