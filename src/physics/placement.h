#pragma once

#include "base/types.h"

/// Where an object instance puts the items of its object file: a point q of
/// the object maps to position + R(angle) * scale * M * q, where M mirrors x
/// when flip is set. Placements compose outermost first.
struct Placement
{
    Vec2 position;
    float angle = 0;
    float scale = 1;
    bool flip = false;

    /// The placement that applies `inner` first and then this one.
    Placement then(const Placement& inner) const;

    /// A point of the object in the placing scene.
    Vec2 applyToPoint(Vec2 q) const;
    /// A direction (velocity, offset) of the object in the placing scene.
    Vec2 applyToVector(Vec2 v) const;
    /// The angle of a rotated frame of the object in the placing scene.
    float applyToAngle(float theta) const { return flip ? angle - theta : angle + theta; }
    /// A point in a body's local frame: only scaled and mirrored (the body frame carries the rotation).
    Vec2 applyToLocalPoint(Vec2 q) const { return {scale * (flip ? mirrored(q.x) : q.x), scale * q.y}; }
    /// A relative angle or angular speed: mirrored, never rotated.
    float applyToRelativeAngle(float a) const { return flip ? mirrored(a) : a; }

    /// A mirrored coordinate: 0 stays +0, so mirrored zeros are written as 0, not -0.
    static float mirrored(float v) { return 0.0f - v; }

    /// True for the placement that changes nothing.
    bool isIdentity() const { return position == Vec2{} && angle == 0 && scale == 1 && !flip; }
};
