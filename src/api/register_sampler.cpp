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
    const char* t = "sampler";
    const asDWORD cc = asCALL_CDECL_OBJFIRST;
    reg.property(t, "bool valid", offsetof(ScriptSampler, valid));
    reg.property(t, "vec2 center", offsetof(ScriptSampler, center));
    reg.property(t, "uint id", offsetof(ScriptSampler, id));
    registerItemHandleBasics<ScriptSampler>(reg);
    registerPlacedItemMethods<ScriptSampler, MetaSampler>(reg, t);

    reg.method(t, "void setFile(const string &in)", asFUNCTION(setFile), cc);
    reg.method(t, "void setHeight(float)", asFUNCTION(setHeight), cc);
    reg.method(t, "void setOutputWidth(int)", asFUNCTION(setOutputWidth), cc);
    reg.method(t, "void setOutputHeight(int)", asFUNCTION(setOutputHeight), cc);
    reg.method(t, "void setAlphaEdgeThreshold(float)", asFUNCTION(setAlphaEdgeThreshold), cc);
    reg.method(t, "void setAutoUpdate(int)", asFUNCTION(setAutoUpdate), cc);
    reg.method(t, "void setAutoUpdate(bool)", asFUNCTION(setAutoUpdateB), cc);
    reg.method(t, "void setUseColor(int)", asFUNCTION(setUseColor), cc);
    reg.method(t, "void setUseColor(bool)", asFUNCTION(setUseColorB), cc);
    reg.method(t, "float getHeight()", asFUNCTION(getHeight), cc);
    reg.method(t, "float getAlphaEdgeThreshold()", asFUNCTION(getAlphaEdgeThreshold), cc);
    reg.method(t, "int getOutputWidth()", asFUNCTION(getOutputWidth), cc);
    reg.method(t, "int getOutputHeight()", asFUNCTION(getOutputHeight), cc);
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
