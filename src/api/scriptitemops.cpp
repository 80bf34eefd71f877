#include "api/scriptitemops.h"

#include "api/scriptapisupport.h"
#include "base/log.h"
#include "editing/itemcommands.h"
#include "editing/selection.h"
#include "editing/vertexcommands.h"
#include "engine/objectinstancehost.h"
#include "io/recordtext.h"
#include "model/metaworld.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

namespace ItemOps
{
namespace
{
// Records and log messages use the scene file's exact (hex) floats, so that
// an item re-created by undo is bit-identical.
const JsonStyle kExactStyle;

bool idIsFree(MetaWorld& world, ItemKind kind, ItemId id)
{
    if (id == 0 || !world.registry(kind).contains(id))
        return true;
    plaxLog(LOG_WARNING, QStringLiteral("Ignoring attempt to add %1 with id %2: the id is in use")
                             .arg(itemKindWord(kind))
                             .arg(id));
    return false;
}

QString deleteMacroText(const char* word)
{
    return QCoreApplication::translate("ItemOps", "delete 1 %1").arg(QCoreApplication::translate("ItemOps", word));
}

template <class Item, class Command>
void recordAdd(Item* item)
{
    if (item)
        ScriptApi::record<Command>(item->id(), recordText(*item));
}

void deselectForDelete(MetaItem& item)
{
    ScriptApi::setSelected(item, false);
}

ObjectInstanceHost* objectHost()
{
    ScriptDocument* doc = ScriptApi::document();
    return doc ? doc->objectInstanceHost() : nullptr;
}

void attachObject(MetaObject* object)
{
    if (ObjectInstanceHost* host = objectHost(); host && object)
        host->attach(*object);
}
} // namespace

QString recordText(const MetaItem& item)
{
    return itemRecordToJson(item, kExactStyle, false);
}

MetaBody* addBody(ItemId id, const QString& json)
{
    MetaWorld* world = ScriptApi::world();
    if (!world || !idIsFree(*world, ItemKind::Body, id))
        return nullptr;
    MetaBody* body = readBodyJson(*world, json, id);
    recordAdd<MetaBody, AddBodyCommand>(body);
    return body;
}

MetaFixture* addFixture(MetaBody& body, ItemId id, const QString& json)
{
    MetaWorld* world = ScriptApi::world();
    if (!world || !idIsFree(*world, ItemKind::Fixture, id))
        return nullptr;
    MetaFixture* fixture = readFixtureJson(*world, &body, json, id);
    if (fixture)
        ScriptApi::record<AddFixtureCommand>(body.id(), fixture->id(), recordText(*fixture));
    return fixture;
}

MetaJoint* addJoint(ItemId id, const QString& json)
{
    MetaWorld* world = ScriptApi::world();
    if (!world || !idIsFree(*world, ItemKind::Joint, id))
        return nullptr;
    MetaJoint* joint = readJointJson(*world, json, id);
    if (joint && (!joint->bodyA || !joint->bodyB || joint->bodyA == joint->bodyB)) {
        plaxLog(LOG_ERROR, joint->bodyA && joint->bodyA == joint->bodyB
                               ? "Cannot set same body for both bodyA and bodyB of joint."
                               : "Could not find the bodies of the joint to add");
        world->removeJoint(joint);
        return nullptr;
    }
    recordAdd<MetaJoint, AddJointCommand>(joint);
    return joint;
}

MetaImage* addImage(ItemId id, const QString& json)
{
    MetaWorld* world = ScriptApi::world();
    if (!world || !idIsFree(*world, ItemKind::Image, id))
        return nullptr;
    MetaImage* image = readImageJson(*world, json, id);
    recordAdd<MetaImage, AddImageCommand>(image);
    return image;
}

MetaSampler* addSampler(ItemId id, const QString& json)
{
    MetaWorld* world = ScriptApi::world();
    if (!world || !idIsFree(*world, ItemKind::Sampler, id))
        return nullptr;
    MetaSampler* sampler = readSamplerJson(*world, json, id);
    recordAdd<MetaSampler, AddSamplerCommand>(sampler);
    return sampler;
}

MetaObject* addObject(ItemId id, const QString& json)
{
    MetaWorld* world = ScriptApi::world();
    if (!world || !idIsFree(*world, ItemKind::Object, id))
        return nullptr;
    MetaObject* object = readObjectJson(*world, json, id);
    recordAdd<MetaObject, AddObjectCommand>(object);
    attachObject(object);
    return object;
}

MetaImage* addNewImage(const QString& file, Vec2 center)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return nullptr;
    auto image = std::make_unique<MetaImage>();
    image->file = file;
    image->center = center;
    MetaImage* added = world->addImage(std::move(image), 0, world->uniqueName(ItemKind::Image));
    recordAdd<MetaImage, AddImageCommand>(added);
    return added;
}

MetaSampler* addNewSampler(Vec2 center)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return nullptr;
    auto sampler = std::make_unique<MetaSampler>();
    sampler->center = center;
    MetaSampler* added = world->addSampler(std::move(sampler), 0, world->uniqueName(ItemKind::Sampler));
    recordAdd<MetaSampler, AddSamplerCommand>(added);
    return added;
}

MetaObject* addNewObject(const QString& file, Vec2 position)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return nullptr;
    auto object = std::make_unique<MetaObject>();
    object->file = file;
    object->position = position;
    MetaObject* added = world->addObject(std::move(object), 0, world->uniqueName(ItemKind::Object));
    recordAdd<MetaObject, AddObjectCommand>(added);
    attachObject(added);
    return added;
}

void deleteBody(MetaBody& body)
{
    MetaWorld* world = body.world();
    ScriptDocument* doc = ScriptApi::document();
    if (!world || !doc)
        return;
    UndoMacroScope macro(doc->undoStack(), deleteMacroText("body"));

    std::vector<MetaJoint*> joints;
    for (const auto& joint : world->joints()) {
        if (joint->bodyA == &body || joint->bodyB == &body)
            joints.push_back(joint.get());
    }
    for (MetaJoint* joint : joints)
        deleteJoint(*joint);

    std::vector<MetaFixture*> fixtures;
    for (const auto& fixture : body.fixtures())
        fixtures.push_back(fixture.get());
    for (MetaFixture* fixture : fixtures)
        deleteFixture(*fixture);

    std::vector<MetaImage*> images;
    for (const auto& image : world->images()) {
        if (image->body == &body)
            images.push_back(image.get());
    }
    for (MetaImage* image : images)
        deleteImage(*image);

    std::vector<MetaSampler*> samplers;
    for (const auto& sampler : world->samplers()) {
        if (sampler->body == &body)
            samplers.push_back(sampler.get());
    }
    for (MetaSampler* sampler : samplers)
        deleteSampler(*sampler);

    deselectForDelete(body);
    ScriptApi::record<DeleteBodyCommand>(body.id(), recordText(body));
    world->removeBody(&body);
}

void deleteFixture(MetaFixture& fixture)
{
    MetaWorld* world = fixture.world();
    ScriptDocument* doc = ScriptApi::document();
    if (!world || !doc || !fixture.body())
        return;
    UndoMacroScope macro(doc->undoStack(), deleteMacroText("fixture"));
    Selection& selection = doc->selection();
    const std::vector<Selection::VertexRef> selected = selection.vertices();
    for (const Selection::VertexRef& v : selected) {
        if (v.fixture == fixture.id()) {
            selection.removeVertex(v.fixture, v.index);
            ScriptApi::record<DeselectVertexCommand>(v.fixture, v.index);
        }
    }
    deselectForDelete(fixture);
    ScriptApi::record<DeleteFixtureCommand>(fixture.body()->id(), fixture.id(), recordText(fixture));
    world->removeFixture(&fixture);
}

void deleteJoint(MetaJoint& joint)
{
    MetaWorld* world = joint.world();
    if (!world)
        return;
    deselectForDelete(joint);
    ScriptApi::record<DeleteJointCommand>(joint.id(), recordText(joint));
    world->removeJoint(&joint);
}

void deleteImage(MetaImage& image)
{
    MetaWorld* world = image.world();
    ScriptDocument* doc = ScriptApi::document();
    if (!world || !doc)
        return;
    UndoMacroScope macro(doc->undoStack(), deleteMacroText("image"));
    deselectForDelete(image);
    ScriptApi::record<DeleteImageCommand>(image.id(), recordText(image));
    world->removeImage(&image);
}

void deleteSampler(MetaSampler& sampler)
{
    MetaWorld* world = sampler.world();
    ScriptDocument* doc = ScriptApi::document();
    if (!world || !doc)
        return;
    UndoMacroScope macro(doc->undoStack(), deleteMacroText("sampler"));
    deselectForDelete(sampler);
    ScriptApi::record<DeleteSamplerCommand>(sampler.id(), recordText(sampler));
    world->removeSampler(&sampler);
}

void deleteObject(MetaObject& object)
{
    MetaWorld* world = object.world();
    if (!world)
        return;
    deselectForDelete(object);
    ScriptApi::record<DeleteObjectCommand>(object.id(), recordText(object));
    if (ObjectInstanceHost* host = objectHost())
        host->detach(object);
    world->removeObject(&object);
}
} // namespace ItemOps
