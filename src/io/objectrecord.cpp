#include "io/objectrecord.h"

#include "io/customrecord.h"
#include "io/recordsupport.h"
#include "model/metaworld.h"

using rapidjson::Value;

Value writeObjectRecord(const MetaObject& object, const JsonEncoder& encoder)
{
    Value record(rapidjson::kObjectType);
    encoder.addUint(record, "id", object.id());
    encoder.addString(record, "name", object.name());
    encoder.addString(record, "file", object.file);
    encoder.addVec2(record, "position", object.position);
    encoder.addFloat(record, "angle", object.angle);
    encoder.addFloat(record, "scale", object.scale);
    encoder.addBool(record, "flip", object.flip);
    encoder.add(record, "customProperties", writeCustomProperties(object.customProperties, encoder));
    return record;
}

MetaObject* readObjectRecord(MetaWorld& world, const Value& record, ItemId id)
{
    auto object = std::make_unique<MetaObject>();
    object->file = readString(record, "file");
    object->position = readVec2(record, "position", object->position);
    object->angle = readFloat(record, "angle", object->angle);
    object->scale = readFloat(record, "scale", object->scale);
    object->flip = readBool(record, "flip", object->flip);
    readCustomProperties(jsonMember(record, "customProperties"), &object->customProperties);

    const ItemId objectId = resolveRecordId(world, ItemKind::Object, id);
    if (objectId == 0)
        return nullptr;
    return world.addObject(std::move(object), objectId, readString(record, "name"));
}
