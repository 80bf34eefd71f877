#pragma once

#include <QDialog>

class QPushButton;
class QTreeView;
class ScriptHooksManager;
class ScriptHooksModel;

/// Edits which scripts run for each hook event: the events in a tree, each
/// with its scripts below it, and buttons to add script files to the chosen
/// event, remove the chosen script and move it up or down. OK hands the
/// table to the ScriptHooksManager, which writes "config/scripthooks.json".
class ScriptHooksDialog : public QDialog
{
    Q_OBJECT

public:
    /// A dialog over `manager`'s table.
    explicit ScriptHooksDialog(ScriptHooksManager& manager, QWidget* parent = nullptr);

    /// The model being edited.
    ScriptHooksModel& model() const { return *m_model; }
    /// The tree of events and scripts.
    QTreeView* tree() const { return m_tree; }

    /// Adds script files to the current event (asks for them when `paths` is empty).
    void addScripts(const QStringList& paths = {});
    /// Removes the current script.
    void removeScript();
    /// Moves the current script up (-1) or down (+1).
    void moveScript(int step);
    /// Saves the edited table through the manager, then closes.
    void accept() override;

private:
    void updateButtons();

    ScriptHooksManager& m_manager;
    ScriptHooksModel* m_model;
    QTreeView* m_tree;
    QPushButton* m_add;
    QPushButton* m_remove;
    QPushButton* m_up;
    QPushButton* m_down;
};
