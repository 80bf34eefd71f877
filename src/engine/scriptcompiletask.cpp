#include "engine/scriptcompiletask.h"

#include "engine/documentscripting.h"
#include "engine/scriptdocument.h"

#include <angelscript.h>

#include <QThread>

ScriptCompileTask::ScriptCompileTask(Kind kind, ScriptDocument* document, const QString& text, const QString& label)
    : m_kind(kind), m_document(document), m_text(text), m_label(label)
{
}

void ScriptCompileTask::start()
{
    m_timer.start();
    bool result = false;
    if (m_document) {
        DocumentScripting& scripting = m_document->scripting();
        switch (m_kind) {
        case CompileLive: result = scripting.compileLiveLocked(); break;
        case RunLive: result = scripting.runLiveLocked(); break;
        case RunOneOff: result = scripting.runOneShotLocked(m_text, m_label); break;
        }
    }
    m_result = result;
    // AngelScript keeps per-thread data; the worker thread ends after this task.
    AngelScript::asThreadCleanup();
    m_finished.store(true, std::memory_order_release);
    // Ends the worker's event loop, so that a caller waiting on the thread
    // wakes at once instead of at its next poll.
    if (QThread* worker = thread())
        worker->quit();
}
