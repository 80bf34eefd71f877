#pragma once

#include "geometry/decomposition.h"

/// The application settings that steer polygon decomposition and its drawing.
namespace DecompositionSettings
{
/// Settings key of the decomposition method (integer, default 0).
inline constexpr const char* kMethodKey = "devstuff/polygondecompositionmethod";
/// Settings key of the internal-edge opacity (float 0..1, default 0.1).
inline constexpr const char* kInternalEdgeAlphaKey = "display/polygoninternaledgealpha";

/// The method chosen in the application settings: 1 selects triangulation
/// only, every other value Bayazit's method with fallback.
DecompositionMethod method();
/// Opacity of the internal edges of decomposed polygons, clamped to 0..1.
float internalEdgeAlpha();
} // namespace DecompositionSettings
