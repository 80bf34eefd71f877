#include "io/bodyrecord.h"

#include "base/log.h"
#include "io/customrecord.h"
#include "io/recordsupport.h"
#include "model/metaworld.h"

#include <cmath>

namespace
{
using rapidjson::Value;

rapidjson::Value writeShapeRecord(const MetaShape& shape, const std::vector<Vec2>& vertices, const JsonEncoder& encoder)
{
    Value record(rapidjson::kObjectType);
    encoder.addString(record, "type", MetaShape::typeWord(shape.type()));
    if (shape.radius() != 0)
        encoder.addFloat(record, "radius", shape.radius());
    encoder.addPointList(record, "vertices", vertices);
    return record;
}

// Type of a body record; an unknown or mistyped type is reported and made static.
BodyType readBodyType(const Value& record)
{
    const Value* type = jsonMember(record, "type");
    if (!type)
        return BodyType::Static;
    const QString word = decodeString(type);
    for (BodyType t : {BodyType::Static, BodyType::Kinematic, BodyType::Dynamic}) {
        if (type->IsString() && word == MetaBody::typeWord(t))
            return t;
    }
    plaxLog(LOG_WARNING,
            QStringLiteral("Unknown body type %1. Setting body type to static").arg(describeJsonValue(type)));
    return BodyType::Static;
}

} // namespace

Value writeFixtureRecord(const MetaFixture& fixture, const JsonEncoder& encoder)
{
    Value record(rapidjson::kObjectType);
    encoder.addUint(record, "id", fixture.id());
    encoder.addString(record, "name", fixture.name());
    encoder.addFloat(record, "restitution", fixture.restitution);
    encoder.addFloat(record, "friction", fixture.friction);
    encoder.addFloat(record, "density", fixture.density);
    encoder.addBool(record, "sensor", fixture.sensor);
    encoder.addInt(record, "filter-categoryBits", fixture.filterCategoryBits);
    encoder.addInt(record, "filter-maskBits", fixture.filterMaskBits);
    encoder.addInt(record, "filter-groupIndex", fixture.filterGroupIndex);
    Value shapes(rapidjson::kArrayType);
    for (const MetaShape& shape : fixture.shapes())
        shapes.PushBack(writeShapeRecord(shape, fixture.vertices(), encoder), encoder.allocator());
    encoder.add(record, "shapes", std::move(shapes));
    encoder.add(record, "customProperties", writeCustomProperties(fixture.customProperties, encoder));
    return record;
}

Value writeBodyRecord(const MetaBody& body, const JsonEncoder& encoder)
{
    Value record(rapidjson::kObjectType);
    encoder.addUint(record, "id", body.id());
    if (!body.name().isEmpty())
        encoder.addString(record, "name", body.name());
    encoder.addString(record, "type", MetaBody::typeWord(body.type));
    encoder.addVec2(record, "position", body.position);
    encoder.addFloat(record, "angle", body.angle);
    encoder.addVec2(record, "linearVelocity", body.linearVelocity);
    encoder.addFloat(record, "angularVelocity", body.angularVelocity);
    encoder.addFloat(record, "linearDamping", body.linearDamping);
    encoder.addFloat(record, "angularDamping", body.angularDamping);
    encoder.addFloat(record, "gravityScale", body.gravityScale);
    encoder.addBool(record, "bullet", body.bullet);
    encoder.addBool(record, "sleepingAllowed", body.sleepingAllowed);
    encoder.addBool(record, "awake", body.awake);
    encoder.addBool(record, "active", body.active);
    encoder.addBool(record, "fixedRotation", body.fixedRotation);
    encoder.addFloat(record, "massData-mass", body.massDataMass);
    encoder.addVec2(record, "massData-center", body.massDataCenter);
    encoder.addFloat(record, "massData-I", body.massDataI);
    encoder.add(record, "customProperties", writeCustomProperties(body.customProperties, encoder));
    Value fixtures(rapidjson::kArrayType);
    fixtures.Reserve(rapidjson::SizeType(body.fixtures().size()), encoder.allocator());
    for (const auto& fixture : body.fixtures())
        fixtures.PushBack(writeFixtureRecord(*fixture, encoder), encoder.allocator());
    encoder.add(record, "fixture", std::move(fixtures));
    return record;
}

MetaFixture* readFixtureRecord(MetaWorld& world, MetaBody* body, const Value& record, ItemId id)
{
    if (!body || body->world() != &world)
        return nullptr;
    auto fixture = std::make_unique<MetaFixture>();
    fixture->restitution = readFloat(record, "restitution", fixture->restitution);
    fixture->friction = readFloat(record, "friction", fixture->friction);
    fixture->density = MetaFixture::validDensity(readFloat(record, "density", fixture->density));
    fixture->sensor = readBool(record, "sensor", fixture->sensor);
    fixture->filterCategoryBits = readInt(record, "filter-categoryBits", fixture->filterCategoryBits);
    fixture->filterMaskBits = readInt(record, "filter-maskBits", fixture->filterMaskBits);
    fixture->filterGroupIndex = readInt(record, "filter-groupIndex", fixture->filterGroupIndex);

    const Value* vertices = nullptr;
    if (const Value* shapes = jsonMember(record, "shapes"); shapes && shapes->IsArray()) {
        for (const Value& shape : shapes->GetArray()) {
            if (!shape.IsObject())
                continue;
            fixture->addShape(MetaShape::typeFromWord(readString(shape, "type")), readFloat(shape, "radius", 0));
            if (!vertices)
                vertices = jsonMember(shape, "vertices");
        }
    }
    if (!vertices)
        vertices = jsonMember(record, "vertices");
    fixture->setVertices(decodePointList(vertices));
    readCustomProperties(jsonMember(record, "customProperties"), &fixture->customProperties);

    const ItemId fixtureId = resolveRecordId(world, ItemKind::Fixture, id, true);
    if (fixtureId == 0)
        return nullptr;
    return world.addFixture(body, std::move(fixture), fixtureId, readString(record, "name"));
}

MetaBody* readBodyRecord(MetaWorld& world, const Value& record, ItemId id, int* skippedFixtures)
{
    auto body = std::make_unique<MetaBody>();
    body->type = readBodyType(record);
    body->position = readVec2(record, "position", body->position);
    body->angle = readFloat(record, "angle", body->angle);
    body->linearVelocity = readVec2(record, "linearVelocity", body->linearVelocity);
    body->angularVelocity = readFloat(record, "angularVelocity", body->angularVelocity);
    body->linearDamping = readFloat(record, "linearDamping", body->linearDamping);
    body->angularDamping = readFloat(record, "angularDamping", body->angularDamping);
    body->gravityScale = readFloat(record, "gravityScale", body->gravityScale);
    body->bullet = readBool(record, "bullet", body->bullet);
    body->sleepingAllowed = readBool(record, "sleepingAllowed", body->sleepingAllowed);
    body->awake = readBool(record, "awake", body->awake);
    body->active = readBool(record, "active", body->active);
    body->fixedRotation = readBool(record, "fixedRotation", body->fixedRotation);
    body->massDataMass = readFloat(record, "massData-mass", body->massDataMass);
    body->massDataCenter = readVec2(record, "massData-center", body->massDataCenter);
    body->massDataI = readFloat(record, "massData-I", body->massDataI);
    readCustomProperties(jsonMember(record, "customProperties"), &body->customProperties);

    const ItemId bodyId = resolveRecordId(world, ItemKind::Body, id);
    if (bodyId == 0)
        return nullptr;
    MetaBody* added = world.addBody(std::move(body), bodyId, readString(record, "name"));
    if (!added)
        return nullptr;

    if (const Value* fixtures = jsonMember(record, "fixture"); fixtures && fixtures->IsArray()) {
        for (const Value& fixtureRecord : fixtures->GetArray()) {
            const ItemId fixtureId = readUint(fixtureRecord, "id", 0);
            if (fixtureId == 0) {
                if (skippedFixtures)
                    ++*skippedFixtures;
                continue;
            }
            readFixtureRecord(world, added, fixtureRecord, fixtureId);
        }
    }
    return added;
}

void conformBodyShapes(MetaBody& body)
{
    for (const auto& fixture : body.fixtures()) {
        const QString description = fixture->description();
        for (size_t i = 0; i < fixture->shapes().size(); ++i)
            fixture->shape(i).conformToVertexCount(description, int(i));
    }
}
