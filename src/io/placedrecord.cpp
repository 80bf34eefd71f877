#include "io/placedrecord.h"

#include "io/recordsupport.h"
#include "model/metaworld.h"

void writePlacedItemHead(rapidjson::Value& record, const MetaPlacedItem& item, const JsonEncoder& encoder)
{
    encoder.addUint(record, "id", item.id());
    encoder.addUint(record, "body", item.body ? item.body->id() : 0);
    encoder.addString(record, "name", item.name());
    encoder.addString(record, "file", item.file);
    encoder.addVec2(record, "center", item.center);
}

void readPlacedItemMembers(const MetaWorld& world, const rapidjson::Value& record, MetaPlacedItem& item, bool copy,
                           ItemId* bodyId)
{
    item.body = readBodyReference(world, record, "body", copy, bodyId);
    item.file = readString(record, "file");
    item.center = readVec2(record, "center", item.center);
    item.angle = readFloat(record, "angle", item.angle);
    item.opacity = readFloat(record, "opacity", item.opacity);
    item.colorTint = readColor(record, "colorTint", item.colorTint);
    item.flip = readBool(record, "flip", item.flip);
}
