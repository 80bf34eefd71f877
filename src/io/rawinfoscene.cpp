#include "io/rawinfoscene.h"

#include "base/log.h"
#include "io/customrecord.h"
#include "io/jsonvalues.h"
#include "model/metaworld.h"

#include <box2d/box2d.h>

using rapidjson::Value;

namespace
{
const Value* arrayMember(const Value& object, const char* key)
{
    const Value* v = jsonMember(object, key);
    return v && v->IsArray() ? v : nullptr;
}

void readWorldSettings(const Value& root, MetaWorld& world)
{
    WorldSettings& s = world.settings;
    s.gravity = readVec2(root, "gravity", s.gravity);
    s.allowSleep = readBool(root, "allowSleep", s.allowSleep);
    s.autoClearForces = readBool(root, "autoClearForces", s.autoClearForces);
    s.warmStarting = readBool(root, "warmStarting", s.warmStarting);
    s.continuousPhysics = readBool(root, "continuousPhysics", s.continuousPhysics);
    s.subStepping = readBool(root, "subStepping", s.subStepping);
    s.stepsPerSecond = readFloat(root, "stepsPerSecond", s.stepsPerSecond);
    s.positionIterations = readInt(root, "positionIterations", s.positionIterations);
    s.velocityIterations = readInt(root, "velocityIterations", s.velocityIterations);
    if (const Value* planes = jsonMember(root, "collisionbitplanes"))
        world.collisionBitplaneNames = readStringList(*planes, "names");
    readCustomProperties(jsonMember(root, "customProperties"), &world.customProperties);
}

// Vertices of a chain record; a closed chain repeats its first vertex at the end.
std::vector<Vec2> chainVertices(const Value& chain, bool* closed)
{
    std::vector<Vec2> vertices = readPointList(chain, "vertices");
    *closed = vertices.size() > 2 && vertices.front() == vertices.back();
    if (*closed)
        vertices.pop_back();
    return vertices;
}

// Gives the fixture the shape of its record; false when the record's shape is refused.
bool readShape(const Value& record, MetaFixture& fixture, int fixtureIndex)
{
    if (const Value* circle = jsonMember(record, "circle")) {
        fixture.setVertices({readVec2(*circle, "center", {})});
        fixture.addShape(ShapeType::Circle, readFloat(*circle, "radius", 0.5f));
        return true;
    }
    if (const Value* polygon = jsonMember(record, "polygon")) {
        std::vector<Vec2> vertices = readPointList(*polygon, "vertices");
        if (vertices.size() > size_t(b2_maxPolygonVertices)) {
            plaxLog(LOG_WARNING, "Ignoring polygon fixture with too many vertices.\n");
            return false;
        }
        if (vertices.size() < 2) {
            plaxLog(LOG_WARNING, "Ignoring polygon fixture less than two vertices.\n");
            return false;
        }
        const bool edge = vertices.size() == 2;
        if (edge)
            plaxLog(LOG_WARNING, "Creating edge shape instead of polygon with two vertices.\n");
        fixture.setVertices(std::move(vertices));
        fixture.addShape(edge ? ShapeType::Line : ShapeType::Polygon, 0);
        return true;
    }
    if (const Value* edge = jsonMember(record, "edge")) {
        fixture.setVertices({readVec2(*edge, "vertex1", {}), readVec2(*edge, "vertex2", {})});
        fixture.addShape(ShapeType::Line, 0);
        return true;
    }
    if (const Value* chain = jsonMember(record, "chain")) {
        bool closed = false;
        fixture.setVertices(chainVertices(*chain, &closed));
        fixture.addShape(closed ? ShapeType::Loop : ShapeType::Line, 0);
        return true;
    }
    if (const Value* loop = jsonMember(record, "loop")) {
        bool closed = false;
        fixture.setVertices(chainVertices(*loop, &closed));
        fixture.addShape(ShapeType::Loop, 0);
        return true;
    }
    plaxLog(LOG_WARNING, "Failed to load fixture of unknown type: %d", fixtureIndex);
    return false;
}

void readFixture(const Value& record, MetaWorld& world, MetaBody* body, int fixtureIndex)
{
    auto fixture = std::make_unique<MetaFixture>();
    fixture->restitution = readFloat(record, "restitution", 0);
    fixture->friction = readFloat(record, "friction", 0.2f);
    fixture->density = MetaFixture::validDensity(readFloat(record, "density", 0));
    fixture->sensor = readBool(record, "sensor", false);
    fixture->filterCategoryBits = readInt(record, "filter-categoryBits", 1);
    fixture->filterMaskBits = readInt(record, "filter-maskBits", 0xFFFF);
    fixture->filterGroupIndex = readInt(record, "filter-groupIndex", 0);
    readCustomProperties(jsonMember(record, "customProperties"), &fixture->customProperties);
    if (!readShape(record, *fixture, fixtureIndex))
        return;
    MetaFixture* added = world.addFixture(body, std::move(fixture), 0, readString(record, "name"));
    if (added) {
        MetaShape& shape = added->shape(0);
        shape.conformToVertexCount(added->description(), 0);
    }
}

MetaBody* readBody(const Value& record, MetaWorld& world)
{
    auto body = std::make_unique<MetaBody>();
    const int type = readInt(record, "type", 0);
    body->type = type == 2 ? BodyType::Dynamic : type == 1 ? BodyType::Kinematic : BodyType::Static;
    body->position = readVec2(record, "position", {});
    body->angle = readFloat(record, "angle", 0);
    body->linearVelocity = readVec2(record, "linearVelocity", {});
    body->angularVelocity = readFloat(record, "angularVelocity", 0);
    body->linearDamping = readFloat(record, "linearDamping", 0);
    body->angularDamping = readFloat(record, "angularDamping", 0);
    body->gravityScale = readFloat(record, "gravityScale", 1);
    body->bullet = readBool(record, "bullet", false);
    body->sleepingAllowed = readBool(record, "allowSleep", true);
    body->awake = readBool(record, "awake", true);
    body->active = readBool(record, "active", true);
    body->fixedRotation = readBool(record, "fixedRotation", false);
    body->massDataMass = readFloat(record, "massData-mass", 0);
    body->massDataCenter = readVec2(record, "massData-center", {});
    body->massDataI = readFloat(record, "massData-I", 0);
    readCustomProperties(jsonMember(record, "customProperties"), &body->customProperties);
    MetaBody* added = world.addBody(std::move(body), 0, readString(record, "name"));
    if (!added)
        return nullptr;
    if (const Value* fixtures = arrayMember(record, "fixture")) {
        int index = 0;
        for (const Value& f : fixtures->GetArray()) {
            if (f.IsObject())
                readFixture(f, world, added, index);
            ++index;
        }
    }
    return added;
}

MetaBody* bodyAt(const std::vector<MetaBody*>& bodies, const Value& record, const char* key, const char* which)
{
    const int index = readInt(record, key, -1);
    if (index < 0 || size_t(index) >= bodies.size() || !bodies[size_t(index)]) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not find body %1 for joint (body id %2)")
                                 .arg(QLatin1String(which))
                                 .arg(index));
        return nullptr;
    }
    return bodies[size_t(index)];
}

void readJoint(const Value& record, MetaWorld& world, const std::vector<MetaBody*>& bodies)
{
    const QString typeText = readString(record, "type");
    const JointType type = MetaJoint::typeFromWord(typeText);
    if (type == JointType::Unknown) {
        plaxLog(LOG_WARNING, QStringLiteral("Ignoring joint of a type a scene cannot hold: %1").arg(typeText));
        return;
    }
    auto joint = std::make_unique<MetaJoint>();
    joint->type = type;
    joint->bodyA = bodyAt(bodies, record, "bodyA", "A");
    joint->bodyB = bodyAt(bodies, record, "bodyB", "B");
    if (!joint->bodyA || !joint->bodyB)
        return;
    if (joint->bodyA == joint->bodyB) {
        plaxLog(LOG_WARNING, "Ignoring addJoint (both bodies are the same)");
        return;
    }
    joint->collideConnected = readBool(record, "collideConnected", false);
    joint->anchorA = readVec2(record, "anchorA", {});
    joint->anchorB = readVec2(record, "anchorB", {});
    joint->localAxisA = readVec2(record, "localAxisA", joint->localAxisA);
    joint->referenceAngle = readFloat(record, "refAngle", 0);
    joint->enableLimit = readBool(record, "enableLimit", false);
    joint->lowerLimit = readFloat(record, "lowerLimit", 0);
    joint->upperLimit = readFloat(record, "upperLimit", 0);
    joint->enableMotor = readBool(record, "enableMotor", false);
    joint->motorSpeed = readFloat(record, "motorSpeed", 0);
    joint->maxMotorTorque = readFloat(record, "maxMotorTorque", 0);
    joint->maxMotorForce = readFloat(record, "maxMotorForce", 0);
    joint->length = readFloat(record, "length", joint->length);
    joint->frequency = readFloat(record, "frequency", 0);
    joint->dampingRatio = readFloat(record, "dampingRatio", 0);
    joint->springFrequency = readFloat(record, "springFrequency", 0);
    joint->springDampingRatio = readFloat(record, "springDampingRatio", 0);
    joint->maxForce = readFloat(record, "maxForce", 0);
    joint->maxTorque = readFloat(record, "maxTorque", 0);
    joint->maxLength = readFloat(record, "maxLength", joint->maxLength);
    joint->correctionFactor = readFloat(record, "correctionFactor", joint->correctionFactor);
    readCustomProperties(jsonMember(record, "customProperties"), &joint->customProperties);
    world.addJoint(std::move(joint), 0, readString(record, "name"));
}

void readImage(const Value& record, MetaWorld& world, const std::vector<MetaBody*>& bodies)
{
    auto image = std::make_unique<MetaImage>();
    const int bodyIndex = readInt(record, "body", -1);
    if (bodyIndex >= 0 && size_t(bodyIndex) < bodies.size())
        image->body = bodies[size_t(bodyIndex)];
    image->file = readString(record, "file");
    image->center = readVec2(record, "center", {});
    image->angle = readFloat(record, "angle", 0);
    image->scale = readFloat(record, "scale", 1);
    image->aspectScale = readFloat(record, "aspectScale", 1);
    image->opacity = readFloat(record, "opacity", 1);
    image->flip = readBool(record, "flip", false);
    image->filter = readInt(record, "filter", 1);
    image->renderOrder = readFloat(record, "renderOrder", 0);
    image->colorTint = readColor(record, "colorTint", image->colorTint);
    readCustomProperties(jsonMember(record, "customProperties"), &image->customProperties);
    world.addImage(std::move(image), 0, readString(record, "name"));
}

void readObject(const Value& record, MetaWorld& world)
{
    auto object = std::make_unique<MetaObject>();
    object->file = readString(record, "path");
    object->position = readVec2(record, "position", {});
    object->angle = readFloat(record, "angle", 0);
    object->scale = readFloat(record, "scale", 1);
    object->flip = readBool(record, "flip", false);
    readCustomProperties(jsonMember(record, "customProperties"), &object->customProperties);
    world.addObject(std::move(object), 0, readString(record, "name"));
}
} // namespace

std::unique_ptr<MetaWorld> createWorldFromRawInfo(const Value& root, const QString&)
{
    if (!root.IsObject())
        return nullptr;
    auto world = std::make_unique<MetaWorld>();
    readWorldSettings(root, *world);

    // Records refer to bodies by their position in the array; a refused
    // record keeps its place as null so later indices stay right.
    std::vector<MetaBody*> bodies;
    if (const Value* array = arrayMember(root, "body")) {
        for (const Value& record : array->GetArray())
            bodies.push_back(record.IsObject() ? readBody(record, *world) : nullptr);
    }
    if (const Value* array = arrayMember(root, "joint")) {
        for (const Value& record : array->GetArray()) {
            if (record.IsObject())
                readJoint(record, *world, bodies);
        }
    }
    if (const Value* array = arrayMember(root, "image")) {
        for (const Value& record : array->GetArray()) {
            if (record.IsObject())
                readImage(record, *world, bodies);
        }
    }
    if (const Value* array = arrayMember(root, "object")) {
        for (const Value& record : array->GetArray()) {
            if (record.IsObject())
                readObject(record, *world);
        }
    }
    return world;
}
