#pragma once

#include "api/scripthandles.h"
#include "sampling/samplerpixels.h"

#include <string>

// The `sampler` handle's own settings (the members it shares with the
// other item handles are in scriptitemhandles, those it shares with images
// in scriptplacedapi.h; the functions that read its pixels are in
// scriptsamplerpixels).
namespace SamplerApi
{
/// The longest output side a sampler accepts.
constexpr int kMaxOutputSide = kMaxSamplerOutputSide;

void setFile(ScriptSampler* self, const std::string& file);
/// Height of the sampled image in world units; more than 0.
void setHeight(ScriptSampler* self, float height);
/// Sampling resolution, 0 (the file's own size) to kMaxOutputSide.
void setOutputWidth(ScriptSampler* self, int width);
void setOutputHeight(ScriptSampler* self, int height);
/// Alpha (0 to 1) at which the outline is drawn.
void setAlphaEdgeThreshold(ScriptSampler* self, float threshold);
void setAutoUpdate(ScriptSampler* self, int on);
void setAutoUpdateB(ScriptSampler* self, bool on);
void setUseColor(ScriptSampler* self, int on);
void setUseColorB(ScriptSampler* self, bool on);
float getHeight(ScriptSampler* self);
float getAlphaEdgeThreshold(ScriptSampler* self);
int getOutputWidth(ScriptSampler* self);
int getOutputHeight(ScriptSampler* self);
bool getAutoUpdate(ScriptSampler* self);
bool getUseColor(ScriptSampler* self);

/// "sampler addSampler(vec2)": a new sampler without a file centred at a
/// world position, with a fresh id and name.
ScriptSampler addSamplerAt(ScriptVec2 center);
} // namespace SamplerApi
