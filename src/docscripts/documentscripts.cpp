#include "docscripts/documentscripts.h"

#include "base/flags.h"
#include "base/log.h"
#include "engine/documentscripting.h"
#include "engine/scriptdocument.h"
#include "model/metaworld.h"

#include <QDir>
#include <QFileInfo>
#include <QMutex>

namespace
{
// How long an export waits for a script running elsewhere before giving up
// on the filter (it would otherwise wait on itself when called from a script).
constexpr int kExportWaitMs = 10000;

const char* scriptWord(DocumentScripts::Script script)
{
    switch (script) {
    case DocumentScripts::Script::CustomLabels: return "custom labels";
    case DocumentScripts::Script::ExportFilter: return "property export filter";
    case DocumentScripts::Script::DisplayFilter: break;
    }
    return "property display filter";
}

QString afterExportCommand(const MetaWorld& world)
{
    const SystemHook& hook = world.afterExportHook;
    return hook.enabled ? hook.command.trimmed() : QString();
}
} // namespace

DocumentScripts::DocumentScripts(ScriptDocument& document) : m_document(document) {}

DocumentScripts::~DocumentScripts() = default;

QString DocumentScripts::setting(Script script) const
{
    const MetaWorld& world = m_document.world();
    switch (script) {
    case Script::CustomLabels: return world.displayOptions.customLabelsScriptFile;
    case Script::ExportFilter: return world.exportOptions.propertyExportFilterScriptFile;
    case Script::DisplayFilter: break;
    }
    return world.displayOptions.propertyDisplayFilterScriptFile;
}

QString DocumentScripts::resolvePath(const QString& setting, const QString& sceneFile)
{
    const QString file = setting.trimmed();
    if (file.isEmpty())
        return QString();
    const QDir base = sceneFile.isEmpty() ? QDir::current() : QFileInfo(sceneFile).absoluteDir();
    return QDir::cleanPath(base.absoluteFilePath(file));
}

QString DocumentScripts::resolvedPath(Script script) const
{
    return resolvePath(setting(script), m_document.filePath());
}

TrustRequest DocumentScripts::trustRequest() const
{
    TrustRequest request;
    request.file = m_document.filePath();
    QStringList parts;
    for (Script script : {Script::CustomLabels, Script::ExportFilter, Script::DisplayFilter}) {
        const QString path = resolvedPath(script);
        parts << path;
        if (!path.isEmpty())
            request.scripts << path;
    }
    const SystemHook& hook = m_document.world().afterExportHook;
    const QString command = afterExportCommand(m_document.world());
    parts << command << (command.isEmpty() ? QString() : hook.directory);
    if (!command.isEmpty())
        request.commands << command;
    request.digest = ScriptTrust::digest(parts);
    return request;
}

bool DocumentScripts::decide()
{
    if (m_trust == Trust::Undecided) {
        const TrustRequest request = trustRequest();
        // A scene never saved names only what the user set in this session.
        const bool allowed = request.file.isEmpty() || ScriptTrust::decide(request);
        m_trust = allowed ? Trust::Allowed : Trust::Refused;
    }
    return m_trust == Trust::Allowed;
}

bool DocumentScripts::prepare()
{
    const bool allowed = decide();
    if (allowed) {
        for (Script script : {Script::CustomLabels, Script::ExportFilter, Script::DisplayFilter})
            reloadIfNeeded(script, false);
    }
    emit changed();
    return allowed;
}

void DocumentScripts::userChanged()
{
    // What the user set may run, but a refusal of what the file named still
    // stands: the whole list is put to the user again.
    Trust expected = Trust::Refused;
    m_trust.compare_exchange_strong(expected, Trust::Undecided);
}

bool DocumentScripts::isAllowed() const
{
    return m_trust == Trust::Allowed;
}

void DocumentScripts::settingChanged(Script script)
{
    m_dirty[size_t(script)] = true;
    userChanged();
    QMetaObject::invokeMethod(this, [this] { emit changed(); }, Qt::QueuedConnection);
}

void DocumentScripts::afterExportCommandChanged()
{
    userChanged();
    QMetaObject::invokeMethod(this, [this] { emit changed(); }, Qt::QueuedConnection);
}

void DocumentScripts::sceneReplaced()
{
    m_trust = Trust::Undecided;
    for (std::atomic<bool>& dirty : m_dirty)
        dirty = true;
    emit changed();
}

void DocumentScripts::sceneSaved()
{
    if (m_trust != Trust::Allowed || m_document.filePath().isEmpty())
        return;
    const TrustRequest request = trustRequest();
    if (!request.isEmpty())
        ScriptTrust::remember(request.file, request.digest);
}

DocumentScriptModule& DocumentScripts::moduleOf(Script script)
{
    switch (script) {
    case Script::CustomLabels: return m_labels.module();
    case Script::ExportFilter: return m_exportFilter.module();
    case Script::DisplayFilter: break;
    }
    return m_displayFilter.module();
}

void DocumentScripts::reloadIfNeeded(Script script, bool wait)
{
    std::atomic<bool>& dirty = m_dirty[size_t(script)];
    if (!dirty)
        return;
    QMutex& mutex = m_document.scripting().scriptMutex();
    if (!(wait ? mutex.tryLock(kExportWaitMs) : mutex.tryLock()))
        return;
    dirty = false;
    DocumentScriptModule& module = moduleOf(script);
    const QString path = resolvedPath(script);
    if (path.isEmpty()) {
        module.unloadLocked(m_document.scripting());
    } else {
        if (AppFlags::isBatchMode() && AppFlags::isVerbose())
            plaxLog(LOG_INFO, QStringLiteral("Loading %1 script '%2'").arg(QLatin1String(scriptWord(script)), path));
        module.loadLocked(m_document.scripting(), path);
    }
    m_labels.resetFailureReport();
    m_displayFilter.resetFailureReport();
    mutex.unlock();
}

CustomLabelScript* DocumentScripts::labels()
{
    // A scene never saved names only what the user set in this session.
    if (!isAllowed() && !(m_document.filePath().isEmpty() && decide()))
        return nullptr;
    reloadIfNeeded(Script::CustomLabels, false);
    return m_labels.module().hasFunctions() ? &m_labels : nullptr;
}

DisplayFilterScript* DocumentScripts::displayFilter()
{
    if (!isAllowed() && !(m_document.filePath().isEmpty() && decide()))
        return nullptr;
    reloadIfNeeded(Script::DisplayFilter, false);
    return m_displayFilter.module().hasFunctions() ? &m_displayFilter : nullptr;
}

ExportFilterScript* DocumentScripts::exportFilterForExport()
{
    if (!decide())
        return nullptr;
    reloadIfNeeded(Script::ExportFilter, true);
    return m_exportFilter.hasFunctions() ? &m_exportFilter : nullptr;
}
