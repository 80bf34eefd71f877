#include "api/scriptcustomprops.h"

#include "api/scriptapisupport.h"
#include "api/scriptcolor.h"
#include "api/scriptregistrar.h"
#include "base/log.h"
#include "editing/custompropertycommands.h"
#include "model/metaworld.h"

#include <angelscript/scriptarray.h>

#include <algorithm>
#include <cmath>
#include <string>

using namespace AngelScript;

namespace
{
template <class Item>
CustomPropertyTarget targetOf(Item* item)
{
    return item ? CustomPropertyTarget{item, &item->customProperties} : CustomPropertyTarget{};
}

Color toColor(const ScriptColor& c)
{
    auto channel = [](float v) { return std::isfinite(v) ? int(std::lround(std::clamp(v, 0.0f, 1.0f) * 255)) : 0; };
    return {channel(c.r), channel(c.g), channel(c.b), channel(c.a)};
}

ScriptColor toScript(const Color& c)
{
    return {float(c.r) / 255.0f, float(c.g) / 255.0f, float(c.b) / 255.0f, float(c.a) / 255.0f};
}

const int kNamesArrayUserData = 1101;

void releaseNamesArray(asIScriptEngine* engine)
{
    if (auto* array = static_cast<CScriptArray*>(engine->GetUserData(kNamesArrayUserData)))
        array->Release();
}

// getCustomProperties returns a reference, so the array is kept per engine
// and refilled by each call (one script executes at a time).
CScriptArray& namesArray()
{
    asIScriptEngine* engine = ScriptApi::engine();
    auto* array = static_cast<CScriptArray*>(engine->GetUserData(kNamesArrayUserData));
    if (!array) {
        array = CScriptArray::Create(engine->GetTypeInfoByDecl("array<string>"));
        engine->SetUserData(array, kNamesArrayUserData);
        engine->SetEngineUserDataCleanupCallback(releaseNamesArray, kNamesArrayUserData);
    }
    return *array;
}

template <class Handle>
struct Methods
{
    static CScriptArray& names(Handle* self)
    {
        CScriptArray& array = namesArray();
        array.Resize(0);
        if (CustomProperties* values = customTarget(*self).values)
            for (const CustomProperty& p : values->values()) {
                std::string name = p.name.toStdString();
                ScriptApi::appendToArray(array, &name);
            }
        return array;
    }
    static const CustomProperty* find(Handle* self, const std::string& name)
    {
        CustomProperties* values = customTarget(*self).values;
        return values ? values->find(QString::fromStdString(name)) : nullptr;
    }
    template <class T>
    static const T* value(Handle* self, const std::string& name)
    {
        const CustomProperty* p = find(self, name);
        return p ? std::get_if<T>(&p->value) : nullptr;
    }
    static bool has(Handle* self, const std::string& name) { return find(self, name) != nullptr; }
    static std::string type(Handle* self, const std::string& name)
    {
        const CustomProperty* p = find(self, name);
        return p ? customPropertyTypeWord(p->type()).toStdString() : std::string();
    }
    static int getInt(Handle* self, const std::string& name, int d)
    {
        const int* v = value<int>(self, name);
        return v ? *v : d;
    }
    static float getFloat(Handle* self, const std::string& name, float d)
    {
        const float* v = value<float>(self, name);
        return v ? *v : d;
    }
    static std::string getString(Handle* self, const std::string& name, const std::string& d)
    {
        const QString* v = value<QString>(self, name);
        return v ? v->toStdString() : d;
    }
    static ScriptVec2 getVec2(Handle* self, const std::string& name, ScriptVec2 d)
    {
        const Vec2* v = value<Vec2>(self, name);
        return v ? ScriptVec2{v->x, v->y} : d;
    }
    static ScriptVec2 getVec2Zero(Handle* self, const std::string& name) { return getVec2(self, name, {}); }
    static bool getBool(Handle* self, const std::string& name, bool d)
    {
        const bool* v = value<bool>(self, name);
        return v ? *v : d;
    }
    static ScriptColor getColor(Handle* self, const std::string& name, ScriptColor d)
    {
        const Color* v = value<Color>(self, name);
        return v ? toScript(*v) : d;
    }
    static ScriptColor getColorZero(Handle* self, const std::string& name) { return getColor(self, name, {}); }

    static void set(Handle* self, const std::string& name, const CustomValue& v)
    {
        setCustomValue(customTarget(*self), QString::fromStdString(name), v);
    }
    static void setInt(Handle* self, const std::string& name, int v) { set(self, name, v); }
    static void setFloat(Handle* self, const std::string& name, float v)
    {
        if (ScriptApi::isUsable(v, "customProperty", "setCustomFloat"))
            set(self, name, v);
    }
    static void setString(Handle* self, const std::string& name, const std::string& v)
    {
        set(self, name, QString::fromStdString(v));
    }
    static void setVec2(Handle* self, const std::string& name, ScriptVec2 v)
    {
        if (ScriptApi::isUsable(Vec2{v.x, v.y}, "customProperty", "setCustomVec2"))
            set(self, name, Vec2{v.x, v.y});
    }
    static void setBool(Handle* self, const std::string& name, bool v) { set(self, name, v); }
    static void setBoolInt(Handle* self, const std::string& name, int v) { set(self, name, v != 0); }
    static void setColor(Handle* self, const std::string& name, ScriptColor v) { set(self, name, toColor(v)); }
    static void clear(Handle* self, const std::string& name)
    {
        clearCustomValue(customTarget(*self), QString::fromStdString(name));
    }
};
} // namespace

CustomPropertyTarget customTarget(const ScriptWorld& handle)
{
    MetaWorld* world = ScriptApi::world();
    if (!handle.valid || !world) {
        plaxLog(LOG_ERROR, "Script attempted to use invalid world");
        return {};
    }
    return {nullptr, &world->customProperties};
}

CustomPropertyTarget customTarget(const ScriptBody& h) { return targetOf(ScriptApi::use(h)); }
CustomPropertyTarget customTarget(const ScriptFixture& h) { return targetOf(ScriptApi::use(h)); }
CustomPropertyTarget customTarget(const ScriptJoint& h) { return targetOf(ScriptApi::use(h)); }
CustomPropertyTarget customTarget(const ScriptImage& h) { return targetOf(ScriptApi::use(h)); }
CustomPropertyTarget customTarget(const ScriptSampler& h) { return targetOf(ScriptApi::use(h)); }
CustomPropertyTarget customTarget(const ScriptObject& h) { return targetOf(ScriptApi::use(h)); }

void setCustomValue(const CustomPropertyTarget& target, const QString& name, const CustomValue& value)
{
    if (!target.values)
        return;
    const CustomProperty* existing = target.values->find(name);
    const bool had = existing != nullptr;
    const CustomValue old = had ? existing->value : CustomValue();
    if (had && old == value)
        return;
    target.values->set(name, value);
    ScriptApi::record<SetCustomPropertyValueCommand>(target.item, name, had, old, value);
}

void clearCustomValue(const CustomPropertyTarget& target, const QString& name)
{
    if (!target.values)
        return;
    const CustomProperty* existing = target.values->find(name);
    if (!existing)
        return;
    const CustomValue old = existing->value;
    target.values->remove(name);
    ScriptApi::record<ClearCustomPropertyValueCommand>(target.item, name, old);
}

template <class Handle>
void registerCustomPropertyMethods(ScriptRegistrar& reg, const char* t)
{
    using M = Methods<Handle>;
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.method(t, "string[]& getCustomProperties()", asFUNCTION(M::names), cc);
    reg.method(t, "bool hasCustomProperty(const string &in)", asFUNCTION(M::has), cc);
    reg.method(t, "string getCustomPropertyType(const string &in)", asFUNCTION(M::type), cc);
    reg.method(t, "int getCustomInt(const string &in, int d = 0)", asFUNCTION(M::getInt), cc);
    reg.method(t, "float getCustomFloat(const string &in, float d = 0)", asFUNCTION(M::getFloat), cc);
    reg.method(t, "string getCustomString(const string &in, string d = \"\")", asFUNCTION(M::getString), cc);
    reg.method(t, "vec2 getCustomVec2(const string &in, vec2)", asFUNCTION(M::getVec2), cc);
    reg.method(t, "vec2 getCustomVec2(const string &in)", asFUNCTION(M::getVec2Zero), cc);
    reg.method(t, "bool getCustomBool(const string &in, bool d = false)", asFUNCTION(M::getBool), cc);
    reg.method(t, "color getCustomColor(const string &in, color)", asFUNCTION(M::getColor), cc);
    reg.method(t, "color getCustomColor(const string &in)", asFUNCTION(M::getColorZero), cc);
    reg.method(t, "void setCustomInt(const string &in, int)", asFUNCTION(M::setInt), cc);
    reg.method(t, "void setCustomFloat(const string &in, float)", asFUNCTION(M::setFloat), cc);
    reg.method(t, "void setCustomString(const string &in, string)", asFUNCTION(M::setString), cc);
    reg.method(t, "void setCustomVec2(const string &in, vec2)", asFUNCTION(M::setVec2), cc);
    reg.method(t, "void setCustomBool(const string &in, bool)", asFUNCTION(M::setBool), cc);
    reg.method(t, "void setCustomBool(const string &in, int)", asFUNCTION(M::setBoolInt), cc);
    reg.method(t, "void setCustomColor(const string &in, color)", asFUNCTION(M::setColor), cc);
    reg.method(t, "void clearCustomProperty(const string &in)", asFUNCTION(M::clear), cc);
}

template void registerCustomPropertyMethods<ScriptWorld>(ScriptRegistrar&, const char*);
template void registerCustomPropertyMethods<ScriptBody>(ScriptRegistrar&, const char*);
template void registerCustomPropertyMethods<ScriptFixture>(ScriptRegistrar&, const char*);
template void registerCustomPropertyMethods<ScriptJoint>(ScriptRegistrar&, const char*);
template void registerCustomPropertyMethods<ScriptImage>(ScriptRegistrar&, const char*);
template void registerCustomPropertyMethods<ScriptSampler>(ScriptRegistrar&, const char*);
template void registerCustomPropertyMethods<ScriptObject>(ScriptRegistrar&, const char*);
