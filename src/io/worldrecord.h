#pragma once

// The scene-level members of "metaworld": physics settings, export and
// display options, bitplane names, hooks and the export exclusions. The item
// arrays are read by the scene loader, which reports progress between them.

#include "io/jsonvalues.h"

class MetaWorld;
struct DisplayOptions;
struct ExportOptions;
struct SystemHook;
struct WorldSettings;

/// The complete "metaworld" object of a scene file, members in file order.
rapidjson::Value writeWorldRecord(const MetaWorld& world, const JsonEncoder& encoder);

/// Reads the physics settings; members that are missing keep the given values.
void readWorldSettings(const rapidjson::Value& metaworld, WorldSettings* settings);
/// The "exportOptions" object.
rapidjson::Value writeExportOptions(const ExportOptions& options, const JsonEncoder& encoder);
/// Reads "exportOptions"; missing members keep the given values.
void readExportOptions(const rapidjson::Value* object, ExportOptions* options);
/// The "displayOptions" object.
rapidjson::Value writeDisplayOptions(const DisplayOptions& options, const JsonEncoder& encoder);
/// Reads "displayOptions"; missing members keep the given values.
void readDisplayOptions(const rapidjson::Value* object, DisplayOptions* options);
/// The "systemhooks" object holding "afterExport".
rapidjson::Value writeSystemHooks(const SystemHook& afterExport, const JsonEncoder& encoder);
/// Reads "systemhooks"; a missing "afterExport" keeps the given hook.
void readSystemHooks(const rapidjson::Value* object, SystemHook* afterExport);
