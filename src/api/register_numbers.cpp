#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <QString>

#include <cstdlib>
#include <string>

using namespace AngelScript;

namespace
{
// The text is trimmed first; anything that is not a whole number yields 0.
int intval(const std::string& text, bool& ok)
{
    int value = QString::fromStdString(text).trimmed().toInt(&ok);
    return ok ? value : 0;
}

int intvalNoCheck(const std::string& text)
{
    bool ok = false;
    return intval(text, ok);
}

float floatval(const std::string& text, bool& ok)
{
    float value = QString::fromStdString(text).trimmed().toFloat(&ok);
    return ok ? value : 0.0f;
}

float floatvalNoCheck(const std::string& text)
{
    bool ok = false;
    return floatval(text, ok);
}

// 0 to 1 inclusive. The divisor stays 32767 whatever RAND_MAX is.
float rnd()
{
    return float((std::rand() & 0x7FFF) / 32767.0);
}

float degreesToRadians(float degrees) { return degrees * 0.017453292f; }
float radiansToDegrees(float radians) { return radians * 57.29578f; }
void seedRandom(int seed) { std::srand(unsigned(seed)); }
} // namespace

void registerNumberFunctions(ScriptRegistrar& reg)
{
    reg.global("int intval(const string &in)", asFUNCTION(intvalNoCheck), asCALL_CDECL);
    reg.global("int intval(const string &in, bool &out ok)", asFUNCTION(intval), asCALL_CDECL);
    reg.global("float floatval(const string &in)", asFUNCTION(floatvalNoCheck), asCALL_CDECL);
    reg.global("float floatval(const string &in, bool &out ok)", asFUNCTION(floatval), asCALL_CDECL);
    reg.global("float rnd()", asFUNCTION(rnd), asCALL_CDECL);
    reg.global("float dr(float)", asFUNCTION(degreesToRadians), asCALL_CDECL);
    reg.global("float rd(float)", asFUNCTION(radiansToDegrees), asCALL_CDECL);
    reg.global("void srand(int)", asFUNCTION(seedRandom), asCALL_CDECL);
}
