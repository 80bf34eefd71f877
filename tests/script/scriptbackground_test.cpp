#include "scripttesting.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "engine/scriptbackground.h"
#include "engine/scriptoutput.h"
#include "engine/scriptuihooks.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <atomic>

using namespace AngelScript;

namespace
{
// Set when the interface shows the busy indicator; a script waits for it.
std::atomic<bool> s_busyShown{false};

// Lets a script run until the busy indicator has come up (or a minute passed).
void waitForBusyIndicator()
{
    QDeadlineTimer deadline(60000);
    while (!s_busyShown && !deadline.hasExpired())
        QThread::msleep(5);
}

// Records what the script machinery asks of the interface.
class ScriptBackgroundTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        if (!QCoreApplication::instance()) {
            static int argc = 1;
            static char name[] = "script_tests";
            static char* argv[] = {name, nullptr};
            static QCoreApplication app(argc, argv);
        }
    }

    void SetUp() override
    {
        ScriptOutput::takeAll();
        ScriptUiHooks hooks;
        s_busyShown = false;
        hooks.showBusy = [this](const QString& text) {
            m_events << "busy " + text;
            s_busyShown = true;
        };
        hooks.hideBusy = [this] { m_events << "idle"; };
        hooks.clearOutput = [this] { m_events << "clear"; };
        ScriptUi::setHooks(hooks);
        ScriptOutput::setSink([this](const QList<ScriptOutputLine>& lines) {
            for (const ScriptOutputLine& line : lines)
                m_output << line.text;
        });
        ASSERT_GE(m_document.scripting().engine()->RegisterGlobalFunction(
                      "void waitForBusyIndicator()", asFUNCTION(waitForBusyIndicator), asCALL_CDECL),
                  0);
    }

    void TearDown() override
    {
        ScriptUi::setHooks({});
        ScriptOutput::setSink({});
    }

    QThread* threadOfPrint(const LogCapture& capture, const QString& text) const
    {
        for (const CapturedLine& line : capture.lines()) {
            if (line.level == LOG_SCRIPT && line.text == text)
                return line.thread;
        }
        return nullptr;
    }

    BatchModeScope m_interactive{false};
    EditorDocument m_document;
    QStringList m_events;
    QStringList m_output;
};
} // namespace

TEST_F(ScriptBackgroundTest, OneOffScriptsRunOnAWorkerThreadAndTheirOutputIsFlushed)
{
    LogCapture capture;
    EXPECT_TRUE(ScriptBackground::runOneOffScript(m_document, "print('hello');", "label"));
    EXPECT_EQ(m_output, QStringList({"hello"}));
    QThread* thread = threadOfPrint(capture, "hello");
    ASSERT_NE(thread, nullptr);
    EXPECT_NE(thread, QThread::currentThread());
    EXPECT_FALSE(m_events.contains("clear")) << "a one-off run keeps the output panel";
}

TEST_F(ScriptBackgroundTest, ASlowScriptShowsTheBusyIndicatorOnce)
{
    EXPECT_TRUE(ScriptBackground::runOneOffScript(m_document, "waitForBusyIndicator(); print('done');", "label",
                                                  "Thinking..."));
    EXPECT_EQ(m_events, QStringList({"busy Thinking...", "idle"}));
    EXPECT_EQ(m_output, QStringList({"done"}));
}

TEST_F(ScriptBackgroundTest, ScriptsNamingAQueryDialogRunOnTheCallingThread)
{
    LogCapture capture;
    EXPECT_TRUE(ScriptBackground::runOneOffScript(m_document, "// asks queryYesNo later\nprint('here');", "label"));
    EXPECT_EQ(threadOfPrint(capture, "here"), QThread::currentThread());
    EXPECT_EQ(m_output, QStringList({"here"}));
    EXPECT_TRUE(ScriptBackground::needsInterfaceThread("float v = queryNumericValue('size');"));
    EXPECT_TRUE(ScriptBackground::needsInterfaceThread("queryOpenFile queryVectorValue queryStringValue"));
    EXPECT_FALSE(ScriptBackground::needsInterfaceThread("print('query');"));
}

TEST_F(ScriptBackgroundTest, LiveScriptCompilesAndRunsInTheBackground)
{
    LogCapture capture;
    EXPECT_FALSE(ScriptBackground::runLiveScript(m_document)) << "nothing compiled yet";
    EXPECT_TRUE(capture.texts(LOG_WARNING).isEmpty());

    m_document.scripting().setLiveScript("print('live');");
    EXPECT_TRUE(ScriptBackground::compileLiveScript(m_document));
    EXPECT_TRUE(ScriptBackground::runLiveScript(m_document));
    EXPECT_EQ(m_output, QStringList({"live"}));
    EXPECT_EQ(m_events, QStringList({"clear", "clear"}));
    EXPECT_NE(threadOfPrint(capture, "live"), QThread::currentThread());
}

TEST_F(ScriptBackgroundTest, ABusyDocumentSkipsRequests)
{
    m_document.scripting().setLiveScript("print('live');");
    ASSERT_TRUE(m_document.scripting().compileLive());
    LogCapture capture;
    m_document.scripting().scriptMutex().lock();
    EXPECT_FALSE(ScriptBackground::compileLiveScript(m_document));
    EXPECT_FALSE(ScriptBackground::runLiveScript(m_document));
    EXPECT_FALSE(ScriptBackground::runOneOffScript(m_document, "print(1);", "label"));
    m_document.scripting().scriptMutex().unlock();
    EXPECT_EQ(capture.texts(LOG_WARNING), QStringList({"Skipping compile script because mutex lock failed.",
                                                        "Skipping run script because mutex lock failed.",
                                                        "Skipping one-off script because mutex lock failed."}));
    EXPECT_TRUE(capture.texts(LOG_SCRIPT).isEmpty());
}

TEST_F(ScriptBackgroundTest, CommandLineModeRunsOnTheCallingThread)
{
    BatchModeScope batch(true);
    LogCapture capture;
    EXPECT_TRUE(ScriptBackground::runOneOffScript(m_document, "print('batch');", "label"));
    EXPECT_EQ(threadOfPrint(capture, "batch"), QThread::currentThread());
}
