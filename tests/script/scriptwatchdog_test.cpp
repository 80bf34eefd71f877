// Runaway scripts: the time limit (batch), the call stack limit, the memory
// budget and abort requests, the messages they leave and the outcome the
// run records for the document.
#include "scripttesting.h"

#include "base/log.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "engine/scriptexecution.h"
#include "engine/scriptlimits.h"
#include "engine/scriptstate.h"
#include "engine/scriptwatchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace
{
bool runScript(EditorDocument& document, const QString& text)
{
    return document.scripting().runOneShot(text, QString());
}

ScriptRunOutcome lastOutcome(const EditorDocument& document)
{
    return lastScriptRunOutcome(&document);
}

QString openAppSettingsFileName()
{
    return openAppSettings()->fileName();
}
} // namespace

TEST(ScriptLimits, SettingsAndEnvironmentGiveTheLimits)
{
    qunsetenv(ScriptLimits::kTimeEnvironmentVariable);
    ScriptLimits defaults = ScriptLimits::current();
    EXPECT_EQ(defaults.timeSeconds, ScriptLimits::kDefaultTimeSeconds);
    EXPECT_EQ(defaults.callDepth, ScriptLimits::kDefaultCallDepth);
    EXPECT_EQ(defaults.memoryMiB, ScriptLimits::kDefaultMemoryMiB);
    EXPECT_EQ(defaults.memoryBytes(), qint64(ScriptLimits::kDefaultMemoryMiB) << 20);

    {
        SettingScope time(ScriptLimits::kTimeSettingsKey, 5);
        SettingScope depth(ScriptLimits::kCallDepthSettingsKey, 123);
        SettingScope memory(ScriptLimits::kMemorySettingsKey, 0);
        ScriptLimits limits = ScriptLimits::current();
        EXPECT_EQ(limits.timeSeconds, 5);
        EXPECT_EQ(limits.callDepth, 123);
        EXPECT_EQ(limits.memoryMiB, 0);
        EXPECT_EQ(limits.memoryBytes(), 0);

        EnvironmentScope environment(ScriptLimits::kTimeEnvironmentVariable, "7");
        EXPECT_EQ(ScriptLimits::current().timeSeconds, 7) << "the environment wins over the setting";
    }
    {
        EnvironmentScope environment(ScriptLimits::kTimeEnvironmentVariable, "0");
        EXPECT_EQ(ScriptLimits::current().timeSeconds, 0);
    }
    {
        EnvironmentScope environment(ScriptLimits::kTimeEnvironmentVariable, "soon");
        SettingScope depth(ScriptLimits::kCallDepthSettingsKey, -4);
        SettingScope memory(ScriptLimits::kMemorySettingsKey, "lots");
        ScriptLimits limits = ScriptLimits::current();
        EXPECT_EQ(limits.timeSeconds, ScriptLimits::kDefaultTimeSeconds);
        EXPECT_EQ(limits.callDepth, ScriptLimits::kDefaultCallDepth);
        EXPECT_EQ(limits.memoryMiB, ScriptLimits::kDefaultMemoryMiB);
    }
}

TEST(ScriptLimits, OutcomesOfOrdinaryRunsAreRecorded)
{
    EditorDocument document;
    clearScriptRunOutcome(&document);
    EXPECT_EQ(lastOutcome(document).end, ScriptRunEnd::NotRun);

    EXPECT_TRUE(runScript(document, "int x = 1;"));
    EXPECT_EQ(lastOutcome(document).end, ScriptRunEnd::Finished);
    EXPECT_FALSE(lastOutcome(document).aborted());

    EXPECT_FALSE(runScript(document, "array<int> a;\na[2] = 1;"));
    EXPECT_EQ(lastOutcome(document).end, ScriptRunEnd::Exception);
    EXPECT_EQ(lastOutcome(document).abortReason, ScriptAbortReason::None);
    EXPECT_FALSE(lastOutcome(document).aborted()) << "an exception is not an abort";

    EditorDocument other;
    EXPECT_TRUE(runScript(other, "int y = 2;"));
    EXPECT_EQ(lastOutcome(document).end, ScriptRunEnd::Exception) << "each document keeps its own outcome";
}

TEST(ScriptLimits, ARunawayBatchScriptIsAbortedAtTheTimeLimit)
{
    EnvironmentScope limit(ScriptLimits::kTimeEnvironmentVariable, "1");
    BatchModeScope batch(true);
    EditorDocument document;
    LogCapture capture;
    EXPECT_FALSE(runScript(document, "int n = 0;\nwhile (true) { n++; }"));
    EXPECT_TRUE(capture.hasLineStartingWith(LOG_ERROR, "Script aborted: the time limit of 1 seconds was reached."))
        << capture.dump().toStdString();
    EXPECT_TRUE(capture.contains(LOG_ERROR, ScriptLimits::kTimeEnvironmentVariable)) << "says how to raise it";
    EXPECT_TRUE(capture.contains(LOG_ERROR, ScriptLimits::kTimeSettingsKey));
    EXPECT_EQ(lastOutcome(document).end, ScriptRunEnd::Aborted);
    EXPECT_EQ(lastOutcome(document).abortReason, ScriptAbortReason::TimeLimit);

    bool ok = false;
    EXPECT_EQ(runAndCollectPrints(document, "print(1);", &ok), QStringList({"1"}));
    EXPECT_TRUE(ok);
    EXPECT_EQ(lastOutcome(document).end, ScriptRunEnd::Finished);
}

TEST(ScriptLimits, EndlessRecursionStopsAtTheCallStackLimit)
{
    SettingScope depth(ScriptLimits::kCallDepthSettingsKey, 50);
    EditorDocument document;

    // Nesting within the limit is fine.
    bool ok = false;
    EXPECT_EQ(runAndCollectPrints(document,
                                  "int d(int n) { return n == 0 ? 0 : 1 + d(n - 1); }\n"
                                  "void main() { print(d(45)); }",
                                  &ok),
              QStringList({"45"}));
    EXPECT_TRUE(ok);

    LogCapture capture;
    EXPECT_FALSE(runScript(document, "void f() { f(); }\nvoid main() { f(); }"));
    EXPECT_TRUE(capture.has(
        LOG_ERROR, QStringLiteral("Script aborted: the call stack limit of 50 nested calls was reached (endless "
                                  "recursion?). Raise it with the setting \"%1\" in '%2' (0 means no limit).")
                       .arg(ScriptLimits::kCallDepthSettingsKey, openAppSettingsFileName())))
        << capture.dump().toStdString();
    EXPECT_EQ(lastOutcome(document).abortReason, ScriptAbortReason::StackLimit);

    // The stop cannot be caught by the script.
    capture.clear();
    clearScriptRunOutcome(&document);
    EXPECT_FALSE(runScript(document, "void f() { f(); }\n"
                                     "void main() { try { f(); } catch { print('caught'); } print('after'); }"));
    EXPECT_FALSE(capture.texts(LOG_SCRIPT).contains("after")) << capture.dump().toStdString();
    EXPECT_EQ(capture.count(LOG_ERROR, "Script aborted: the call stack limit"), 1);
    EXPECT_EQ(lastOutcome(document).abortReason, ScriptAbortReason::StackLimit);

    EXPECT_EQ(runAndCollectPrints(document, "print(3);", &ok), QStringList({"3"}));
    EXPECT_TRUE(ok);
}

TEST(ScriptLimits, TheEngineItselfRefusesCallsBeyondTheLimit)
{
    // The watchdog normally stops a recursion first; the engine's own limit
    // is the backstop, and its exception also counts as the stack limit.
    EditorDocument document;
    AngelScript::asIScriptEngine* engine = document.scripting().engine();
    AngelScript::asIScriptModule* module = engine->GetModule("backstop", AngelScript::asGM_ALWAYS_CREATE);
    ASSERT_GE(module->AddScriptSection("backstop", "void f() { f(); }\nvoid g() { array<int> a; a[1] = 0; }"), 0);
    ASSERT_GE(module->Build(), 0);

    applyCallDepthLimit(engine, 30);
    AngelScript::asIScriptContext* context = engine->CreateContext();
    ASSERT_GE(context->Prepare(module->GetFunctionByDecl("void f()")), 0);
    int result = context->Execute();
    ASSERT_EQ(result, AngelScript::asEXECUTION_EXCEPTION);
    EXPECT_STREQ(context->GetExceptionString(), "Stack overflow");
    EXPECT_LT(context->GetCallstackSize(), 50u);
    const ScriptWatchdog watchdog;
    EXPECT_EQ(watchdog.abortReason(result, context), ScriptAbortReason::StackLimit);

    ASSERT_GE(context->Prepare(module->GetFunctionByDecl("void g()")), 0);
    result = context->Execute();
    ASSERT_EQ(result, AngelScript::asEXECUTION_EXCEPTION);
    EXPECT_EQ(watchdog.abortReason(result, context), ScriptAbortReason::None) << "other exceptions are no abort";
    context->Release();
    applyCallDepthLimit(engine, ScriptLimits::kDefaultCallDepth);
}

TEST(ScriptLimits, AScriptThatAllocatesWithoutBoundIsStoppedAtItsBudget)
{
    SettingScope memory(ScriptLimits::kMemorySettingsKey, 8);
    EditorDocument document;

    // Memory that is given back does not count: a hundred 1 MiB arrays one
    // after another fit into 8 MiB.
    bool ok = false;
    EXPECT_EQ(runAndCollectPrints(document,
                                  "void main() { int n = 0; for (int i = 0; i < 100; i++) "
                                  "{ array<uint8> a(1 << 20); n += a.length() >> 20; } print(n); }",
                                  &ok),
              QStringList({"100"}));
    EXPECT_TRUE(ok);
    EXPECT_EQ(lastOutcome(document).end, ScriptRunEnd::Finished);

    LogCapture capture;
    EXPECT_FALSE(runScript(document, "void main() { array<array<int>> a; "
                                     "while (true) a.insertLast(array<int>(10000)); }"));
    EXPECT_TRUE(capture.has(
        LOG_ERROR, QStringLiteral("Script aborted: the memory limit of 8 MiB for one script run was reached. "
                                  "Raise it with the setting \"%1\" in '%2' (0 means no limit).")
                       .arg(ScriptLimits::kMemorySettingsKey, openAppSettingsFileName())))
        << capture.dump().toStdString();
    EXPECT_EQ(lastOutcome(document).end, ScriptRunEnd::Aborted);
    EXPECT_EQ(lastOutcome(document).abortReason, ScriptAbortReason::MemoryLimit);

    // One huge block is refused at once; catching the refusal does not let
    // the script go on.
    capture.clear();
    clearScriptRunOutcome(&document);
    EXPECT_FALSE(runScript(document, "void main() { array<int> a; "
                                     "try { a.resize(100 << 20); } catch { print('caught'); } "
                                     "print('after'); }"));
    EXPECT_FALSE(capture.texts(LOG_SCRIPT).contains("after")) << capture.dump().toStdString();
    EXPECT_EQ(capture.count(LOG_ERROR, "Script aborted: the memory limit"), 1);
    EXPECT_EQ(lastOutcome(document).abortReason, ScriptAbortReason::MemoryLimit);

    EXPECT_EQ(runAndCollectPrints(document, "print(4);", &ok), QStringList({"4"}));
    EXPECT_TRUE(ok);
}

TEST(ScriptLimits, AnAbortRequestStopsTheRunningScript)
{
    BatchModeScope interactive(false);
    EditorDocument document;
    LogCapture capture;
    // Starting a run clears older requests, so keep asking until the run ends.
    std::atomic<bool> finished{false};
    std::thread requester([&finished] {
        while (!finished) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            ScriptState::requestAbort();
        }
    });
    EXPECT_FALSE(runScript(document, "while (true) {}"));
    finished = true;
    requester.join();
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Script aborted on request."));
    EXPECT_EQ(lastOutcome(document).abortReason, ScriptAbortReason::Requested);

    bool ok = false;
    runAndCollectPrints(document, "print(2);", &ok);
    EXPECT_TRUE(ok) << "the request does not outlive the run it stopped";
}
