#include "io/exportfilter.h"

ExportPropertyFilter::ExportPropertyFilter(const QStringList& excludedPaths)
    : m_excluded(excludedPaths.begin(), excludedPaths.end())
{
}

bool ExportPropertyFilter::allows(const char* path) const
{
    if (m_excluded.isEmpty() && !m_predicate)
        return true;
    const QString p = QString::fromLatin1(path);
    if (m_excluded.contains(p))
        return false;
    return !m_predicate || m_predicate(p);
}
