#pragma once

#include <cstdint>

namespace plax
{
/// Two single-precision floats: a point or vector in world units (metres).
struct Vec2
{
    float x = 0;
    float y = 0;
};

/// True when both coordinates are equal.
inline bool operator==(const Vec2& a, const Vec2& b)
{
    return a.x == b.x && a.y == b.y;
}
/// True when a coordinate differs.
inline bool operator!=(const Vec2& a, const Vec2& b)
{
    return !(a == b);
}

/// A colour as four channels 0..255.
struct Color
{
    std::uint8_t r = 255;
    std::uint8_t g = 255;
    std::uint8_t b = 255;
    std::uint8_t a = 255;
};

/// True when all four channels are equal.
inline bool operator==(const Color& a, const Color& b)
{
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}
} // namespace plax
