#pragma once

#include "hooks/hookevents.h"
#include "hooks/scripthookstable.h"

#include <QByteArray>
#include <QString>

class ScriptDocument;
struct ScriptHookData;

/// Runs the scripts attached to editor events. It keeps the hook table read
/// from the configuration file ("config/scripthooks.json" under the working
/// directory), installs itself as the handler of HookEvents while it lives
/// (so every raised event comes here) and runs an event's scripts, in order,
/// through the document's one-off runner with the hook data current.
///
/// The table comes from the working folder, which may come from someone
/// else: in the editor its scripts run only once the user has agreed to that
/// file (ScriptTrust); saving the table from the editor counts as agreeing.
class ScriptHooksManager
{
public:
    /// The configuration file, relative to the working directory.
    static constexpr const char* kDefaultFile = "config/scripthooks.json";

    /// Reads the table from `file` and becomes the handler of raised events.
    explicit ScriptHooksManager(const QString& file = QLatin1String(kDefaultFile));
    /// Stops handling events.
    ~ScriptHooksManager();
    ScriptHooksManager(const ScriptHooksManager&) = delete;
    ScriptHooksManager& operator=(const ScriptHooksManager&) = delete;

    /// The manager handling events now, or null.
    static ScriptHooksManager* instance();

    /// Reads the configuration file again ("Loading script hooks setup"). A
    /// file that cannot be read leaves no hooks; returns false then.
    bool load();
    /// Writes the table to the configuration file; false (and the user told)
    /// when it cannot be written.
    bool save();
    /// The configuration file.
    const QString& file() const { return m_file; }

    /// The whole table.
    const ScriptHooksTable& table() const { return m_table; }
    /// Replaces the table (save() writes it).
    void setTable(const ScriptHooksTable& table) { m_table = table; }
    /// The scripts of an event.
    QStringList scripts(ScriptHookEvent event) const { return m_table.scripts(event); }
    /// Replaces the scripts of an event (save() writes them).
    void setScripts(ScriptHookEvent event, const QStringList& scripts) { m_table.setScripts(event, scripts); }

    /// Runs the scripts of `event` on `document` as one undo step "script
    /// hook [%1]" with `data` current (its event name set to the event's
    /// shown name). Each script logs "Event '%2'' triggered script: %1"; a
    /// missing script file logs "Could not find file '%1'" and ends the
    /// event's list there. A script that fails is reported by the runner and
    /// the next one still runs. Returns false when the event has no scripts
    /// or they may not run, true otherwise.
    bool runHooks(ScriptDocument& document, ScriptHookEvent event, const ScriptHookData& data);

private:
    bool mayRun();

    QString m_file;
    ScriptHooksTable m_table;
    // What was read from the file, for the trust decision.
    QByteArray m_content;
    // The editor's decision for the current content: 0 not asked, 1 yes, -1 no.
    int m_trust = 0;
    bool m_running = false;
};
