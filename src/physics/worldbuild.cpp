#include "physics/worldbuild.h"

#include "base/log.h"
#include "geometry/fixturebuilder.h"
#include "geometry/decompositionsettings.h"
#include "geometry/fixturedef.h"
#include "geometry/massguard.h"
#include "model/metaworld.h"
#include "physics/jointbuilder.h"
#include "physics/placeditems.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <unordered_map>

namespace
{
float finiteOr(float v, float fallback)
{
    return std::isfinite(v) ? v : fallback;
}

b2Vec2 finiteVec(Vec2 v)
{
    return {finiteOr(v.x, 0), finiteOr(v.y, 0)};
}

QString prefixed(const QString& prefix, const QString& name)
{
    return prefix.isEmpty() ? name : prefix + name;
}

b2BodyDef bodyDefFor(const MetaBody& body, const Placement& p)
{
    b2BodyDef def;
    def.type = body.type == BodyType::Dynamic     ? b2_dynamicBody
               : body.type == BodyType::Kinematic ? b2_kinematicBody
                                                  : b2_staticBody;
    // Box2D asserts on non-finite positions, angles and velocities.
    def.position = finiteVec(p.applyToPoint(body.position));
    def.angle = finiteOr(p.applyToAngle(body.angle), 0);
    def.linearVelocity = finiteVec(p.applyToVector(body.linearVelocity));
    def.angularVelocity = finiteOr(p.applyToRelativeAngle(body.angularVelocity), 0);
    def.linearDamping = std::max(finiteOr(body.linearDamping, 0), 0.0f);
    def.angularDamping = std::max(finiteOr(body.angularDamping, 0), 0.0f);
    def.gravityScale = finiteOr(body.gravityScale, 1);
    def.bullet = body.bullet;
    def.allowSleep = body.sleepingAllowed;
    def.awake = body.awake;
    def.enabled = body.active;
    def.fixedRotation = body.fixedRotation;
    return def;
}

// A scene's mass override, placed. Box2D takes the rotational inertia about
// the body origin and asserts when it is not above mass * |centre|^2; an
// override that is not is read as the inertia about the centre of mass (as
// it is often entered), with a warning, and refused when even that cannot be
// represented.
void applyMassOverride(b2Body* b2body, const MetaBody& body, const Placement& p, const QString& name)
{
    if (!(body.massDataMass > 0) || !std::isfinite(body.massDataMass) || b2body->GetType() != b2_dynamicBody)
        return;
    const float s = std::fabs(p.scale);
    b2MassData mass;
    mass.mass = body.massDataMass;
    mass.center = finiteVec(p.applyToLocalPoint(body.massDataCenter));
    // The rotational inertia about the centre grows with the square of the scale.
    mass.I = std::max(finiteOr(body.massDataI * s * s, 0), 0.0f);
    if (!box2DAcceptsMassData(mass, b2body->IsFixedRotation())) {
        const float shift = mass.mass * b2Dot(mass.center, mass.center);
        const float asCentred = box2DOriginInertia(mass.mass, mass.center, mass.I);
        b2MassData corrected = mass;
        corrected.I = asCentred;
        if (!box2DAcceptsMassData(corrected, false)) {
            plaxLog(LOG_WARNING, QStringLiteral("Mass override of body '%1' ignored: its rotational inertia %2 cannot "
                                                "be used with mass %3 and centre (%4, %5)")
                                     .arg(name, QString::number(mass.I), QString::number(mass.mass),
                                          QString::number(mass.center.x), QString::number(mass.center.y)));
            return;
        }
        plaxLog(LOG_WARNING, QStringLiteral("Mass override of body '%1': rotational inertia %2 is not above mass x "
                                            "|centre|^2 = %3, as Box2D needs for an inertia about the body origin; "
                                            "it is taken as the inertia about the centre of mass")
                                 .arg(name, QString::number(mass.I), QString::number(shift)));
        mass = corrected;
    }
    b2body->SetMassData(&mass);
}

// The body's fixtures are gathered in `pieces` (kept from body to body) and
// then copied into a vector of their exact number: growing each body's own
// vector by doubling left, over a whole scene, megabytes of unused room.
void buildFixtures(BuiltBody& built, const MetaBody& body, const Placement& p, const QString& prefix,
                   DecompositionMethod method, std::vector<BuiltFixture>& pieces)
{
    pieces.clear();
    for (const auto& fixture : body.fixtures()) {
        const QString description = fixture->description();
        std::unique_ptr<MetaFixture> placed;
        MetaFixture* source = fixture.get();
        if (!p.isIdentity()) {
            placed = placedFixture(*fixture, p);
            source = placed.get();
        }
        const b2FixtureDef def = fixtureDefFor(*fixture);
        for (size_t i = 0; i < source->shapes().size(); ++i) {
            MetaShape& shape = source->shape(i);
            shape.createdFixtures.clear();
            shape.reverseChainTwins.clear();
            createFixtures(shape, description, built.body, def, method);
            for (b2Fixture* f : shape.createdFixtures) {
                const bool twin = std::find(shape.reverseChainTwins.begin(), shape.reverseChainTwins.end(), f) !=
                                  shape.reverseChainTwins.end();
                pieces.push_back({f, fixture.get(), prefixed(prefix, fixture->name()), twin});
            }
            if (placed)
                continue;
            // The scene's own shapes keep no pointers into a world they do not
            // own, nor the room that held them (a scene has many shapes).
            shape.createdFixtures.clear();
            shape.createdFixtures.shrink_to_fit();
            shape.reverseChainTwins.clear();
            shape.reverseChainTwins.shrink_to_fit();
        }
    }
    built.fixtures.assign(std::make_move_iterator(pieces.begin()), std::make_move_iterator(pieces.end()));
    pieces.clear();
}
} // namespace

WorldBuild::WorldBuild(const MetaWorld& settingsSource)
    : WorldBuild(settingsSource, DecompositionSettings::method())
{
}

WorldBuild::WorldBuild(const MetaWorld& settingsSource, DecompositionMethod method) : m_method(method)
{
    const WorldSettings& s = settingsSource.settings;
    m_world = std::make_unique<b2World>(finiteVec(s.gravity));
    m_world->SetAllowSleeping(s.allowSleep);
    m_world->SetAutoClearForces(s.autoClearForces);
    m_world->SetWarmStarting(s.warmStarting);
    m_world->SetContinuousPhysics(s.continuousPhysics);
    m_world->SetSubStepping(s.subStepping);
}

WorldBuild::~WorldBuild()
{
    // Joints and images refer into the world; the world goes last.
    m_joints.clear();
    m_images.clear();
    m_bodies.clear();
    m_world.reset();
}

void WorldBuild::addScene(const MetaWorld& scene, const Placement& placement, const QString& namePrefix)
{
    std::unordered_map<const MetaBody*, int> indexOf;
    indexOf.reserve(scene.bodies().size());
    if (m_bodies.empty())
        m_bodies.reserve(scene.bodies().size()); // placed objects' bodies later grow it as usual
    std::vector<BuiltFixture> pieces;
    for (const auto& body : scene.bodies()) {
        BuiltBody built;
        built.source = body.get();
        built.name = prefixed(namePrefix, body->name());
        b2BodyDef def = bodyDefFor(*body, placement);
        built.enabled = def.enabled;
        if (m_skipBroadPhase)
            def.enabled = false;
        built.body = m_world->CreateBody(&def);
        buildFixtures(built, *body, placement, namePrefix, m_method, pieces);
        settleBodyMass(built.body, built.name);
        applyMassOverride(built.body, *body, placement, built.name);
        indexOf[body.get()] = int(m_bodies.size());
        m_bodies.push_back(std::move(built));
    }

    for (const auto& joint : scene.joints()) {
        auto a = indexOf.find(joint->bodyA);
        auto b = indexOf.find(joint->bodyB);
        if (a == indexOf.end() || b == indexOf.end()) {
            plaxLog(LOG_WARNING, QStringLiteral("Skipping joint '%1': its bodies are not in the scene").arg(joint->name()));
            continue;
        }
        BuiltJoint built;
        built.source = joint.get();
        built.placed = placedJoint(*joint, placement);
        built.name = prefixed(namePrefix, joint->name());
        built.bodyIndexA = a->second;
        built.bodyIndexB = b->second;
        built.joint = createJoint(*m_world, *built.placed, m_bodies[size_t(a->second)].body,
                                  m_bodies[size_t(b->second)].body);
        if (!built.joint) {
            plaxLog(LOG_WARNING, QStringLiteral("Skipping joint '%1': it cannot be created").arg(joint->name()));
            continue;
        }
        m_joints.push_back(std::move(built));
    }

    for (const auto& image : scene.images()) {
        BuiltImage built;
        built.source = image.get();
        auto body = indexOf.find(image->body);
        const bool onBody = image->body && body != indexOf.end();
        built.bodyIndex = onBody ? body->second : -1;
        built.placed = placedImage(*image, placement, onBody);
        built.name = prefixed(namePrefix, image->name());
        m_images.push_back(std::move(built));
    }
}

void WorldBuild::enableBodies()
{
    for (const BuiltBody& built : m_bodies) {
        if (built.enabled && !built.body->IsEnabled())
            built.body->SetEnabled(true);
    }
}

int WorldBuild::bodyIndex(const b2Body* body) const
{
    for (size_t i = 0; i < m_bodies.size(); ++i) {
        if (m_bodies[i].body == body)
            return int(i);
    }
    return -1;
}

int WorldBuild::jointIndex(const b2Joint* joint) const
{
    for (size_t i = 0; i < m_joints.size(); ++i) {
        if (m_joints[i].joint == joint)
            return int(i);
    }
    return -1;
}
