#pragma once

#include "model/itemkind.h"
#include "base/types.h"

#include <QHash>
#include <QTreeWidget>

#include <vector>

class EditorDocument;

/// The items panel: the scene's bodies with their fixtures, then joints,
/// images, samplers and objects. Its selection follows the document's and a
/// selection made here is made in the document (through the script API, one
/// undo step). Body and fixture names can be edited in place.
class ItemsTree : public QTreeWidget
{
    Q_OBJECT

public:
    /// An empty panel.
    explicit ItemsTree(QWidget* parent = nullptr);

    /// Shows a document (null: nothing).
    void setDocument(EditorDocument* document);
    /// The tree item of a scene item, or null.
    QTreeWidgetItem* itemFor(ItemKind kind, ItemId id) const;
    /// Brings the tree in step with the document: rebuilt when items or
    /// names changed, otherwise only the selection is updated.
    void refresh();

private:
    struct Entry
    {
        ItemKind kind;
        ItemId id;
        QString name;
        friend bool operator==(const Entry&, const Entry&) = default;
    };

    std::vector<Entry> currentEntries() const;
    void rebuild(std::vector<Entry> entries);
    void syncSelection();
    void selectionEdited();
    void nameEdited(QTreeWidgetItem* item, int column);

    EditorDocument* m_document = nullptr;
    std::vector<Entry> m_entries;
    QHash<quint64, QTreeWidgetItem*> m_items;
    bool m_syncing = false;
    QMetaObject::Connection m_stackConnection;
};
