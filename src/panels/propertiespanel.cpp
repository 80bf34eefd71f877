#include "panels/propertiespanel.h"

#include "document/editordocument.h"
#include "model/metaworld.h"
#include "script/displayfilterscript.h"
#include "script/documentscripting.h"
#include "script/documentscripts.h"
#include "script/scriptapisupport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <optional>

namespace
{
QString formatValue(const QVariant& value, PropertyDef::Type type)
{
    if (type == PropertyDef::Type::Float)
        return QString::number(value.toDouble(), 'g', 6);
    return value.toString();
}

// True when the display filter script lets every selected item show the row.
bool displayed(DisplayFilterScript::Pass* filter, const std::vector<const MetaItem*>& items, const QString& key)
{
    return !filter || std::all_of(items.begin(), items.end(), [&](const MetaItem* item) {
        return filter->shouldDisplay(*item, key);
    });
}

QString sectionTitle(ItemKind kind, size_t count)
{
    static const char* titles[] = {"Bodies", "Fixtures", "Joints", "Images", "Samplers", "Objects"};
    return QStringLiteral("%1 (%2)").arg(PropertiesPanel::tr(titles[int(kind)])).arg(count);
}
} // namespace

PropertiesPanel::PropertiesPanel(QWidget* parent) : QScrollArea(parent)
{
    setObjectName(QStringLiteral("PropertiesPanel"));
    setWidgetResizable(true);
    refresh();
}

QString PropertiesPanel::noSelectionText()
{
    return tr("No selection");
}

void PropertiesPanel::setDocument(EditorDocument* document)
{
    if (document == m_document)
        return;
    disconnect(m_stackConnection);
    disconnect(m_scriptsConnection);
    m_document = document;
    if (m_document) {
        m_stackConnection =
            connect(&m_document->undoStack(), &QUndoStack::indexChanged, this, [this] { scheduleRefresh(); });
        m_scriptsConnection = connect(&m_document->scripting().documentScripts(), &DocumentScripts::changed, this,
                                      [this] { scheduleRefresh(); });
    }
    refresh();
}

void PropertiesPanel::scheduleRefresh()
{
    if (m_refreshPending)
        return;
    m_refreshPending = true;
    QTimer::singleShot(0, this, [this] { refresh(); });
}

void PropertiesPanel::refresh()
{
    m_refreshPending = false;
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    auto* form = new QFormLayout;
    layout->addLayout(form);
    layout->addStretch(1);
    bool any = false;
    if (m_document) {
        // One pass of the display filter script serves the whole refresh.
        std::optional<DisplayFilterScript::Pass> filter;
        if (DisplayFilterScript* script = m_document->scripting().documentScripts().displayFilter())
            filter.emplace(*script, *m_document);
        m_filter = filter && filter->isReady() ? &*filter : nullptr;
        const Selection& selection = m_document->selection();
        const std::pair<ItemKind, std::vector<PropertyDef> (*)()> sections[] = {
            {ItemKind::Body, &bodyProperties},       {ItemKind::Fixture, &fixtureProperties},
            {ItemKind::Joint, &jointProperties},     {ItemKind::Image, &imageProperties},
            {ItemKind::Sampler, &samplerProperties}, {ItemKind::Object, &objectProperties},
        };
        for (const auto& [kind, rowsOf] : sections) {
            if (selection.count(kind) == 0)
                continue;
            std::vector<PropertyDef> rows = rowsOf();
            for (PropertyDef& custom : customPropertyRows(m_document->world(), kind))
                rows.push_back(std::move(custom));
            addSection(form, kind, rows);
            any = true;
        }
        m_filter = nullptr;
    }
    if (!any) {
        auto* label = new QLabel(noSelectionText());
        label->setObjectName(QStringLiteral("NoSelectionLabel"));
        label->setAlignment(Qt::AlignCenter);
        form->addRow(label);
    }
    // The old rows go later: this may run from one of their own signals.
    if (QWidget* old = takeWidget())
        old->deleteLater();
    setWidget(content);
}

void PropertiesPanel::addSection(QFormLayout* form, ItemKind kind, const std::vector<PropertyDef>& rows)
{
    std::vector<const MetaItem*> items;
    for (ItemId id : m_document->selection().items(kind)) {
        if (const MetaItem* item = m_document->world().findItem(kind, id))
            items.push_back(item);
    }
    if (items.empty())
        return;
    auto* title = new QLabel(QStringLiteral("<b>%1</b>").arg(sectionTitle(kind, items.size())));
    form->addRow(title);
    for (const PropertyDef& row : rows) {
        const bool belongs = !row.applies || std::all_of(items.begin(), items.end(), [&row](const MetaItem* item) {
            return row.applies(*item);
        });
        if (!belongs || !displayed(m_filter, items, row.key))
            continue;
        QWidget* editor = makeEditor(kind, row, items);
        editor->setObjectName(QStringLiteral("%1/%2").arg(itemKindWord(kind), row.label));
        form->addRow(row.label, editor);
    }
}

QWidget* PropertiesPanel::makeEditor(ItemKind kind, const PropertyDef& row, const std::vector<const MetaItem*>& items)
{
    const QVariant first = row.get(*items.front());
    bool mixed = false;
    for (const MetaItem* item : items)
        mixed = mixed || row.get(*item) != first;
    const bool editable = bool(row.set) || bool(row.setAll);

    switch (row.type) {
    case PropertyDef::Type::Bool: {
        auto* box = new QCheckBox;
        box->setTristate(mixed);
        box->setCheckState(mixed ? Qt::PartiallyChecked : (first.toBool() ? Qt::Checked : Qt::Unchecked));
        box->setEnabled(editable);
        connect(box, &QCheckBox::clicked, this, [this, kind, row, box](bool checked) {
            box->setTristate(false);
            apply(kind, row, checked);
        });
        return box;
    }
    case PropertyDef::Type::Choice: {
        auto* combo = new QComboBox;
        combo->addItems(row.choices);
        combo->setPlaceholderText(mixed ? tr("(mixed)") : tr("(not set)"));
        combo->setCurrentIndex(mixed || !first.isValid() ? -1 : first.toInt());
        combo->setEnabled(editable);
        connect(combo, &QComboBox::activated, this, [this, kind, row](int index) { apply(kind, row, index); });
        return combo;
    }
    case PropertyDef::Type::Text:
    case PropertyDef::Type::Float:
    case PropertyDef::Type::Int: {
        auto* edit = new QLineEdit;
        if (mixed)
            edit->setPlaceholderText(tr("(mixed)"));
        else
            edit->setText(formatValue(first, row.type));
        edit->setReadOnly(!editable);
        const QString shown = edit->text();
        connect(edit, &QLineEdit::editingFinished, this, [this, kind, row, edit, shown] {
            const QString text = edit->text();
            if (text == shown || (text.isEmpty() && row.type != PropertyDef::Type::Text))
                return;
            bool ok = true;
            QVariant value = text;
            if (row.type == PropertyDef::Type::Float)
                value = text.toDouble(&ok);
            else if (row.type == PropertyDef::Type::Int)
                value = text.toInt(&ok, 0);
            if (!ok) {
                edit->setText(shown);
                return;
            }
            apply(kind, row, value);
        });
        return edit;
    }
    }
    return new QLabel;
}

void PropertiesPanel::apply(ItemKind kind, const PropertyDef& row, const QVariant& value)
{
    if (!m_document || (!row.set && !row.setAll))
        return;
    EditorDocument& doc = *m_document;
    if (row.setAll) {
        row.setAll(doc, kind, value);
        scheduleRefresh();
        return;
    }
    std::vector<ItemId> ids = doc.selection().items(kind);
    {
        ScriptDocumentScope scope(&doc);
        UndoMacroScope macro(doc.undoStack(), tr("change %1").arg(row.label.toLower()));
        for (ItemId id : ids) {
            const MetaItem* item = doc.world().findItem(kind, id);
            if (item && row.get(*item) != value)
                row.set(*item, value);
        }
    }
    scheduleRefresh();
}

QString propertyKeyOf(const char* label)
{
    QString key;
    bool upper = false;
    int depth = 0;
    for (const char* c = label; *c; ++c) {
        const QChar ch = QLatin1Char(*c);
        // A unit in parentheses is not part of the name: "Angle (rad)" is "angle".
        depth += ch == QLatin1Char('(') ? 1 : (ch == QLatin1Char(')') ? -1 : 0);
        if (depth > 0 || !ch.isLetterOrNumber()) {
            upper = !key.isEmpty();
            continue;
        }
        key += upper ? ch.toUpper() : (key.isEmpty() ? ch.toLower() : ch);
        upper = false;
    }
    return key;
}
