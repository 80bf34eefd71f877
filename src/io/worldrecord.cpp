#include "io/worldrecord.h"

#include "io/bodyrecord.h"
#include "io/customrecord.h"
#include "io/imagerecord.h"
#include "io/jointrecord.h"
#include "io/objectrecord.h"
#include "io/samplerrecord.h"
#include "model/metaworld.h"

using rapidjson::Value;

namespace
{
template <typename Item, typename Writer>
Value itemArray(const std::vector<std::unique_ptr<Item>>& items, const JsonEncoder& encoder, Writer write)
{
    Value array(rapidjson::kArrayType);
    array.Reserve(rapidjson::SizeType(items.size()), encoder.allocator());
    for (const auto& item : items)
        array.PushBack(write(*item, encoder), encoder.allocator());
    return array;
}
} // namespace

Value writeExportOptions(const ExportOptions& options, const JsonEncoder& encoder)
{
    Value object(rapidjson::kObjectType);
    encoder.addBool(object, "useHumanReadableFloats", options.useHumanReadableFloats);
    encoder.addBool(object, "useGsonFormat", options.useGsonFormat);
    encoder.addBool(object, "usePrettyPrint", options.usePrettyPrint);
    encoder.addBool(object, "compactCommonFloats", options.compactCommonFloats);
    encoder.addBool(object, "compactZeroVecs", options.compactZeroVecs);
    encoder.addBool(object, "saveFullPathForImages", options.saveFullPathForImages);
    encoder.addBool(object, "saveFullPathForObjects", options.saveFullPathForObjects);
    encoder.addBool(object, "saveFullPathForSamplerOutput", options.saveFullPathForSamplerOutput);
    encoder.addBool(object, "saveImagePathsRelativeToPLAXFile", options.saveImagePathsRelativeToPLAXFile);
    encoder.addBool(object, "saveObjectPathsRelativeToPLAXFile", options.saveObjectPathsRelativeToPLAXFile);
    encoder.addBool(object, "saveSamplerOutputPathsRelativeToPLAXFile", options.saveSamplerOutputPathsRelativeToPLAXFile);
    encoder.addString(object, "extraImagePathRelative", options.extraImagePathRelative);
    encoder.addString(object, "extraObjectPathRelative", options.extraObjectPathRelative);
    encoder.addString(object, "propertyExportFilterScriptFile", options.propertyExportFilterScriptFile);
    return object;
}

void readExportOptions(const Value* object, ExportOptions* options)
{
    if (!object || !object->IsObject())
        return;
    const Value& o = *object;
    options->useHumanReadableFloats = readBool(o, "useHumanReadableFloats", options->useHumanReadableFloats);
    options->useGsonFormat = readBool(o, "useGsonFormat", options->useGsonFormat);
    options->usePrettyPrint = readBool(o, "usePrettyPrint", options->usePrettyPrint);
    options->compactCommonFloats = readBool(o, "compactCommonFloats", options->compactCommonFloats);
    options->compactZeroVecs = readBool(o, "compactZeroVecs", options->compactZeroVecs);
    options->saveFullPathForImages = readBool(o, "saveFullPathForImages", options->saveFullPathForImages);
    options->saveFullPathForObjects = readBool(o, "saveFullPathForObjects", options->saveFullPathForObjects);
    options->saveFullPathForSamplerOutput =
        readBool(o, "saveFullPathForSamplerOutput", options->saveFullPathForSamplerOutput);
    options->saveImagePathsRelativeToPLAXFile =
        readBool(o, "saveImagePathsRelativeToPLAXFile", options->saveImagePathsRelativeToPLAXFile);
    options->saveObjectPathsRelativeToPLAXFile =
        readBool(o, "saveObjectPathsRelativeToPLAXFile", options->saveObjectPathsRelativeToPLAXFile);
    options->saveSamplerOutputPathsRelativeToPLAXFile =
        readBool(o, "saveSamplerOutputPathsRelativeToPLAXFile", options->saveSamplerOutputPathsRelativeToPLAXFile);
    options->extraImagePathRelative = readString(o, "extraImagePathRelative", options->extraImagePathRelative);
    options->extraObjectPathRelative = readString(o, "extraObjectPathRelative", options->extraObjectPathRelative);
    options->propertyExportFilterScriptFile =
        readString(o, "propertyExportFilterScriptFile", options->propertyExportFilterScriptFile);
}

Value writeDisplayOptions(const DisplayOptions& options, const JsonEncoder& encoder)
{
    Value object(rapidjson::kObjectType);
    encoder.addString(object, "customLabelsScriptFile", options.customLabelsScriptFile);
    encoder.addString(object, "propertyDisplayFilterScriptFile", options.propertyDisplayFilterScriptFile);
    return object;
}

void readDisplayOptions(const Value* object, DisplayOptions* options)
{
    if (!object || !object->IsObject())
        return;
    options->customLabelsScriptFile = readString(*object, "customLabelsScriptFile", options->customLabelsScriptFile);
    options->propertyDisplayFilterScriptFile =
        readString(*object, "propertyDisplayFilterScriptFile", options->propertyDisplayFilterScriptFile);
}

Value writeSystemHooks(const SystemHook& afterExport, const JsonEncoder& encoder)
{
    Value hook(rapidjson::kObjectType);
    encoder.addString(hook, "directory", afterExport.directory);
    encoder.addBool(hook, "enabled", afterExport.enabled);
    encoder.addString(hook, "command", afterExport.command);
    Value object(rapidjson::kObjectType);
    encoder.add(object, "afterExport", std::move(hook));
    return object;
}

void readSystemHooks(const Value* object, SystemHook* afterExport)
{
    const Value* hook = object ? jsonMember(*object, "afterExport") : nullptr;
    if (!hook || !hook->IsObject())
        return;
    afterExport->directory = readString(*hook, "directory", afterExport->directory);
    afterExport->enabled = readBool(*hook, "enabled", afterExport->enabled);
    afterExport->command = readString(*hook, "command", afterExport->command);
}

void readWorldSettings(const Value& metaworld, WorldSettings* settings)
{
    settings->gravity = readVec2(metaworld, "gravity", settings->gravity);
    settings->allowSleep = readBool(metaworld, "allowSleep", settings->allowSleep);
    settings->positionIterations = readInt(metaworld, "positionIterations", settings->positionIterations);
    settings->velocityIterations = readInt(metaworld, "velocityIterations", settings->velocityIterations);
    settings->stepsPerSecond = readFloat(metaworld, "stepsPerSecond", settings->stepsPerSecond);
    settings->autoClearForces = readBool(metaworld, "autoClearForces", settings->autoClearForces);
    settings->warmStarting = readBool(metaworld, "warmStarting", settings->warmStarting);
    settings->continuousPhysics = readBool(metaworld, "continuousPhysics", settings->continuousPhysics);
    settings->subStepping = readBool(metaworld, "subStepping", settings->subStepping);
}

Value writeWorldRecord(const MetaWorld& world, const JsonEncoder& encoder)
{
    const WorldSettings& s = world.settings;
    Value record(rapidjson::kObjectType);
    encoder.addVec2(record, "gravity", s.gravity);
    encoder.addBool(record, "allowSleep", s.allowSleep);
    encoder.addInt(record, "positionIterations", s.positionIterations);
    encoder.addInt(record, "velocityIterations", s.velocityIterations);
    encoder.addFloat(record, "stepsPerSecond", s.stepsPerSecond);
    encoder.addBool(record, "autoClearForces", s.autoClearForces);
    encoder.addBool(record, "warmStarting", s.warmStarting);
    encoder.addBool(record, "continuousPhysics", s.continuousPhysics);
    encoder.addBool(record, "subStepping", s.subStepping);
    encoder.add(record, "exportOptions", writeExportOptions(world.exportOptions, encoder));
    encoder.add(record, "displayOptions", writeDisplayOptions(world.displayOptions, encoder));
    encoder.add(record, "customPropertyDefs", writeCustomPropertyDefs(world.customPropertyDefs, encoder));
    encoder.add(record, "customProperties", writeCustomProperties(world.customProperties, encoder));
    encoder.add(record, "metabody", itemArray(world.bodies(), encoder, writeBodyRecord));
    encoder.add(record, "metajoint", itemArray(world.joints(), encoder, writeJointRecord));
    encoder.add(record, "metaimage", itemArray(world.images(), encoder, writeImageRecord));
    encoder.add(record, "metasampler", itemArray(world.samplers(), encoder, writeSamplerRecord));
    encoder.add(record, "metaobject", itemArray(world.objects(), encoder, writeObjectRecord));
    Value bitplanes(rapidjson::kObjectType);
    encoder.addStringList(bitplanes, "names", world.collisionBitplaneNames);
    encoder.add(record, "collisionbitplanes", std::move(bitplanes));
    encoder.add(record, "systemhooks", writeSystemHooks(world.afterExportHook, encoder));
    encoder.addStringList(record, "excludedJsonExportProperties", world.excludedJsonExportProperties);
    encoder.addString(record, "activeScript", world.activeScript);
    return record;
}
