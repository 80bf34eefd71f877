#include "panels/exportedpropertytable.h"

#include "api/scriptexportexclusions.h"
#include "document/editordocument.h"
#include "editing/scriptcommand.h"
#include "engine/scriptdocument.h"
#include "io/exportfilter.h"
#include "io/rawinfoexport.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QSet>
#include <QTableWidget>
#include <QVBoxLayout>

ExportedPropertyTable::ExportedPropertyTable(QWidget* parent)
    : QWidget(parent), m_table(new QTableWidget(0, 1, this)), m_filter(new QLineEdit(this))
{
    setObjectName(QStringLiteral("ExportedPropertyTable"));
    setAccessibleName(tr("Exported property table"));
    setMinimumSize(200, 120);
    m_table->setObjectName(QStringLiteral("ExportedProperties"));
    m_table->setAccessibleName(tr("Exported properties"));
    m_table->setHorizontalHeaderLabels({tr("Exported member")});
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->verticalHeader()->setVisible(false);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    m_table->setToolTip(tr("Untick a member to leave it out of the raw-info export"));
    m_filter->setObjectName(QStringLiteral("ExportedPropertiesFilter"));
    m_filter->setAccessibleName(tr("Filter exported members"));
    m_filter->setPlaceholderText(tr("Filter..."));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
        for (int row = 0; row < m_table->rowCount(); ++row)
            m_table->setRowHidden(row, !m_table->item(row, 0)->text().contains(text, Qt::CaseInsensitive));
    });
    connect(m_table, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (m_filling)
            return;
        const QString path = item->text();
        const bool excluded = item->checkState() == Qt::Unchecked;
        QMetaObject::invokeMethod(this, [this, path, excluded] { setExcluded(path, excluded); }, Qt::QueuedConnection);
    });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_filter);
    layout->addWidget(m_table, 1);
    setDocument(nullptr);
}

QStringList ExportedPropertyTable::memberPaths(const MetaWorld& scene)
{
    QStringList paths;
    QSet<QString> seen;
    ExportPropertyFilter probe;
    probe.setPredicate([&](const QString& path) {
        if (!seen.contains(path)) {
            seen.insert(path);
            paths.append(path);
        }
        return true;
    });
    WorldBuild build(scene);
    build.addScene(scene);
    (void)rawInfoText(build, scene, probe);
    for (const QString& path : scene.excludedJsonExportProperties) {
        if (!seen.contains(path))
            paths.append(path);
    }
    return paths;
}

void ExportedPropertyTable::setDocument(EditorDocument* document)
{
    if (m_document)
        disconnect(&m_document->undoStack(), nullptr, this, nullptr);
    m_document = document;
    if (m_document)
        connect(&m_document->undoStack(), &QUndoStack::indexChanged, this, &ExportedPropertyTable::refresh);
    setEnabled(m_document != nullptr);
    refresh();
}

void ExportedPropertyTable::refresh()
{
    // Listing the members writes the scene as raw info: a hidden table waits
    // until it is shown.
    if (!isVisible()) {
        m_stale = true;
        return;
    }
    m_stale = false;
    m_filling = true;
    m_table->setRowCount(0);
    if (m_document) {
        const QStringList excluded = m_document->world().excludedJsonExportProperties;
        for (const QString& path : memberPaths(m_document->world())) {
            const int row = m_table->rowCount();
            m_table->insertRow(row);
            auto* item = new QTableWidgetItem(path);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
            item->setCheckState(excluded.contains(path) ? Qt::Unchecked : Qt::Checked);
            m_table->setItem(row, 0, item);
            m_table->setRowHidden(row, !path.contains(m_filter->text(), Qt::CaseInsensitive));
        }
    }
    m_filling = false;
}

void ExportedPropertyTable::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_stale)
        refresh();
}

void ExportedPropertyTable::setExcluded(const QString& path, bool excluded)
{
    if (!m_document || m_document->world().excludedJsonExportProperties.contains(path) == excluded)
        return;
    ScriptDocumentScope scope(m_document);
    UndoMacroScope macro(m_document->undoStack(),
                         excluded ? tr("exclude '%1' from export").arg(path) : tr("export '%1'").arg(path));
    ExportExclusionApi::setExportPropertyExcluded(path.toStdString(), excluded);
}
