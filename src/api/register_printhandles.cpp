#include "api/scripthandles.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "engine/scriptoutput.h"

#include <angelscript/scriptarray.h>

#include <QStringList>

using namespace AngelScript;

// print() of handles writes the kind and what names the item ("body 3",
// "vertex 2 of fixture 7", "invalid body"); arrays write their elements
// between brackets, separated by commas.
namespace
{
template <class Handle>
struct Text;

template <class Handle>
QString idText(const char* kind, const Handle& h)
{
    return h.valid ? QStringLiteral("%1 %2").arg(QLatin1String(kind)).arg(h.id)
                   : QStringLiteral("invalid %1").arg(QLatin1String(kind));
}

template <> struct Text<ScriptBody> { static QString of(const ScriptBody& h) { return idText("body", h); } };
template <> struct Text<ScriptFixture> { static QString of(const ScriptFixture& h) { return idText("fixture", h); } };
template <> struct Text<ScriptJoint> { static QString of(const ScriptJoint& h) { return idText("joint", h); } };
template <> struct Text<ScriptImage> { static QString of(const ScriptImage& h) { return idText("image", h); } };
template <> struct Text<ScriptSampler> { static QString of(const ScriptSampler& h) { return idText("sampler", h); } };
template <> struct Text<ScriptObject> { static QString of(const ScriptObject& h) { return idText("object", h); } };
template <> struct Text<ScriptWorld>
{
    static QString of(const ScriptWorld& h) { return h.valid ? QStringLiteral("world") : QStringLiteral("invalid world"); }
};
template <> struct Text<ScriptVertex>
{
    static QString of(const ScriptVertex& h)
    {
        return h.valid ? QStringLiteral("vertex %1 of fixture %2").arg(h.index).arg(h.fixture) : QStringLiteral("invalid vertex");
    }
};
template <> struct Text<ScriptShape>
{
    static QString of(const ScriptShape& h)
    {
        return h.valid ? QStringLiteral("shape %1 of fixture %2").arg(h.index).arg(h.fixture) : QStringLiteral("invalid shape");
    }
};
template <> struct Text<ScriptPath>
{
    static QString of(const ScriptPath& h)
    {
        return h.valid ? QStringLiteral("path %1 of sampler %2").arg(h.index).arg(h.sampler) : QStringLiteral("invalid path");
    }
};

template <class Handle>
void printHandle(const Handle& h)
{
    ScriptOutput::print(Text<Handle>::of(h));
}

template <class Handle>
void printArray(const CScriptArray& array)
{
    QStringList parts;
    for (asUINT i = 0; i < array.GetSize(); ++i)
        parts << Text<Handle>::of(*static_cast<const Handle*>(array.At(i)));
    ScriptOutput::print(QLatin1Char('[') + parts.join(QStringLiteral(", ")) + QLatin1Char(']'));
}

template <class Handle>
void registerFor(ScriptRegistrar& reg, const char* type, bool withArray)
{
    reg.global(QStringLiteral("void print(const %1 &in)").arg(QLatin1String(type)).toUtf8().constData(),
               asFUNCTION(printHandle<Handle>), asCALL_CDECL);
    if (withArray)
        reg.global(QStringLiteral("void print(const %1[] &in)").arg(QLatin1String(type)).toUtf8().constData(),
                   asFUNCTION(printArray<Handle>), asCALL_CDECL);
}
} // namespace

void registerHandlePrintFunctions(ScriptRegistrar& reg)
{
    registerFor<ScriptWorld>(reg, "world", false);
    registerFor<ScriptBody>(reg, "body", true);
    registerFor<ScriptFixture>(reg, "fixture", true);
    registerFor<ScriptShape>(reg, "shape", true);
    registerFor<ScriptVertex>(reg, "vertex", true);
    registerFor<ScriptJoint>(reg, "joint", true);
    registerFor<ScriptImage>(reg, "image", true);
    registerFor<ScriptSampler>(reg, "sampler", true);
    registerFor<ScriptObject>(reg, "object", true);
    registerFor<ScriptPath>(reg, "path", false);
}
