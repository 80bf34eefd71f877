#include "io/scenewriter.h"

#include "base/log.h"

bool saveSceneFile(const MetaWorld&, const QString& path)
{
    plaxLog(LOG_ERROR, QStringLiteral("Writing scene files is not available yet ('%1').").arg(path));
    return false;
}
