#include "api/scriptcolor.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

#include <cstddef>
#include <new>
#include <string>

using namespace AngelScript;

namespace
{
void construct(ScriptColor* self)
{
    new (self) ScriptColor();
}

bool opEquals(const ScriptColor* self, const ScriptColor& o) { return *self == o; }
ScriptColor opAdd(const ScriptColor* self, const ScriptColor& o) { return *self + o; }
ScriptColor opSub(const ScriptColor* self, const ScriptColor& o) { return *self - o; }
ScriptColor opMul(const ScriptColor* self, float f) { return *self * f; }
ScriptColor opDiv(const ScriptColor* self, float f) { return {self->r / f, self->g / f, self->b / f, self->a / f}; }
ScriptColor opNeg(const ScriptColor* self) { return *self * -1.0f; }

// Declared const in the script API, yet they change the left-hand side.
ScriptColor opAddAssign(ScriptColor* self, const ScriptColor& o) { return *self = *self + o; }
ScriptColor opSubAssign(ScriptColor* self, const ScriptColor& o) { return *self = *self - o; }
ScriptColor opMulAssign(ScriptColor* self, float f) { return *self = *self * f; }
ScriptColor opDivAssign(ScriptColor* self, float f) { return *self = opDiv(self, f); }

ScriptColor set255(ScriptColor* self, int r, int g, int b, int a)
{
    self->set255(r, g, b, a);
    return *self;
}

ScriptColor set1(ScriptColor* self, float r, float g, float b, float a)
{
    self->set1(r, g, b, a);
    return *self;
}

ScriptColor setHex(ScriptColor* self, const std::string& text)
{
    self->setHex(text);
    return *self;
}

std::string getStr1(ScriptColor* self) { return self->str1(); }
std::string getStr255(ScriptColor* self) { return self->str255(); }
std::string getStrHex(ScriptColor* self) { return self->strHex(); }

ScriptColor makeColor1(float r, float g, float b, float a) { return {r, g, b, a}; }

ScriptColor makeColor255(int r, int g, int b, int a)
{
    ScriptColor c;
    c.set255(r, g, b, a);
    return c;
}

ScriptColor makeColorHex(const std::string& text)
{
    ScriptColor c;
    c.setHex(text);
    return c;
}
} // namespace

void declareColorType(ScriptRegistrar& reg)
{
    reg.objectType("color", sizeof(ScriptColor),
                   asOBJ_VALUE | asOBJ_POD | asOBJ_APP_CLASS_ALLFLOATS | asGetTypeTraits<ScriptColor>());
}

void registerColor(ScriptRegistrar& reg)
{
    const char* t = "color";
    reg.behaviour(t, asBEHAVE_CONSTRUCT, "void f()", asFUNCTION(construct), asCALL_CDECL_OBJLAST);
    reg.property(t, "float r", offsetof(ScriptColor, r));
    reg.property(t, "float g", offsetof(ScriptColor, g));
    reg.property(t, "float b", offsetof(ScriptColor, b));
    reg.property(t, "float a", offsetof(ScriptColor, a));

    reg.method(t, "bool opEquals(const color &in) const", asFUNCTION(opEquals), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opAdd(const color &in) const", asFUNCTION(opAdd), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opSub(const color &in) const", asFUNCTION(opSub), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opAddAssign(const color &in) const", asFUNCTION(opAddAssign), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opSubAssign(const color &in) const", asFUNCTION(opSubAssign), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opMul(const float) const", asFUNCTION(opMul), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opDiv(const float) const", asFUNCTION(opDiv), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opMulAssign(const float) const", asFUNCTION(opMulAssign), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opDivAssign(const float) const", asFUNCTION(opDivAssign), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opMul_r(const float) const", asFUNCTION(opMul), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color opNeg() const", asFUNCTION(opNeg), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color set255(int, int, int, int)", asFUNCTION(set255), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color set1(float, float, float, float)", asFUNCTION(set1), asCALL_CDECL_OBJFIRST);
    reg.method(t, "color setHex(const string& in)", asFUNCTION(setHex), asCALL_CDECL_OBJFIRST);
    reg.method(t, "string getStr1()", asFUNCTION(getStr1), asCALL_CDECL_OBJFIRST);
    reg.method(t, "string getStr255()", asFUNCTION(getStr255), asCALL_CDECL_OBJFIRST);
    reg.method(t, "string getStrHex()", asFUNCTION(getStrHex), asCALL_CDECL_OBJFIRST);

    reg.global("color mc1(float, float, float, float)", asFUNCTION(makeColor1), asCALL_CDECL);
    reg.global("color mc255(int, int, int, int)", asFUNCTION(makeColor255), asCALL_CDECL);
    reg.global("color mcHex(const string &in)", asFUNCTION(makeColorHex), asCALL_CDECL);
}
