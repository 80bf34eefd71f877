#pragma once

#include "api/scriptaabb.h"
#include "api/scripthandles.h"

#include <angelscript/scriptarray.h>

#include <string>

// The sampler functions that read its image's pixels (see
// sampling/sampleranalysis.h). Without a readable file they log one line
// and give an empty result. Points and boxes are in the sampler's frame.
namespace SamplerPixelApi
{
/// The debug pictures, as PNG: the sampled image, its alpha, the alpha
/// edge, the colour edge Sobel magnitude and its local maxima. Without a
/// name the file is "<sampler name>-<map>.png" (map "sampled", "alpha",
/// "alphaEdge", "colorEdgeSobel", "colorEdgeLocalMaxima") in the scene's
/// folder; a relative name is taken from the scene's folder too.
void writeToFile(ScriptSampler* self);
void writeToFileNamed(ScriptSampler* self, const std::string& file);
void writeAlpha(ScriptSampler* self);
void writeAlphaNamed(ScriptSampler* self, const std::string& file);
void writeAlphaEdge(ScriptSampler* self);
void writeAlphaEdgeNamed(ScriptSampler* self, const std::string& file);
void writeColorEdgeSobel(ScriptSampler* self);
void writeColorEdgeSobelNamed(ScriptSampler* self, const std::string& file);
void writeColorEdgeLocalMaxima(ScriptSampler* self);
void writeColorEdgeLocalMaximaNamed(ScriptSampler* self, const std::string& file);

/// The box around every alpha edge outline (all zero when there is none).
ScriptAabb getAlphaEdgeAABB(ScriptSampler* self);
/// One point on each alpha edge outline (its first point), solid outlines
/// and holes alike, in the order the outlines are found (rows from the top).
AngelScript::CScriptArray* getAlphaEdgePathSeedPoints(ScriptSampler* self);
} // namespace SamplerPixelApi
