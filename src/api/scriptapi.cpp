#include "api/scriptapi.h"

#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "api/scripttransform.h"
#include "base/log.h"

#include <vector>

namespace
{
using RegistrationStep = void (*)(ScriptRegistrar&);

struct TypeStep
{
    const char* typeName;
    RegistrationStep registerType;
};

// The value type registered before the handle types.
const std::vector<TypeStep> kEarlyTypes = {
    {"vec2", registerVec2},
};

// The handle types go here, in this order: body, vertex, fixture, joint,
// shape, image, sampler, path, world, object. They may use color and aabb in
// their declarations because those types are declared up front.
const std::vector<TypeStep> kHandleTypes = {
    {"body", registerBody},       {"vertex", registerVertex},   {"fixture", registerFixture}, {"joint", registerJoint},
    {"shape", registerShape},     {"image", registerImage},     {"sampler", registerSampler}, {"path", registerPath},
    {"world", registerWorld},     {"object", registerObject},
};

// The value types registered together with the global functions.
const std::vector<TypeStep> kLateTypes = {
    {"color", registerColor},
    {"aabb", registerAabb},
};

const RegistrationStep kGlobalFunctions[] = {
    registerPrintFunctions,
    registerHandlePrintFunctions,
    registerWorldFunctions,
    registerEditorStateFunctions,
    registerSearchFunctions,
    registerSortFunctions,
    TransformApi::registerTransforms,
    TransformApi::registerDuplicateAndStep,
    registerHookDataFunctions,
    registerQueryFunctions,
    registerNumberFunctions,
    registerJsonFunctions,
    registerFileFunctions,
    registerExportExclusionFunctions,
    registerDocumentSettingsFunctions,
};

void registerTypes(ScriptRegistrar& reg, const std::vector<TypeStep>& steps)
{
    for (const TypeStep& step : steps) {
        plaxLog(LOG_DEBUG, "Registering script types: %s", step.typeName);
        step.registerType(reg);
    }
}
} // namespace

bool registerScriptApi(AngelScript::asIScriptEngine* engine)
{
    ScriptRegistrar reg(engine);
    registerScriptAddOns(reg);
    declareVec2Type(reg);
    declareColorType(reg);
    declareAabbType(reg);
    declareHandleTypes(reg);

    plaxLog(LOG_DEBUG, "Initializing script types");
    registerTypes(reg, kEarlyTypes);
    registerTypes(reg, kHandleTypes);
    plaxLog(LOG_DEBUG, "Initializing global script functions");
    registerTypes(reg, kLateTypes);
    plaxLog(LOG_DEBUG, "Registering global script functions");
    for (RegistrationStep step : kGlobalFunctions)
        step(reg);
    return reg.failures() == 0;
}
