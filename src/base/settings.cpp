#include "base/settings.h"

#include <QDir>
#include <QStandardPaths>

std::unique_ptr<QSettings> openAppSettings()
{
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("quoxel2d"),
                                       QStringLiteral("plax"));
}

QString userWorkingFolder()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir(data).filePath(QStringLiteral("quoxel2d/plax"));
}
