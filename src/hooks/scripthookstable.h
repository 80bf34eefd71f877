#pragma once

#include "hooks/hookevents.h"

#include <QString>
#include <QStringList>

#include <array>

/// Which script files run for each hook event, in order, as kept in the hook
/// configuration file: a JSON object whose "events" array holds, in the
/// order of the events, one {"trigger": name, "scripts": [paths]} for every
/// event that has scripts.
class ScriptHooksTable
{
public:
    /// The scripts of an event (empty for SHE_MAX and unknown values).
    QStringList scripts(ScriptHookEvent event) const;
    /// Replaces the scripts of an event; empty paths are dropped.
    void setScripts(ScriptHookEvent event, const QStringList& scripts);
    /// True when no event has a script.
    bool isEmpty() const;
    /// Every script path of every event, in event order.
    QStringList allScripts() const;

    /// Reads a configuration file, replacing the table. A missing file logs
    /// "Could not find file: '%1'", one that cannot be opened "Could not open
    /// file for reading: '%1'", invalid JSON "Failed to parse JSON from file
    /// '%1' : %2"; the table is then empty and the result false. Entries
    /// with an unknown "trigger" are ignored. `content`, when given, receives
    /// the bytes read.
    bool read(const QString& path, QByteArray* content = nullptr);
    /// The configuration file's text for this table.
    QByteArray toJson() const;
    /// Writes the configuration file (creating its folder). When the file
    /// cannot be opened, logs and tells the user "Could not open file '%1' for
    /// writing." in a box titled "P.L.A.X", and returns false.
    bool write(const QString& path) const;

    friend bool operator==(const ScriptHooksTable&, const ScriptHooksTable&) = default;

private:
    std::array<QStringList, SHE_MAX> m_scripts;
};
