#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

/// Decides, member by member, what the raw-info writer may write. A member's
/// path is like "/world/body/fixture/name". The scene's excluded paths are
/// refused; an optional predicate (the export filter script) can refuse more.
class ExportPropertyFilter
{
public:
    /// A filter that refuses exactly the listed paths.
    explicit ExportPropertyFilter(const QStringList& excludedPaths = {});

    /// Adds a further test every path must pass.
    void setPredicate(std::function<bool(const QString& path)> predicate) { m_predicate = std::move(predicate); }

    /// True when the member with this path may be written.
    bool allows(const char* path) const;
    /// True when no path is refused: nothing needs to be asked.
    bool excludesNothing() const { return m_excluded.isEmpty() && !m_predicate; }

private:
    QSet<QString> m_excluded;
    std::function<bool(const QString& path)> m_predicate;
};
