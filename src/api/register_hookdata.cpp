#include "api/scriptapisupport.h"
#include "api/scripthookdata.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "model/metaworld.h"

#include <string>

using namespace AngelScript;

namespace
{
std::string eventName() { return ScriptHookData::current().eventName.toStdString(); }
std::string manipulationType() { return ScriptHookData::current().manipulationType.toStdString(); }

template <class Handle, class Item, ItemKind kind, Handle (*make)(const Item*)>
CScriptArray* handles(const std::vector<ItemId>& ids, const char* declaration)
{
    std::vector<const Item*> items;
    if (MetaWorld* world = ScriptApi::world())
        for (ItemId id : ids)
            if (auto* item = static_cast<const Item*>(world->findItem(kind, id)))
                items.push_back(item);
    return ScriptApi::handleArray<Handle>(declaration, items, make);
}

CScriptArray* droppedImages()
{
    return handles<ScriptImage, MetaImage, ItemKind::Image, ScriptApi::imageHandle>(
        ScriptHookData::current().droppedImages, "array<image>");
}
CScriptArray* bodies()
{
    return handles<ScriptBody, MetaBody, ItemKind::Body, ScriptApi::bodyHandle>(ScriptHookData::current().bodies,
                                                                                "array<body>");
}
CScriptArray* fixtures()
{
    return handles<ScriptFixture, MetaFixture, ItemKind::Fixture, ScriptApi::fixtureHandle>(
        ScriptHookData::current().fixtures, "array<fixture>");
}
CScriptArray* joints()
{
    return handles<ScriptJoint, MetaJoint, ItemKind::Joint, ScriptApi::jointHandle>(ScriptHookData::current().joints,
                                                                                    "array<joint>");
}
CScriptArray* images()
{
    return handles<ScriptImage, MetaImage, ItemKind::Image, ScriptApi::imageHandle>(ScriptHookData::current().images,
                                                                                    "array<image>");
}
CScriptArray* samplers()
{
    return handles<ScriptSampler, MetaSampler, ItemKind::Sampler, ScriptApi::samplerHandle>(
        ScriptHookData::current().samplers, "array<sampler>");
}
CScriptArray* objects()
{
    return handles<ScriptObject, MetaObject, ItemKind::Object, ScriptApi::objectHandle>(
        ScriptHookData::current().objects, "array<object>");
}
CScriptArray* vertices()
{
    CScriptArray* array = ScriptApi::newArray("array<vertex>");
    MetaWorld* world = ScriptApi::world();
    for (const auto& [fixture, index] : ScriptHookData::current().vertices) {
        ScriptVertex v = ScriptApi::vertexHandle(world ? world->findFixture(fixture) : nullptr, index);
        if (array && v.valid)
            ScriptApi::appendToArray(*array, &v);
    }
    return array;
}
} // namespace

void registerHookDataFunctions(ScriptRegistrar& reg)
{
    const asDWORD cc = asCALL_CDECL;
    reg.global("string getHookEventName()", asFUNCTION(eventName), cc);
    reg.global("string getManipulationType()", asFUNCTION(manipulationType), cc);
    reg.global("image[]@ getDroppedImages()", asFUNCTION(droppedImages), cc);
    reg.global("body[]@ getManipulatedBodies()", asFUNCTION(bodies), cc);
    reg.global("fixture[]@ getManipulatedFixtures()", asFUNCTION(fixtures), cc);
    reg.global("joint[]@ getManipulatedJoints()", asFUNCTION(joints), cc);
    reg.global("vertex[]@ getManipulatedVertices()", asFUNCTION(vertices), cc);
    reg.global("image[]@ getManipulatedImages()", asFUNCTION(images), cc);
    reg.global("sampler[]@ getManipulatedSamplers()", asFUNCTION(samplers), cc);
    reg.global("object[]@ getManipulatedObjects()", asFUNCTION(objects), cc);
}
