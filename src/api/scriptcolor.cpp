#include "api/scriptcolor.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace
{
int to255(float component)
{
    return std::clamp(int(std::lround(component * 255.0f)), 0, 255);
}
} // namespace

void ScriptColor::set255(int red, int green, int blue, int alpha)
{
    r = std::clamp(red, 0, 255) / 255.0f;
    g = std::clamp(green, 0, 255) / 255.0f;
    b = std::clamp(blue, 0, 255) / 255.0f;
    a = std::clamp(alpha, 0, 255) / 255.0f;
}

void ScriptColor::set1(float red, float green, float blue, float alpha)
{
    r = red;
    g = green;
    b = blue;
    a = alpha;
}

bool ScriptColor::setHex(const std::string& text)
{
    QString digits = QString::fromStdString(text).trimmed();
    if (digits.startsWith(QLatin1Char('#')))
        digits.remove(0, 1);
    if (digits.size() != 6 && digits.size() != 8)
        return false;
    bool ok = false;
    uint value = digits.toUInt(&ok, 16);
    if (!ok)
        return false;
    if (digits.size() == 6)
        value = (value << 8) | 0xFFu;
    set255(int((value >> 24) & 0xFF), int((value >> 16) & 0xFF), int((value >> 8) & 0xFF), int(value & 0xFF));
    return true;
}

std::string ScriptColor::str1() const
{
    char buffer[96];
    std::snprintf(buffer, sizeof buffer, "%g, %g, %g, %g", double(r), double(g), double(b), double(a));
    return buffer;
}

std::string ScriptColor::str255() const
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%d, %d, %d, %d", to255(r), to255(g), to255(b), to255(a));
    return buffer;
}

std::string ScriptColor::strHex() const
{
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02X%02X%02X%02X", to255(r), to255(g), to255(b), to255(a));
    return buffer;
}
