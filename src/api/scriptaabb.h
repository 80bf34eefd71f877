#pragma once

#include <string>

/// The plaxscript value type `aabb`: an axis-aligned box given by its lower
/// and upper x (lx, ux) and lower and upper y (ly, uy). Adding two boxes
/// gives the smallest box containing both.
struct ScriptAabb
{
    float lx = 0;
    float ux = 0;
    float ly = 0;
    float uy = 0;

    /// Equality of all four bounds.
    bool operator==(const ScriptAabb& o) const { return lx == o.lx && ux == o.ux && ly == o.ly && uy == o.uy; }
    /// The union box.
    ScriptAabb operator+(const ScriptAabb& o) const;

    /// Text form "(lx, ly) - (ux, uy)" used by print.
    std::string toString() const;
};
