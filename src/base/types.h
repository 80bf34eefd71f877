#pragma once

#include <cmath>
#include <cstdint>

/// Two single-precision floats: points and vectors of the scene, in world units.
struct Vec2
{
    float x = 0;
    float y = 0;

    friend bool operator==(const Vec2&, const Vec2&) = default;
    Vec2 operator+(const Vec2& o) const { return {x + o.x, y + o.y}; }
    Vec2 operator-(const Vec2& o) const { return {x - o.x, y - o.y}; }
    Vec2 operator*(float s) const { return {x * s, y * s}; }
    /// Squared length.
    float lengthSquared() const { return x * x + y * y; }
    /// Length.
    float length() const { return std::sqrt(lengthSquared()); }
};

/// A colour as four 0..255 channels.
struct Color
{
    int r = 255;
    int g = 255;
    int b = 255;
    int a = 255;

    friend bool operator==(const Color&, const Color&) = default;
};

/// Item identifier, unique within its kind in a document; 0 means "no id".
using ItemId = std::uint32_t;
