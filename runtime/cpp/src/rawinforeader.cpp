#include "plax/rawinforeader.h"

#include "jsonreading.h"

#include <rapidjson/error/en.h>

#include <cstdint>
#include <cstring>
#include <fstream>
#include <limits>
#include <sstream>

namespace plax
{
namespace
{
using namespace detail;

constexpr unsigned kParseFlags = rapidjson::kParseIterativeFlag;

// A member name, with its length (compared first: most keys differ there).
struct Name
{
    const char* text;
    size_t length;

    explicit Name(const Value& name) : text(name.GetString()), length(name.GetStringLength()) {}
};

template <size_t N>
bool is(const Name& name, const char (&key)[N])
{
    return name.length == N - 1 && std::memcmp(name.text, key, N - 1) == 0;
}

int index(const Value& value, const Where& where, size_t count, const char* what)
{
    const long long i = readInt(value, where, -1, std::numeric_limits<int>::max());
    if (i >= static_cast<long long>(count))
        fail(where, std::string(what) + " " + std::to_string(i) + " does not exist (there are " +
                        std::to_string(count) + ")");
    return int(i);
}

void readShape(const Name& kind, const Value& value, const Where& where, ShapeDescription& shape)
{
    requireObject(value, where);
    if (is(kind, "circle")) {
        shape.type = ShapeType::Circle;
        for (const auto& m : value.GetObject()) {
            const Name key(m.name);
            if (is(key, "center"))
                shape.center = readVec2(m.value, where.member(key.text));
            else if (is(key, "radius"))
                shape.radius = readFloat(m.value, where.member(key.text));
        }
    } else if (is(kind, "polygon")) {
        shape.type = ShapeType::Polygon;
        const auto vertices = value.FindMember("vertices");
        if (vertices == value.MemberEnd())
            fail(where, "a polygon needs \"vertices\"");
        shape.vertices = readPointList(vertices->value, where.member("vertices"));
    } else if (is(kind, "edge")) {
        shape.type = ShapeType::Edge;
        for (const auto& m : value.GetObject()) {
            const Name key(m.name);
            const Where w = where.member(key.text);
            if (is(key, "vertex1"))
                shape.vertex1 = readVec2(m.value, w);
            else if (is(key, "vertex2"))
                shape.vertex2 = readVec2(m.value, w);
            else if (is(key, "hasVertex0"))
                shape.hasVertex0 = readBool(m.value, w);
            else if (is(key, "hasVertex3"))
                shape.hasVertex3 = readBool(m.value, w);
            else if (is(key, "vertex0"))
                shape.vertex0 = readVec2(m.value, w);
            else if (is(key, "vertex3"))
                shape.vertex3 = readVec2(m.value, w);
        }
    } else {
        // "chain", or "loop": a closed chain listed without its repeated first vertex.
        shape.type = ShapeType::Chain;
        const auto vertices = value.FindMember("vertices");
        if (vertices == value.MemberEnd())
            fail(where, std::string("a ") + kind.text + " needs \"vertices\"");
        shape.vertices = readPointList(vertices->value, where.member("vertices"));
        if (is(kind, "loop")) {
            if (shape.vertices.size() < 3)
                fail(where.member("vertices"), "a loop needs at least three vertices");
            shape.vertices.push_back(shape.vertices.front());
            return;
        }
        for (const auto& m : value.GetObject()) {
            const Name key(m.name);
            const Where w = where.member(key.text);
            if (is(key, "hasPrevVertex"))
                shape.hasPrevVertex = readBool(m.value, w);
            else if (is(key, "hasNextVertex"))
                shape.hasNextVertex = readBool(m.value, w);
            else if (is(key, "prevVertex"))
                shape.prevVertex = readVec2(m.value, w);
            else if (is(key, "nextVertex"))
                shape.nextVertex = readVec2(m.value, w);
        }
    }
}

void readFixture(const Value& value, const Where& where, FixtureDescription& fixture)
{
    requireObject(value, where);
    const char* shapeKind = nullptr;
    for (const auto& m : value.GetObject()) {
        const Name key(m.name);
        const Where w = where.member(key.text);
        if (is(key, "name"))
            fixture.name = readString(m.value, w);
        else if (is(key, "friction"))
            fixture.friction = readFloat(m.value, w);
        else if (is(key, "restitution"))
            fixture.restitution = readFloat(m.value, w);
        else if (is(key, "density"))
            fixture.density = readFloat(m.value, w);
        else if (is(key, "sensor"))
            fixture.sensor = readBool(m.value, w);
        else if (is(key, "filter-categoryBits"))
            fixture.categoryBits = std::uint16_t(readInt(m.value, w, 0, 0xFFFF));
        else if (is(key, "filter-maskBits"))
            fixture.maskBits = std::uint16_t(readInt(m.value, w, 0, 0xFFFF));
        else if (is(key, "filter-groupIndex"))
            fixture.groupIndex = std::int16_t(readInt(m.value, w, -32768, 32767));
        else if (is(key, "customProperties"))
            readCustomProperties(m.value, w, fixture.properties);
        else if (is(key, "circle") || is(key, "polygon") || is(key, "edge") || is(key, "chain") || is(key, "loop")) {
            if (shapeKind)
                fail(w, std::string("a fixture has one shape, and this one already has \"") + shapeKind + "\"");
            shapeKind = key.text;
            readShape(key, m.value, w, fixture.shape);
        }
    }
    if (!shapeKind)
        fail(where, "a fixture needs one of \"circle\", \"polygon\", \"edge\", \"chain\"");
}

void readBody(const Value& value, const Where& where, BodyDescription& body)
{
    requireObject(value, where);
    for (const auto& m : value.GetObject()) {
        const Name key(m.name);
        const Where w = where.member(key.text);
        if (is(key, "name"))
            body.name = readString(m.value, w);
        else if (is(key, "type"))
            body.type = BodyType(readInt(m.value, w, 0, 2));
        else if (is(key, "position"))
            body.position = readVec2(m.value, w);
        else if (is(key, "angle"))
            body.angle = readFloat(m.value, w);
        else if (is(key, "linearVelocity"))
            body.linearVelocity = readVec2(m.value, w);
        else if (is(key, "angularVelocity"))
            body.angularVelocity = readFloat(m.value, w);
        else if (is(key, "linearDamping"))
            body.linearDamping = readFloat(m.value, w);
        else if (is(key, "angularDamping"))
            body.angularDamping = readFloat(m.value, w);
        else if (is(key, "gravityScale"))
            body.gravityScale = readFloat(m.value, w);
        else if (is(key, "bullet"))
            body.bullet = readBool(m.value, w);
        else if (is(key, "allowSleep"))
            body.allowSleep = readBool(m.value, w);
        else if (is(key, "awake"))
            body.awake = readBool(m.value, w);
        else if (is(key, "active"))
            body.active = readBool(m.value, w);
        else if (is(key, "fixedRotation"))
            body.fixedRotation = readBool(m.value, w);
        else if (is(key, "massData-mass")) {
            body.mass = readFloat(m.value, w);
            body.hasMassData = true;
        } else if (is(key, "massData-center")) {
            body.massCenter = readVec2(m.value, w);
            body.hasMassData = true;
        } else if (is(key, "massData-I")) {
            body.inertia = readFloat(m.value, w);
            body.hasMassData = true;
        } else if (is(key, "customProperties"))
            readCustomProperties(m.value, w, body.properties);
        else if (is(key, "fixture")) {
            const auto fixtures = arrayOf(m.value, w);
            body.fixtures.resize(fixtures.Size());
            for (rapidjson::SizeType i = 0; i < fixtures.Size(); ++i)
                readFixture(fixtures[i], w.element(i), body.fixtures[i]);
        }
    }
}

void readJointMember(const Name& key, const Value& value, const Where& w, size_t bodyCount, size_t jointCount,
                     JointDescription& joint)
{
    JointValues& j = joint.values;
    if (is(key, "name"))
        joint.name = readString(value, w);
    else if (is(key, "bodyA"))
        joint.bodyA = index(value, w, bodyCount, "body");
    else if (is(key, "bodyB"))
        joint.bodyB = index(value, w, bodyCount, "body");
    else if (is(key, "joint1"))
        joint.joint1 = index(value, w, jointCount, "joint");
    else if (is(key, "joint2"))
        joint.joint2 = index(value, w, jointCount, "joint");
    else if (is(key, "collideConnected"))
        j.collideConnected = readBool(value, w);
    else if (is(key, "anchorA"))
        j.anchorA = readVec2(value, w);
    else if (is(key, "anchorB"))
        j.anchorB = readVec2(value, w);
    else if (is(key, "refAngle"))
        j.referenceAngle = readFloat(value, w);
    else if (is(key, "enableLimit"))
        j.enableLimit = readBool(value, w);
    else if (is(key, "lowerLimit"))
        j.lowerLimit = readFloat(value, w);
    else if (is(key, "upperLimit"))
        j.upperLimit = readFloat(value, w);
    else if (is(key, "enableMotor"))
        j.enableMotor = readBool(value, w);
    else if (is(key, "motorSpeed"))
        j.motorSpeed = readFloat(value, w);
    else if (is(key, "maxMotorTorque"))
        j.maxMotorTorque = readFloat(value, w);
    else if (is(key, "maxMotorForce"))
        j.maxMotorForce = readFloat(value, w);
    else if (is(key, "localAxisA"))
        j.localAxisA = readVec2(value, w);
    else if (is(key, "length"))
        j.length = readFloat(value, w);
    else if (is(key, "frequency"))
        j.frequency = readFloat(value, w);
    else if (is(key, "dampingRatio"))
        j.dampingRatio = readFloat(value, w);
    else if (is(key, "springFrequency"))
        j.springFrequency = readFloat(value, w);
    else if (is(key, "springDampingRatio"))
        j.springDampingRatio = readFloat(value, w);
    else if (is(key, "maxForce"))
        j.maxForce = readFloat(value, w);
    else if (is(key, "maxTorque"))
        j.maxTorque = readFloat(value, w);
    else if (is(key, "maxLength"))
        j.maxLength = readFloat(value, w);
    else if (is(key, "correctionFactor"))
        j.correctionFactor = readFloat(value, w);
    else if (is(key, "groundAnchorA"))
        j.groundAnchorA = readVec2(value, w);
    else if (is(key, "groundAnchorB"))
        j.groundAnchorB = readVec2(value, w);
    else if (is(key, "lengthA"))
        j.lengthA = readFloat(value, w);
    else if (is(key, "lengthB"))
        j.lengthB = readFloat(value, w);
    else if (is(key, "ratio"))
        j.ratio = readFloat(value, w);
    else if (is(key, "target"))
        j.target = readVec2(value, w);
    else if (is(key, "customProperties"))
        readCustomProperties(value, w, joint.properties);
}

void readJoint(const Value& value, const Where& where, size_t bodyCount, size_t jointCount, JointDescription& joint)
{
    requireObject(value, where);
    const auto type = value.FindMember("type");
    if (type == value.MemberEnd())
        fail(where, "a joint needs a \"type\"");
    const std::string word = readString(type->value, where.member("type"));
    joint.values.type = jointTypeFromWord(word.c_str());
    if (joint.values.type == JointType::Unknown)
        fail(where.member("type"), "unknown joint type \"" + word + "\"");
    for (const auto& m : value.GetObject())
        readJointMember(Name(m.name), m.value, where.member(m.name.GetString()), bodyCount, jointCount, joint);
    // A joint holds two bodies; a gear joint's are those of the joints it couples.
    if (joint.values.type != JointType::Gear) {
        if (joint.bodyB < 0)
            fail(where, "a joint needs \"bodyB\"");
        if (joint.bodyA < 0)
            fail(where, "a joint needs \"bodyA\"");
    }
}

// A gear joint couples two revolute or prismatic joints other than itself.
void checkGear(const SceneDescription& scene, size_t i, const Where& where)
{
    const JointDescription& gear = scene.joints[i];
    for (const auto& [key, other] : {std::pair{"joint1", gear.joint1}, std::pair{"joint2", gear.joint2}}) {
        const Where w = where.member(key);
        if (other < 0)
            fail(where, std::string("a gear joint needs \"") + key + "\"");
        const JointType t = scene.joints[size_t(other)].values.type;
        if (size_t(other) == i || (t != JointType::Revolute && t != JointType::Prismatic))
            fail(w, "a gear joint couples two revolute or prismatic joints; joint " + std::to_string(other) +
                        " is " + jointTypeWord(t));
    }
}

void readImage(const Value& value, const Where& where, size_t bodyCount, ImageDescription& image)
{
    requireObject(value, where);
    for (const auto& m : value.GetObject()) {
        const Name key(m.name);
        const Where w = where.member(key.text);
        if (is(key, "body"))
            image.body = index(m.value, w, bodyCount, "body");
        else if (is(key, "name"))
            image.name = readString(m.value, w);
        else if (is(key, "file"))
            image.file = readString(m.value, w);
        else if (is(key, "center"))
            image.center = readVec2(m.value, w);
        else if (is(key, "angle"))
            image.angle = readFloat(m.value, w);
        else if (is(key, "scale"))
            image.scale = readFloat(m.value, w);
        else if (is(key, "aspectScale"))
            image.aspectScale = readFloat(m.value, w);
        else if (is(key, "opacity"))
            image.opacity = readFloat(m.value, w);
        else if (is(key, "flip"))
            image.flip = readBool(m.value, w);
        else if (is(key, "filter"))
            image.filter = int(readInt(m.value, w, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
        else if (is(key, "renderOrder"))
            image.renderOrder = readFloat(m.value, w);
        else if (is(key, "colorTint"))
            image.colorTint = readColor(m.value, w);
        else if (is(key, "corners")) {
            const std::vector<Vec2> corners = readPointList(m.value, w);
            if (corners.size() != 4)
                fail(w, "an image has four corners, not " + std::to_string(corners.size()));
            std::copy(corners.begin(), corners.end(), image.corners.begin());
            image.hasCorners = true;
        } else if (is(key, "glVertexPointer"))
            image.vertexPointer = readFloatArray(m.value, w);
        else if (is(key, "glTexCoordPointer"))
            image.texCoordPointer = readFloatArray(m.value, w);
        else if (is(key, "glDrawElements"))
            image.drawElements = readIntArray(m.value, w);
        else if (is(key, "customProperties"))
            readCustomProperties(m.value, w, image.properties);
    }
}

void readObject(const Value& value, const Where& where, ObjectDescription& object)
{
    requireObject(value, where);
    for (const auto& m : value.GetObject()) {
        const Name key(m.name);
        const Where w = where.member(key.text);
        if (is(key, "name"))
            object.name = readString(m.value, w);
        else if (is(key, "path"))
            object.path = readString(m.value, w);
        else if (is(key, "position"))
            object.position = readVec2(m.value, w);
        else if (is(key, "angle"))
            object.angle = readFloat(m.value, w);
        else if (is(key, "scale"))
            object.scale = readFloat(m.value, w);
        else if (is(key, "flip"))
            object.flip = readBool(m.value, w);
        else if (is(key, "customProperties"))
            readCustomProperties(m.value, w, object.properties);
    }
}

void readWorld(const Value& root, SceneDescription& scene)
{
    const Where top;
    requireObject(root, top);
    WorldSettings& s = scene.world;
    // Bodies first: joints and images refer to them by position, whatever the member order.
    const auto bodies = root.FindMember("body");
    if (bodies != root.MemberEnd()) {
        const Where w = top.member("body");
        const auto array = arrayOf(bodies->value, w);
        scene.bodies.resize(array.Size());
        for (rapidjson::SizeType i = 0; i < array.Size(); ++i)
            readBody(array[i], w.element(i), scene.bodies[i]);
    }
    for (const auto& m : root.GetObject()) {
        const Name key(m.name);
        const Where w = top.member(key.text);
        if (is(key, "gravity"))
            s.gravity = readVec2(m.value, w);
        else if (is(key, "allowSleep"))
            s.allowSleep = readBool(m.value, w);
        else if (is(key, "autoClearForces"))
            s.autoClearForces = readBool(m.value, w);
        else if (is(key, "warmStarting"))
            s.warmStarting = readBool(m.value, w);
        else if (is(key, "continuousPhysics"))
            s.continuousPhysics = readBool(m.value, w);
        else if (is(key, "subStepping"))
            s.subStepping = readBool(m.value, w);
        else if (is(key, "stepsPerSecond"))
            s.stepsPerSecond = readFloat(m.value, w);
        else if (is(key, "positionIterations"))
            s.positionIterations = int(readInt(m.value, w, 0, 1000000));
        else if (is(key, "velocityIterations"))
            s.velocityIterations = int(readInt(m.value, w, 0, 1000000));
        else if (is(key, "collisionbitplanes")) {
            requireObject(m.value, w);
            const auto names = m.value.FindMember("names");
            if (names != m.value.MemberEnd()) {
                const Where wn = w.member("names");
                const auto array = arrayOf(names->value, wn);
                for (rapidjson::SizeType i = 0; i < array.Size(); ++i)
                    s.collisionBitplanes.push_back(readString(array[i], wn.element(i)));
            }
        } else if (is(key, "customProperties"))
            readCustomProperties(m.value, w, scene.properties);
        else if (is(key, "joint")) {
            const auto array = arrayOf(m.value, w);
            scene.joints.resize(array.Size());
            for (rapidjson::SizeType i = 0; i < array.Size(); ++i)
                readJoint(array[i], w.element(i), scene.bodies.size(), array.Size(), scene.joints[i]);
            for (size_t i = 0; i < scene.joints.size(); ++i) {
                if (scene.joints[i].values.type == JointType::Gear)
                    checkGear(scene, i, w.element(i));
            }
        } else if (is(key, "image")) {
            const auto array = arrayOf(m.value, w);
            scene.images.resize(array.Size());
            for (rapidjson::SizeType i = 0; i < array.Size(); ++i)
                readImage(array[i], w.element(i), scene.bodies.size(), scene.images[i]);
        } else if (is(key, "object")) {
            const auto array = arrayOf(m.value, w);
            scene.objects.resize(array.Size());
            for (rapidjson::SizeType i = 0; i < array.Size(); ++i)
                readObject(array[i], w.element(i), scene.objects[i]);
        }
    }
}

bool fromDocument(const rapidjson::Document& document, SceneDescription& scene, std::string* error)
{
    scene = SceneDescription();
    if (document.HasParseError()) {
        if (error)
            *error = std::string("not JSON: ") + rapidjson::GetParseError_En(document.GetParseError()) +
                     " (at offset " + std::to_string(document.GetErrorOffset()) + ")";
        return false;
    }
    try {
        readWorld(document, scene);
    } catch (const ReadError& e) {
        scene = SceneDescription();
        if (error)
            *error = e.message;
        return false;
    } catch (const std::bad_alloc&) {
        scene = SceneDescription();
        if (error)
            *error = "out of memory while reading";
        return false;
    }
    if (error)
        error->clear();
    return true;
}

// Text with a NUL character is not JSON (and would end a parse in place early).
bool holdsNul(std::string_view json, SceneDescription& scene, std::string* error)
{
    const void* nul = std::memchr(json.data(), '\0', json.size());
    if (!nul)
        return false;
    scene = SceneDescription();
    if (error)
        *error = "not JSON: a NUL character at offset " + std::to_string(static_cast<const char*>(nul) - json.data());
    return true;
}
} // namespace

bool ShapeDescription::isLoop() const
{
    return type == ShapeType::Chain && vertices.size() > 3 && vertices.front() == vertices.back();
}

bool readRawInfo(std::string_view json, SceneDescription& scene, std::string* error)
{
    // One way of parsing for text and files: in place, in a copy that ends
    // where the text does.
    if (holdsNul(json, scene, error))
        return false;
    std::string copy(json);
    return readRawInfoInPlace(copy.data(), scene, error);
}

bool readRawInfoInPlace(char* json, SceneDescription& scene, std::string* error)
{
    // A byte-order mark some editors put first.
    if (std::strncmp(json, "\xEF\xBB\xBF", 3) == 0)
        json += 3;
    rapidjson::Document document;
    document.ParseInsitu<kParseFlags>(json);
    return fromDocument(document, scene, error);
}

bool readRawInfoFile(const std::string& path, SceneDescription& scene, std::string* error)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        scene = SceneDescription();
        if (error)
            *error = "cannot open '" + path + "'";
        return false;
    }
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    in.seekg(0, std::ios::beg);
    if (size < 0) {
        scene = SceneDescription();
        if (error)
            *error = "cannot read '" + path + "'";
        return false;
    }
    std::string text(size_t(size) + 1, '\0');
    in.read(text.data(), size);
    if (in.gcount() != size) {
        scene = SceneDescription();
        if (error)
            *error = "cannot read '" + path + "'";
        return false;
    }
    text.resize(size_t(size));
    if (holdsNul(text, scene, error) || !readRawInfoInPlace(text.data(), scene, error)) {
        if (error)
            *error = "'" + path + "': " + *error;
        return false;
    }
    return true;
}
} // namespace plax
