#include "plax/box2d/box2dscene.h"

#include "box2dcheck.h"
#include "box2dshapes.h"
#include "plax/box2d/jointmapping.h"
#include "plax/box2d/massguard.h"
#include "plax/rawinforeader.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace plax
{
namespace
{
b2Vec2 toB2(Vec2 v)
{
    return {v.x, v.y};
}

Vec2 plus(Vec2 v, b2Vec2 offset)
{
    return {v.x + offset.x, v.y + offset.y};
}

bool sameBits(float a, float b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

b2BodyDef bodyDef(const BodyDescription& body, b2Vec2 offset)
{
    b2BodyDef def;
    def.type = body.type == BodyType::Dynamic     ? b2_dynamicBody
               : body.type == BodyType::Kinematic ? b2_kinematicBody
                                                  : b2_staticBody;
    def.position = toB2(plus(body.position, offset));
    def.angle = body.angle;
    def.linearVelocity = toB2(body.linearVelocity);
    def.angularVelocity = body.angularVelocity;
    def.linearDamping = body.linearDamping;
    def.angularDamping = body.angularDamping;
    def.gravityScale = body.gravityScale;
    def.bullet = body.bullet;
    def.allowSleep = body.allowSleep;
    def.awake = body.awake;
    def.enabled = body.active;
    def.fixedRotation = body.fixedRotation;
    return def;
}

// The file's mass replaces the computed one where they differ (a mass override
// in the editor); where they agree nothing is touched, so the body keeps
// exactly the mass Box2D computed.
void applyFileMass(b2Body* body, const BodyDescription& record)
{
    if (body->GetType() != b2_dynamicBody || !record.hasMassData || !(record.mass > 0))
        return;
    b2MassData now;
    body->GetMassData(&now);
    b2MassData file;
    file.mass = record.mass;
    file.center = toB2(record.massCenter);
    file.I = record.inertia;
    if (sameBits(now.mass, file.mass) && sameBits(now.center.x, file.center.x) &&
        sameBits(now.center.y, file.center.y) && sameBits(now.I, file.I))
        return;
    body->SetMassData(&file);
}

template <typename T, typename Record>
const Record* find(const std::vector<std::pair<const T*, const Record*>>& index, const T* key)
{
    const auto it = std::lower_bound(index.begin(), index.end(), key,
                                     [](const auto& entry, const T* k) { return std::less<const T*>()(entry.first, k); });
    return it != index.end() && it->first == key ? it->second : nullptr;
}

template <typename Index>
void sortByAddress(Index& index)
{
    std::sort(index.begin(), index.end(), [](const auto& a, const auto& b) {
        return std::less<const void*>()(a.first, b.first);
    });
}

const std::string& emptyName()
{
    static const std::string empty;
    return empty;
}

const CustomProperties& emptyProperties()
{
    static const CustomProperties empty;
    return empty;
}
} // namespace

std::unique_ptr<Box2DScene> Box2DScene::create(SceneDescription scene, std::string* error)
{
    const WorldSettings& s = scene.world;
    auto world = std::make_unique<b2World>(toB2(s.gravity));
    world->SetAllowSleeping(s.allowSleep);
    world->SetAutoClearForces(s.autoClearForces);
    world->SetWarmStarting(s.warmStarting);
    world->SetContinuousPhysics(s.continuousPhysics);
    world->SetSubStepping(s.subStepping);
    b2World* raw = world.get();
    return build(raw, std::move(world), std::move(scene), b2Vec2(0, 0), error);
}

std::unique_ptr<Box2DScene> Box2DScene::merge(b2World& world, SceneDescription scene, b2Vec2 offset,
                                              std::string* error)
{
    return build(&world, nullptr, std::move(scene), offset, error);
}

std::unique_ptr<Box2DScene> Box2DScene::build(b2World* world, std::unique_ptr<b2World> owned, SceneDescription scene,
                                              b2Vec2 offset, std::string* error)
{
    std::string problem = world->IsLocked() ? "the world is stepping" : detail::checkForBox2D(scene, offset);
    if (!problem.empty()) {
        if (error)
            *error = std::move(problem);
        return nullptr;
    }
    if (error)
        error->clear();

    std::unique_ptr<Box2DScene> result(new Box2DScene);
    Box2DScene& r = *result;
    r.m_scene = std::move(scene);
    r.m_ownedWorld = std::move(owned);
    r.m_world = world;
    const SceneDescription& d = r.m_scene;

    size_t fixtureCount = 0;
    for (const BodyDescription& body : d.bodies)
        fixtureCount += body.fixtures.size();
    r.m_bodies.reserve(d.bodies.size());
    r.m_fixtures.reserve(fixtureCount);
    r.m_bodyRecords.reserve(d.bodies.size());
    r.m_fixtureRecords.reserve(fixtureCount * 2);
    for (const BodyDescription& record : d.bodies) {
        const b2BodyDef def = bodyDef(record, offset);
        b2Body* body = world->CreateBody(&def);
        for (const FixtureDescription& fixtureRecord : record.fixtures) {
            const detail::CreatedFixtures made = detail::createFixture(body, fixtureRecord);
            r.m_fixtures.push_back(made.fixture);
            r.m_fixtureRecords.emplace_back(made.fixture, &fixtureRecord);
            if (made.twin)
                r.m_fixtureRecords.emplace_back(made.twin, &fixtureRecord);
        }
        settleBodyMass(body);
        applyFileMass(body, record);
        r.m_bodies.push_back(body);
        r.m_bodyRecords.emplace_back(body, &record);
    }

    // Gear joints need the joints they couple: they are made after all others.
    r.m_joints.assign(d.joints.size(), nullptr);
    for (int pass = 0; pass < 2; ++pass) {
        for (size_t i = 0; i < d.joints.size(); ++i) {
            const JointDescription& record = d.joints[i];
            const bool gear = record.values.type == JointType::Gear;
            if (gear != (pass == 1))
                continue;
            JointValues values = record.values;
            values.groundAnchorA = plus(values.groundAnchorA, offset);
            values.groundAnchorB = plus(values.groundAnchorB, offset);
            values.target = plus(values.target, offset);
            b2Body* a = record.bodyA >= 0 ? r.m_bodies[size_t(record.bodyA)] : nullptr;
            b2Body* b = record.bodyB >= 0 ? r.m_bodies[size_t(record.bodyB)] : nullptr;
            b2Joint* j1 = gear ? r.m_joints[size_t(record.joint1)] : nullptr;
            b2Joint* j2 = gear ? r.m_joints[size_t(record.joint2)] : nullptr;
            b2Joint* joint = createBox2DJoint(*world, values, a, b, j1, j2);
            r.m_joints[i] = joint;
            if (joint)
                r.m_jointRecords.emplace_back(joint, &record);
        }
    }

    sortByAddress(r.m_bodyRecords);
    sortByAddress(r.m_fixtureRecords);
    sortByAddress(r.m_jointRecords);

    if (offset.x != 0 || offset.y != 0) {
        for (ImageDescription& image : r.m_scene.images) {
            if (image.body >= 0)
                continue;
            image.center = plus(image.center, offset);
            for (Vec2& corner : image.corners)
                corner = plus(corner, offset);
            for (size_t i = 0; i + 1 < image.vertexPointer.size(); i += 2) {
                image.vertexPointer[i] += offset.x;
                image.vertexPointer[i + 1] += offset.y;
            }
        }
    }
    return result;
}

Box2DScene::~Box2DScene()
{
    m_ownedWorld.reset();
}

void Box2DScene::step()
{
    const WorldSettings& s = m_scene.world;
    const float hz = s.stepsPerSecond >= 1 ? s.stepsPerSecond : 1.0f;
    m_world->Step(1.0f / hz, s.velocityIterations, s.positionIterations);
}

b2Body* Box2DScene::body(std::string_view name) const
{
    for (size_t i = 0; i < m_bodies.size(); ++i) {
        if (m_scene.bodies[i].name == name)
            return m_bodies[i];
    }
    return nullptr;
}

std::vector<b2Body*> Box2DScene::bodiesNamed(std::string_view name) const
{
    std::vector<b2Body*> out;
    for (size_t i = 0; i < m_bodies.size(); ++i) {
        if (m_scene.bodies[i].name == name)
            out.push_back(m_bodies[i]);
    }
    return out;
}

b2Fixture* Box2DScene::fixture(std::string_view name) const
{
    for (b2Fixture* f : m_fixtures) {
        if (record(f)->name == name)
            return f;
    }
    return nullptr;
}

std::vector<b2Fixture*> Box2DScene::fixturesNamed(std::string_view name) const
{
    std::vector<b2Fixture*> out;
    for (b2Fixture* f : m_fixtures) {
        if (record(f)->name == name)
            out.push_back(f);
    }
    return out;
}

b2Joint* Box2DScene::joint(std::string_view name) const
{
    for (size_t i = 0; i < m_joints.size(); ++i) {
        if (m_joints[i] && m_scene.joints[i].name == name)
            return m_joints[i];
    }
    return nullptr;
}

std::vector<b2Joint*> Box2DScene::jointsNamed(std::string_view name) const
{
    std::vector<b2Joint*> out;
    for (size_t i = 0; i < m_joints.size(); ++i) {
        if (m_joints[i] && m_scene.joints[i].name == name)
            out.push_back(m_joints[i]);
    }
    return out;
}

const ImageDescription* Box2DScene::image(std::string_view name) const
{
    for (const ImageDescription& image : m_scene.images) {
        if (image.name == name)
            return &image;
    }
    return nullptr;
}

std::vector<const ImageDescription*> Box2DScene::imagesNamed(std::string_view name) const
{
    std::vector<const ImageDescription*> out;
    for (const ImageDescription& image : m_scene.images) {
        if (image.name == name)
            out.push_back(&image);
    }
    return out;
}

const BodyDescription* Box2DScene::record(const b2Body* body) const
{
    return find(m_bodyRecords, body);
}

const FixtureDescription* Box2DScene::record(const b2Fixture* fixture) const
{
    return find(m_fixtureRecords, fixture);
}

const JointDescription* Box2DScene::record(const b2Joint* joint) const
{
    return find(m_jointRecords, joint);
}

const std::string& Box2DScene::name(const b2Body* body) const
{
    const BodyDescription* r = record(body);
    return r ? r->name : emptyName();
}

const std::string& Box2DScene::name(const b2Fixture* fixture) const
{
    const FixtureDescription* r = record(fixture);
    return r ? r->name : emptyName();
}

const std::string& Box2DScene::name(const b2Joint* joint) const
{
    const JointDescription* r = record(joint);
    return r ? r->name : emptyName();
}

const CustomProperties& Box2DScene::properties(const b2Body* body) const
{
    const BodyDescription* r = record(body);
    return r ? r->properties : emptyProperties();
}

const CustomProperties& Box2DScene::properties(const b2Fixture* fixture) const
{
    const FixtureDescription* r = record(fixture);
    return r ? r->properties : emptyProperties();
}

const CustomProperties& Box2DScene::properties(const b2Joint* joint) const
{
    const JointDescription* r = record(joint);
    return r ? r->properties : emptyProperties();
}

b2Body* Box2DScene::imageBody(const ImageDescription& image) const
{
    return image.body >= 0 && size_t(image.body) < m_bodies.size() ? m_bodies[size_t(image.body)] : nullptr;
}

std::vector<const ImageDescription*> Box2DScene::imagesOf(const b2Body* body) const
{
    std::vector<const ImageDescription*> out;
    for (const ImageDescription& image : m_scene.images) {
        if (body && imageBody(image) == body)
            out.push_back(&image);
    }
    return out;
}

std::array<b2Vec2, 4> Box2DScene::imageCorners(const ImageDescription& image) const
{
    std::array<b2Vec2, 4> corners;
    const b2Body* body = imageBody(image);
    for (size_t i = 0; i < 4; ++i) {
        const b2Vec2 local = toB2(image.corners[i]);
        corners[i] = body ? body->GetWorldPoint(local) : local;
    }
    return corners;
}

std::vector<const ImageDescription*> Box2DScene::imagesInRenderOrder() const
{
    std::vector<const ImageDescription*> out;
    out.reserve(m_scene.images.size());
    for (const ImageDescription& image : m_scene.images)
        out.push_back(&image);
    std::stable_sort(out.begin(), out.end(), [](const ImageDescription* a, const ImageDescription* b) {
        return a->renderOrder < b->renderOrder;
    });
    return out;
}

std::unique_ptr<Box2DScene> loadBox2DScene(const std::string& path, std::string* error)
{
    SceneDescription scene;
    if (!readRawInfoFile(path, scene, error))
        return nullptr;
    return Box2DScene::create(std::move(scene), error);
}

std::unique_ptr<Box2DScene> loadBox2DSceneFromText(std::string_view json, std::string* error)
{
    SceneDescription scene;
    if (!readRawInfo(json, scene, error))
        return nullptr;
    return Box2DScene::create(std::move(scene), error);
}

std::unique_ptr<Box2DScene> mergeBox2DScene(b2World& world, const std::string& path, b2Vec2 offset,
                                            std::string* error)
{
    SceneDescription scene;
    if (!readRawInfoFile(path, scene, error))
        return nullptr;
    return Box2DScene::merge(world, std::move(scene), offset, error);
}
} // namespace plax
