#include "docscripts/exportfilterscript.h"

#include "base/log.h"
#include "docscripts/documentscripts.h"
#include "docscripts/documentscriptshost.h"
#include "engine/scriptdocument.h"
#include "model/metaworld.h"

#include <string>

using namespace AngelScript;

namespace
{
// Kinds that the filter knows, in the order of its functions.
constexpr ItemKind kKinds[] = {ItemKind::Body, ItemKind::Fixture, ItemKind::Joint, ItemKind::Image, ItemKind::Object};
constexpr size_t kKindCount = std::size(kKinds);
constexpr size_t kWorldProperty = kKindCount;
constexpr int kNamedFailures = 10;

std::vector<DocumentScriptModule::Lookup> lookups()
{
    std::vector<DocumentScriptModule::Lookup> list;
    for (ItemKind kind : kKinds) {
        const QString k = itemKindWord(kind);
        list.push_back({QStringLiteral("bool shouldExportItem(%1)").arg(k),
                        QStringLiteral("Found script function for item export: %1").arg(k)});
    }
    list.push_back({QStringLiteral("bool shouldExportProperty(world, const string& in)"),
                    QStringLiteral("Found script function for property export: world")});
    for (ItemKind kind : kKinds) {
        const QString k = itemKindWord(kind);
        list.push_back({QStringLiteral("bool shouldExportProperty(%1, const string& in)").arg(k),
                        QStringLiteral("Found script function for property export: %1").arg(k)});
    }
    return list;
}

// Index of a kind among the filter's kinds, kKindCount for samplers.
size_t slot(ItemKind kind)
{
    for (size_t i = 0; i < kKindCount; ++i) {
        if (kKinds[i] == kind)
            return i;
    }
    return kKindCount;
}

quint64 itemKey(ItemKind kind, ItemId id)
{
    return (quint64(kind) << 32) | quint64(id);
}
} // namespace

ExportFilterScript::ExportFilterScript() : m_module(ScriptModuleKind::PropertyExportFilter, lookups()) {}

asIScriptFunction* ExportFilterScript::itemFunction(ItemKind kind) const
{
    const size_t at = slot(kind);
    return at < kKindCount ? m_module.function(at) : nullptr;
}

asIScriptFunction* ExportFilterScript::propertyFunction(ItemKind kind) const
{
    const size_t at = slot(kind);
    return at < kKindCount ? m_module.function(kWorldProperty + 1 + at) : nullptr;
}

asIScriptFunction* ExportFilterScript::worldPropertyFunction() const
{
    return m_module.function(kWorldProperty);
}

ExportFilterSession::ExportFilterSession(DocumentScriptsHost& document) : m_document(document)
{
    ExportFilterScript* script = document.documentScripts().exportFilterForExport();
    if (!script || !script->hasFunctions())
        return;
    m_call = std::make_unique<DocumentScriptCall>(document, DocumentScriptCall::Lock::Wait);
    if (m_call->isReady())
        m_script = script;
}

ExportFilterSession::~ExportFilterSession()
{
    if (m_failedCount > kNamedFailures)
        plaxLog(LOG_ERROR, QStringLiteral("The export filter script failed for %1 items in all; they were exported "
                                          "as if no filter were set")
                               .arg(m_failedCount));
}

bool ExportFilterSession::ask(asIScriptFunction* function, const MetaItem* item, const QString* path, quint64 key)
{
    if (m_failed.contains(key))
        return true;
    std::string member = path ? path->toStdString() : std::string();
    const bool ok = m_call->call(function, [&](asIScriptContext& context) {
        if (item)
            DocumentScriptCall::setItemArgument(context, 0, *item);
        else
            DocumentScriptCall::setWorldArgument(context, 0);
        if (path)
            context.SetArgAddress(1, &member);
    });
    if (ok)
        return m_call->context()->GetReturnByte() != 0;
    m_failed.insert(key);
    if (++m_failedCount <= kNamedFailures) {
        const QString what = item ? QStringLiteral("%1 '%2'").arg(itemKindWord(item->kind()), item->name())
                                  : QStringLiteral("the world");
        plaxLog(LOG_ERROR, QStringLiteral("The export filter script failed for %1, which is exported as if no filter "
                                          "were set: %2")
                               .arg(what, m_call->failure()));
    }
    return true;
}

bool ExportFilterSession::isOwn(const MetaItem& item) const
{
    return m_document.world().findItem(item.kind(), item.id()) == &item;
}

bool ExportFilterSession::shouldExportItem(const MetaItem& item)
{
    if (!m_script)
        return true;
    asIScriptFunction* function = m_script->itemFunction(item.kind());
    if (!function || !isOwn(item))
        return true;
    const quint64 key = itemKey(item.kind(), item.id());
    const auto known = m_itemDecisions.constFind(key);
    if (known != m_itemDecisions.constEnd())
        return *known;
    const bool yes = ask(function, &item, nullptr, key);
    m_itemDecisions.insert(key, yes);
    return yes;
}

bool ExportFilterSession::shouldExportProperty(const MetaItem* item, const QString& path)
{
    if (!m_script)
        return true;
    if (!item) {
        asIScriptFunction* function = m_script->worldPropertyFunction();
        // The world is not an item: it gets a key of its own past every kind.
        return !function || ask(function, nullptr, &path, itemKey(ItemKind(kItemKindCount), 0));
    }
    asIScriptFunction* function = m_script->propertyFunction(item->kind());
    return !function || !isOwn(*item) || ask(function, item, &path, itemKey(item->kind(), item->id()));
}
