#include "io/exportfilter.h"

ExportPropertyFilter::ExportPropertyFilter(const QStringList& excludedPaths)
    : m_excluded(excludedPaths.begin(), excludedPaths.end())
{
}

bool ExportPropertyFilter::allows(const char* path, const MetaItem* item) const
{
    if (excludesNothing())
        return true;
    const QString p = QString::fromLatin1(path);
    if (m_excluded.contains(p))
        return false;
    if (m_predicate && !m_predicate(p))
        return false;
    return !m_itemFilter || m_itemFilter->shouldExportProperty(item, p);
}
