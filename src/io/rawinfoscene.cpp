#include "io/rawinfoscene.h"

#include "base/log.h"
#include "model/metaworld.h"

// Opening raw-info files as scenes belongs with the raw-info reader, which
// this build does not contain yet; the load is refused with a clear reason.
std::unique_ptr<MetaWorld> createWorldFromRawInfo(const rapidjson::Value&, const QString& path)
{
    plaxLog(LOG_ERROR, QStringLiteral("Opening raw-info files as scenes is not supported by this build ('%1').").arg(path));
    return nullptr;
}
