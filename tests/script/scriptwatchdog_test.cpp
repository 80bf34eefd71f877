#include "scripttesting.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "script/documentscripting.h"
#include "script/scriptstate.h"
#include "script/scriptwatchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace
{
// Sets an environment variable for a scope.
class EnvironmentScope
{
public:
    EnvironmentScope(const char* name, const QByteArray& value)
        : m_name(name), m_hadValue(qEnvironmentVariableIsSet(name)), m_previous(qgetenv(name))
    {
        qputenv(name, value);
    }
    ~EnvironmentScope()
    {
        if (m_hadValue)
            qputenv(m_name, m_previous);
        else
            qunsetenv(m_name);
    }

private:
    const char* m_name;
    bool m_hadValue;
    QByteArray m_previous;
};
} // namespace

TEST(ScriptWatchdog, TheEnvironmentSetsTheTimeLimit)
{
    {
        EnvironmentScope limit(ScriptWatchdog::kEnvironmentVariable, "7");
        EXPECT_EQ(ScriptWatchdog::timeLimitSeconds(), 7);
    }
    {
        EnvironmentScope limit(ScriptWatchdog::kEnvironmentVariable, "0");
        EXPECT_EQ(ScriptWatchdog::timeLimitSeconds(), 0);
    }
}

TEST(ScriptWatchdog, ARunawayBatchScriptIsAbortedAfterTheLimit)
{
    EnvironmentScope limit(ScriptWatchdog::kEnvironmentVariable, "1");
    BatchModeScope batch(true);
    EditorDocument document;
    LogCapture capture;
    EXPECT_FALSE(document.scripting().runOneShot("int n = 0;\nwhile (true) { n++; }", QString()));
    EXPECT_TRUE(capture.hasLineStartingWith(LOG_ERROR, "Script aborted after 1 seconds."))
        << capture.texts(LOG_ERROR).join('|').toStdString();

    bool ok = false;
    EXPECT_EQ(runAndCollectPrints(document, "print(1);", &ok), QStringList({"1"}));
    EXPECT_TRUE(ok);
}

TEST(ScriptWatchdog, AnAbortRequestStopsTheRunningScript)
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
    EXPECT_FALSE(document.scripting().runOneShot("while (true) {}", QString()));
    finished = true;
    requester.join();
    EXPECT_TRUE(capture.texts(LOG_ERROR).contains("Script aborted on request."));

    bool ok = false;
    runAndCollectPrints(document, "print(2);", &ok);
    EXPECT_TRUE(ok) << "the request does not outlive the run it stopped";
}
