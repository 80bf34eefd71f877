#include "api/scriptobject.h"

#include "api/scriptapisupport.h"
#include "api/scriptitemops.h"
#include "base/log.h"
#include "editing/propertycommands.h"
#include "editing/scripttext.h"
#include "engine/objectinstancehost.h"
#include "model/metaworld.h"

namespace ObjectApi
{
namespace
{
template <class T, class F>
T read(ScriptObject* self, F f)
{
    MetaObject* object = ScriptApi::use(*self);
    return object ? f(*object) : T();
}
} // namespace

std::string getFile(ScriptObject* self)
{
    return read<std::string>(self, [](MetaObject& o) { return o.file.toStdString(); });
}

void setFile(ScriptObject* self, const std::string& file)
{
    MetaObject* object = ScriptApi::use(*self);
    ScriptDocument* doc = ScriptApi::document();
    if (!object || !doc)
        return;
    const QString name = QString::fromStdString(file);
    const QString old = object->file;
    if (name == old)
        return;
    if (ObjectInstanceHost* host = doc->objectInstanceHost()) {
        if (!host->changeFile(*object, name)) {
            plaxLog(LOG_WARNING, QStringLiteral("Ignoring attempt to set object file '%1'").arg(name));
            return;
        }
    } else {
        object->file = name;
    }
    ScriptApi::record<SetItemPropertyStringCommand>(scriptGetterName(ItemKind::Object), QStringLiteral("setFile"),
                                                     object->id(), old, name);
}

void setPosition(ScriptObject* self, float x, float y)
{
    if (MetaObject* object = ScriptApi::use(*self))
        ScriptApi::setVec(*object, "setPosition", object->position, {x, y});
}
void setPositionV(ScriptObject* self, ScriptVec2 p) { setPosition(self, p.x, p.y); }

void setAngle(ScriptObject* self, float angle)
{
    if (MetaObject* object = ScriptApi::use(*self))
        ScriptApi::setFloat(*object, "setAngle", object->angle, angle);
}

void setScale(ScriptObject* self, float scale)
{
    MetaObject* object = ScriptApi::use(*self);
    if (!object)
        return;
    if (scale == 0) {
        plaxLog(LOG_WARNING, "Ignoring invalid value for object::setScale: 0");
        return;
    }
    ScriptApi::setFloat(*object, "setScale", object->scale, scale);
}

void setFlip(ScriptObject* self, int on)
{
    if (MetaObject* object = ScriptApi::use(*self))
        ScriptApi::setBool(*object, "setFlip", object->flip, on != 0);
}
void setFlipB(ScriptObject* self, bool on) { setFlip(self, on ? 1 : 0); }

bool getFlip(ScriptObject* self) { return read<bool>(self, [](MetaObject& o) { return o.flip; }); }
float getAngle(ScriptObject* self) { return read<float>(self, [](MetaObject& o) { return o.angle; }); }
float getScale(ScriptObject* self) { return read<float>(self, [](MetaObject& o) { return o.scale; }); }

ScriptObject addObjectAt(const std::string& file, ScriptVec2 position)
{
    if (!ScriptApi::world() || !ScriptApi::isUsable(ScriptApi::toVec(position), "object", "addObject"))
        return {};
    return ScriptApi::objectHandle(ItemOps::addNewObject(QString::fromStdString(file), ScriptApi::toVec(position)));
}
} // namespace ObjectApi
