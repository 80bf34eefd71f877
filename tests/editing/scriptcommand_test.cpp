#include "edittestsupport.h"

#include "editing/itemcommands.h"
#include "editing/modifiedstate.h"
#include "editing/propertycommands.h"
#include "editing/scriptcommand.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace
{
// A command with chosen texts, pushed the way scene changes record them.
class TextCommand : public ScriptCommand
{
public:
    TextCommand(EditHost* host, const QString& redo, const QString& undo, bool modifies = true)
        : ScriptCommand(host, redo, undo, modifies)
    {
    }
};

void push(RecordingHost& host, const QString& redo, const QString& undo, bool modifies = true)
{
    recordCommand<TextCommand>(host, redo, undo, modifies);
}
} // namespace

TEST(ScriptCommand, PushingRecordsWithoutReplayingAndLogsTheRedoScript)
{
    RecordingHost host;
    LogCapture capture;
    push(host, "r1;", "u1;");
    EXPECT_TRUE(host.scriptsRun.isEmpty()) << "the change was made before the push";
    EXPECT_TRUE(EditSwitches::s_runCommandScripts);
    EXPECT_EQ(host.logLines, QStringList({"r1;"}));
    EXPECT_TRUE(capture.texts(LOG_INFO).contains("created: r1;"));
    EXPECT_EQ(host.undoStack().text(0), "r1;");

    SwitchScope quiet(EditSwitches::s_quiet, true);
    capture.clear();
    push(host, "r2;", "u2;");
    EXPECT_FALSE(capture.texts(LOG_INFO).contains("created: r2;"));

    SwitchScope off(EditSwitches::s_recordUndoCommands, false);
    const int count = host.undoStack().count();
    push(host, "r3;", "u3;");
    EXPECT_EQ(host.undoStack().count(), count) << "nothing is recorded while recording is off";
}

TEST(ScriptCommand, MergedCommandsUndoNewestFirstAndRedoOldestFirst)
{
    RecordingHost host;
    beginUndoMacro(host.undoStack(), "three edits");
    push(host, "r1;", "u1;");
    push(host, "r2;", "u2;");
    push(host, "r3;", "u3;");
    endUndoMacro(host.undoStack());
    ASSERT_EQ(host.undoStack().count(), 1);
    const QUndoCommand* macro = host.undoStack().command(0);
    ASSERT_EQ(macro->childCount(), 1) << "merged into the first command";
    EXPECT_EQ(macro->text(), "three edits");
    EXPECT_EQ(macro->child(0)->text(), "r1;") << "merging does not change the text";

    host.undoStack().undo();
    EXPECT_EQ(host.scriptsRun, QStringList({"u3;\nu2;u1;"}));
    EXPECT_EQ(host.progressTexts, QStringList({"Undoing three edits..."}));
    EXPECT_TRUE(EditSwitches::s_recordUndoCommands) << "restored after the run";
    host.undoStack().redo();
    EXPECT_EQ(host.scriptsRun.last(), "r1;r2;\nr3;");
    EXPECT_EQ(host.progressTexts.last(), "Redoing three edits...");
    EXPECT_EQ(host.logLines.mid(3), QStringList({"u3;\nu2;u1;", "r1;r2;\nr3;"}));
}

TEST(ScriptCommand, NestedMacrosCollapseIntoTheOutermost)
{
    RecordingHost host;
    beginUndoMacro(host.undoStack(), "outer");
    beginUndoMacro(host.undoStack(), "inner");
    push(host, "a;", "b;");
    endUndoMacro(host.undoStack());
    EXPECT_EQ(EditSwitches::s_macroDepth, 1);
    endUndoMacro(host.undoStack());
    EXPECT_EQ(EditSwitches::s_macroDepth, 0);
    ASSERT_EQ(host.undoStack().count(), 1);
    EXPECT_EQ(host.undoStack().text(0), "outer");

    SwitchScope off(EditSwitches::s_recordUndoCommands, false);
    {
        UndoMacroScope scope(host.undoStack(), "not recorded");
        EXPECT_EQ(EditSwitches::s_macroDepth, 0) << "no macro opens while an undo script replays";
    }
    EXPECT_EQ(host.undoStack().count(), 1);
}

TEST(ScriptCommand, AFailedUndoIsNotLoggedButTheIndexMoves)
{
    RecordingHost host;
    push(host, "r;", "u;");
    host.runSucceeds = false;
    host.undoStack().undo();
    EXPECT_EQ(host.undoStack().index(), 0);
    EXPECT_EQ(host.logLines, QStringList({"r;"}));
}

namespace
{
// One scene change (an angle) as its own undo step.
void change(RecordingHost& host, float angle)
{
    beginUndoMacro(host.undoStack(), "edit");
    recordCommand<SetItemPropertyFloatCommand>(host, "getBody", "setAngle", 1, angle - 1.0f, angle);
    endUndoMacro(host.undoStack());
}

// One selection change as its own undo step.
void select(RecordingHost& host, ItemId id)
{
    beginUndoMacro(host.undoStack(), "select");
    recordCommand<SelectCommand>(host, ItemKind::Body, id);
    endUndoMacro(host.undoStack());
}
} // namespace

TEST(ModifiedState, SelectionAndCursorCommandsNeverCount)
{
    RecordingHost host;
    QUndoStack& stack = host.undoStack();
    EXPECT_FALSE(isModified(stack));
    recordCommand<SelectCommand>(host, ItemKind::Body, 1);
    recordCommand<DeselectCommand>(host, ItemKind::Body, 1);
    recordCommand<SetCursorPositionCommand>(host, Vec2{0, 0}, Vec2{1, 1});
    EXPECT_FALSE(stack.isClean());
    EXPECT_FALSE(isModified(stack)) << "selection and cursor changes alone";

    change(host, 1);
    EXPECT_TRUE(isModified(stack));

    stack.setClean();
    EXPECT_FALSE(isModified(stack));
    select(host, 1);
    EXPECT_FALSE(stack.isClean());
    EXPECT_FALSE(isModified(stack)) << "a change saved before the selection is in the file";
    stack.undo();
    stack.undo();
    EXPECT_TRUE(isModified(stack)) << "the saved change undone (past a selection)";
}

TEST(ModifiedState, ChangesUndonePastTheSaveCount)
{
    RecordingHost host;
    QUndoStack& stack = host.undoStack();
    change(host, 1);
    change(host, 2);
    stack.setClean();
    ASSERT_EQ(stack.cleanIndex(), 2);

    stack.undo();
    EXPECT_TRUE(isModified(stack)) << "the file holds the change the scene no longer has";
    stack.undo();
    EXPECT_TRUE(isModified(stack));
    stack.redo();
    EXPECT_TRUE(isModified(stack));
    stack.redo();
    EXPECT_FALSE(isModified(stack)) << "back at the saved state";

    // Saved in the middle of the history: either way from it counts.
    stack.undo();
    stack.setClean();
    EXPECT_FALSE(isModified(stack));
    stack.redo();
    EXPECT_TRUE(isModified(stack));
    stack.undo();
    stack.undo();
    EXPECT_TRUE(isModified(stack));
}

TEST(ModifiedState, ALostCleanStateIsModifiedUntilTheNextSave)
{
    RecordingHost host;
    QUndoStack& stack = host.undoStack();
    change(host, 1);
    stack.setClean();
    stack.undo();
    // A new step after undoing past the save discards the way back to it.
    select(host, 1);
    ASSERT_EQ(stack.cleanIndex(), -1);
    EXPECT_TRUE(isModified(stack)) << "only a selection since, but the saved change is gone from the stack";
    stack.setClean();
    EXPECT_FALSE(isModified(stack));
}

TEST(ModifiedState, ACleanIndexDroppedByTheUndoLimitCounts)
{
    RecordingHost host;
    QUndoStack& stack = host.undoStack();
    stack.setUndoLimit(3);
    change(host, 1);
    stack.setClean();
    select(host, 1);
    select(host, 2);
    select(host, 3);
    ASSERT_EQ(stack.cleanIndex(), 0) << "the saved state is still the bottom of the stack";
    EXPECT_FALSE(isModified(stack));
    select(host, 4);
    ASSERT_EQ(stack.count(), 3) << "the limit dropped the oldest steps";
    ASSERT_EQ(stack.cleanIndex(), -1);
    EXPECT_TRUE(isModified(stack)) << "the saved state can no longer be reached";

    RecordingHost kept;
    kept.undoStack().setUndoLimit(3);
    change(kept, 1);
    change(kept, 2);
    kept.undoStack().setClean();
    select(kept, 1);
    select(kept, 2);
    ASSERT_EQ(kept.undoStack().cleanIndex(), 1) << "the clean state moved down with the dropped step";
    EXPECT_FALSE(isModified(kept.undoStack())) << "only selections since the save";
}

TEST(ModifiedState, AnEmptyScriptExecutionMacroCounts)
{
    RecordingHost host;
    const QString text = QCoreApplication::translate("DocumentScripting", "script execution");
    beginUndoMacro(host.undoStack(), text);
    endUndoMacro(host.undoStack());
    EXPECT_TRUE(isModified(host.undoStack()));
}

TEST(ScriptCommand, LongScriptsRunInPiecesOfWholeLines)
{
    RecordingHost host;
    beginUndoMacro(host.undoStack(), "many");
    for (int i = 0; i < 250; ++i)
        push(host, QStringLiteral("r%1;").arg(i), QStringLiteral("u%1;").arg(i));
    endUndoMacro(host.undoStack());
    host.undoStack().undo();
    ASSERT_GT(host.scriptsRun.size(), 1);
    QStringList undoLines;
    for (int i = 249; i >= 1; --i)
        undoLines << QStringLiteral("u%1;").arg(i);
    undoLines.last() += "u0;";
    EXPECT_EQ(host.scriptsRun.join('\n'), undoLines.join('\n')) << "the pieces together are the whole script";
    for (const QString& piece : host.scriptsRun)
        EXPECT_FALSE(piece.startsWith('\n') || piece.endsWith('\n'));
    EXPECT_EQ(host.logLines.mid(250), host.scriptsRun) << "each piece that ran is logged";

    host.scriptsRun.clear();
    host.runSucceeds = false;
    LogCapture capture;
    host.undoStack().redo();
    EXPECT_EQ(host.scriptsRun.size(), 1) << "a failed piece stops the rest";
    EXPECT_FALSE(capture.texts(LOG_WARNING).isEmpty());
}
