#pragma once

#include "api/scriptapisupport.h"
#include "api/scriptregistrar.h"
#include "base/log.h"
#include "model/metaworld.h"

#include <string>
#include <type_traits>

// What images and samplers share as handles: both lie over an image file,
// with a centre (in their body's coordinates), an angle, an opacity, a
// flip, a colour tint and an optional body. `Handle` is ScriptImage or
// ScriptSampler; `kindWord` is "image" or "sampler".
template <class Handle, class Item>
struct PlacedApi
{
    static Item* use(Handle* self) { return ScriptApi::use(*self); }
    static Handle handleOf(const Item& item)
    {
        if constexpr (std::is_same_v<Item, MetaImage>)
            return ScriptApi::imageHandle(&item);
        else
            return ScriptApi::samplerHandle(&item);
    }

    static const char* kindWord() { return std::is_same_v<Item, MetaImage> ? "image" : "sampler"; }

    /// A value in [low, high], or a WARNING "Ignoring invalid value for <kind>::<method>: <v>".
    static bool inRange(float value, float low, float high, const char* method, bool lowOpen = false)
    {
        if (!ScriptApi::isUsable(value, kindWord(), method))
            return false;
        if (value < low || value > high || (lowOpen && value == low)) {
            plaxLog(LOG_WARNING, QStringLiteral("Ignoring invalid value for %1::%2: %3")
                                     .arg(QLatin1String(kindWord()), QLatin1String(method))
                                     .arg(double(value)));
            return false;
        }
        return true;
    }

    static ScriptBody getBody(Handle* self)
    {
        Item* item = use(self);
        return ScriptApi::bodyHandle(item ? item->body : nullptr);
    }
    /// Body 0 detaches; a body that cannot be found is refused. The centre
    /// and angle keep their numbers (they are then read in the new body's frame).
    static void setBodyId(Handle* self, int id)
    {
        Item* item = use(self);
        if (!item)
            return;
        MetaBody* body = nullptr;
        if (id != 0) {
            MetaWorld* world = item->world();
            body = world && id > 0 ? world->findBody(ItemId(id)) : nullptr;
            if (!body) {
                plaxLog(LOG_WARNING, QStringLiteral("Could not find body of id %1 to set for %2.").arg(id).arg(QLatin1String(kindWord())));
                return;
            }
        }
        ScriptApi::setBodyRef(*item, "setBody", item->body, body);
    }
    static void setBodyHandle(Handle* self, const ScriptBody& body)
    {
        if (!ScriptApi::find(body)) {
            if (use(self))
                plaxLog(LOG_WARNING, QStringLiteral("Could not find body of id %1 to set for %2.").arg(body.id).arg(QLatin1String(kindWord())));
            return;
        }
        setBodyId(self, int(body.id));
    }

    static std::string getFile(Handle* self)
    {
        Item* item = use(self);
        return item ? item->file.toStdString() : std::string();
    }

    static void setCenter(Handle* self, float x, float y)
    {
        if (Item* item = use(self))
            ScriptApi::setVec(*item, "setCenter", item->center, {x, y});
    }
    static void setCenterV(Handle* self, ScriptVec2 c) { setCenter(self, c.x, c.y); }
    static ScriptVec2 getCenter(Handle* self)
    {
        Item* item = use(self);
        return item ? ScriptApi::toScript(item->center) : ScriptVec2();
    }

    static void setAngle(Handle* self, float angle)
    {
        if (Item* item = use(self))
            ScriptApi::setFloat(*item, "setAngle", item->angle, angle);
    }
    static float getAngle(Handle* self)
    {
        Item* item = use(self);
        return item ? item->angle : 0.0f;
    }

    /// 0 (transparent) to 1.
    static void setOpacity(Handle* self, float opacity)
    {
        Item* item = use(self);
        if (item && inRange(opacity, 0, 1, "setOpacity"))
            ScriptApi::setFloat(*item, "setOpacity", item->opacity, opacity);
    }
    static float getOpacity(Handle* self)
    {
        Item* item = use(self);
        return item ? item->opacity : 0.0f;
    }

    static void setFlip(Handle* self, int on)
    {
        if (Item* item = use(self))
            ScriptApi::setBool(*item, "setFlip", item->flip, on != 0);
    }
    static void setFlipB(Handle* self, bool on) { setFlip(self, on ? 1 : 0); }
    static bool getFlip(Handle* self)
    {
        Item* item = use(self);
        return item && item->flip;
    }

    /// Channels 0..255; any other value is refused.
    static void setColorTint(Handle* self, int r, int g, int b, int a)
    {
        Item* item = use(self);
        if (!item)
            return;
        for (int channel : {r, g, b, a})
            if (channel < 0 || channel > 255) {
                plaxLog(LOG_WARNING, QStringLiteral("Ignoring invalid value for %1::setColorTint: %2")
                                         .arg(QLatin1String(kindWord()))
                                         .arg(channel));
                return;
            }
        ScriptApi::setColor(*item, "setColorTint", item->colorTint, {r, g, b, a});
    }
    static void setColorTintC(Handle* self, ScriptColor c)
    {
        const Color channels = ScriptApi::toColor(c);
        setColorTint(self, channels.r, channels.g, channels.b, channels.a);
    }
    static ScriptColor getColorTint(Handle* self)
    {
        Item* item = use(self);
        return item ? ScriptApi::toScript(item->colorTint) : ScriptColor();
    }
};

/// Registers the methods of PlacedApi on the handle type `type` (image or
/// sampler): the body, the file's getter, centre, angle, opacity, flip and
/// colour tint.
template <class Handle, class Item>
void registerPlacedItemMethods(ScriptRegistrar& reg, const char* type)
{
    using namespace AngelScript; // asFUNCTION names asFunctionPtr unqualified
    using P = PlacedApi<Handle, Item>;
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.method(type, "body getBody()", asFUNCTION(P::getBody), cc);
    reg.method(type, "void setBody(int)", asFUNCTION(P::setBodyId), cc);
    reg.method(type, "void setBody(const body& in)", asFUNCTION(P::setBodyHandle), cc);
    reg.method(type, "string getFile()", asFUNCTION(P::getFile), cc);
    reg.method(type, "void setCenter(float, float)", asFUNCTION(P::setCenter), cc);
    reg.method(type, "void setCenter(vec2)", asFUNCTION(P::setCenterV), cc);
    reg.method(type, "vec2 getCenter()", asFUNCTION(P::getCenter), cc);
    reg.method(type, "void setAngle(float)", asFUNCTION(P::setAngle), cc);
    reg.method(type, "float getAngle()", asFUNCTION(P::getAngle), cc);
    reg.method(type, "void setOpacity(float)", asFUNCTION(P::setOpacity), cc);
    reg.method(type, "float getOpacity()", asFUNCTION(P::getOpacity), cc);
    reg.method(type, "void setFlip(int)", asFUNCTION(P::setFlip), cc);
    reg.method(type, "void setFlip(bool)", asFUNCTION(P::setFlipB), cc);
    reg.method(type, "bool getFlip()", asFUNCTION(P::getFlip), cc);
    reg.method(type, "void setColorTint(int,int,int,int)", asFUNCTION(P::setColorTint), cc);
    reg.method(type, "void setColorTint(color)", asFUNCTION(P::setColorTintC), cc);
    reg.method(type, "color getColorTint()", asFUNCTION(P::getColorTint), cc);
}
