#include "docscripts/displayfilterscript.h"

#include "base/log.h"
#include "model/metaitem.h"

#include <string>

using namespace AngelScript;

namespace
{
std::vector<DocumentScriptModule::Lookup> lookups()
{
    std::vector<DocumentScriptModule::Lookup> list;
    for (const char* kind : {"world", "body", "fixture", "joint", "image", "sampler", "object"}) {
        const QString k = QLatin1String(kind);
        list.push_back({QStringLiteral("bool shouldDisplayProperty(%1, const string& in)").arg(k),
                        QStringLiteral("Found script function for property display: %1").arg(k)});
    }
    return list;
}
} // namespace

DisplayFilterScript::DisplayFilterScript() : m_module(ScriptModuleKind::PropertyDisplayFilter, lookups()) {}

void DisplayFilterScript::reportFailure(const QString& what, const QString& why)
{
    if (m_failureReported)
        return;
    m_failureReported = true;
    plaxLog(LOG_ERROR,
            QStringLiteral("The property display filter script failed for %1 (the property is shown): %2").arg(what, why));
}

DisplayFilterScript::Pass::Pass(DisplayFilterScript& script, ScriptDocument& document)
    : m_script(script), m_call(document, DocumentScriptCall::Lock::Try)
{
}

bool DisplayFilterScript::Pass::shouldDisplay(const MetaItem& item, const QString& key)
{
    asIScriptFunction* function = m_script.m_module.function(size_t(item.kind()) + 1);
    if (!function || !isReady())
        return true;
    std::string name = key.toStdString();
    const bool ok = m_call.call(function, [&](asIScriptContext& context) {
        DocumentScriptCall::setItemArgument(context, 0, item);
        context.SetArgAddress(1, &name);
    });
    if (!ok) {
        m_script.reportFailure(QStringLiteral("%1 '%2' property '%3'").arg(itemKindWord(item.kind()), item.name(), key),
                               m_call.failure());
        return true;
    }
    return m_call.context()->GetReturnByte() != 0;
}

bool DisplayFilterScript::Pass::shouldDisplayWorld(const QString& key)
{
    asIScriptFunction* function = m_script.m_module.function(0);
    if (!function || !isReady())
        return true;
    std::string name = key.toStdString();
    const bool ok = m_call.call(function, [&](asIScriptContext& context) {
        DocumentScriptCall::setWorldArgument(context, 0);
        context.SetArgAddress(1, &name);
    });
    if (!ok) {
        m_script.reportFailure(QStringLiteral("world property '%1'").arg(key), m_call.failure());
        return true;
    }
    return m_call.context()->GetReturnByte() != 0;
}
