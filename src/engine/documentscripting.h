#pragma once

#include "engine/scripthooks.h"
#include "engine/scriptlog.h"

#include <angelscript.h>

#include <QMutex>
#include <QString>

#include <atomic>
#include <memory>

class RecordedCalls;
class ScriptDocument;

/// Registers the script API on a new engine; false when a part failed.
using ScriptApiRegistration = bool (*)(AngelScript::asIScriptEngine* engine);

/// The scripting side of one document: its AngelScript engine with the whole
/// plaxscript API registered, the live module and its flags, the document's
/// script mutexes and its script log. The document owns one of these for its
/// whole life; the live script text itself is the scene's active script.
///
/// Compiling and running come in two forms: the `...Locked` functions expect
/// the caller to hold scriptMutex() (the background runner takes it without
/// waiting on the interface thread and runs them on a worker thread), the
/// others take it themselves and block until it is free.
class DocumentScripting
{
public:
    /// Sets up the engine: logs "Setting up script engine for EditorDocument
    /// %08X" (not in command-line mode), creates the engine and registers the
    /// API through `registerApi` (the document passes the whole plaxscript
    /// API). A failed creation is logged at FATAL level and not fatal.
    DocumentScripting(ScriptDocument& document, ScriptApiRegistration registerApi);
    /// Discards the modules and releases the engine, logging "Releasing
    /// script engine for EditorDocument %08X" (not in command-line mode).
    ~DocumentScripting();
    DocumentScripting(const DocumentScripting&) = delete;
    DocumentScripting& operator=(const DocumentScripting&) = delete;

    /// The engine; a null engine is logged ("Script engine is null!") and asserted.
    AngelScript::asIScriptEngine* engine() const;
    /// The document this belongs to.
    ScriptDocument& document() const { return m_document; }

    /// Serialises compile, run and one-off runs on this document.
    QMutex& scriptMutex() { return m_scriptMutex; }
    /// Held while the live module's main executes.
    QMutex& liveExecutionMutex() { return m_liveExecutionMutex; }

    /// The live module has been built since the last discard.
    bool isModulePresent() const { return m_modulePresent; }
    /// The last build of the live module succeeded (true before any build).
    bool isCompiledOk() const { return m_compiledOk; }

    /// The live script text (the scene's active script).
    QString liveScript() const;
    /// Replaces the live script text.
    void setLiveScript(const QString& text);

    /// Installs the hooks into the document's undo stack and fixture updates.
    void setHooks(DocumentScriptHooks hooks) { m_hooks = std::move(hooks); }
    /// The installed hooks.
    const DocumentScriptHooks& hooks() const { return m_hooks; }

    /// The document's script log.
    ScriptLog& scriptLog() { return m_scriptLog; }

    /// Discards the live module if present and clears both flags.
    void discardLiveModule();

    /// Builds the live module from the script library's current file or the
    /// live script, after include preprocessing; a text without main becomes
    /// main's body. Compiler messages report the user's rows. Returns whether
    /// the build succeeded (also kept as isCompiledOk()).
    bool compileLiveLocked();
    /// Runs main of the live module in one undo macro "script execution".
    /// False without a live module, without main, or when the script failed.
    bool runLiveLocked();
    /// Builds `text` as the one-shot module (as the body of
    /// plaxscript_oneshot() unless it defines main) and runs it in one undo
    /// macro titled `label` ("script execution" when empty). Returns true
    /// when it compiled and ran to its end.
    bool runOneShotLocked(const QString& text, const QString& label);
    /// Runs `text` as runOneShotLocked would, but straight through the
    /// registered functions, when it is made only of recorded edit calls
    /// (see RecordedCalls); sets `ran` to whether it did. Returns true when
    /// it ran to its end.
    bool runRecordedCallsLocked(const QString& text, const QString& label, bool* ran);

    /// Builds `text` into the module `name` (replacing it), with the
    /// document current and rows reported with `lineOffset` added. Failures
    /// log as for the live script ("Failed to start script module", "Failed
    /// to add script section", "BuildModule failed" outside command-line
    /// mode) and leave no module. Returns the module or null. Expects the
    /// caller to hold scriptMutex().
    AngelScript::asIScriptModule* buildModuleLocked(const QString& name, const QString& text, int lineOffset);
    /// Discards the module `name` if it exists.
    void discardModule(const QString& name) { discardModuleIfPresent(name); }

    /// compileLiveLocked() under the script mutex.
    bool compileLive();
    /// runLiveLocked() under the script mutex.
    bool runLive();
    /// The one-shot runner: runOneShotLocked() under the script mutex.
    bool runOneShot(const QString& text, const QString& label);

private:
    void discardModuleIfPresent(const QString& name);
    QString liveSourceText() const;

    ScriptDocument& m_document;
    AngelScript::asIScriptEngine* m_engine = nullptr;
    std::unique_ptr<RecordedCalls> m_recordedCalls;
    std::atomic<bool> m_modulePresent{false};
    std::atomic<bool> m_compiledOk{true};
    int m_liveLineOffset = -1;
    QMutex m_scriptMutex;
    QMutex m_liveExecutionMutex;
    DocumentScriptHooks m_hooks;
    ScriptLog m_scriptLog;
};
