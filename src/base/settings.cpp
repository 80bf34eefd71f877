#include "base/settings.h"

std::unique_ptr<QSettings> openAppSettings()
{
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("quoxel2d"),
                                       QStringLiteral("plax"));
}
