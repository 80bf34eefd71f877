#pragma once

#include "base/types.h"

class MetaBody;
class MetaSampler;

/// Where a sampler's local coordinates lie in the world. Control points of
/// a sampler's paths are kept in world units in the sampler's own frame: the
/// origin at its centre, x to the right of its image and y up, turned by its
/// angle, mirrored in x when it is flipped, and carried by its body (if any).
struct SamplerFrame
{
    Vec2 origin;       ///< the sampler's centre in world coordinates
    float angle = 0;   ///< the body's angle plus the sampler's
    bool flip = false; ///< local x is mirrored

    /// The frame of a sampler as it stands now.
    static SamplerFrame of(const MetaSampler& sampler);

    /// A local point in world coordinates.
    Vec2 toWorld(Vec2 local) const;
    /// A world point in local coordinates.
    Vec2 toLocal(Vec2 world) const;
};
