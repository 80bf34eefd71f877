#include "hooks/scripthooksmanager.h"

#include "api/scripthookdata.h"
#include "base/flags.h"
#include "base/log.h"
#include "docscripts/scripttrust.h"
#include "editing/scriptcommand.h"
#include "engine/scriptbackground.h"
#include "engine/scriptdocument.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace
{
ScriptHooksManager* s_instance = nullptr;

QString tr(const char* text)
{
    return QCoreApplication::translate("ScriptHooks", text);
}

// A script's text: the file as UTF-8 up to its first NUL byte.
QString scriptText(const QString& path, bool* ok)
{
    QFile file(path);
    *ok = file.open(QIODevice::ReadOnly);
    if (!*ok) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not open file for reading: '%1'").arg(path));
        return QString();
    }
    QByteArray bytes = file.readAll();
    if (const qsizetype nul = bytes.indexOf('\0'); nul >= 0)
        bytes.truncate(nul);
    return QString::fromUtf8(bytes);
}
} // namespace

ScriptHooksManager::ScriptHooksManager(const QString& file) : m_file(file)
{
    load();
    s_instance = this;
    HookEvents::setHandler([this](ScriptDocument& document, ScriptHookEvent event, const ScriptHookData& data) {
        runHooks(document, event, data);
    });
}

ScriptHooksManager::~ScriptHooksManager()
{
    if (s_instance == this) {
        s_instance = nullptr;
        HookEvents::setHandler({});
    }
}

ScriptHooksManager* ScriptHooksManager::instance()
{
    return s_instance;
}

bool ScriptHooksManager::load()
{
    plaxLog(LOG_DEBUG, "Loading script hooks setup");
    m_trust = 0;
    return m_table.read(m_file, &m_content);
}

bool ScriptHooksManager::save()
{
    if (!m_table.write(m_file))
        return false;
    // The user wrote this table: what it names may run.
    m_content = m_table.toJson();
    ScriptTrust::remember(QFileInfo(m_file).absoluteFilePath(), ScriptTrust::digest({QString::fromUtf8(m_content)}));
    m_trust = 1;
    return true;
}

bool ScriptHooksManager::mayRun()
{
    if (m_trust == 0) {
        TrustRequest request;
        request.file = QFileInfo(m_file).absoluteFilePath();
        request.digest = ScriptTrust::digest({QString::fromUtf8(m_content)});
        request.scripts = m_table.allScripts();
        m_trust = ScriptTrust::decide(request) ? 1 : -1;
    }
    return m_trust > 0;
}

bool ScriptHooksManager::runHooks(ScriptDocument& document, ScriptHookEvent event, const ScriptHookData& given)
{
    const QStringList scripts = m_table.scripts(event);
    if (scripts.isEmpty())
        return false;
    if (m_running) {
        // A hook's own run raised another event (or the user did meanwhile).
        plaxLog(LOG_DEBUG, QStringLiteral("Ignoring event '%1' raised while hook scripts run")
                               .arg(scriptHookEventName(event)));
        return false;
    }
    if (!mayRun())
        return false;

    const QString name = scriptHookEventName(event);
    ScriptHookData data = given;
    data.eventName = name;
    ScriptHookDataScope current(std::move(data));
    m_running = true;
    {
        UndoMacroScope macro(document.undoStack(), tr("script hook [%1]").arg(name));
        for (const QString& path : scripts) {
            plaxLog(LOG_DEBUG, QStringLiteral("Event '%2'' triggered script: %1").arg(path, name));
            if (!QFileInfo::exists(path)) {
                plaxLog(LOG_ERROR, QStringLiteral("Could not find file '%1'").arg(path));
                break;
            }
            bool ok = false;
            const QString text = scriptText(path, &ok);
            if (!ok)
                break;
            if (AppFlags::isBatchMode() && AppFlags::isVerbose())
                plaxLog(LOG_INFO, QStringLiteral("Running hook script '%1' for event '%2'").arg(path, name));
            ScriptBackground::runOneOffScript(document, text, QString(), tr("Running script hook [%1]...").arg(name));
        }
    }
    m_running = false;
    return true;
}
