#pragma once

#include "base/types.h"
#include "docscripts/documentscriptcall.h"
#include "docscripts/documentscriptmodule.h"
#include "io/exportfilter.h"
#include "model/itemkind.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <memory>

class MetaItem;
class DocumentScriptsHost;
class ScriptDocument;

/// The property export filter script of a document, module "(plaxscript
/// property export filter %1)": it may define "bool shouldExportItem(body)"
/// (and fixture, joint, image, object) to leave items out of the raw-info
/// export, and "bool shouldExportProperty(world, const string& in)" (and
/// body, fixture, joint, image, object) to leave out single members, named by
/// their raw-info path ("/world/body/fixture/name"). Exports ask it through
/// an ExportFilterSession.
class ExportFilterScript
{
public:
    ExportFilterScript();

    /// The script's module and functions.
    DocumentScriptModule& module() { return m_module; }
    /// True when the script defines any of its functions.
    bool hasFunctions() const { return m_module.hasFunctions(); }

    /// The item function of a kind (null for samplers and when not defined).
    AngelScript::asIScriptFunction* itemFunction(ItemKind kind) const;
    /// The property function of a kind (null for samplers and when not defined).
    AngelScript::asIScriptFunction* propertyFunction(ItemKind kind) const;
    /// The property function of the world.
    AngelScript::asIScriptFunction* worldPropertyFunction() const;

private:
    DocumentScriptModule m_module;
};

/// The export filter as one export sees it: what the raw-info writer asks,
/// item by item and member by member (install it with
/// ExportPropertyFilter::setItemFilter). Made when the export starts, it
/// loads the document's filter script if its setting changed (in the editor
/// only once the user allowed the scene's scripts, see DocumentScripts) and
/// holds the script engine for the export. Without a filter everything is
/// exported. Items that are not the document's own (those an object instance
/// brings from its object file) cannot be handed to the script and are
/// exported. An item for which the script fails (an exception, or running
/// too long) is exported as if no filter were set, with all its members, and
/// the failure is logged once for that item in this export, not once per
/// member; after ten such items only a count follows at the end.
class ExportFilterSession : public ExportItemFilter
{
public:
    /// The filter for an export of `document`.
    explicit ExportFilterSession(DocumentScriptsHost& document);
    /// Logs how many items failed beyond the ones named.
    ~ExportFilterSession() override;
    ExportFilterSession(const ExportFilterSession&) = delete;
    ExportFilterSession& operator=(const ExportFilterSession&) = delete;

    /// True when a filter script with at least one function applies.
    bool isActive() const { return m_script != nullptr; }

    /// False when the script leaves the item out (bodies, fixtures, joints,
    /// images, objects; samplers and items not of the document are always
    /// exported). Asked once per item and export.
    bool shouldExportItem(const MetaItem& item) override;
    /// False when the script leaves out the member `path` of the item (the
    /// world when `item` is null).
    bool shouldExportProperty(const MetaItem* item, const QString& path) override;

    /// Number of items the script failed for in this export.
    int failedItemCount() const { return m_failedCount; }

private:
    bool ask(AngelScript::asIScriptFunction* function, const MetaItem* item, const QString* path, quint64 key);
    bool isOwn(const MetaItem& item) const;

    ScriptDocument& m_document;
    ExportFilterScript* m_script = nullptr;
    std::unique_ptr<DocumentScriptCall> m_call;
    QSet<quint64> m_failed;
    QHash<quint64, bool> m_itemDecisions;
    int m_failedCount = 0;
};
