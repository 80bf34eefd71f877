#include "io/b2djsonobject.h"

#include "io/customrecord.h"
#include "io/rawinfomembers.h"
#include "model/metaobject.h"

namespace b2dJsonObject
{
rapidjson::Value write(const MetaObject& object, const JsonEncoder& enc, const ExportPropertyFilter& filter)
{
    RawInfoMembers m(enc, filter, "/world/object/");
    rapidjson::Value value(rapidjson::kObjectType);
    if (!object.name().isEmpty())
        m.addString(value, "name", object.name());
    m.addString(value, "path", object.file);
    m.addVec2(value, "position", object.position);
    m.addFloat(value, "angle", object.angle);
    m.addFloat(value, "scale", object.scale);
    m.addBool(value, "flip", object.flip);
    if (!object.customProperties.empty())
        m.add(value, "customProperties", writeCustomProperties(object.customProperties, enc));
    return value;
}
} // namespace b2dJsonObject
