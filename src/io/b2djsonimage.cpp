#include "io/b2djsonimage.h"

#include "io/customrecord.h"
#include "io/imagequad.h"
#include "io/rawinfomembers.h"
#include "physics/worldbuild.h"

namespace
{
template <typename T, size_t N>
rapidjson::Value floatArray(const std::array<T, N>& values, const JsonEncoder& enc)
{
    rapidjson::Value array(rapidjson::kArrayType);
    for (T x : values)
        array.PushBack(enc.floatValue(float(x)), enc.allocator());
    return array;
}
} // namespace

namespace b2dJsonImage
{
rapidjson::Value write(const BuiltImage& built, const JsonEncoder& enc, const ExportPropertyFilter& filter)
{
    const MetaImage& image = *built.placed;
    RawInfoMembers m(enc, filter, "/world/image/");
    rapidjson::Value value(rapidjson::kObjectType);
    m.addInt(value, "body", built.bodyIndex);
    if (!built.name.isEmpty())
        m.addString(value, "name", built.name);
    m.addString(value, "file", image.file);
    m.addVec2(value, "center", image.center);
    m.addFloat(value, "angle", image.angle);
    m.addFloat(value, "scale", image.scale);
    m.addFloat(value, "aspectScale", image.aspectScale);
    m.addFloat(value, "opacity", image.opacity);
    m.addBool(value, "flip", image.flip);
    m.addInt(value, "filter", image.filter);
    m.addFloat(value, "renderOrder", image.renderOrder);
    if (m.allows("colorTint"))
        enc.addColor(value, "colorTint", image.colorTint);

    const ImageQuad quad = computeImageQuad(image);
    m.addPointList(value, "corners", std::vector<Vec2>(quad.corners.begin(), quad.corners.end()));
    m.add(value, "glVertexPointer", floatArray(quad.vertexPointer, enc));
    m.add(value, "glTexCoordPointer", floatArray(quad.texCoordPointer, enc));
    if (m.allows("glDrawElements")) {
        rapidjson::Value elements(rapidjson::kArrayType);
        for (int index : quad.drawElements)
            elements.PushBack(index, enc.allocator());
        enc.add(value, "glDrawElements", std::move(elements));
    }
    if (!image.customProperties.empty())
        m.add(value, "customProperties", writeCustomProperties(image.customProperties, enc));
    return value;
}
} // namespace b2dJsonImage
