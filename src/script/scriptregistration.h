#pragma once

class ScriptRegistrar;

// Registration steps of the plaxscript API. Each scripted type or group of
// global functions has its own file; scriptapi.cpp calls them in order.

/// The AngelScript SDK add-ons: string (with its utilities), the default
/// array type (so `int[]` works), dictionary and the math functions.
void registerScriptAddOns(ScriptRegistrar& reg);

/// Declares the value types vec2, color and aabb (names and layout only), so
/// that every later step may use them in declarations.
void declareVec2Type(ScriptRegistrar& reg);
/// Declares the value type color.
void declareColorType(ScriptRegistrar& reg);
/// Declares the value type aabb.
void declareAabbType(ScriptRegistrar& reg);

/// Properties, operators and methods of vec2, its string operators and mv().
void registerVec2(ScriptRegistrar& reg);
/// Properties, operators and methods of color, and mc1(), mc255(), mcHex().
void registerColor(ScriptRegistrar& reg);
/// Properties, operators and methods of aabb, and maabb().
void registerAabb(ScriptRegistrar& reg);

/// The print() overloads for strings, numbers, value types and string arrays.
void registerPrintFunctions(ScriptRegistrar& reg);
/// intval, floatval, rnd, dr, rd and srand.
void registerNumberFunctions(ScriptRegistrar& reg);
/// jsonEncode.
void registerJsonFunctions(ScriptRegistrar& reg);
/// dirExists, fileExists, readFile and writeFile.
void registerFileFunctions(ScriptRegistrar& reg);
