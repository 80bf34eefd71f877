// The script editor: highlighting and completion of the registered API,
// compile errors with their rows, running the whole text or a selection as
// one undo step, and stopping an endless script.
#include "panelstesting.h"

#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "model/metaworld.h"
#include "panels/scriptapicatalog.h"
#include "panels/scripteditor.h"
#include "panels/scripteditorpanel.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QElapsedTimer>
#include <QListWidget>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QtTest/QTest>

using namespace PanelsTesting;

namespace
{
int styleAt(ScriptEditor& editor, const QString& word, int occurrence = 0)
{
    int from = 0;
    int at = -1;
    for (int i = 0; i <= occurrence; ++i) {
        at = editor.text().indexOf(word, from);
        from = at + 1;
    }
    EXPECT_GE(at, 0) << word.toStdString();
    return int(editor.SendScintilla(QsciScintillaBase::SCI_GETSTYLEAT, static_cast<unsigned long>(at)));
}

QToolButton* buttonOf(ScriptEditorPanel& panel, QAction* action)
{
    for (QToolBar* bar : panel.findChildren<QToolBar*>())
        if (auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action)))
            return button;
    return nullptr;
}
} // namespace

TEST(ScriptEditor, HighlightsKeywordsTypesAndRegisteredFunctions)
{
    ScriptEditor editor;
    editor.resize(600, 300);
    editor.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    editor.setText("body b = getBody(1); // a note\nwhile (b.valid) { b.setAngle(1.5); break; }\nint unknownThing = 3;\n");
    editor.recolor();
    EXPECT_EQ(styleAt(editor, "body"), QsciLexerCPP::GlobalClass);
    EXPECT_EQ(styleAt(editor, "getBody"), QsciLexerCPP::KeywordSet2);
    EXPECT_EQ(styleAt(editor, "setAngle"), QsciLexerCPP::KeywordSet2);
    EXPECT_EQ(styleAt(editor, "while"), QsciLexerCPP::Keyword);
    EXPECT_EQ(styleAt(editor, "// a note"), QsciLexerCPP::CommentLine);
    EXPECT_EQ(styleAt(editor, "1.5"), QsciLexerCPP::Number);
    EXPECT_EQ(styleAt(editor, "unknownThing"), QsciLexerCPP::Identifier) << "only registered names are coloured";
    EXPECT_GT(editor.marginWidth(0), 0) << "line numbers are shown";
    EXPECT_EQ(editor.braceMatching(), QsciScintilla::SloppyBraceMatch);
}

TEST(ScriptEditor, CompletionOffersEveryRegisteredFunction)
{
    const ScriptApiCatalog& catalog = ScriptApiCatalog::instance();
    ASSERT_GT(catalog.functions().size(), 100);
    ScriptEditor editor;
    const QStringList all = editor.apis()->completions(QString(), false);
    for (const QString& name : catalog.functions().keys())
        EXPECT_TRUE(all.contains(name)) << name.toStdString();
    EXPECT_EQ(editor.apis()->completions("getSelectedBo", false), QStringList({"getSelectedBodies"}));
    EXPECT_TRUE(editor.apis()->completions("setDen", true).contains("setDensity")) << "methods after a dot";
    EXPECT_FALSE(editor.apis()->completions("setDen", false).contains("setDensity"));

    // The editor's own list, as a person sees it while typing.
    editor.resize(600, 300);
    editor.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    editor.setFocus();
    editor.setText(QString());
    QTest::keyClicks(&editor, "getSelectedFi");
    editor.autoCompleteFromAPIs();
    ASSERT_TRUE(editor.isListActive());
    QByteArray current(256, '\0');
    editor.SendScintilla(QsciScintillaBase::SCI_AUTOCGETCURRENTTEXT, 0ul, current.data());
    EXPECT_STREQ(current.constData(), "getSelectedFixtures");
    QTest::keyClick(&editor, Qt::Key_Return);
    EXPECT_EQ(editor.text(), "getSelectedFixtures");

    QList<int> shifts;
    const QStringList tips = editor.apis()->callTips({"getBody", ""}, 0, QsciScintilla::CallTipsNoContext, shifts);
    EXPECT_TRUE(tips.contains("body getBody(int)")) << tips.join('|').toStdString();
}

class ScriptPanelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        document = exampleDocument();
        panel.resize(700, 500);
        panel.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
        panel.setDocument(document.get());
        ball = static_cast<MetaBody*>(document->world().registry(ItemKind::Body).findByName("ball"));
        ASSERT_NE(ball, nullptr);
        // The main window hands the panel every log message; so does this test.
        Log::setListener([this](int level, const QString& text) { panel.noteLogMessage(level, text); });
    }

    void TearDown() override { Log::setListener({}); }

    std::unique_ptr<EditorDocument> document;
    ScriptEditorPanel panel;
    MetaBody* ball = nullptr;
};

TEST_F(ScriptPanelTest, CompileErrorIsListedWithItsRowAndChangesNothing)
{
    const float angle = ball->angle;
    const int index = document->undoStack().index();
    panel.editor()->setText("getBody('ball').setAngle(2);\nprint('fine');\ngetBody('ball').setAngle(;\nprint('after');\n");
    EXPECT_FALSE(panel.runWhole());
    EXPECT_EQ(ball->angle, angle) << "a script with a syntax error never changes the scene";
    EXPECT_EQ(document->undoStack().index(), index);
    ASSERT_FALSE(panel.problems().isEmpty());
    EXPECT_EQ(panel.problems().first().row, 3);
    EXPECT_TRUE(panel.problems().first().error);
    EXPECT_EQ(panel.editor()->errorRows(), QList<int>({3}));
    ASSERT_GT(panel.problemList()->count(), 0);
    EXPECT_TRUE(panel.problemList()->item(0)->text().startsWith("Line 3, col ")) << panel.problemList()->item(0)->text().toStdString();

    // Clicking the error moves the cursor to its row.
    panel.editor()->setCursorPosition(0, 0);
    QListWidgetItem* item = panel.problemList()->item(0);
    const QRect rect = panel.problemList()->visualItemRect(item);
    QTest::mouseClick(panel.problemList()->viewport(), Qt::LeftButton, {}, rect.center());
    int line = -1, column = -1;
    panel.editor()->getCursorPosition(&line, &column);
    EXPECT_EQ(line, 2);

    // With its own main the rows are the same as the user's.
    panel.editor()->setText("void main()\n{\n    int x = 1;\n    x = ;\n}\n");
    EXPECT_FALSE(panel.compile());
    ASSERT_FALSE(panel.problems().isEmpty());
    EXPECT_EQ(panel.problems().first().row, 4);
}

TEST_F(ScriptPanelTest, WholeScriptAndSelectionRunAsOneUndoStepEach)
{
    const int count = document->undoStack().count();
    panel.editor()->setText("getBody('ball').setAngle(1.25);\ngetBody('ball').setPosition(3, 4);\n"
                            "getBody('ball').setAngle(0.5);\n");
    ASSERT_TRUE(panel.runWhole());
    EXPECT_FLOAT_EQ(ball->angle, 0.5f);
    EXPECT_FLOAT_EQ(ball->position.x, 3);
    EXPECT_EQ(document->undoStack().count(), count + 1);
    EXPECT_EQ(document->scripting().liveScript(), panel.editor()->text()) << "the text is the document's live script";

    panel.editor()->setSelection(0, 0, 1, 0);
    ASSERT_TRUE(panel.runSelection());
    EXPECT_FLOAT_EQ(ball->angle, 1.25f) << "only the selected first line ran";
    EXPECT_EQ(document->undoStack().count(), count + 2);
    document->undoStack().undo();
    EXPECT_FLOAT_EQ(ball->angle, 0.5f);

    // An error in a selection is reported at the editor's row.
    panel.editor()->setText("print('a');\nprint('b');\nprint('c';\n");
    panel.editor()->setSelection(1, 0, 2, 9);
    EXPECT_FALSE(panel.runSelection());
    ASSERT_FALSE(panel.problems().isEmpty());
    EXPECT_EQ(panel.problems().first().row, 3);
}

TEST_F(ScriptPanelTest, AbortStopsAnEndlessScriptAndKeepsItsChangesAsOneStep)
{
    const int count = document->undoStack().count();
    const float angle = ball->angle;
    panel.editor()->setText("getBody('ball').setAngle(2.5);\nint n = 0;\nwhile (true) { n++; }\n");
    QToolButton* abort = buttonOf(panel, panel.abortAction());
    ASSERT_NE(abort, nullptr);
    EXPECT_FALSE(abort->isEnabled()) << "nothing to abort yet";
    // While the script runs, the busy indicator comes up and the abort
    // button is enabled; clicking it stops the script.
    QWidget* busy = panel.findChild<QWidget*>("ScriptBusyIndicator");
    ASSERT_NE(busy, nullptr);
    bool clicked = false;
    QTimer poll;
    QElapsedTimer clock;
    clock.start();
    QObject::connect(&poll, &QTimer::timeout, &panel, [&] {
        if (abort->isEnabled() && busy->isVisible()) {
            clicked = true;
            QTest::mouseClick(abort, Qt::LeftButton);
        } else if (clock.elapsed() > 60000) {
            ADD_FAILURE() << "no busy indicator with an enabled abort button while the script ran";
            panel.abortAction()->trigger();
        } else {
            return;
        }
        poll.stop();
    });
    poll.start(20);
    LogCapture log;
    EXPECT_FALSE(panel.runWhole());
    EXPECT_TRUE(clicked);
    EXPECT_TRUE(log.has(LOG_ERROR, "Script aborted on request.")) << log.dump().toStdString();
    EXPECT_FLOAT_EQ(ball->angle, 2.5f) << "what ran before the abort stays";
    EXPECT_EQ(document->undoStack().count(), count + 1) << "as one undo step";
    EXPECT_FALSE(abort->isEnabled());
    document->undoStack().undo();
    EXPECT_FLOAT_EQ(ball->angle, angle);
}
