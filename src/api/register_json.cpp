#include "api/scriptcolor.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "api/scriptvec2.h"
#include "base/log.h"

#include <angelscript/scriptarray.h>
#include <angelscript/scriptdictionary.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <string>

using namespace AngelScript;

namespace
{
// Nesting deeper than this is taken for a cycle of handles.
constexpr int kMaxDepth = 64;

QJsonValue toJson(asIScriptEngine* engine, const void* address, int typeId, int depth);

QJsonObject dictionaryToJson(asIScriptEngine* engine, const CScriptDictionary& dictionary, int depth)
{
    QJsonObject object;
    for (const CScriptDictionary::CIterator& it : dictionary)
        object.insert(QString::fromStdString(it.GetKey()),
                      toJson(engine, it.GetAddressOfValue(), it.GetTypeId(), depth + 1));
    return object;
}

QJsonArray arrayToJson(asIScriptEngine* engine, const CScriptArray& array, int depth)
{
    QJsonArray list;
    int elementTypeId = array.GetElementTypeId();
    for (asUINT i = 0; i < array.GetSize(); ++i)
        list.append(toJson(engine, array.At(i), elementTypeId, depth + 1));
    return list;
}

// Numbers, booleans, strings, vec2 ({"x","y"}), color ([r, g, b, a]),
// dictionaries and arrays of these; anything else becomes null with a warning.
QJsonValue toJson(asIScriptEngine* engine, const void* address, int typeId, int depth)
{
    if (depth > kMaxDepth) {
        plaxLog(LOG_WARNING, "jsonEncode: values nested too deeply, cut off");
        return QJsonValue();
    }
    switch (typeId) {
    case asTYPEID_BOOL: return *static_cast<const bool*>(address);
    case asTYPEID_INT8: return *static_cast<const asINT8*>(address);
    case asTYPEID_INT16: return *static_cast<const asINT16*>(address);
    case asTYPEID_INT32: return *static_cast<const int*>(address);
    case asTYPEID_INT64: return qint64(*static_cast<const asINT64*>(address));
    case asTYPEID_UINT8: return *static_cast<const asBYTE*>(address);
    case asTYPEID_UINT16: return *static_cast<const asWORD*>(address);
    case asTYPEID_UINT32: return qint64(*static_cast<const asDWORD*>(address));
    case asTYPEID_UINT64: return double(*static_cast<const asQWORD*>(address));
    case asTYPEID_FLOAT: return double(*static_cast<const float*>(address));
    case asTYPEID_DOUBLE: return *static_cast<const double*>(address);
    default: break;
    }
    if (typeId & asTYPEID_OBJHANDLE) {
        address = *static_cast<void* const*>(address);
        typeId &= ~asTYPEID_OBJHANDLE;
        if (!address)
            return QJsonValue();
    }
    asITypeInfo* type = engine->GetTypeInfoById(typeId);
    const char* name = type ? type->GetName() : "";
    const std::string typeName = name ? name : "";
    if (typeName == "string")
        return QString::fromStdString(*static_cast<const std::string*>(address));
    if (typeName == "vec2") {
        const auto* v = static_cast<const ScriptVec2*>(address);
        return QJsonObject{{QStringLiteral("x"), double(v->x)}, {QStringLiteral("y"), double(v->y)}};
    }
    if (typeName == "color") {
        const auto* c = static_cast<const ScriptColor*>(address);
        return QJsonArray{double(c->r), double(c->g), double(c->b), double(c->a)};
    }
    if (typeName == "dictionary")
        return dictionaryToJson(engine, *static_cast<const CScriptDictionary*>(address), depth);
    if (typeName == "array")
        return arrayToJson(engine, *static_cast<const CScriptArray*>(address), depth);
    plaxLog(LOG_WARNING, "jsonEncode: cannot encode a value of type '%s'", typeName.c_str());
    return QJsonValue();
}

std::string jsonEncode(const CScriptDictionary& dictionary)
{
    asIScriptContext* context = asGetActiveContext();
    if (!context)
        return "{}";
    QJsonObject object = dictionaryToJson(context->GetEngine(), dictionary, 0);
    return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
}
} // namespace

void registerJsonFunctions(ScriptRegistrar& reg)
{
    reg.global("string jsonEncode(const dictionary &in)", asFUNCTION(jsonEncode), asCALL_CDECL);
}
