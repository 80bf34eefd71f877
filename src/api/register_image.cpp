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
    using P = PlacedApi<ScriptImage, MetaImage>;
    const char* t = "image";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptImage, valid));
    reg.property(t, "vec2 center", offsetof(ScriptImage, center));
    reg.property(t, "uint id", offsetof(ScriptImage, id));
    registerItemHandleBasics<ScriptImage>(reg);

    reg.method(t, "body getBody()", asFUNCTION(P::getBody), cc);
    reg.method(t, "void setBody(int)", asFUNCTION(P::setBodyId), cc);
    reg.method(t, "void setBody(const body& in)", asFUNCTION(P::setBodyHandle), cc);
    reg.method(t, "string getFile()", asFUNCTION(P::getFile), cc);
    reg.method(t, "void setFile(const string &in)", asFUNCTION(setFile), cc);
    reg.method(t, "void setCenter(float, float)", asFUNCTION(P::setCenter), cc);
    reg.method(t, "void setCenter(vec2)", asFUNCTION(P::setCenterV), cc);
    reg.method(t, "void setAngle(float)", asFUNCTION(P::setAngle), cc);
    reg.method(t, "void setScale(float)", asFUNCTION(setScale), cc);
    reg.method(t, "void setHeight(float)", asFUNCTION(setHeight), cc);
    reg.method(t, "void setAspectScale(float)", asFUNCTION(setAspectScale), cc);
    reg.method(t, "void setOpacity(float)", asFUNCTION(P::setOpacity), cc);
    reg.method(t, "void setFlip(int)", asFUNCTION(P::setFlip), cc);
    reg.method(t, "void setFlip(bool)", asFUNCTION(P::setFlipB), cc);
    reg.method(t, "void setFilter(int)", asFUNCTION(setFilter), cc);
    reg.method(t, "void setRenderOrder(float)", asFUNCTION(setRenderOrder), cc);
    reg.method(t, "void setColorTint(int,int,int,int)", asFUNCTION(P::setColorTint), cc);
    reg.method(t, "void setColorTint(color)", asFUNCTION(P::setColorTintC), cc);
    reg.method(t, "vec2 getCenter()", asFUNCTION(P::getCenter), cc);
    reg.method(t, "float getAngle()", asFUNCTION(P::getAngle), cc);
    reg.method(t, "float getScale()", asFUNCTION(getScale), cc);
    reg.method(t, "float getHeight()", asFUNCTION(getHeight), cc);
    reg.method(t, "float getAspectScale()", asFUNCTION(getAspectScale), cc);
    reg.method(t, "float getOpacity()", asFUNCTION(P::getOpacity), cc);
    reg.method(t, "bool getFlip()", asFUNCTION(P::getFlip), cc);
    reg.method(t, "int getFilter()", asFUNCTION(getFilter), cc);
    reg.method(t, "float getRenderOrder()", asFUNCTION(getRenderOrder), cc);
    reg.method(t, "int getPixelWidth()", asFUNCTION(getPixelWidth), cc);
    reg.method(t, "int getPixelHeight()", asFUNCTION(getPixelHeight), cc);
    reg.method(t, "color getColorTint()", asFUNCTION(P::getColorTint), cc);

    reg.global("image addImage(const string &in, vec2)", asFUNCTION(addImageAt), asCALL_CDECL);
}
