#include "sampling/samplerframe.h"

#include "model/metabody.h"
#include "model/metasampler.h"

#include <cmath>

namespace
{
Vec2 rotated(Vec2 v, float angle)
{
    const float c = std::cos(angle), s = std::sin(angle);
    return {c * v.x - s * v.y, s * v.x + c * v.y};
}
} // namespace

SamplerFrame SamplerFrame::of(const MetaSampler& sampler)
{
    SamplerFrame frame;
    frame.origin = bodyToWorld(sampler.body, sampler.center);
    frame.angle = (sampler.body ? sampler.body->angle : 0.0f) + sampler.angle;
    frame.flip = sampler.flip;
    return frame;
}

Vec2 SamplerFrame::toWorld(Vec2 local) const
{
    const Vec2 p = flip ? Vec2{-local.x, local.y} : local;
    return origin + rotated(p, angle);
}

Vec2 SamplerFrame::toLocal(Vec2 world) const
{
    const Vec2 p = rotated(world - origin, -angle);
    return flip ? Vec2{-p.x, p.y} : p;
}
