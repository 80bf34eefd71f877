#include "io/imagerecord.h"

#include "base/log.h"
#include "io/customrecord.h"
#include "io/recordsupport.h"
#include "model/metaworld.h"

using rapidjson::Value;

Value writeImageRecord(const MetaImage& image, const JsonEncoder& encoder)
{
    Value record(rapidjson::kObjectType);
    encoder.addUint(record, "id", image.id());
    encoder.addUint(record, "body", image.body ? image.body->id() : 0);
    encoder.addString(record, "name", image.name());
    encoder.addString(record, "file", image.file);
    encoder.addVec2(record, "center", image.center);
    encoder.addFloat(record, "angle", image.angle);
    encoder.addFloat(record, "scale", image.scale);
    encoder.addFloat(record, "aspectScale", image.aspectScale);
    encoder.addFloat(record, "opacity", image.opacity);
    encoder.addColor(record, "colorTint", image.colorTint);
    encoder.addBool(record, "flip", image.flip);
    encoder.addInt(record, "filter", image.filter);
    encoder.addFloat(record, "renderOrder", image.renderOrder);
    encoder.add(record, "customProperties", writeCustomProperties(image.customProperties, encoder));
    return record;
}

MetaImage* readImageRecord(MetaWorld& world, const Value& record, ItemId id, bool copy)
{
    auto image = std::make_unique<MetaImage>();
    ItemId bodyId = 0;
    image->body = readBodyReference(world, record, "body", copy, &bodyId);
    if (bodyId != 0 && !image->body)
        plaxLog(LOG_DEBUG, "Image refers to body id %u which does not exist; leaving it unattached", unsigned(bodyId));
    image->file = readString(record, "file");
    image->center = readVec2(record, "center", image->center);
    image->angle = readFloat(record, "angle", image->angle);
    image->scale = readFloat(record, "scale", image->scale);
    image->aspectScale = readFloat(record, "aspectScale", image->aspectScale);
    image->opacity = readFloat(record, "opacity", image->opacity);
    image->colorTint = readColor(record, "colorTint", image->colorTint);
    image->flip = readBool(record, "flip", image->flip);
    image->filter = readInt(record, "filter", image->filter);
    image->renderOrder = readFloat(record, "renderOrder", image->renderOrder);
    readCustomProperties(jsonMember(record, "customProperties"), &image->customProperties);

    const ItemId imageId = resolveRecordId(world, ItemKind::Image, id);
    if (imageId == 0)
        return nullptr;
    return world.addImage(std::move(image), imageId, readString(record, "name"));
}
