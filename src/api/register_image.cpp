#include "api/scriptimage.h"
#include "api/scriptitemhandles.h"
#include "api/scriptplacedapi.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>

using namespace AngelScript;
using namespace ImageApi;

void registerImage(ScriptRegistrar& reg)
{
    const char* t = "image";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptImage, valid));
    reg.property(t, "vec2 center", offsetof(ScriptImage, center));
    reg.property(t, "uint id", offsetof(ScriptImage, id));
    registerItemHandleBasics<ScriptImage>(reg);
    registerPlacedItemMethods<ScriptImage, MetaImage>(reg, t);

    reg.method(t, "void setFile(const string &in)", asFUNCTION(setFile), cc);
    reg.method(t, "void setScale(float)", asFUNCTION(setScale), cc);
    reg.method(t, "void setHeight(float)", asFUNCTION(setHeight), cc);
    reg.method(t, "void setAspectScale(float)", asFUNCTION(setAspectScale), cc);
    reg.method(t, "void setFilter(int)", asFUNCTION(setFilter), cc);
    reg.method(t, "void setRenderOrder(float)", asFUNCTION(setRenderOrder), cc);
    reg.method(t, "float getScale()", asFUNCTION(getScale), cc);
    reg.method(t, "float getHeight()", asFUNCTION(getHeight), cc);
    reg.method(t, "float getAspectScale()", asFUNCTION(getAspectScale), cc);
    reg.method(t, "int getFilter()", asFUNCTION(getFilter), cc);
    reg.method(t, "float getRenderOrder()", asFUNCTION(getRenderOrder), cc);
    reg.method(t, "int getPixelWidth()", asFUNCTION(getPixelWidth), cc);
    reg.method(t, "int getPixelHeight()", asFUNCTION(getPixelHeight), cc);

    reg.global("image addImage(const string &in, vec2)", asFUNCTION(addImageAt), asCALL_CDECL);
}
