#include "api/scriptvec2.h"

#include <cfloat>
#include <cmath>
#include <cstdio>

float ScriptVec2::length() const
{
    return std::sqrt(x * x + y * y);
}

float ScriptVec2::normalize()
{
    float len = length();
    if (len < FLT_EPSILON)
        return 0;
    x /= len;
    y /= len;
    return len;
}

ScriptVec2 ScriptVec2::normalized() const
{
    ScriptVec2 copy = *this;
    copy.normalize();
    return copy;
}

float ScriptVec2::distanceTo(const ScriptVec2& o) const
{
    return (*this - o).length();
}

ScriptVec2 ScriptVec2::projectedOnto(const ScriptVec2& o) const
{
    float lengthSquared = o.dot(o);
    if (lengthSquared <= 0)
        return {};
    return o * (dot(o) / lengthSquared);
}

ScriptVec2 ScriptVec2::rotatedBy(float radians) const
{
    float c = std::cos(radians);
    float s = std::sin(radians);
    return {c * x - s * y, s * x + c * y};
}

std::string ScriptVec2::toString() const
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "(%g, %g)", double(x), double(y));
    return buffer;
}
