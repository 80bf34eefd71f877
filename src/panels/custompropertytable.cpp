#include "panels/custompropertytable.h"

#include "api/scriptworld.h"
#include "base/log.h"
#include "document/editordocument.h"
#include "editing/scriptcommand.h"
#include "engine/scriptdocument.h"
#include "model/metaworld.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace
{
const QStringList& itemClasses()
{
    static const QStringList classes = {QStringLiteral("world"), QStringLiteral("body"),    QStringLiteral("fixture"),
                                        QStringLiteral("joint"), QStringLiteral("image"),   QStringLiteral("sampler"),
                                        QStringLiteral("object")};
    return classes;
}

const QStringList& typeWords()
{
    static const QStringList types = {QStringLiteral("int"),  QStringLiteral("float"), QStringLiteral("string"),
                                      QStringLiteral("vec2"), QStringLiteral("bool"),  QStringLiteral("color")};
    return types;
}

std::string text(const QString& s)
{
    return s.toStdString();
}

// The definition of a class and name, or null.
const CustomPropertyDef* findDefinition(const EditorDocument& document, const QString& itemClass, const QString& name)
{
    for (const CustomPropertyDef& def : document.world().customPropertyDefs)
        if (def.itemClass == itemClass && def.name == name)
            return &def;
    return nullptr;
}
} // namespace

CustomPropertyTable::CustomPropertyTable(QWidget* parent)
    : QWidget(parent), m_table(new QTableWidget(0, 5, this)), m_newClass(new QComboBox(this)),
      m_newName(new QLineEdit(this)), m_newType(new QComboBox(this))
{
    setObjectName(QStringLiteral("CustomPropertyTable"));
    setAccessibleName(tr("Custom property definitions"));
    setMinimumSize(200, 120);
    m_table->setObjectName(QStringLiteral("CustomPropertyDefinitions"));
    m_table->setAccessibleName(tr("Custom property definitions"));
    m_table->setHorizontalHeaderLabels({tr("Item class"), tr("Name"), tr("Display name"), tr("Type"), tr("Combo entries")});
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->verticalHeader()->setVisible(false);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(m_table, &QTableWidget::cellChanged, this, &CustomPropertyTable::cellEdited);

    m_newClass->setObjectName(QStringLiteral("NewCustomPropertyClass"));
    m_newClass->setAccessibleName(tr("Item class of the new property"));
    m_newClass->addItems(itemClasses());
    m_newClass->setCurrentIndex(1);
    m_newName->setObjectName(QStringLiteral("NewCustomPropertyName"));
    m_newName->setAccessibleName(tr("Name of the new property"));
    m_newName->setPlaceholderText(tr("name"));
    m_newType->setObjectName(QStringLiteral("NewCustomPropertyType"));
    m_newType->setAccessibleName(tr("Type of the new property"));
    m_newType->addItems(typeWords());

    auto* add = new QPushButton(tr("&Add"), this);
    add->setObjectName(QStringLiteral("AddCustomProperty"));
    add->setToolTip(tr("Add a custom property definition"));
    auto* remove = new QPushButton(tr("&Remove"), this);
    remove->setObjectName(QStringLiteral("RemoveCustomProperty"));
    remove->setToolTip(tr("Remove the selected definition"));
    auto* entry = new QPushButton(tr("Add &entry..."), this);
    entry->setObjectName(QStringLiteral("AddCustomPropertyEntry"));
    entry->setToolTip(tr("Add a combo box entry to the selected definition"));
    connect(add, &QPushButton::clicked, this, [this] {
        if (addDefinition(m_newClass->currentText(), m_newName->text().trimmed(), m_newName->text().trimmed(),
                          m_newType->currentText()))
            m_newName->clear();
    });
    connect(m_newName, &QLineEdit::returnPressed, add, &QPushButton::click);
    connect(remove, &QPushButton::clicked, this, &CustomPropertyTable::removeSelected);
    connect(entry, &QPushButton::clicked, this, &CustomPropertyTable::addEntryToSelected);

    auto* row = new QHBoxLayout;
    row->addWidget(m_newClass);
    row->addWidget(m_newName, 1);
    row->addWidget(m_newType);
    row->addWidget(add);
    row->addWidget(remove);
    row->addWidget(entry);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_table, 1);
    layout->addLayout(row);
    setDocument(nullptr);
}

void CustomPropertyTable::setDocument(EditorDocument* document)
{
    if (m_document)
        disconnect(&m_document->undoStack(), nullptr, this, nullptr);
    m_document = document;
    if (m_document)
        connect(&m_document->undoStack(), &QUndoStack::indexChanged, this, &CustomPropertyTable::refresh);
    setEnabled(m_document != nullptr);
    refresh();
}

void CustomPropertyTable::refresh()
{
    m_filling = true;
    m_table->setRowCount(0);
    if (m_document) {
        for (const CustomPropertyDef& def : m_document->world().customPropertyDefs) {
            const int row = m_table->rowCount();
            m_table->insertRow(row);
            auto* cls = new QTableWidgetItem(def.itemClass);
            cls->setFlags(cls->flags() & ~Qt::ItemIsEditable);
            m_table->setItem(row, ClassColumn, cls);
            auto* name = new QTableWidgetItem(def.name);
            name->setData(Qt::UserRole, def.name);
            m_table->setItem(row, NameColumn, name);
            m_table->setItem(row, DisplayNameColumn, new QTableWidgetItem(def.displayName));
            auto* entries = new QTableWidgetItem(def.comboboxEntries.join(QStringLiteral(", ")));
            entries->setFlags(entries->flags() & ~Qt::ItemIsEditable);
            m_table->setItem(row, EntriesColumn, entries);
            auto* type = new QComboBox(m_table);
            type->setObjectName(QStringLiteral("CustomPropertyType_%1_%2").arg(def.itemClass, def.name));
            type->setAccessibleName(tr("Type of %1").arg(def.name));
            type->addItems(typeWords());
            type->setCurrentText(def.type);
            m_table->setCellWidget(row, TypeColumn, type);
            const QString itemClass = def.itemClass;
            const QString defName = def.name;
            connect(type, &QComboBox::currentTextChanged, this, [this, itemClass, defName](const QString& word) {
                // Changing the type rebuilds the table; leave the combo box's signal first.
                QMetaObject::invokeMethod(this, [this, itemClass, defName, word] { changeType(itemClass, defName, word); },
                                          Qt::QueuedConnection);
            });
        }
    }
    m_table->resizeColumnsToContents();
    m_filling = false;
}

void CustomPropertyTable::cellEdited(int row, int column)
{
    if (m_filling || !m_document || (column != NameColumn && column != DisplayNameColumn))
        return;
    const QString itemClass = m_table->item(row, ClassColumn)->text();
    const QString oldName = m_table->item(row, NameColumn)->data(Qt::UserRole).toString();
    const QString newName = m_table->item(row, NameColumn)->text().trimmed();
    const QString display = m_table->item(row, DisplayNameColumn)->text();
    QMetaObject::invokeMethod(this, [=, this] {
        if (!renameDefinition(itemClass, oldName, newName, display))
            refresh();
    }, Qt::QueuedConnection);
}

bool CustomPropertyTable::addDefinition(const QString& itemClass, const QString& name, const QString& displayName,
                                        const QString& type)
{
    // Refusals are checked before the macro opens: an empty macro would be an empty undo step.
    if (!m_document || name.isEmpty() || !itemClasses().contains(itemClass) || !typeWords().contains(type) ||
        findDefinition(*m_document, itemClass, name)) {
        plaxLog(LOG_WARNING, QStringLiteral("Cannot add custom property '%1' of %2").arg(name, itemClass));
        return false;
    }
    ScriptDocumentScope scope(m_document);
    UndoMacroScope macro(m_document->undoStack(), tr("add custom property '%1'").arg(name));
    return WorldApi::addCustomProperty(text(itemClass), text(name), text(displayName), text(type));
}

bool CustomPropertyTable::removeDefinition(const QString& itemClass, const QString& name)
{
    if (!m_document || !findDefinition(*m_document, itemClass, name))
        return false;
    ScriptDocumentScope scope(m_document);
    UndoMacroScope macro(m_document->undoStack(), tr("remove custom property '%1'").arg(name));
    return WorldApi::removeCustomProperty(text(itemClass), text(name));
}

bool CustomPropertyTable::renameDefinition(const QString& itemClass, const QString& name, const QString& newName,
                                           const QString& newDisplayName)
{
    const CustomPropertyDef* def = m_document ? findDefinition(*m_document, itemClass, name) : nullptr;
    if (!def || newName.isEmpty() || (def->name == newName && def->displayName == newDisplayName) ||
        (newName != name && findDefinition(*m_document, itemClass, newName))) {
        return false;
    }
    ScriptDocumentScope scope(m_document);
    UndoMacroScope macro(m_document->undoStack(), tr("rename custom property '%1'").arg(name));
    return WorldApi::setCustomPropertyNames(text(itemClass), text(name), text(newName), text(newDisplayName));
}

bool CustomPropertyTable::changeType(const QString& itemClass, const QString& name, const QString& type)
{
    if (!m_document || !typeWords().contains(type))
        return false;
    const CustomPropertyDef* def = findDefinition(*m_document, itemClass, name);
    if (!def || def->type == type)
        return false;
    const QString display = def->displayName;
    ScriptDocumentScope scope(m_document);
    UndoMacroScope macro(m_document->undoStack(), tr("change type of custom property '%1'").arg(name));
    return WorldApi::removeCustomProperty(text(itemClass), text(name)) &&
           WorldApi::addCustomProperty(text(itemClass), text(name), text(display), text(type));
}

bool CustomPropertyTable::addComboEntry(const QString& itemClass, const QString& name, const QString& entry)
{
    if (!m_document || entry.isEmpty() || !findDefinition(*m_document, itemClass, name))
        return false;
    ScriptDocumentScope scope(m_document);
    UndoMacroScope macro(m_document->undoStack(), tr("add entry to custom property '%1'").arg(name));
    const bool ok = WorldApi::appendCustomPropertyComboboxEntry(text(itemClass), text(name), text(entry));
    refresh();
    return ok;
}

void CustomPropertyTable::removeSelected()
{
    const int row = m_table->currentRow();
    if (row >= 0)
        removeDefinition(m_table->item(row, ClassColumn)->text(), m_table->item(row, NameColumn)->data(Qt::UserRole).toString());
}

void CustomPropertyTable::addEntryToSelected()
{
    const int row = m_table->currentRow();
    if (row < 0)
        return;
    bool ok = false;
    const QString entry = QInputDialog::getText(this, tr("Add combo box entry"), tr("Entry:"), QLineEdit::Normal,
                                                QString(), &ok);
    if (ok)
        addComboEntry(m_table->item(row, ClassColumn)->text(), m_table->item(row, NameColumn)->data(Qt::UserRole).toString(),
                      entry.trimmed());
}
