#pragma once

#include <QWidget>

class EditorDocument;
class QTableWidget;

/// The collision filter table: one row per collision bit with the scene's
/// name for it and whether the selected fixtures have it in their category
/// and mask bits (checked for all, partly for some). Naming a bit calls
/// setCollisionBitplaneName; ticking a box sets or clears the bit of every
/// selected fixture (setBitForSelectedFixtures): one undo step each.
class CollisionFilterTable : public QWidget
{
    Q_OBJECT

public:
    /// Columns of the table.
    enum Column
    {
        BitColumn,
        NameColumn,
        CategoryColumn,
        MaskColumn,
    };
    /// Number of bits shown (Box2D's 16 filter bits).
    static constexpr int kBits = 16;

    /// An empty table.
    explicit CollisionFilterTable(QWidget* parent = nullptr);
    /// Follows a document (null: none).
    void setDocument(EditorDocument* document);
    /// The table.
    QTableWidget* table() const { return m_table; }

    /// Names a bit.
    void setBitName(int bit, const QString& name);
    /// Sets or clears a bit of the category (`mask` false) or mask bits of the selected fixtures.
    void setSelectedFixturesBit(int bit, bool mask, bool on);

public slots:
    /// Shows the scene's names and the selection's bits again.
    void refresh();

private:
    void itemEdited(int row, int column);

    EditorDocument* m_document = nullptr;
    QTableWidget* m_table;
    bool m_filling = false;
};
