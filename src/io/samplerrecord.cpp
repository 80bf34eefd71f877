#include "io/samplerrecord.h"

#include "base/log.h"
#include "io/customrecord.h"
#include "io/placedrecord.h"
#include "io/recordsupport.h"
#include "model/metaworld.h"

using rapidjson::Value;

Value writePathRecord(const MetaPath& path, const JsonEncoder& encoder)
{
    Value record(rapidjson::kObjectType);
    encoder.addString(record, "type", MetaShape::typeWord(path.type));
    encoder.addFloat(record, "radius", path.radius);
    encoder.addInt(record, "maxPoints", path.maxPoints);
    encoder.addInt(record, "minAngle", path.minAngle);
    encoder.addPointList(record, "controlPoints", path.controlPoints);
    return record;
}

MetaPath readPathRecord(const Value& record)
{
    MetaPath path;
    const Value* typeValue = jsonMember(record, "type");
    const QString word = decodeString(typeValue);
    path.type = MetaShape::typeFromWord(word);
    if (path.type == ShapeType::Unknown && word != QLatin1String("unknown"))
        plaxLog(LOG_WARNING, QStringLiteral("Unknown path type: %1").arg(describeJsonValue(typeValue)));
    path.radius = readFloat(record, "radius", path.radius);
    path.maxPoints = readInt(record, "maxPoints", path.maxPoints);
    path.minAngle = readInt(record, "minAngle", path.minAngle);
    path.controlPoints = readPointList(record, "controlPoints");
    return path;
}

Value writeSamplerRecord(const MetaSampler& sampler, const JsonEncoder& encoder)
{
    Value record(rapidjson::kObjectType);
    writePlacedItemHead(record, sampler, encoder);
    encoder.addInt(record, "outputWidth", sampler.outputWidth);
    encoder.addInt(record, "outputHeight", sampler.outputHeight);
    encoder.addFloat(record, "angle", sampler.angle);
    encoder.addFloat(record, "height", sampler.height);
    encoder.addFloat(record, "opacity", sampler.opacity);
    encoder.addFloat(record, "alphaEdgeThreshold", sampler.alphaEdgeThreshold);
    encoder.addColor(record, "colorTint", sampler.colorTint);
    encoder.addBool(record, "flip", sampler.flip);
    encoder.addBool(record, "autoUpdate", sampler.autoUpdate);
    encoder.addBool(record, "useColor", sampler.useColor);
    Value paths(rapidjson::kArrayType);
    for (const MetaPath& path : sampler.paths)
        paths.PushBack(writePathRecord(path, encoder), encoder.allocator());
    encoder.add(record, "paths", std::move(paths));
    encoder.add(record, "customProperties", writeCustomProperties(sampler.customProperties, encoder));
    return record;
}

MetaSampler* readSamplerRecord(MetaWorld& world, const Value& record, ItemId id, bool copy)
{
    auto sampler = std::make_unique<MetaSampler>();
    readPlacedItemMembers(world, record, *sampler, copy);
    sampler->outputWidth = readInt(record, "outputWidth", sampler->outputWidth);
    sampler->outputHeight = readInt(record, "outputHeight", sampler->outputHeight);
    sampler->height = readFloat(record, "height", sampler->height);
    sampler->alphaEdgeThreshold = readFloat(record, "alphaEdgeThreshold", sampler->alphaEdgeThreshold);
    sampler->autoUpdate = readBool(record, "autoUpdate", sampler->autoUpdate);
    sampler->useColor = readBool(record, "useColor", sampler->useColor);
    if (const Value* paths = jsonMember(record, "paths"); paths && paths->IsArray()) {
        for (const Value& path : paths->GetArray()) {
            if (path.IsObject())
                sampler->paths.push_back(readPathRecord(path));
        }
    }
    readCustomProperties(jsonMember(record, "customProperties"), &sampler->customProperties);

    const ItemId samplerId = resolveRecordId(world, ItemKind::Sampler, id);
    if (samplerId == 0)
        return nullptr;
    return world.addSampler(std::move(sampler), samplerId, readString(record, "name"));
}
