#pragma once

#include "hooks/scripthookstable.h"

#include <QAbstractItemModel>

/// The hook table as a two-level tree for ScriptHooksDialog: the twenty
/// events at the top (their shown names, icons and descriptions as
/// tooltips), each with its script files in order below it. Edits change
/// the model's own copy of the table; the dialog hands it to the
/// ScriptHooksManager when the user accepts.
class ScriptHooksModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// A model showing `table`.
    explicit ScriptHooksModel(const ScriptHooksTable& table, QObject* parent = nullptr);

    /// The table as edited.
    const ScriptHooksTable& table() const { return m_table; }

    /// The event of an index (an event row or one of its scripts), SHE_MAX for none.
    ScriptHookEvent eventOf(const QModelIndex& index) const;
    /// The index of an event's row.
    QModelIndex eventIndex(ScriptHookEvent event) const;
    /// Appends scripts to an event; returns the index of the last one added.
    QModelIndex addScripts(ScriptHookEvent event, const QStringList& paths);
    /// Removes the script at `index`; false when it is not a script row.
    bool removeScript(const QModelIndex& index);
    /// Moves the script at `index` up (-1) or down (+1) within its event;
    /// returns its new index (invalid when it cannot move).
    QModelIndex moveScript(const QModelIndex& index, int step);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    ScriptHooksTable m_table;
};
