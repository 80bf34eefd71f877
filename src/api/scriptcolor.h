#pragma once

#include <string>

/// The plaxscript value type `color`: red, green, blue and alpha as floats
/// from 0 to 1. Arithmetic is component-wise and does not clamp; the setters
/// taking 0..255 integers clamp their input.
struct ScriptColor
{
    float r = 0;
    float g = 0;
    float b = 0;
    float a = 0;

    /// Component-wise equality.
    bool operator==(const ScriptColor& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
    /// Component-wise sum.
    ScriptColor operator+(const ScriptColor& o) const { return {r + o.r, g + o.g, b + o.b, a + o.a}; }
    /// Component-wise difference.
    ScriptColor operator-(const ScriptColor& o) const { return {r - o.r, g - o.g, b - o.b, a - o.a}; }
    /// Every component scaled.
    ScriptColor operator*(float f) const { return {r * f, g * f, b * f, a * f}; }

    /// Sets the components from 0..255 integers (clamped).
    void set255(int red, int green, int blue, int alpha);
    /// Sets the components from 0..1 floats (stored as given).
    void set1(float red, float green, float blue, float alpha);
    /// Sets the colour from "RRGGBB" or "RRGGBBAA" hexadecimal digits with an
    /// optional leading '#'; alpha is 1 when omitted. Returns false (and
    /// changes nothing) for any other text.
    bool setHex(const std::string& text);

    /// "r, g, b, a" with the 0..1 values.
    std::string str1() const;
    /// "r, g, b, a" with the values scaled to 0..255 and rounded.
    std::string str255() const;
    /// Eight upper-case hexadecimal digits "RRGGBBAA" (accepted by setHex).
    std::string strHex() const;
};
