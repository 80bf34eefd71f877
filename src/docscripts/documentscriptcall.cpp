#include "docscripts/documentscriptcall.h"

#include "api/scriptapisupport.h"
#include "editing/editswitches.h"
#include "engine/documentscripting.h"
#include "engine/scriptdocument.h"
#include "engine/scriptstate.h"
#include "model/metabody.h"
#include "model/metafixture.h"
#include "model/metaimage.h"
#include "model/metajoint.h"
#include "model/metaobject.h"
#include "model/metasampler.h"

#include <QCoreApplication>

using namespace AngelScript;

DocumentScriptCall::DocumentScriptCall(ScriptDocument& document, Lock lock) : m_document(document)
{
    QRecursiveMutex& mutex = ScriptState::executionMutex();
    if (lock == Lock::Wait) {
        mutex.lock();
        m_locked = true;
    } else {
        m_locked = mutex.tryLock();
    }
    if (!m_locked)
        return;
    m_previousRecording = EditSwitches::s_recordUndoCommands;
    EditSwitches::s_recordUndoCommands = false;
    m_previousDocument = ScriptDocument::s_currentScriptContextDocument;
    ScriptDocument::s_currentScriptContextDocument = &document;
    if (asIScriptEngine* engine = document.scripting().engine())
        m_context = engine->CreateContext();
    if (m_context)
        m_context->SetLineCallback(asFUNCTION(lineCallback), this, asCALL_CDECL);
}

DocumentScriptCall::~DocumentScriptCall()
{
    if (!m_locked)
        return;
    if (m_context)
        m_context->Release();
    ScriptDocument::s_currentScriptContextDocument = m_previousDocument;
    EditSwitches::s_recordUndoCommands = m_previousRecording;
    ScriptState::executionMutex().unlock();
}

void DocumentScriptCall::lineCallback(asIScriptContext* context, void* self)
{
    auto* call = static_cast<DocumentScriptCall*>(self);
    if (call->m_timer.elapsed() > kCallTimeLimitMs || ScriptState::isAbortRequested()) {
        call->m_timedOut = true;
        context->Abort();
    }
}

bool DocumentScriptCall::call(asIScriptFunction* function, const std::function<void(asIScriptContext&)>& setArguments)
{
    m_failure.clear();
    if (!m_context || !function) {
        m_failure = QStringLiteral("no function to call");
        return false;
    }
    if (m_context->Prepare(function) < 0) {
        m_failure = QStringLiteral("the script context could not be prepared");
        return false;
    }
    if (setArguments)
        setArguments(*m_context);
    m_timedOut = false;
    m_timer.start();
    asIScriptContext* previousContext = ScriptState::currentContext();
    ScriptState::setCurrentContext(m_context);
    const int result = m_context->Execute();
    ScriptState::setCurrentContext(previousContext);
    if (result == asEXECUTION_FINISHED)
        return true;
    if (result == asEXECUTION_EXCEPTION) {
        const char* text = m_context->GetExceptionString();
        m_failure = QString::fromUtf8(text ? text : "script exception");
    } else if (m_timedOut) {
        m_failure = QCoreApplication::translate("DocumentScriptCall", "it ran longer than %1 ms and was stopped")
                        .arg(kCallTimeLimitMs);
    } else {
        m_failure = QStringLiteral("execution failed (%1)").arg(result);
    }
    return false;
}

void DocumentScriptCall::setItemArgument(asIScriptContext& context, int index, const MetaItem& item)
{
    const asUINT at = asUINT(index);
    switch (item.kind()) {
    case ItemKind::Body: {
        ScriptBody h = ScriptApi::bodyHandle(static_cast<const MetaBody*>(&item));
        context.SetArgObject(at, &h);
        break;
    }
    case ItemKind::Fixture: {
        ScriptFixture h = ScriptApi::fixtureHandle(static_cast<const MetaFixture*>(&item));
        context.SetArgObject(at, &h);
        break;
    }
    case ItemKind::Joint: {
        ScriptJoint h = ScriptApi::jointHandle(static_cast<const MetaJoint*>(&item));
        context.SetArgObject(at, &h);
        break;
    }
    case ItemKind::Image: {
        ScriptImage h = ScriptApi::imageHandle(static_cast<const MetaImage*>(&item));
        context.SetArgObject(at, &h);
        break;
    }
    case ItemKind::Sampler: {
        ScriptSampler h = ScriptApi::samplerHandle(static_cast<const MetaSampler*>(&item));
        context.SetArgObject(at, &h);
        break;
    }
    case ItemKind::Object: {
        ScriptObject h = ScriptApi::objectHandle(static_cast<const MetaObject*>(&item));
        context.SetArgObject(at, &h);
        break;
    }
    }
}

void DocumentScriptCall::setWorldArgument(asIScriptContext& context, int index)
{
    ScriptWorld world;
    world.valid = true;
    context.SetArgObject(asUINT(index), &world);
}
