#include "io/b2djsonimage.h"

#include "io/customrecord.h"
#include "io/filereferences.h"
#include "io/imagequad.h"
#include "io/rawinfomembers.h"
#include "physics/worldbuild.h"

namespace
{
template <size_t N>
void floatArray(const std::array<float, N>& values, const JsonEmitter& emitter)
{
    emitter.sink().startArray();
    for (float x : values)
        emitter.floatValue(x);
    emitter.sink().endArray();
}
} // namespace

namespace b2dJsonImage
{
void write(const BuiltImage& built, int bodyIndex, const MetaWorld& scene, const JsonEmitter& emitter,
           const ExportPropertyFilter& filter)
{
    const MetaImage& image = *built.placed;
    RawInfoMembers m(emitter, filter, "/world/image/", built.source);
    emitter.sink().startObject();
    m.addInt("body", bodyIndex);
    if (!built.name.isEmpty())
        m.addString("name", built.name);
    // An object file's images are relative to the object file in its model.
    if (m.member("file"))
        emitter.stringValue(built.source ? exportedFileReference(scene, *built.source, image.file) : image.file);
    m.addVec2("center", image.center);
    m.addFloat("angle", image.angle);
    m.addFloat("scale", image.scale);
    m.addFloat("aspectScale", image.aspectScale);
    m.addFloat("opacity", image.opacity);
    m.addBool("flip", image.flip);
    m.addInt("filter", image.filter);
    m.addFloat("renderOrder", image.renderOrder);
    if (m.member("colorTint"))
        emitter.colorValue(image.colorTint);

    const ImageQuad quad = computeImageQuad(image);
    m.addPointList("corners", quad.corners.data(), quad.corners.size());
    if (m.member("glVertexPointer"))
        floatArray(quad.vertexPointer, emitter);
    if (m.member("glTexCoordPointer"))
        floatArray(quad.texCoordPointer, emitter);
    if (m.member("glDrawElements")) {
        emitter.sink().startArray();
        for (int index : quad.drawElements)
            emitter.intValue(index);
        emitter.sink().endArray();
    }
    if (!image.customProperties.empty() && m.member("customProperties"))
        emitCustomProperties(image.customProperties, emitter);
    emitter.sink().endObject();
}
} // namespace b2dJsonImage
