#include "io/b2djson.h"

#include "io/b2djsonimage.h"
#include "io/b2djsonobject.h"
#include "io/customrecord.h"
#include "io/rawinfomembers.h"
#include "model/metafixture.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <box2d/box2d.h>

namespace
{
Vec2 v(const b2Vec2& p)
{
    return {p.x, p.y};
}

std::vector<Vec2> points(const b2Vec2* vertices, int count)
{
    std::vector<Vec2> list(size_t(std::max(count, 0)));
    for (int i = 0; i < count; ++i)
        list[size_t(i)] = v(vertices[i]);
    return list;
}

rapidjson::Value shapeValue(const b2Shape& shape, const JsonEncoder& enc, const ExportPropertyFilter& filter,
                            const char** key)
{
    rapidjson::Value value(rapidjson::kObjectType);
    switch (shape.GetType()) {
    case b2Shape::e_circle: {
        const auto& circle = static_cast<const b2CircleShape&>(shape);
        RawInfoMembers m(enc, filter, "/world/body/fixture/circle/");
        m.addVec2(value, "center", v(circle.m_p));
        m.addFloat(value, "radius", circle.m_radius);
        *key = "circle";
        break;
    }
    case b2Shape::e_polygon: {
        const auto& polygon = static_cast<const b2PolygonShape&>(shape);
        RawInfoMembers m(enc, filter, "/world/body/fixture/polygon/");
        m.addPointList(value, "vertices", points(polygon.m_vertices, polygon.m_count));
        *key = "polygon";
        break;
    }
    case b2Shape::e_edge: {
        const auto& edge = static_cast<const b2EdgeShape&>(shape);
        RawInfoMembers m(enc, filter, "/world/body/fixture/edge/");
        m.addVec2(value, "vertex1", v(edge.m_vertex1));
        m.addVec2(value, "vertex2", v(edge.m_vertex2));
        m.addBool(value, "hasVertex0", edge.m_oneSided);
        m.addBool(value, "hasVertex3", edge.m_oneSided);
        if (edge.m_oneSided) {
            m.addVec2(value, "vertex0", v(edge.m_vertex0));
            m.addVec2(value, "vertex3", v(edge.m_vertex3));
        }
        *key = "edge";
        break;
    }
    case b2Shape::e_chain: {
        const auto& chain = static_cast<const b2ChainShape&>(shape);
        RawInfoMembers m(enc, filter, "/world/body/fixture/chain/");
        // A loop repeats its first vertex at the end and has its neighbours;
        // an open chain's neighbours only make it collide from both sides.
        const bool loop = chain.m_count > 2 && chain.m_vertices[0] == chain.m_vertices[chain.m_count - 1];
        m.addPointList(value, "vertices", points(chain.m_vertices, chain.m_count));
        m.addBool(value, "hasPrevVertex", loop);
        m.addBool(value, "hasNextVertex", loop);
        if (loop) {
            m.addVec2(value, "prevVertex", v(chain.m_prevVertex));
            m.addVec2(value, "nextVertex", v(chain.m_nextVertex));
        }
        *key = "chain";
        break;
    }
    default:
        *key = nullptr;
        break;
    }
    return value;
}

rapidjson::Value fixtureValue(const BuiltFixture& built, const JsonEncoder& enc, const ExportPropertyFilter& filter)
{
    const b2Fixture& fixture = *built.fixture;
    RawInfoMembers m(enc, filter, "/world/body/fixture/");
    rapidjson::Value value(rapidjson::kObjectType);
    if (!built.name.isEmpty())
        m.addString(value, "name", built.name);
    m.addFloat(value, "restitution", fixture.GetRestitution());
    m.addFloat(value, "friction", fixture.GetFriction());
    m.addFloat(value, "density", fixture.GetDensity());
    m.addBool(value, "sensor", fixture.IsSensor());
    const b2Filter& f = fixture.GetFilterData();
    m.addInt(value, "filter-categoryBits", f.categoryBits);
    m.addInt(value, "filter-maskBits", f.maskBits);
    m.addInt(value, "filter-groupIndex", f.groupIndex);
    const char* key = nullptr;
    rapidjson::Value shape = shapeValue(*fixture.GetShape(), enc, filter, &key);
    if (key)
        m.add(value, key, std::move(shape));
    if (built.source && !built.source->customProperties.empty())
        m.add(value, "customProperties", writeCustomProperties(built.source->customProperties, enc));
    return value;
}

rapidjson::Value bodyValue(const BuiltBody& built, const JsonEncoder& enc, const ExportPropertyFilter& filter)
{
    const b2Body& body = *built.body;
    RawInfoMembers m(enc, filter, "/world/body/");
    rapidjson::Value value(rapidjson::kObjectType);
    if (!built.name.isEmpty())
        m.addString(value, "name", built.name);
    m.addInt(value, "type", int(body.GetType()));
    m.addVec2(value, "position", v(body.GetPosition()));
    m.addFloat(value, "angle", body.GetAngle());
    m.addVec2(value, "linearVelocity", v(body.GetLinearVelocity()));
    m.addFloat(value, "angularVelocity", body.GetAngularVelocity());
    m.addFloat(value, "linearDamping", body.GetLinearDamping());
    m.addFloat(value, "angularDamping", body.GetAngularDamping());
    m.addFloat(value, "gravityScale", body.GetGravityScale());
    m.addBool(value, "bullet", body.IsBullet());
    m.addBool(value, "allowSleep", body.IsSleepingAllowed());
    m.addBool(value, "awake", body.IsAwake());
    m.addBool(value, "active", body.IsEnabled());
    m.addBool(value, "fixedRotation", body.IsFixedRotation());
    b2MassData mass;
    body.GetMassData(&mass);
    m.addFloat(value, "massData-mass", mass.mass);
    m.addVec2(value, "massData-center", v(mass.center));
    m.addFloat(value, "massData-I", mass.I);
    if (m.allows("fixture")) {
        rapidjson::Value fixtures(rapidjson::kArrayType);
        for (const BuiltFixture& fixture : built.fixtures) {
            if (!fixture.reverseTwin)
                fixtures.PushBack(fixtureValue(fixture, enc, filter), enc.allocator());
        }
        enc.add(value, "fixture", std::move(fixtures));
    }
    if (built.source && !built.source->customProperties.empty())
        m.add(value, "customProperties", writeCustomProperties(built.source->customProperties, enc));
    return value;
}

const char* jointTypeText(int type)
{
    switch (type) {
    case JOINT_REVOLUTE: return "revolute";
    case JOINT_PRISMATIC: return "prismatic";
    case JOINT_DISTANCE: return "distance";
    case JOINT_PULLEY: return "pulley";
    case JOINT_MOUSE: return "mouse";
    case JOINT_GEAR: return "gear";
    case JOINT_WHEEL: return "wheel";
    case JOINT_WELD: return "weld";
    case JOINT_FRICTION: return "friction";
    case JOINT_ROPE: return "rope";
    case JOINT_MOTOR: return "motor";
    default: return "unknown";
    }
}

rapidjson::Value jointValue(const BuiltJoint& built, const JsonEncoder& enc, const ExportPropertyFilter& filter)
{
    const MetaJoint& j = *built.placed;
    RawInfoMembers m(enc, filter, "/world/joint/");
    rapidjson::Value value(rapidjson::kObjectType);
    m.addString(value, "type", QString::fromLatin1(jointTypeText(j.type)));
    if (!built.name.isEmpty())
        m.addString(value, "name", built.name);
    m.addInt(value, "bodyA", built.bodyIndexA);
    m.addInt(value, "bodyB", built.bodyIndexB);
    m.addBool(value, "collideConnected", j.collideConnected);
    // Every joint type a scene holds starts with its two anchors.
    if (!MetaJoint::typeWord(j.type).isEmpty()) {
        m.addVec2(value, "anchorA", j.anchorA);
        m.addVec2(value, "anchorB", j.anchorB);
    }
    switch (j.type) {
    case JOINT_REVOLUTE:
        m.addFloat(value, "refAngle", j.referenceAngle);
        m.addFloat(value, "jointSpeed", static_cast<const b2RevoluteJoint*>(built.joint)->GetJointSpeed());
        m.addBool(value, "enableLimit", j.enableLimit);
        m.addFloat(value, "lowerLimit", j.lowerLimit);
        m.addFloat(value, "upperLimit", j.upperLimit);
        m.addBool(value, "enableMotor", j.enableMotor);
        m.addFloat(value, "motorSpeed", j.motorSpeed);
        m.addFloat(value, "maxMotorTorque", j.maxMotorTorque);
        break;
    case JOINT_PRISMATIC:
        m.addVec2(value, "localAxisA", j.localAxisA);
        m.addFloat(value, "refAngle", j.referenceAngle);
        m.addBool(value, "enableLimit", j.enableLimit);
        m.addFloat(value, "lowerLimit", j.lowerLimit);
        m.addFloat(value, "upperLimit", j.upperLimit);
        m.addBool(value, "enableMotor", j.enableMotor);
        m.addFloat(value, "maxMotorForce", j.maxMotorForce);
        m.addFloat(value, "motorSpeed", j.motorSpeed);
        break;
    case JOINT_DISTANCE:
        m.addFloat(value, "length", j.length);
        m.addFloat(value, "frequency", j.frequency);
        m.addFloat(value, "dampingRatio", j.dampingRatio);
        break;
    case JOINT_ROPE:
        m.addFloat(value, "maxLength", j.maxLength);
        break;
    case JOINT_WELD:
        m.addFloat(value, "refAngle", j.referenceAngle);
        m.addFloat(value, "frequency", j.frequency);
        m.addFloat(value, "dampingRatio", j.dampingRatio);
        break;
    case JOINT_MOTOR:
        m.addFloat(value, "refAngle", j.referenceAngle);
        m.addFloat(value, "maxForce", j.maxForce);
        m.addFloat(value, "maxTorque", j.maxTorque);
        m.addFloat(value, "correctionFactor", j.correctionFactor);
        break;
    case JOINT_WHEEL:
        m.addVec2(value, "localAxisA", j.localAxisA);
        m.addBool(value, "enableMotor", j.enableMotor);
        m.addFloat(value, "motorSpeed", j.motorSpeed);
        m.addFloat(value, "maxMotorTorque", j.maxMotorTorque);
        m.addFloat(value, "springFrequency", j.springFrequency);
        m.addFloat(value, "springDampingRatio", j.springDampingRatio);
        break;
    case JOINT_FRICTION:
        m.addFloat(value, "maxForce", j.maxForce);
        m.addFloat(value, "maxTorque", j.maxTorque);
        break;
    default:
        break;
    }
    if (!j.customProperties.empty())
        m.add(value, "customProperties", writeCustomProperties(j.customProperties, enc));
    return value;
}
} // namespace

JsonStyle exportStyle(const MetaWorld& scene)
{
    const ExportOptions& o = scene.exportOptions;
    JsonStyle style;
    style.humanReadableFloats = o.useHumanReadableFloats || o.useGsonFormat;
    style.compactCommonFloats = o.compactCommonFloats && !o.useGsonFormat;
    style.compactZeroVecs = o.compactZeroVecs && !o.useGsonFormat;
    return style;
}

rapidjson::Document b2dJson::write(const WorldBuild& build, const MetaWorld& scene) const
{
    rapidjson::Document doc(rapidjson::kObjectType);
    const JsonEncoder enc(doc.GetAllocator(), m_style);
    RawInfoMembers m(enc, m_filter, "/world/");
    const WorldSettings& s = scene.settings;
    m.addVec2(doc, "gravity", s.gravity);
    m.addBool(doc, "allowSleep", s.allowSleep);
    m.addBool(doc, "autoClearForces", s.autoClearForces);
    m.addBool(doc, "warmStarting", s.warmStarting);
    m.addBool(doc, "continuousPhysics", s.continuousPhysics);
    m.addBool(doc, "subStepping", s.subStepping);
    m.addFloat(doc, "stepsPerSecond", s.stepsPerSecond);
    m.addInt(doc, "positionIterations", s.positionIterations);
    m.addInt(doc, "velocityIterations", s.velocityIterations);
    if (!scene.collisionBitplaneNames.isEmpty() && m.allows("collisionbitplanes")) {
        rapidjson::Value planes(rapidjson::kObjectType);
        enc.addStringList(planes, "names", scene.collisionBitplaneNames);
        enc.add(doc, "collisionbitplanes", std::move(planes));
    }
    if (!scene.customProperties.empty())
        m.add(doc, "customProperties", writeCustomProperties(scene.customProperties, enc));

    rapidjson::Value bodies(rapidjson::kArrayType);
    for (const BuiltBody& body : build.bodies())
        bodies.PushBack(bodyValue(body, enc, m_filter), enc.allocator());
    enc.add(doc, "body", std::move(bodies));

    rapidjson::Value joints(rapidjson::kArrayType);
    for (const BuiltJoint& joint : build.joints())
        joints.PushBack(jointValue(joint, enc, m_filter), enc.allocator());
    enc.add(doc, "joint", std::move(joints));

    if (!build.images().empty() && m.allows("image")) {
        rapidjson::Value images(rapidjson::kArrayType);
        for (const BuiltImage& image : build.images())
            images.PushBack(b2dJsonImage::write(image, enc, m_filter), enc.allocator());
        enc.add(doc, "image", std::move(images));
    }
    if (!scene.objects().empty() && m.allows("object")) {
        rapidjson::Value objects(rapidjson::kArrayType);
        for (const auto& object : scene.objects())
            objects.PushBack(b2dJsonObject::write(*object, enc, m_filter), enc.allocator());
        enc.add(doc, "object", std::move(objects));
    }
    return doc;
}
