#include "io/recordsupport.h"

#include "base/log.h"
#include "model/metaworld.h"

ItemId resolveRecordId(MetaWorld& world, ItemKind kind, ItemId requested, bool quiet)
{
    if (requested != 0 && !world.registry(kind).contains(requested))
        return requested;
    const ItemId fresh = world.allocateId(kind);
    if (requested != 0 && fresh != 0 && !quiet) {
        plaxLog(LOG_WARNING,
                QStringLiteral("%1 id %2 is already in use, using id %3").arg(itemKindDisplayName(kind)).arg(requested).arg(fresh));
    }
    return fresh;
}

QByteArray bodyReferenceKey(const char* key, bool copy)
{
    QByteArray full(key);
    if (copy)
        full.append("-copy");
    return full;
}

MetaBody* readBodyReference(const MetaWorld& world, const rapidjson::Value& record, const char* key, bool copy,
                            ItemId* bodyId)
{
    const ItemId id = readUint(record, bodyReferenceKey(key, copy).constData(), 0);
    if (bodyId)
        *bodyId = id;
    return id == 0 ? nullptr : world.findBody(id);
}
