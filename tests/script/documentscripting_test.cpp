#include "scripttesting.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "editing/editswitches.h"
#include "engine/documentscripting.h"
#include "engine/scriptmodules.h"
#include "model/metaworld.h"

#include <gtest/gtest.h>

#include <memory>

using namespace AngelScript;

namespace
{
QStringList errorsOf(const LogCapture& capture)
{
    return capture.texts(LOG_ERROR);
}

// Compiles a one-shot text and returns the first "Line ..." error.
QString firstOneShotError(const QString& text)
{
    EditorDocument document;
    LogCapture capture;
    EXPECT_FALSE(document.scripting().runOneShot(text, QString()));
    for (const QString& error : errorsOf(capture)) {
        if (error.startsWith(QLatin1String("Line ")))
            return error;
    }
    return QString();
}

QString firstLiveError(const QString& text)
{
    EditorDocument document;
    document.scripting().setLiveScript(text);
    LogCapture capture;
    EXPECT_FALSE(document.scripting().compileLive());
    for (const QString& error : errorsOf(capture)) {
        if (error.startsWith(QLatin1String("Line ")))
            return error;
    }
    return QString();
}
} // namespace

TEST(ScriptModules, NamesCarryTheDocumentIdentity)
{
    EXPECT_EQ(ScriptModules::moduleName(ScriptModuleKind::Live, 7), "(plaxscript live 7)");
    EXPECT_EQ(ScriptModules::moduleName(ScriptModuleKind::OneShot, 7), "(plaxscript one shot)");
    EXPECT_EQ(ScriptModules::moduleName(ScriptModuleKind::CustomLabels, 12), "(plaxscript custom labels 12)");
    EXPECT_EQ(ScriptModules::moduleName(ScriptModuleKind::PropertyExportFilter, 3),
              "(plaxscript property export filter 3)");
    EXPECT_EQ(ScriptModules::moduleName(ScriptModuleKind::PropertyDisplayFilter, 3),
              "(plaxscript property display filter 3)");
}

TEST(ScriptModules, MainIsDetectedAnywhereEvenInComments)
{
    EXPECT_TRUE(ScriptModules::hasMain("void main() {}"));
    EXPECT_TRUE(ScriptModules::hasMain("int x;\nvoid   main ( ) {\n}"));
    EXPECT_TRUE(ScriptModules::hasMain("// void main()\nprint(1);"));
    EXPECT_FALSE(ScriptModules::hasMain("void mainly() {}"));
    EXPECT_FALSE(ScriptModules::hasMain("int main() { return 0; }"));
    EXPECT_FALSE(ScriptModules::hasMain("void main(int a) {}"));
    EXPECT_FALSE(ScriptModules::hasMain("voidmain()"));
}

TEST(ScriptModules, TextsWithoutMainAreWrapped)
{
    EXPECT_EQ(ScriptModules::wrapInMain("print(1);"), "void main(){\nprint(1);\n}");
    EXPECT_EQ(ScriptModules::wrapInOneShot("print(1);"), "void plaxscript_oneshot(){\nprint(1);\n}");
}

TEST(ScriptCompileErrors, OneShotRowsAreTheUsersRows)
{
    EXPECT_TRUE(firstOneShotError("int x = ;").startsWith("Line 1, col ")) << firstOneShotError("int x = ;").toStdString();
    EXPECT_TRUE(firstOneShotError("int a = 1;\nint b = 2;\nint c = ;").startsWith("Line 3, col "));
    EXPECT_TRUE(firstOneShotError("void main() { int c = ; }").startsWith("Line 1, col "));
    EXPECT_TRUE(firstOneShotError("void helper() {}\nvoid main() {\n  int c = ;\n}").startsWith("Line 3, col "));
}

TEST(ScriptCompileErrors, LiveScriptRowsAreTheUsersRows)
{
    EXPECT_TRUE(firstLiveError("int x = ;").startsWith("Line 1, col ")) << firstLiveError("int x = ;").toStdString();
    EXPECT_TRUE(firstLiveError("int a = 1;\n\nint c = ;").startsWith("Line 3, col "));
    EXPECT_TRUE(firstLiveError("void main() { int c = ; }").startsWith("Line 1, col "));
    EXPECT_TRUE(firstLiveError("void main() {\n  int a = 1;\n  a = ;\n}").startsWith("Line 3, col "));
}

TEST(ScriptCompileErrors, WrapperMessagesAreDroppedAndLevelsFollowTheMessageType)
{
    EditorDocument document;
    LogCapture capture;
    EXPECT_FALSE(document.scripting().runOneShot("int x = 1;\nx = ;\n", QString()));
    for (const CapturedLine& line : capture.lines())
        EXPECT_FALSE(line.text.contains("Compiling void plaxscript")) << line.text.toStdString();
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Script compile failed"));

    capture.clear();
    // An unused variable shadowing nothing compiles; an implicit conversion warns.
    EXPECT_TRUE(document.scripting().runOneShot("int i = 1.5f;", QString()));
    EXPECT_TRUE(capture.hasLineStartingWith(LOG_WARNING, "Line 1, col "));
}

TEST(ScriptCompileErrors, MainInACommentPreventsWrapping)
{
    EditorDocument document;
    document.scripting().setLiveScript("print(1);");
    EXPECT_TRUE(document.scripting().compileLive());
    // The same statement no longer sits inside main, so it does not compile.
    document.scripting().setLiveScript("// void main() would go here\nprint(1);");
    LogCapture capture;
    EXPECT_FALSE(document.scripting().compileLive());
    EXPECT_TRUE(capture.hasLineStartingWith(LOG_ERROR, "Line 2, col "));
    EXPECT_TRUE(document.scripting().isModulePresent());
    EXPECT_FALSE(document.scripting().isCompiledOk());
}

TEST(ScriptExecution, ExceptionsAreReportedAndTheNextRunWorks)
{
    EditorDocument document;
    LogCapture capture;
    EXPECT_FALSE(document.scripting().runOneShot("int z = 0;\nint x = 5 / z;", QString()));
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Divide by zero"));

    capture.clear();
    EXPECT_FALSE(document.scripting().runOneShot("dictionary@ d;\nd.set('a', 1);", QString()));
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Null pointer access"));

    bool ok = false;
    EXPECT_EQ(runAndCollectPrints(document, "print(6 * 7);", &ok), QStringList({"42"}));
    EXPECT_TRUE(ok);
}

TEST(ScriptExecution, LiveScriptCompilesRunsAndReportsExceptions)
{
    EditorDocument document;
    DocumentScripting& scripting = document.scripting();
    LogCapture capture;
    EXPECT_FALSE(scripting.runLive()) << "no live module yet";
    EXPECT_TRUE(capture.texts(LOG_ERROR).isEmpty());

    scripting.setLiveScript("int twice(int v) { return 2 * v; }\nvoid main() { print(twice(4)); }");
    EXPECT_TRUE(scripting.compileLive());
    EXPECT_TRUE(scripting.isModulePresent());
    EXPECT_TRUE(scripting.runLive());
    EXPECT_EQ(capture.texts(LOG_SCRIPT), QStringList({"8"}));
    EXPECT_TRUE(scripting.runLive()) << "a compiled module can run again";

    scripting.setLiveScript("int z = 0;\nprint(1 / z);");
    EXPECT_TRUE(scripting.compileLive());
    capture.clear();
    EXPECT_FALSE(scripting.runLive());
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Divide by zero"));

    scripting.discardLiveModule();
    EXPECT_FALSE(scripting.isModulePresent());
    EXPECT_FALSE(scripting.runLive());
}

TEST(ScriptExecution, LiveScriptIsTheScenesActiveScript)
{
    EditorDocument document;
    document.scripting().setLiveScript("print(5);");
    EXPECT_EQ(document.world().activeScript, "print(5);");
}

namespace
{
ScriptDocument* s_seenDocument = nullptr;
void probeDocument()
{
    s_seenDocument = ScriptDocument::s_currentScriptContextDocument;
}
} // namespace

TEST(ScriptExecution, RunsActOnTheirDocumentAndFormOneUndoMacro)
{
    EditorDocument document;
    ASSERT_GE(document.scripting().engine()->RegisterGlobalFunction("void probeDocument()", asFUNCTION(probeDocument),
                                                                    asCALL_CDECL),
              0);
    QStringList events;
    DocumentScriptHooks hooks;
    hooks.rebuildChangedFixtures = [&] { events << "rebuild"; };
    document.scripting().setHooks(hooks);
    QUndoStack& stack = document.undoStack();

    EXPECT_TRUE(document.scripting().runOneShot("probeDocument();", "move bodies"));
    EXPECT_EQ(s_seenDocument, &document);
    EXPECT_EQ(ScriptDocument::s_currentScriptContextDocument, nullptr);
    ASSERT_EQ(stack.count(), 1);
    EXPECT_EQ(stack.text(0), "move bodies");

    LogCapture capture;
    EXPECT_FALSE(document.scripting().runOneShot("getWorld().setCustomInt('a', 1); int z = 0; z = 1 / z;", QString()));
    ASSERT_EQ(stack.count(), 2) << "a failed run still closes its macro";
    EXPECT_EQ(stack.text(1), "script execution");
    EXPECT_EQ(document.world().customProperties.values().size(), 1u) << "what ran before the exception stays";
    EXPECT_EQ(EditSwitches::s_macroDepth, 0);

    document.scripting().setLiveScript("probeDocument();");
    ASSERT_TRUE(document.scripting().compileLive());
    s_seenDocument = nullptr;
    EXPECT_TRUE(document.scripting().runLive());
    EXPECT_EQ(s_seenDocument, &document);
    EXPECT_EQ(stack.count(), 3);
    EXPECT_EQ(events, QStringList({"rebuild"}));

    SwitchScope notRecording(EditSwitches::s_recordUndoCommands, false);
    EXPECT_TRUE(document.scripting().runOneShot("probeDocument();", "ignored"));
    EXPECT_EQ(stack.count(), 3);
}

