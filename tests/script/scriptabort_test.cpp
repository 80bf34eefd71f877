// A script stopped by a limit leaves the document as it was before the run.
#include "scripttesting.h"

#include "document/editordocument.h"
#include "model/metaworld.h"
#include "script/scriptbackground.h"

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
