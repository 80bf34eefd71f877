#include "api/scriptaabb.h"

#include <algorithm>
#include <cstdio>

ScriptAabb ScriptAabb::operator+(const ScriptAabb& o) const
{
    return {std::min(lx, o.lx), std::max(ux, o.ux), std::min(ly, o.ly), std::max(uy, o.uy)};
}

std::string ScriptAabb::toString() const
{
    char buffer[128];
    std::snprintf(buffer, sizeof buffer, "(%g, %g) - (%g, %g)", double(lx), double(ly), double(ux), double(uy));
    return buffer;
}
