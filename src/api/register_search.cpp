#include "api/scriptkinds.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <string>

using namespace AngelScript;

// get<Kinds>ByCustom<Type>(name, value): the items whose custom property of
// that name holds that value (of that type), in scene order.
namespace
{
template <class Handle, class T>
CScriptArray* search(const std::string& name, const CustomValue& wanted)
{
    using K = HandleKind<Handle>;
    std::vector<const typename K::Item*> found;
    const QString key = QString::fromStdString(name);
    if (MetaWorld* world = ScriptApi::world())
        for (auto* item : K::items(*world))
            if (const CustomProperty* p = item->customProperties.find(key); p && p->value == wanted)
                found.push_back(item);
    const std::string decl = std::string("array<") + K::type + ">";
    return ScriptApi::handleArray<Handle>(decl.c_str(), found, K::handle);
}

template <class Handle>
struct Search
{
    static CScriptArray* byInt(const std::string& n, int v) { return search<Handle, int>(n, v); }
    static CScriptArray* byFloat(const std::string& n, float v) { return search<Handle, float>(n, v); }
    static CScriptArray* byBool(const std::string& n, bool v) { return search<Handle, bool>(n, v); }
    static CScriptArray* byString(const std::string& n, const std::string& v)
    {
        return search<Handle, QString>(n, QString::fromStdString(v));
    }
    static CScriptArray* byVector(const std::string& n, ScriptVec2 v) { return search<Handle, Vec2>(n, Vec2{v.x, v.y}); }
};

template <class Handle>
void registerFor(ScriptRegistrar& reg)
{
    using K = HandleKind<Handle>;
    using S = Search<Handle>;
    auto decl = [](const char* pattern) {
        return QString::fromLatin1(pattern)
            .replace(QLatin1String("%T"), QLatin1String(K::type))
            .replace(QLatin1String("%P"), QLatin1String(K::plural))
            .toStdString();
    };
    reg.global(decl("%T[]@ get%PByCustomInt(const string &in, int )").c_str(), asFUNCTION(S::byInt), asCALL_CDECL);
    reg.global(decl("%T[]@ get%PByCustomFloat(const string &in, float )").c_str(), asFUNCTION(S::byFloat), asCALL_CDECL);
    reg.global(decl("%T[]@ get%PByCustomBool(const string &in, bool )").c_str(), asFUNCTION(S::byBool), asCALL_CDECL);
    reg.global(decl("%T[]@ get%PByCustomString(const string &in, const string &in)").c_str(), asFUNCTION(S::byString),
               asCALL_CDECL);
    reg.global(decl("%T[]@ get%PByCustomVector(const string &in, vec2 )").c_str(), asFUNCTION(S::byVector), asCALL_CDECL);
}
} // namespace

void registerSearchFunctions(ScriptRegistrar& reg)
{
    registerFor<ScriptBody>(reg);
    registerFor<ScriptFixture>(reg);
    registerFor<ScriptJoint>(reg);
    registerFor<ScriptImage>(reg);
    registerFor<ScriptSampler>(reg);
    registerFor<ScriptObject>(reg);
}
