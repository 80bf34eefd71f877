#pragma once

#include <QStringList>
#include <QWidget>

class EditorDocument;
class MetaWorld;
class QLineEdit;
class QTableWidget;

/// The exported property table: every member the raw-info export writes for
/// the active scene, by path ("/world/body/fixture/name"), with a box that
/// says whether it is exported. Unticking a member leaves it out of every
/// export (the scene's excluded export properties) through the script API
/// (setExportPropertyExcluded): one undo step each.
class ExportedPropertyTable : public QWidget
{
    Q_OBJECT

public:
    /// An empty table.
    explicit ExportedPropertyTable(QWidget* parent = nullptr);
    /// Follows a document (null: none).
    void setDocument(EditorDocument* document);
    /// The table (column 0 the path with its check box).
    QTableWidget* table() const { return m_table; }

    /// The member paths an export of the scene asks about, in order, with
    /// the scene's excluded paths that are not among them appended.
    static QStringList memberPaths(const MetaWorld& scene);
    /// Leaves a member out of exports (`excluded`) or writes it again.
    void setExcluded(const QString& path, bool excluded);

public slots:
    /// Lists the members again (when shown; a hidden table waits until it is shown).
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;

private:
    EditorDocument* m_document = nullptr;
    QTableWidget* m_table;
    QLineEdit* m_filter;
    bool m_filling = false;
    bool m_stale = true;
};
