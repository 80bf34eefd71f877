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

/// Declares the handle types body, vertex, fixture, joint, shape, image,
/// sampler, path, world and object (names, layout and a constructor that
/// makes an invalid handle), so that every later step may use them.
void declareHandleTypes(ScriptRegistrar& reg);

/// Members and global functions of each handle type.
void registerBody(ScriptRegistrar& reg);
void registerVertex(ScriptRegistrar& reg);
void registerFixture(ScriptRegistrar& reg);
void registerJoint(ScriptRegistrar& reg);
void registerShape(ScriptRegistrar& reg);
void registerImage(ScriptRegistrar& reg);
void registerSampler(ScriptRegistrar& reg);
void registerPath(ScriptRegistrar& reg);
void registerWorld(ScriptRegistrar& reg);
void registerObject(ScriptRegistrar& reg);

/// World settings, collision bitplane names and custom property definitions.
void registerWorldFunctions(ScriptRegistrar& reg);
/// Cursor, view, mouse, keyboard, edit mode and action menu folder.
void registerEditorStateFunctions(ScriptRegistrar& reg);
/// get<Kinds>ByCustom<Type>() for every item kind.
void registerSearchFunctions(ScriptRegistrar& reg);
/// The sort and filter function types and sort<Kinds>() / filter<Kinds>().
void registerSortFunctions(ScriptRegistrar& reg);
/// The hook data functions (getHookEventName(), getManipulatedBodies(), ...).
void registerHookDataFunctions(ScriptRegistrar& reg);
/// The query dialog functions (queryOpenFile(), queryYesNo(), ...).
void registerQueryFunctions(ScriptRegistrar& reg);
/// print() for every handle type and array of handles.
void registerHandlePrintFunctions(ScriptRegistrar& reg);

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
/// setExportPropertyExcluded, isExportPropertyExcluded and getExcludedExportProperties.
void registerExportExclusionFunctions(ScriptRegistrar& reg);
/// The scene's script file settings and its after-export system command.
void registerDocumentSettingsFunctions(ScriptRegistrar& reg);
