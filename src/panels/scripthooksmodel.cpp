#include "panels/scripthooksmodel.h"

#include <QFileInfo>
#include <QIcon>

namespace
{
// Script rows carry their event + 1 as internal id; event rows carry 0.
constexpr quintptr kEventRow = 0;
} // namespace

ScriptHooksModel::ScriptHooksModel(const ScriptHooksTable& table, QObject* parent)
    : QAbstractItemModel(parent), m_table(table)
{
}

ScriptHookEvent ScriptHooksModel::eventOf(const QModelIndex& index) const
{
    if (!index.isValid())
        return SHE_MAX;
    if (index.internalId() == kEventRow)
        return ScriptHookEvent(index.row());
    return ScriptHookEvent(index.internalId() - 1);
}

QModelIndex ScriptHooksModel::eventIndex(ScriptHookEvent event) const
{
    return event >= 0 && event < SHE_MAX ? createIndex(int(event), 0, kEventRow) : QModelIndex();
}

QModelIndex ScriptHooksModel::addScripts(ScriptHookEvent event, const QStringList& paths)
{
    QStringList added;
    for (const QString& path : paths) {
        if (!path.isEmpty())
            added.append(path);
    }
    if (event < 0 || event >= SHE_MAX || added.isEmpty())
        return {};
    QStringList scripts = m_table.scripts(event);
    const int first = int(scripts.size());
    beginInsertRows(eventIndex(event), first, first + int(added.size()) - 1);
    scripts += added;
    m_table.setScripts(event, scripts);
    endInsertRows();
    emit dataChanged(eventIndex(event), eventIndex(event));
    return index(int(scripts.size()) - 1, 0, eventIndex(event));
}

bool ScriptHooksModel::removeScript(const QModelIndex& at)
{
    if (!at.isValid() || at.internalId() == kEventRow)
        return false;
    const ScriptHookEvent event = eventOf(at);
    QStringList scripts = m_table.scripts(event);
    if (at.row() >= scripts.size())
        return false;
    beginRemoveRows(eventIndex(event), at.row(), at.row());
    scripts.removeAt(at.row());
    m_table.setScripts(event, scripts);
    endRemoveRows();
    emit dataChanged(eventIndex(event), eventIndex(event));
    return true;
}

QModelIndex ScriptHooksModel::moveScript(const QModelIndex& at, int step)
{
    if (!at.isValid() || at.internalId() == kEventRow || (step != -1 && step != 1))
        return {};
    const ScriptHookEvent event = eventOf(at);
    QStringList scripts = m_table.scripts(event);
    const int from = at.row(), to = from + step;
    if (to < 0 || to >= scripts.size())
        return {};
    const QModelIndex parentIndex = eventIndex(event);
    // Qt counts the destination before the move: down by one is "before to + 1".
    beginMoveRows(parentIndex, from, from, parentIndex, step > 0 ? to + 1 : to);
    scripts.move(from, to);
    m_table.setScripts(event, scripts);
    endMoveRows();
    return index(to, 0, parentIndex);
}

QModelIndex ScriptHooksModel::index(int row, int column, const QModelIndex& parentIndex) const
{
    if (column != 0 || row < 0)
        return {};
    if (!parentIndex.isValid())
        return row < SHE_MAX ? createIndex(row, 0, kEventRow) : QModelIndex();
    if (parentIndex.internalId() != kEventRow)
        return {};
    const ScriptHookEvent event = ScriptHookEvent(parentIndex.row());
    return row < m_table.scripts(event).size() ? createIndex(row, 0, quintptr(event) + 1) : QModelIndex();
}

QModelIndex ScriptHooksModel::parent(const QModelIndex& child) const
{
    if (!child.isValid() || child.internalId() == kEventRow)
        return {};
    return eventIndex(ScriptHookEvent(child.internalId() - 1));
}

int ScriptHooksModel::rowCount(const QModelIndex& parentIndex) const
{
    if (!parentIndex.isValid())
        return SHE_MAX;
    if (parentIndex.internalId() != kEventRow)
        return 0;
    return int(m_table.scripts(ScriptHookEvent(parentIndex.row())).size());
}

int ScriptHooksModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant ScriptHooksModel::data(const QModelIndex& at, int role) const
{
    if (!at.isValid())
        return {};
    const ScriptHookEvent event = eventOf(at);
    if (at.internalId() == kEventRow) {
        switch (role) {
        case Qt::DisplayRole: {
            const qsizetype count = m_table.scripts(event).size();
            return count ? QStringLiteral("%1 (%2)").arg(scriptHookEventName(event)).arg(count)
                         : scriptHookEventName(event);
        }
        case Qt::ToolTipRole: return scriptHookEventTooltip(event);
        case Qt::DecorationRole: return QIcon(scriptHookEventIcon(event));
        default: return {};
        }
    }
    const QStringList scripts = m_table.scripts(event);
    if (at.row() >= scripts.size())
        return {};
    const QString& path = scripts[at.row()];
    switch (role) {
    case Qt::DisplayRole: return path;
    case Qt::ToolTipRole:
        return QFileInfo::exists(path) ? QFileInfo(path).absoluteFilePath()
                                       : tr("Could not find file '%1'").arg(path);
    case Qt::DecorationRole: return QIcon(QStringLiteral(":/icons/script-text.png"));
    default: return {};
    }
}
