#include "io/b2djson.h"

#include "io/arrayelements.h"
#include "io/b2djsonimage.h"
#include "io/b2djsonobject.h"
#include "io/customrecord.h"
#include "io/rawinfomembers.h"
#include "model/metafixture.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <box2d/box2d.h>

#include <algorithm>
#include <array>

namespace
{
Vec2 v(const b2Vec2& p)
{
    return {p.x, p.y};
}

// A shape member; its key is asked of the filter before its own members.
void writeShape(const b2Shape& shape, const MetaItem* item, const RawInfoMembers& fixture, const JsonEmitter& out,
                const ExportPropertyFilter& filter)
{
    switch (shape.GetType()) {
    case b2Shape::e_circle: {
        if (!fixture.member("circle"))
            return;
        const auto& circle = static_cast<const b2CircleShape&>(shape);
        RawInfoMembers m(out, filter, "/world/body/fixture/circle/", item);
        out.sink().startObject();
        m.addVec2("center", v(circle.m_p));
        m.addFloat("radius", circle.m_radius);
        out.sink().endObject();
        return;
    }
    case b2Shape::e_polygon: {
        if (!fixture.member("polygon"))
            return;
        const auto& polygon = static_cast<const b2PolygonShape&>(shape);
        RawInfoMembers m(out, filter, "/world/body/fixture/polygon/", item);
        static_assert(sizeof(b2Vec2) == sizeof(Vec2));
        std::array<Vec2, b2_maxPolygonVertices> points;
        const int count = std::clamp(polygon.m_count, 0, b2_maxPolygonVertices);
        for (int i = 0; i < count; ++i)
            points[size_t(i)] = v(polygon.m_vertices[i]);
        out.sink().startObject();
        m.addPointList("vertices", points.data(), size_t(count));
        out.sink().endObject();
        return;
    }
    case b2Shape::e_edge: {
        if (!fixture.member("edge"))
            return;
        const auto& edge = static_cast<const b2EdgeShape&>(shape);
        RawInfoMembers m(out, filter, "/world/body/fixture/edge/", item);
        out.sink().startObject();
        m.addVec2("vertex1", v(edge.m_vertex1));
        m.addVec2("vertex2", v(edge.m_vertex2));
        m.addBool("hasVertex0", edge.m_oneSided);
        m.addBool("hasVertex3", edge.m_oneSided);
        if (edge.m_oneSided) {
            m.addVec2("vertex0", v(edge.m_vertex0));
            m.addVec2("vertex3", v(edge.m_vertex3));
        }
        out.sink().endObject();
        return;
    }
    case b2Shape::e_chain: {
        if (!fixture.member("chain"))
            return;
        const auto& chain = static_cast<const b2ChainShape&>(shape);
        RawInfoMembers m(out, filter, "/world/body/fixture/chain/", item);
        // A loop repeats its first vertex at the end and has its neighbours;
        // an open chain's neighbours only make it collide from both sides.
        const bool loop = chain.m_count > 2 && chain.m_vertices[0] == chain.m_vertices[chain.m_count - 1];
        std::vector<Vec2> points(size_t(std::max(chain.m_count, 0)));
        for (size_t i = 0; i < points.size(); ++i)
            points[i] = v(chain.m_vertices[i]);
        out.sink().startObject();
        m.addPointList("vertices", points.data(), points.size());
        m.addBool("hasPrevVertex", loop);
        m.addBool("hasNextVertex", loop);
        if (loop) {
            m.addVec2("prevVertex", v(chain.m_prevVertex));
            m.addVec2("nextVertex", v(chain.m_nextVertex));
        }
        out.sink().endObject();
        return;
    }
    default:
        return;
    }
}

void writeFixture(const BuiltFixture& built, const JsonEmitter& out, const ExportPropertyFilter& filter)
{
    const b2Fixture& fixture = *built.fixture;
    RawInfoMembers m(out, filter, "/world/body/fixture/", built.source);
    out.sink().startObject();
    if (!built.name.isEmpty())
        m.addString("name", built.name);
    m.addFloat("restitution", fixture.GetRestitution());
    m.addFloat("friction", fixture.GetFriction());
    m.addFloat("density", fixture.GetDensity());
    m.addBool("sensor", fixture.IsSensor());
    const b2Filter& f = fixture.GetFilterData();
    m.addInt("filter-categoryBits", f.categoryBits);
    m.addInt("filter-maskBits", f.maskBits);
    m.addInt("filter-groupIndex", f.groupIndex);
    writeShape(*fixture.GetShape(), built.source, m, out, filter);
    if (built.source && !built.source->customProperties.empty() && m.member("customProperties"))
        emitCustomProperties(built.source->customProperties, out);
    out.sink().endObject();
}

void writeBody(const BuiltBody& built, const JsonEmitter& out, const ExportPropertyFilter& filter)
{
    const b2Body& body = *built.body;
    RawInfoMembers m(out, filter, "/world/body/", built.source);
    out.sink().startObject();
    if (!built.name.isEmpty())
        m.addString("name", built.name);
    m.addInt("type", int(body.GetType()));
    m.addVec2("position", v(body.GetPosition()));
    m.addFloat("angle", body.GetAngle());
    m.addVec2("linearVelocity", v(body.GetLinearVelocity()));
    m.addFloat("angularVelocity", body.GetAngularVelocity());
    m.addFloat("linearDamping", body.GetLinearDamping());
    m.addFloat("angularDamping", body.GetAngularDamping());
    m.addFloat("gravityScale", body.GetGravityScale());
    m.addBool("bullet", body.IsBullet());
    m.addBool("allowSleep", body.IsSleepingAllowed());
    // Box2D 2.4.1 never keeps a static body awake; the scene's flag is what
    // a Box2D 2.3 world (and so the games reading this) kept.
    const bool awake = body.GetType() == b2_staticBody && built.source ? built.source->awake : body.IsAwake();
    m.addBool("awake", awake);
    m.addBool("active", built.enabled);
    m.addBool("fixedRotation", body.IsFixedRotation());
    b2MassData mass;
    body.GetMassData(&mass);
    m.addFloat("massData-mass", mass.mass);
    m.addVec2("massData-center", v(mass.center));
    m.addFloat("massData-I", mass.I);
    if (m.member("fixture")) {
        out.sink().startArray();
        for (const BuiltFixture& fixture : built.fixtures) {
            if (!fixture.reverseTwin && filter.allowsItem(fixture.source))
                writeFixture(fixture, out, filter);
        }
        out.sink().endArray();
    }
    if (built.source && !built.source->customProperties.empty() && m.member("customProperties"))
        emitCustomProperties(built.source->customProperties, out);
    out.sink().endObject();
}

// Where each built body lands in the "body" array: without an item filter
// its own position; with one, bodies left out get -1 and the rest close up.
class BodyPositions
{
public:
    BodyPositions(const WorldBuild& build, const ExportPropertyFilter& filter)
    {
        if (!filter.asksItems())
            return;
        m_positions.reserve(build.bodies().size());
        int next = 0;
        for (const BuiltBody& body : build.bodies())
            m_positions.push_back(filter.allowsItem(body.source) ? next++ : -1);
    }

    bool isWritten(size_t index) const { return m_positions.empty() || m_positions[index] >= 0; }
    int of(int index) const
    {
        if (m_positions.empty() || index < 0 || size_t(index) >= m_positions.size())
            return index;
        return m_positions[size_t(index)];
    }

private:
    std::vector<int> m_positions;
};

const char* jointTypeText(JointType type)
{
    switch (type) {
    case JointType::Revolute: return "revolute";
    case JointType::Prismatic: return "prismatic";
    case JointType::Distance: return "distance";
    case JointType::Pulley: return "pulley";
    case JointType::Mouse: return "mouse";
    case JointType::Gear: return "gear";
    case JointType::Wheel: return "wheel";
    case JointType::Weld: return "weld";
    case JointType::Friction: return "friction";
    case JointType::Rope: return "rope";
    case JointType::Motor: return "motor";
    default: return "unknown";
    }
}

void writeJoint(const BuiltJoint& built, int bodyA, int bodyB, const JsonEmitter& out,
                const ExportPropertyFilter& filter)
{
    const MetaJoint& j = *built.placed;
    RawInfoMembers m(out, filter, "/world/joint/", built.source);
    out.sink().startObject();
    if (m.member("type"))
        out.stringValue(jointTypeText(j.type));
    if (!built.name.isEmpty())
        m.addString("name", built.name);
    m.addInt("bodyA", bodyA);
    m.addInt("bodyB", bodyB);
    m.addBool("collideConnected", j.collideConnected);
    // Every joint type a scene holds starts with its two anchors.
    if (!MetaJoint::typeWord(j.type).isEmpty()) {
        m.addVec2("anchorA", j.anchorA);
        m.addVec2("anchorB", j.anchorB);
    }
    switch (j.type) {
    case JointType::Revolute:
        m.addFloat("refAngle", j.referenceAngle);
        m.addFloat("jointSpeed", static_cast<const b2RevoluteJoint*>(built.joint)->GetJointSpeed());
        m.addBool("enableLimit", j.enableLimit);
        m.addFloat("lowerLimit", j.lowerLimit);
        m.addFloat("upperLimit", j.upperLimit);
        m.addBool("enableMotor", j.enableMotor);
        m.addFloat("motorSpeed", j.motorSpeed);
        m.addFloat("maxMotorTorque", j.maxMotorTorque);
        break;
    case JointType::Prismatic:
        m.addVec2("localAxisA", j.localAxisA);
        m.addFloat("refAngle", j.referenceAngle);
        m.addBool("enableLimit", j.enableLimit);
        m.addFloat("lowerLimit", j.lowerLimit);
        m.addFloat("upperLimit", j.upperLimit);
        m.addBool("enableMotor", j.enableMotor);
        m.addFloat("maxMotorForce", j.maxMotorForce);
        m.addFloat("motorSpeed", j.motorSpeed);
        break;
    case JointType::Distance:
        m.addFloat("length", j.length);
        m.addFloat("frequency", j.frequency);
        m.addFloat("dampingRatio", j.dampingRatio);
        break;
    case JointType::Rope:
        m.addFloat("maxLength", j.maxLength);
        break;
    case JointType::Weld:
        m.addFloat("refAngle", j.referenceAngle);
        m.addFloat("frequency", j.frequency);
        m.addFloat("dampingRatio", j.dampingRatio);
        break;
    case JointType::Motor:
        m.addFloat("refAngle", j.referenceAngle);
        m.addFloat("maxForce", j.maxForce);
        m.addFloat("maxTorque", j.maxTorque);
        m.addFloat("correctionFactor", j.correctionFactor);
        break;
    case JointType::Wheel:
        m.addVec2("localAxisA", j.localAxisA);
        m.addBool("enableMotor", j.enableMotor);
        m.addFloat("motorSpeed", j.motorSpeed);
        m.addFloat("maxMotorTorque", j.maxMotorTorque);
        m.addFloat("springFrequency", j.springFrequency);
        m.addFloat("springDampingRatio", j.springDampingRatio);
        break;
    case JointType::Friction:
        m.addFloat("maxForce", j.maxForce);
        m.addFloat("maxTorque", j.maxTorque);
        break;
    default:
        break;
    }
    if (!j.customProperties.empty() && m.member("customProperties"))
        emitCustomProperties(j.customProperties, out);
    out.sink().endObject();
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

void b2dJson::write(const WorldBuild& build, const MetaWorld& scene, JsonSink& sink) const
{
    const JsonEmitter out(sink, m_style);
    RawInfoMembers m(out, m_filter, "/world/");
    const WorldSettings& s = scene.settings;
    sink.startObject();
    m.addVec2("gravity", s.gravity);
    m.addBool("allowSleep", s.allowSleep);
    m.addBool("autoClearForces", s.autoClearForces);
    m.addBool("warmStarting", s.warmStarting);
    m.addBool("continuousPhysics", s.continuousPhysics);
    m.addBool("subStepping", s.subStepping);
    m.addFloat("stepsPerSecond", s.stepsPerSecond);
    m.addInt("positionIterations", s.positionIterations);
    m.addInt("velocityIterations", s.velocityIterations);
    if (!scene.collisionBitplaneNames.isEmpty() && m.member("collisionbitplanes")) {
        sink.startObject();
        out.key("names");
        out.stringListValue(scene.collisionBitplaneNames);
        sink.endObject();
    }
    if (!scene.customProperties.empty() && m.member("customProperties"))
        emitCustomProperties(scene.customProperties, out);

    // Items the filter leaves out shift the positions of those after them;
    // joints and images refer to bodies by the positions written.
    const BodyPositions positions(build, m_filter);

    // The bodies, the bulk of a big scene, are written on two threads,
    // unless the filter calls out (a script is asked on its own thread only).
    std::vector<const BuiltBody*> bodies;
    bodies.reserve(build.bodies().size());
    for (size_t i = 0; i < build.bodies().size(); ++i) {
        if (positions.isWritten(i))
            bodies.push_back(&build.bodies()[i]);
    }
    out.key("body");
    sink.startArray();
    writeArrayElements(sink, bodies.size(), [&](JsonSink& to, size_t i) {
        writeBody(*bodies[i], JsonEmitter(to, m_style), m_filter);
    }, m_filter.isSelfContained() ? kArrayElementsRun : 0);
    sink.endArray();

    out.key("joint");
    sink.startArray();
    for (const BuiltJoint& joint : build.joints()) {
        const int bodyA = positions.of(joint.bodyIndexA), bodyB = positions.of(joint.bodyIndexB);
        // A joint needs both its bodies.
        if ((bodyA < 0 && joint.bodyIndexA >= 0) || (bodyB < 0 && joint.bodyIndexB >= 0))
            continue;
        if (m_filter.allowsItem(joint.source))
            writeJoint(joint, bodyA, bodyB, out, m_filter);
    }
    sink.endArray();

    if (!build.images().empty() && m.member("image")) {
        sink.startArray();
        for (const BuiltImage& image : build.images()) {
            // An image whose body is left out stays, without a body.
            if (m_filter.allowsItem(image.source))
                b2dJsonImage::write(image, positions.of(image.bodyIndex), scene, out, m_filter);
        }
        sink.endArray();
    }
    if (!scene.objects().empty() && m.member("object")) {
        sink.startArray();
        for (const auto& object : scene.objects()) {
            if (m_filter.allowsItem(object.get()))
                b2dJsonObject::write(*object, out, m_filter);
        }
        sink.endArray();
    }
    sink.endObject();
}
