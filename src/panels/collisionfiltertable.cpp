#include "panels/collisionfiltertable.h"

#include "api/scriptworld.h"
#include "document/editordocument.h"
#include "editing/scriptcommand.h"
#include "edits/selectionedits.h"
#include "engine/scriptdocument.h"
#include "model/metaworld.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

CollisionFilterTable::CollisionFilterTable(QWidget* parent) : QWidget(parent), m_table(new QTableWidget(kBits, 4, this))
{
    setObjectName(QStringLiteral("CollisionFilterTable"));
    setAccessibleName(tr("Collision filter table"));
    setMinimumSize(200, 120);
    m_table->setObjectName(QStringLiteral("CollisionBits"));
    m_table->setAccessibleName(tr("Collision bits"));
    m_table->setHorizontalHeaderLabels({tr("Bit"), tr("Name"), tr("Category"), tr("Mask")});
    m_table->horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    m_table->verticalHeader()->setVisible(false);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_table->setToolTip(tr("Name the collision bits; tick a bit to set it on every selected fixture"));
    connect(m_table, &QTableWidget::cellChanged, this, &CollisionFilterTable::itemEdited);
    auto* hint = new QLabel(tr("Category and mask apply to the selected fixtures."), this);
    hint->setObjectName(QStringLiteral("CollisionFilterHint"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_table, 1);
    layout->addWidget(hint);
    setDocument(nullptr);
}

void CollisionFilterTable::setDocument(EditorDocument* document)
{
    if (m_document)
        disconnect(&m_document->undoStack(), nullptr, this, nullptr);
    m_document = document;
    if (m_document)
        connect(&m_document->undoStack(), &QUndoStack::indexChanged, this, &CollisionFilterTable::refresh);
    setEnabled(m_document != nullptr);
    refresh();
}

void CollisionFilterTable::refresh()
{
    m_filling = true;
    std::vector<const MetaFixture*> fixtures;
    if (m_document) {
        for (ItemId id : m_document->selection().items(ItemKind::Fixture)) {
            if (const MetaFixture* f = m_document->world().findFixture(id))
                fixtures.push_back(f);
        }
    }
    const QStringList names = m_document ? m_document->world().collisionBitplaneNames : QStringList();
    for (int bit = 0; bit < kBits; ++bit) {
        auto* number = new QTableWidgetItem(QString::number(bit));
        number->setFlags(Qt::ItemIsEnabled);
        number->setTextAlignment(Qt::AlignCenter);
        m_table->setItem(bit, BitColumn, number);
        m_table->setItem(bit, NameColumn, new QTableWidgetItem(bit < names.size() ? names[bit] : QString()));
        for (int column : {CategoryColumn, MaskColumn}) {
            int set = 0;
            for (const MetaFixture* f : fixtures) {
                const int bits = column == CategoryColumn ? f->filterCategoryBits : f->filterMaskBits;
                if (bits & (1 << bit))
                    ++set;
            }
            auto* box = new QTableWidgetItem;
            box->setFlags(fixtures.empty() ? Qt::ItemIsUserCheckable : (Qt::ItemIsUserCheckable | Qt::ItemIsEnabled));
            box->setCheckState(set == 0 ? Qt::Unchecked
                                        : (size_t(set) == fixtures.size() ? Qt::Checked : Qt::PartiallyChecked));
            m_table->setItem(bit, column, box);
        }
    }
    m_filling = false;
}

void CollisionFilterTable::itemEdited(int row, int column)
{
    if (m_filling || !m_document)
        return;
    QTableWidgetItem* item = m_table->item(row, column);
    if (column == NameColumn) {
        const QString name = item->text();
        QMetaObject::invokeMethod(this, [this, row, name] { setBitName(row, name); }, Qt::QueuedConnection);
    } else if (column == CategoryColumn || column == MaskColumn) {
        // A partly set bit becomes set for all on the first click.
        const bool on = item->checkState() != Qt::Unchecked;
        QMetaObject::invokeMethod(this, [this, row, column, on] { setSelectedFixturesBit(row, column == MaskColumn, on); },
                                  Qt::QueuedConnection);
    }
}

void CollisionFilterTable::setBitName(int bit, const QString& name)
{
    if (!m_document)
        return;
    const QStringList& names = m_document->world().collisionBitplaneNames;
    if (bit < 0 || bit >= kBits || (bit < names.size() ? names[bit] : QString()) == name) {
        refresh();
        return;
    }
    ScriptDocumentScope scope(m_document);
    UndoMacroScope macro(m_document->undoStack(), tr("name collision bit %1").arg(bit));
    WorldApi::setCollisionBitplaneName(bit, name.toStdString());
    refresh();
}

void CollisionFilterTable::setSelectedFixturesBit(int bit, bool mask, bool on)
{
    if (!m_document)
        return;
    SelectionEdits::setBitForSelectedFixtures(*m_document, bit, on,
                                              mask ? SelectionEdits::MaskBits : SelectionEdits::CategoryBits);
    refresh();
}
