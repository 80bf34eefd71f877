#include "io/b2djsonobject.h"

#include "io/customrecord.h"
#include "io/filereferences.h"
#include "io/rawinfomembers.h"
#include "model/metaobject.h"

namespace b2dJsonObject
{
void write(const MetaObject& object, const JsonEmitter& emitter, const ExportPropertyFilter& filter)
{
    RawInfoMembers m(emitter, filter, "/world/object/", &object);
    emitter.sink().startObject();
    if (!object.name().isEmpty())
        m.addString("name", object.name());
    if (m.member("path"))
        emitter.stringValue(exportedFileReference(*object.world(), object, object.file));
    m.addVec2("position", object.position);
    m.addFloat("angle", object.angle);
    m.addFloat("scale", object.scale);
    m.addBool("flip", object.flip);
    if (!object.customProperties.empty() && m.member("customProperties"))
        emitCustomProperties(object.customProperties, emitter);
    emitter.sink().endObject();
}
} // namespace b2dJsonObject
