#include "api/scriptitemhandles.h"
#include "api/scriptplacedapi.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "api/scriptsampler.h"
#include "api/scriptsamplerpixels.h"

#include <cstddef>

using namespace AngelScript;
using namespace SamplerApi;

void registerSampler(ScriptRegistrar& reg)
{
    using P = PlacedApi<ScriptSampler, MetaSampler>;
    const char* t = "sampler";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptSampler, valid));
    reg.property(t, "vec2 center", offsetof(ScriptSampler, center));
    reg.property(t, "uint id", offsetof(ScriptSampler, id));
    registerItemHandleBasics<ScriptSampler>(reg);

    reg.method(t, "body getBody()", asFUNCTION(P::getBody), cc);
    reg.method(t, "void setBody(int)", asFUNCTION(P::setBodyId), cc);
    reg.method(t, "void setBody(const body& in)", asFUNCTION(P::setBodyHandle), cc);
    reg.method(t, "string getFile()", asFUNCTION(P::getFile), cc);
    reg.method(t, "void setFile(const string &in)", asFUNCTION(setFile), cc);
    reg.method(t, "void setCenter(float, float)", asFUNCTION(P::setCenter), cc);
    reg.method(t, "void setCenter(vec2)", asFUNCTION(P::setCenterV), cc);
    reg.method(t, "void setAngle(float)", asFUNCTION(P::setAngle), cc);
    reg.method(t, "void setHeight(float)", asFUNCTION(setHeight), cc);
    reg.method(t, "void setOutputWidth(int)", asFUNCTION(setOutputWidth), cc);
    reg.method(t, "void setOutputHeight(int)", asFUNCTION(setOutputHeight), cc);
    reg.method(t, "void setOpacity(float)", asFUNCTION(P::setOpacity), cc);
    reg.method(t, "void setAlphaEdgeThreshold(float)", asFUNCTION(setAlphaEdgeThreshold), cc);
    reg.method(t, "void setFlip(int)", asFUNCTION(P::setFlip), cc);
    reg.method(t, "void setFlip(bool)", asFUNCTION(P::setFlipB), cc);
    reg.method(t, "void setColorTint(int,int,int,int)", asFUNCTION(P::setColorTint), cc);
    reg.method(t, "void setColorTint(color)", asFUNCTION(P::setColorTintC), cc);
    reg.method(t, "void setAutoUpdate(int)", asFUNCTION(setAutoUpdate), cc);
    reg.method(t, "void setAutoUpdate(bool)", asFUNCTION(setAutoUpdateB), cc);
    reg.method(t, "void setUseColor(int)", asFUNCTION(setUseColor), cc);
    reg.method(t, "void setUseColor(bool)", asFUNCTION(setUseColorB), cc);
    reg.method(t, "vec2 getCenter()", asFUNCTION(P::getCenter), cc);
    reg.method(t, "float getAngle()", asFUNCTION(P::getAngle), cc);
    reg.method(t, "float getHeight()", asFUNCTION(getHeight), cc);
    reg.method(t, "float getOpacity()", asFUNCTION(P::getOpacity), cc);
    reg.method(t, "float getAlphaEdgeThreshold()", asFUNCTION(getAlphaEdgeThreshold), cc);
    reg.method(t, "bool getFlip()", asFUNCTION(P::getFlip), cc);
    reg.method(t, "int getOutputWidth()", asFUNCTION(getOutputWidth), cc);
    reg.method(t, "int getOutputHeight()", asFUNCTION(getOutputHeight), cc);
    reg.method(t, "color getColorTint()", asFUNCTION(P::getColorTint), cc);
    reg.method(t, "bool getAutoUpdate()", asFUNCTION(getAutoUpdate), cc);
    reg.method(t, "bool getUseColor()", asFUNCTION(getUseColor), cc);

    using namespace SamplerPixelApi;
    reg.method(t, "void writeToFile()", asFUNCTION(writeToFile), cc);
    reg.method(t, "void writeToFile(const string &in)", asFUNCTION(writeToFileNamed), cc);
    reg.method(t, "void writeToFile_alpha()", asFUNCTION(writeAlpha), cc);
    reg.method(t, "void writeToFile_alpha(const string &in)", asFUNCTION(writeAlphaNamed), cc);
    reg.method(t, "void writeToFile_alphaEdge()", asFUNCTION(writeAlphaEdge), cc);
    reg.method(t, "void writeToFile_alphaEdge(const string &in)", asFUNCTION(writeAlphaEdgeNamed), cc);
    reg.method(t, "void writeToFile_colorEdgeSobel()", asFUNCTION(writeColorEdgeSobel), cc);
    reg.method(t, "void writeToFile_colorEdgeSobel(const string &in)", asFUNCTION(writeColorEdgeSobelNamed), cc);
    reg.method(t, "void writeToFile_colorEdgeLocalMaxima()", asFUNCTION(writeColorEdgeLocalMaxima), cc);
    reg.method(t, "void writeToFile_colorEdgeLocalMaxima(const string &in)", asFUNCTION(writeColorEdgeLocalMaximaNamed), cc);
    reg.method(t, "aabb getAlphaEdgeAABB()", asFUNCTION(getAlphaEdgeAABB), cc);
    reg.method(t, "vec2[]@ getAlphaEdgePathSeedPoints()", asFUNCTION(getAlphaEdgePathSeedPoints), cc);

    reg.global("sampler addSampler(vec2)", asFUNCTION(addSamplerAt), asCALL_CDECL);
}
