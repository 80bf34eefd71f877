#pragma once

#include "model/metasampler.h"
#include "sampling/sampleranalysis.h"

#include <vector>

/// The outlines a sampler traced, as its paths: each outline becomes one
/// path with `maxPoints` and `minAngle` set and its points simplified by
/// them (see simplifyPath). Solid outlines become polygon paths (islands in
/// holes too) and holes become loop paths, so that a fixture made from a
/// hole's path is its boundary rather than a filled shape.
std::vector<MetaPath> pathsFromOutlines(const std::vector<SamplerOutline>& outlines, int maxPoints, int minAngle);
