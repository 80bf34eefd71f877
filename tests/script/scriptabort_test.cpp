// A script stopped by a limit leaves the document as it was before the run.
#include "scripttesting.h"

#include "document/editordocument.h"
#include "engine/scriptbackground.h"
#include "engine/scriptlimits.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

TEST(ScriptAbort, AnAbortedRunIsUndoneInTheEditor)
{
    BatchModeScope interactive(false);
    EditorDocument document;
    ASSERT_TRUE(document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax")));
    const MetaBody* ball = static_cast<const MetaBody*>(document.world().registry(ItemKind::Body).findByName("ball"));
    ASSERT_NE(ball, nullptr);
    const float angle = ball->angle;

    LogCapture capture;
    EXPECT_FALSE(ScriptBackground::runOneOffScript(
        document, "int down(int n) { return down(n + 1) + 1; }\nvoid main() { getBody('ball').setAngle(2.5); down(0); }",
        QString()));
    EXPECT_EQ(ball->angle, angle) << "the half-done change was undone";
    EXPECT_TRUE(capture.texts(LOG_WARNING).contains("The aborted script's changes were undone"));
    EXPECT_EQ(document.undoStack().index(), 0);

    EXPECT_TRUE(ScriptBackground::runOneOffScript(document, "getBody('ball').setAngle(2.5);", QString()));
    EXPECT_EQ(ball->angle, 2.5f) << "a run that ends normally stays";
}

TEST(ScriptAbort, ARunOverItsMemoryBudgetIsUndoneInTheEditorWithEveryChangeBeforeIt)
{
    BatchModeScope interactive(false);
    SettingScope memory(ScriptLimits::kMemorySettingsKey, 4);
    EditorDocument document;
    ASSERT_TRUE(document.load(QStringLiteral(PLAX_SOURCE_DIR "/examples/demo.plax")));
    const int bodies = int(document.world().registry(ItemKind::Body).size());
    ASSERT_GT(bodies, 1);

    LogCapture capture;
    EXPECT_FALSE(ScriptBackground::runOneOffScript(document,
                                                   "void main() { for (uint i = 0; i < 5; i++) duplicate(getBody('ball'));\n"
                                                   "  getBody('ball').delete();\n"
                                                   "  array<array<int>> hoard; while (true) hoard.insertLast(array<int>(4096)); }",
                                                   QString()));
    EXPECT_EQ(capture.count(LOG_ERROR, "Script aborted: the memory limit of 4 MiB"), 1) << capture.dump().toStdString();
    EXPECT_EQ(int(document.world().registry(ItemKind::Body).size()), bodies);
    EXPECT_NE(document.world().registry(ItemKind::Body).findByName("ball"), nullptr);
    EXPECT_EQ(document.undoStack().index(), 0);
    EXPECT_FALSE(document.isModified());
}
