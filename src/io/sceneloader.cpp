#include "io/sceneloader.h"

#include "base/log.h"
#include "model/metaworld.h"

std::unique_ptr<MetaWorld> loadSceneFile(const QString& path)
{
    plaxLog(LOG_ERROR, QStringLiteral("Reading scene files is not available yet ('%1').").arg(path));
    return nullptr;
}
