#include "engine/documentscripting.h"

#include "base/flags.h"
#include "base/log.h"
#include "engine/recordedcalls.h"
#include "engine/scriptdocument.h"
#include "engine/scriptexecution.h"
#include "engine/scriptlimits.h"
#include "engine/scriptmessages.h"
#include "engine/scriptmodules.h"
#include "engine/scriptpreprocessor.h"
#include "engine/scriptstate.h"
#include "engine/scriptuihooks.h"
#include "model/metaworld.h"

#include <angelscript/scriptbuilder.h>

#include <QCoreApplication>
#include <QFile>
#include <QMutexLocker>

using namespace AngelScript;

namespace
{
unsigned documentTag(const ScriptDocument& document)
{
    return unsigned(reinterpret_cast<quintptr>(&document));
}

QString scriptExecutionText()
{
    return QCoreApplication::translate("DocumentScripting", "script execution");
}

bool startModule(CScriptBuilder& builder, asIScriptEngine* engine, const QString& name)
{
    if (!engine || builder.StartNewModule(engine, name.toUtf8().constData()) < 0) {
        plaxLog(LOG_DEBUG, "StartNewModule failed");
        plaxLog(LOG_ERROR, "Failed to start script module");
        return false;
    }
    return true;
}

bool addSection(CScriptBuilder& builder, const QString& text)
{
    QByteArray code = text.toUtf8();
    if (builder.AddSectionFromMemory(ScriptModules::kSectionName, code.constData(), unsigned(code.size())) < 0) {
        plaxLog(LOG_DEBUG, "AddSectionFromMemory failed");
        plaxLog(LOG_ERROR, "Failed to add script section");
        return false;
    }
    return true;
}

// Builds with the document as the current script document, under the
// execution mutex because that pointer is process-wide.
int buildModule(CScriptBuilder& builder, ScriptDocument* document, int lineOffset)
{
    QMutexLocker executionLock(&ScriptState::executionMutex());
    LineOffsetScope offset(lineOffset);
    ScriptDocument* previous = ScriptDocument::s_currentScriptContextDocument;
    ScriptDocument::s_currentScriptContextDocument = document;
    int r = builder.BuildModule();
    ScriptDocument::s_currentScriptContextDocument = previous;
    return r;
}
} // namespace

DocumentScripting::DocumentScripting(ScriptDocument& document, ScriptApiRegistration registerApi)
    : m_document(document)
{
    if (!AppFlags::isBatchMode())
        plaxLog(LOG_DEBUG, "Setting up script engine for EditorDocument %08X", documentTag(document));
    m_engine = createLimitedScriptEngine();
    if (!m_engine) {
        plaxLog(LOG_FATAL, "Failed to initialize script engine!");
    } else {
        m_engine->SetMessageCallback(asFUNCTION(scriptMessageCallback), nullptr, asCALL_CDECL);
        if (registerApi)
            registerApi(m_engine);
    }
    m_modulePresent = false;
    m_compiledOk = true;
}

DocumentScripting::~DocumentScripting()
{
    // The document has released its own scripts (they keep functions of the
    // modules discarded below) before this.
    {
        QMutexLocker lock(&m_scriptMutex);
        discardLiveModule();
    }
    const int identity = m_document.identity();
    for (ScriptModuleKind kind : {ScriptModuleKind::CustomLabels, ScriptModuleKind::PropertyExportFilter,
                                  ScriptModuleKind::PropertyDisplayFilter}) {
        QMutexLocker lock(&m_scriptMutex);
        discardModuleIfPresent(ScriptModules::moduleName(kind, identity));
    }
    if (!AppFlags::isBatchMode())
        plaxLog(LOG_DEBUG, "Releasing script engine for EditorDocument %08X", documentTag(m_document));
    m_recordedCalls.reset();
    if (m_engine)
        m_engine->ShutDownAndRelease();
    m_engine = nullptr;
}

asIScriptEngine* DocumentScripting::engine() const
{
    if (!m_engine) {
        plaxLog(LOG_FATAL, "Script engine is null!");
        Q_ASSERT_X(m_engine, "DocumentScripting::engine", "Script engine is null!");
    }
    return m_engine;
}

QString DocumentScripting::liveScript() const
{
    return m_document.world().activeScript;
}

void DocumentScripting::setLiveScript(const QString& text)
{
    m_document.world().activeScript = text;
}

void DocumentScripting::discardModuleIfPresent(const QString& name)
{
    if (!m_engine)
        return;
    if (asIScriptModule* module = m_engine->GetModule(name.toUtf8().constData(), asGM_ONLY_IF_EXISTS))
        module->Discard();
}

void DocumentScripting::discardLiveModule()
{
    if (!m_modulePresent)
        return;
    discardModuleIfPresent(ScriptModules::moduleName(ScriptModuleKind::Live, m_document.identity()));
    m_modulePresent = false;
    m_compiledOk = false;
}

QString DocumentScripting::liveSourceText() const
{
    const ScriptUiHooks& ui = ScriptUi::hooks();
    QString libraryFile = ui.currentLibraryScriptFile ? ui.currentLibraryScriptFile() : QString();
    QString text;
    if (!libraryFile.isEmpty()) {
        QFile file(libraryFile);
        if (file.open(QIODevice::ReadOnly))
            text = QString::fromUtf8(file.readAll());
        else
            plaxLog(LOG_WARNING, QStringLiteral("Could not open file '%1' for reading").arg(libraryFile));
    } else {
        text = liveScript();
    }
    // The inserted newline lets an include on the first line be found; the
    // line offset of the build takes it out of the reported rows again.
    text.insert(0, QLatin1Char('\n'));
    QStringList included;
    preprocessScriptIncludes(libraryFile, included, text);
    return text;
}

bool DocumentScripting::compileLiveLocked()
{
    discardLiveModule();
    CScriptBuilder builder;
    if (!startModule(builder, engine(), ScriptModules::moduleName(ScriptModuleKind::Live, m_document.identity())))
        return false;

    ScriptState::setScriptOutputFlag(1);
    QString text = liveSourceText();
    const bool main = ScriptModules::hasMain(text);
    if (!main)
        text = ScriptModules::wrapInMain(text);
    if (!addSection(builder, text)) {
        ScriptState::setScriptOutputFlag(0);
        return false;
    }

    m_compiledOk = true;
    m_liveLineOffset = main ? -1 : -2;
    if (buildModule(builder, &m_document, m_liveLineOffset) < 0) {
        m_compiledOk = false;
        if (!AppFlags::isBatchMode())
            plaxLog(LOG_DEBUG, "BuildModule failed");
    }
    ScriptState::setScriptOutputFlag(0);
    m_modulePresent = true;
    return m_compiledOk;
}

bool DocumentScripting::runLiveLocked()
{
    if (!m_engine)
        return false;
    asIScriptModule* module = m_engine->GetModule(
        ScriptModules::moduleName(ScriptModuleKind::Live, m_document.identity()).toUtf8().constData(),
        asGM_ONLY_IF_EXISTS);
    if (!module)
        return false;
    asIScriptFunction* main = module->GetFunctionByDecl(ScriptModules::kMainDeclaration);
    if (!main) {
        plaxLog(LOG_ERROR, "Could not find main entry function");
        discardLiveModule();
        return false;
    }

    QMutexLocker liveLock(&m_liveExecutionMutex);
    asIScriptContext* context = m_engine->CreateContext();
    if (!context || context->Prepare(main) < 0) {
        plaxLog(LOG_ERROR, "Could not prepare the script context");
        if (context)
            context->Release();
        return false;
    }
    ScriptState::setScriptOutputFlag(1);
    m_scriptLog.holdFlushes();
    bool ok = executeScriptContext(context, &m_document, scriptExecutionText(), m_liveLineOffset);
    m_scriptLog.releaseFlushes();
    ScriptState::setScriptOutputFlag(0);
    if (m_hooks.rebuildChangedFixtures)
        m_hooks.rebuildChangedFixtures();
    context->Release();
    return ok;
}

bool DocumentScripting::runOneShotLocked(const QString& text, const QString& label)
{
    CScriptBuilder builder;
    const QString moduleName = ScriptModules::moduleName(ScriptModuleKind::OneShot, m_document.identity());
    if (!startModule(builder, engine(), moduleName))
        return false;

    const bool main = ScriptModules::hasMain(text);
    if (!addSection(builder, main ? text : ScriptModules::wrapInOneShot(text)))
        return false;
    ScriptState::setScriptOutputFlag(0);
    // The user's first line is row 1 of a text with main and row 2 of a wrapped one.
    const int lineOffset = main ? 0 : -1;
    if (buildModule(builder, &m_document, lineOffset) < 0) {
        plaxLog(LOG_DEBUG, "BuildModule failed");
        plaxLog(LOG_ERROR, "Script compile failed");
        return false;
    }

    asIScriptModule* module = m_engine->GetModule(moduleName.toUtf8().constData(), asGM_ONLY_IF_EXISTS);
    asIScriptContext* context = m_engine->CreateContext();
    if (!module || !context) {
        if (context)
            context->Release();
        return false;
    }
    asIScriptFunction* entry =
        module->GetFunctionByDecl(main ? ScriptModules::kMainDeclaration : ScriptModules::kOneShotDeclaration);
    if (!entry) {
        plaxLog(LOG_ERROR, "Could not find plaxscript entry function");
        context->Release();
        return false;
    }
    if (context->Prepare(entry) < 0) {
        plaxLog(LOG_ERROR, "Could not prepare the script context");
        context->Release();
        return false;
    }
    m_scriptLog.holdFlushes();
    bool ok = executeScriptContext(context, &m_document, label.isEmpty() ? scriptExecutionText() : label,
                                   lineOffset);
    m_scriptLog.releaseFlushes();
    context->Release();
    return ok;
}

asIScriptModule* DocumentScripting::buildModuleLocked(const QString& name, const QString& text, int lineOffset)
{
    CScriptBuilder builder;
    if (!startModule(builder, engine(), name))
        return nullptr;
    if (!addSection(builder, text)) {
        discardModuleIfPresent(name);
        return nullptr;
    }
    if (buildModule(builder, &m_document, lineOffset) < 0) {
        if (!AppFlags::isBatchMode())
            plaxLog(LOG_DEBUG, "BuildModule failed");
        discardModuleIfPresent(name);
        return nullptr;
    }
    return m_engine->GetModule(name.toUtf8().constData(), asGM_ONLY_IF_EXISTS);
}

bool DocumentScripting::compileLive()
{
    QMutexLocker lock(&m_scriptMutex);
    return compileLiveLocked();
}

bool DocumentScripting::runRecordedCallsLocked(const QString& text, const QString& label, bool* ran)
{
    *ran = false;
    if (!m_engine)
        return false;
    if (!m_recordedCalls)
        m_recordedCalls = std::make_unique<RecordedCalls>(m_engine);
    if (!m_recordedCalls->parse(text))
        return false;
    *ran = true;
    m_scriptLog.holdFlushes();
    const bool ok = m_recordedCalls->run(&m_document, label.isEmpty() ? scriptExecutionText() : label);
    m_scriptLog.releaseFlushes();
    return ok;
}

bool DocumentScripting::runLive()
{
    QMutexLocker lock(&m_scriptMutex);
    return runLiveLocked();
}

bool DocumentScripting::runOneShot(const QString& text, const QString& label)
{
    QMutexLocker lock(&m_scriptMutex);
    return runOneShotLocked(text, label);
}
