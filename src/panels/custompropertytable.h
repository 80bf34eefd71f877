#pragma once

#include <QWidget>

class EditorDocument;
class QComboBox;
class QLineEdit;
class QTableWidget;

/// The custom property definitions of the active scene as a table (item
/// class, name, display name, type, combo box entries). Adding, removing,
/// renaming, changing the type and adding a combo box entry each call the
/// script API (addCustomProperty, removeCustomProperty,
/// setCustomPropertyNames, insertCustomPropertyComboboxEntry) in one undo
/// step; the table follows the scene after every change, undo included.
class CustomPropertyTable : public QWidget
{
    Q_OBJECT

public:
    /// Columns of the table.
    enum Column
    {
        ClassColumn,
        NameColumn,
        DisplayNameColumn,
        TypeColumn,
        EntriesColumn,
    };

    /// An empty table.
    explicit CustomPropertyTable(QWidget* parent = nullptr);
    /// Follows a document (null: none).
    void setDocument(EditorDocument* document);
    /// The table.
    QTableWidget* table() const { return m_table; }

    /// Adds a definition; false when the API refused it.
    bool addDefinition(const QString& itemClass, const QString& name, const QString& displayName, const QString& type);
    /// Removes a definition.
    bool removeDefinition(const QString& itemClass, const QString& name);
    /// Renames a definition.
    bool renameDefinition(const QString& itemClass, const QString& name, const QString& newName,
                          const QString& newDisplayName);
    /// Gives a definition another type (removed and added again, one undo step).
    bool changeType(const QString& itemClass, const QString& name, const QString& type);
    /// Appends a combo box entry to a definition.
    bool addComboEntry(const QString& itemClass, const QString& name, const QString& entry);

public slots:
    /// Shows the scene's definitions again.
    void refresh();

private:
    void cellEdited(int row, int column);
    void removeSelected();
    void addEntryToSelected();

    EditorDocument* m_document = nullptr;
    QTableWidget* m_table;
    QComboBox* m_newClass;
    QLineEdit* m_newName;
    QComboBox* m_newType;
    bool m_filling = false;
};
