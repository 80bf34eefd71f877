#pragma once

#include <string>

/// The plaxscript value type `vec2`: a point or direction of two floats.
/// Registered as a plain value, so scripts copy it freely.
struct ScriptVec2
{
    float x = 0;
    float y = 0;

    /// Component-wise equality.
    bool operator==(const ScriptVec2& o) const { return x == o.x && y == o.y; }
    /// Sum of two vectors.
    ScriptVec2 operator+(const ScriptVec2& o) const { return {x + o.x, y + o.y}; }
    /// Difference of two vectors.
    ScriptVec2 operator-(const ScriptVec2& o) const { return {x - o.x, y - o.y}; }
    /// Scaled copy.
    ScriptVec2 operator*(float f) const { return {x * f, y * f}; }

    /// Euclidean length.
    float length() const;
    /// Scales to unit length and returns the old length; a vector shorter than
    /// the float epsilon is left alone and 0 is returned.
    float normalize();
    /// Unit-length copy (a near-zero vector is returned unchanged).
    ScriptVec2 normalized() const;
    /// Distance between the two points.
    float distanceTo(const ScriptVec2& o) const;
    /// Dot product.
    float dot(const ScriptVec2& o) const { return x * o.x + y * o.y; }
    /// Two-dimensional cross product (x * o.y - y * o.x).
    float cross(const ScriptVec2& o) const { return x * o.y - y * o.x; }
    /// Projection of this vector onto the line through the origin along o
    /// (the zero vector when o has zero length).
    ScriptVec2 projectedOnto(const ScriptVec2& o) const;
    /// Copy rotated counter-clockwise by an angle in radians.
    ScriptVec2 rotatedBy(float radians) const;

    /// Text form "(x, y)" with six significant digits, used by print and by string concatenation.
    std::string toString() const;
};
