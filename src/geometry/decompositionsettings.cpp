#include "geometry/decompositionsettings.h"

#include <QSettings>

#include <algorithm>
#include <cmath>

namespace
{
QSettings applicationSettings()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("quoxel2d"), QStringLiteral("plax"));
}
} // namespace

namespace DecompositionSettings
{
DecompositionMethod method()
{
    bool ok = false;
    const int value = applicationSettings().value(QLatin1String(kMethodKey), 0).toInt(&ok);
    return ok && value == static_cast<int>(DecompositionMethod::Triangulation) ? DecompositionMethod::Triangulation
                                                                               : DecompositionMethod::Bayazit;
}

float internalEdgeAlpha()
{
    bool ok = false;
    const float value = applicationSettings().value(QLatin1String(kInternalEdgeAlphaKey), 0.1f).toFloat(&ok);
    if (!ok || !std::isfinite(value))
        return 0.1f;
    return std::clamp(value, 0.0f, 1.0f);
}
} // namespace DecompositionSettings
