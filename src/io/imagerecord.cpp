#include "io/imagerecord.h"

#include "base/log.h"
#include "io/customrecord.h"
#include "io/placedrecord.h"
#include "io/recordsupport.h"
#include "model/metaworld.h"

using rapidjson::Value;

Value writeImageRecord(const MetaImage& image, const JsonEncoder& encoder)
{
    Value record(rapidjson::kObjectType);
    writePlacedItemHead(record, image, encoder);
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
    readPlacedItemMembers(world, record, *image, copy, &bodyId);
    if (bodyId != 0 && !image->body)
        plaxLog(LOG_DEBUG, "Image refers to body id %u which does not exist; leaving it unattached", unsigned(bodyId));
    image->scale = readFloat(record, "scale", image->scale);
    image->aspectScale = readFloat(record, "aspectScale", image->aspectScale);
    image->filter = readInt(record, "filter", image->filter);
    image->renderOrder = readFloat(record, "renderOrder", image->renderOrder);
    readCustomProperties(jsonMember(record, "customProperties"), &image->customProperties);

    const ItemId imageId = resolveRecordId(world, ItemKind::Image, id);
    if (imageId == 0)
        return nullptr;
    return world.addImage(std::move(image), imageId, readString(record, "name"));
}
