#include "engine/scriptbackground.h"

#include "base/flags.h"
#include "base/log.h"
#include "engine/documentscripting.h"
#include "engine/scriptcompiletask.h"
#include "engine/scriptdocument.h"
#include "engine/scriptexecution.h"
#include "engine/scriptoutput.h"
#include "engine/scriptuihooks.h"

#include <QCoreApplication>
#include <QThread>
#include <QUndoStack>

namespace
{
// Texts of one kind of request, in the order compile, run, one-off.
struct RequestTexts
{
    const char* skipped;
    const char* starting;
    const char* finished;
};

const RequestTexts kTexts[] = {
    {"Skipping compile script because mutex lock failed.", "Compiling script...", "Finished compiling script."},
    {"Skipping run script because mutex lock failed.", "Running script...", "Finished running script."},
    {"Skipping one-off script because mutex lock failed.", "Running one-off script...",
     "Finished running one-off script."},
};

constexpr unsigned long kPollMilliseconds = 100;
constexpr int kPollsBeforeBusyIndicator = 5;

bool runOnCallingThread(ScriptCompileTask::Kind kind, DocumentScripting& scripting, const QString& text,
                        const QString& label)
{
    switch (kind) {
    case ScriptCompileTask::CompileLive: return scripting.compileLiveLocked();
    case ScriptCompileTask::RunLive: return scripting.runLiveLocked();
    case ScriptCompileTask::RunOneOff: return scripting.runOneShotLocked(text, label);
    }
    return false;
}

void processInterfaceEvents(const ScriptUiHooks& ui)
{
    if (!QCoreApplication::instance())
        return;
    if (ui.setRepaintSuppressed)
        ui.setRepaintSuppressed(true);
    QCoreApplication::processEvents();
    if (ui.setRepaintSuppressed)
        ui.setRepaintSuppressed(false);
}

bool runOnWorkerThread(ScriptCompileTask::Kind kind, ScriptDocument& document, const QString& text,
                       const QString& label, const QString& busyText)
{
    const ScriptUiHooks& ui = ScriptUi::hooks();
    auto* task = new ScriptCompileTask(kind, &document, text, label);
    auto* thread = new QThread;
    task->moveToThread(thread);
    QObject::connect(thread, &QThread::started, task, &ScriptCompileTask::start);
    thread->start(QThread::InheritPriority);

    int polls = 0;
    bool busyShown = false;
    // Waiting on the thread returns as soon as the task has finished (it ends
    // the thread's event loop), so short runs such as undo steps cost no poll.
    while (!thread->wait(kPollMilliseconds)) {
        if (++polls == kPollsBeforeBusyIndicator && ui.showBusy) {
            ui.showBusy(busyText);
            busyShown = true;
        }
        ScriptOutput::flush();
        processInterfaceEvents(ui);
    }
    if (busyShown && ui.hideBusy)
        ui.hideBusy();
    thread->wait();
    plaxLog(LOG_DEBUG, "%s", kTexts[kind].finished);
    ScriptOutput::flush();
    bool result = task->result();
    delete thread;
    delete task;
    return result;
}

// A run stopped by a limit is half done: in the editor its undo step is
// undone at once, so the document is as it was before the run. (Batch mode
// writes nothing after an aborted run instead.) A run the user stopped keeps
// what it did as one undo step: the user chose to stop there.
void undoAbortedRun(ScriptDocument& document, int indexBefore)
{
    const ScriptRunOutcome outcome = lastScriptRunOutcome(&document);
    if (AppFlags::isBatchMode() || !outcome.aborted() || outcome.abortReason == ScriptAbortReason::Requested)
        return;
    QUndoStack& stack = document.undoStack();
    if (stack.index() == indexBefore + 1) {
        stack.undo();
        plaxLog(LOG_WARNING, "The aborted script's changes were undone");
    }
}

bool request(ScriptCompileTask::Kind kind, ScriptDocument& document, const QString& text, const QString& label,
             const QString& progressText)
{
    DocumentScripting& scripting = document.scripting();
    if (!scripting.scriptMutex().tryLock()) {
        plaxLog(LOG_WARNING, "%s", kTexts[kind].skipped);
        return false;
    }
    if (kind == ScriptCompileTask::RunLive && !scripting.isModulePresent()) {
        scripting.scriptMutex().unlock();
        return false;
    }
    const ScriptUiHooks& ui = ScriptUi::hooks();
    if (kind != ScriptCompileTask::RunOneOff && ui.clearOutput)
        ui.clearOutput();
    plaxLog(LOG_DEBUG, "%s", kTexts[kind].starting);
    QString busyText = progressText.isEmpty() ? QCoreApplication::translate("ScriptBackground", kTexts[kind].starting)
                                              : progressText;

    const QString scanned = kind == ScriptCompileTask::RunOneOff ? text : scripting.liveScript();
    clearScriptRunOutcome(&document);
    const int indexBefore = document.undoStack().index();
    bool result = false;
    bool ran = false;
    // Recorded edits (undo and redo steps) run at once, without compiling.
    if (kind == ScriptCompileTask::RunOneOff)
        result = scripting.runRecordedCallsLocked(text, label, &ran);
    if (ran) {
        ScriptOutput::flush();
    } else if (AppFlags::isBatchMode() || ScriptBackground::needsInterfaceThread(scanned)) {
        result = runOnCallingThread(kind, scripting, text, label);
        ScriptOutput::flush();
    } else {
        result = runOnWorkerThread(kind, document, text, label, busyText);
        if (const DocumentScriptHooks& hooks = scripting.hooks(); hooks.performDeferredUpdate)
            hooks.performDeferredUpdate();
        ScriptOutput::flush();
    }
    scripting.scriptMutex().unlock();
    undoAbortedRun(document, indexBefore);
    return result;
}
} // namespace

namespace ScriptBackground
{
bool needsInterfaceThread(const QString& text)
{
    static const char* const kQueryFunctions[] = {"queryOpenFile", "queryNumericValue", "queryVectorValue",
                                                  "queryStringValue", "queryYesNo"};
    for (const char* name : kQueryFunctions) {
        if (text.contains(QLatin1String(name)))
            return true;
    }
    return false;
}

bool compileLiveScript(ScriptDocument& document)
{
    return request(ScriptCompileTask::CompileLive, document, QString(), QString(), QString());
}

bool runLiveScript(ScriptDocument& document)
{
    return request(ScriptCompileTask::RunLive, document, QString(), QString(), QString());
}

bool runOneOffScript(ScriptDocument& document, const QString& text, const QString& label,
                     const QString& progressText)
{
    return request(ScriptCompileTask::RunOneOff, document, text, label, progressText);
}
} // namespace ScriptBackground
