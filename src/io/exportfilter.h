#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

class MetaItem;

/// A further judge of what an export writes, asked item by item and member
/// by member (the scene's export filter script implements it). The io layer
/// only knows this interface.
class ExportItemFilter
{
public:
    virtual ~ExportItemFilter() = default;
    /// False leaves the item (and everything written as part of it) out.
    virtual bool shouldExportItem(const MetaItem& item) = 0;
    /// False leaves the member `path` ("/world/body/fixture/name") of `item`
    /// out; `item` is null for the members of the world.
    virtual bool shouldExportProperty(const MetaItem* item, const QString& path) = 0;
};

/// Decides, member by member, what the raw-info writer may write. A member's
/// path is like "/world/body/fixture/name". The scene's excluded paths are
/// refused; an optional predicate and an optional item filter (the export
/// filter script) can refuse more.
class ExportPropertyFilter
{
public:
    /// A filter that refuses exactly the listed paths.
    explicit ExportPropertyFilter(const QStringList& excludedPaths = {});

    /// Adds a further test every path must pass.
    void setPredicate(std::function<bool(const QString& path)> predicate) { m_predicate = std::move(predicate); }
    /// Asks `filter` (not owned, may be null) about every item and member as well.
    void setItemFilter(ExportItemFilter* filter) { m_itemFilter = filter; }

    /// True when the member with this path may be written; `item` is the
    /// scene item the member belongs to (null for the world).
    bool allows(const char* path, const MetaItem* item = nullptr) const;
    /// True when the item may be written (always without an item filter or item).
    bool allowsItem(const MetaItem* item) const { return !m_itemFilter || !item || m_itemFilter->shouldExportItem(*item); }
    /// True when items may be left out: the writer then renumbers what follows.
    bool asksItems() const { return m_itemFilter != nullptr; }
    /// True when no path is refused: nothing needs to be asked.
    bool excludesNothing() const { return m_excluded.isEmpty() && !m_predicate && !m_itemFilter; }
    /// True when asking runs only the filter's own code (no predicate or
    /// item filter, which may be a script): it may then be asked from
    /// several threads at once.
    bool isSelfContained() const { return !m_predicate && !m_itemFilter; }

private:
    QSet<QString> m_excluded;
    std::function<bool(const QString& path)> m_predicate;
    ExportItemFilter* m_itemFilter = nullptr;
};
