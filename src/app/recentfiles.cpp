#include "app/recentfiles.h"

#include "base/settings.h"

#include <QFileInfo>

QStringList RecentFiles::pushed(QStringList list, const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    list.removeAll(absolute);
    list.prepend(absolute);
    while (list.size() > kMaxEntries)
        list.removeLast();
    return list;
}

QStringList RecentFiles::load()
{
    QStringList list = openAppSettings()->value(QLatin1String(SettingsKeys::kRecentFiles)).toStringList();
    list.removeDuplicates();
    while (list.size() > kMaxEntries)
        list.removeLast();
    return list;
}

void RecentFiles::store(const QStringList& list)
{
    openAppSettings()->setValue(QLatin1String(SettingsKeys::kRecentFiles), list);
}

QStringList RecentFiles::add(const QString& path)
{
    QStringList list = pushed(load(), path);
    store(list);
    return list;
}
