#pragma once

#include "geometry/decomposition.h"
#include "model/metajoint.h"
#include "model/metaimage.h"
#include "physics/placement.h"

#include <box2d/box2d.h>

#include <QString>

#include <memory>
#include <vector>

class MetaBody;
class MetaFixture;
class MetaObject;
class MetaWorld;

/// One Box2D fixture of a built world and the scene fixture it came from.
struct BuiltFixture
{
    b2Fixture* fixture = nullptr;
    const MetaFixture* source = nullptr;
    QString name;
    /// The reversed chain that makes a line or loop collide from both sides;
    /// it is part of the simulation but not written as a record of its own.
    bool reverseTwin = false;
};

/// One Box2D body of a built world and its origin.
struct BuiltBody
{
    b2Body* body = nullptr;
    const MetaBody* source = nullptr;
    QString name;
    std::vector<BuiltFixture> fixtures;
    /// Whether the body is enabled ("active") in the scene; the Box2D body
    /// stays disabled until enableBodies() when the broad phase is skipped.
    bool enabled = true;
};

/// One Box2D joint with the scene values it was made from, after placement
/// (rope type, frequencies and damping ratios are kept as authored).
struct BuiltJoint
{
    b2Joint* joint = nullptr;
    const MetaJoint* source = nullptr;
    std::unique_ptr<MetaJoint> placed;   ///< detached copy with placed anchors, angles and lengths
    QString name;
    int bodyIndexA = -1;
    int bodyIndexB = -1;
};

/// An image of the built scene, placed, with the index of its body or -1.
struct BuiltImage
{
    const MetaImage* source = nullptr;
    std::unique_ptr<MetaImage> placed;   ///< detached copy with placed centre, angle, scale and flip
    QString name;
    int bodyIndex = -1;
};

/// A Box2D world built from a scene (and, through placements, from the object
/// files it places), with every body, fixture, joint and image traced back to
/// its scene item in creation order.
class WorldBuild
{
public:
    /// An empty world with the scene's gravity and solver flags; polygons are
    /// decomposed by the method of the application settings (read once here).
    explicit WorldBuild(const MetaWorld& settingsSource);
    /// The same with an explicit decomposition method.
    WorldBuild(const MetaWorld& settingsSource, DecompositionMethod method);
    ~WorldBuild();
    WorldBuild(const WorldBuild&) = delete;
    WorldBuild& operator=(const WorldBuild&) = delete;

    /// Makes the bodies added from now on without their broad-phase proxies
    /// (they are made disabled, their scene flag kept in BuiltBody::enabled):
    /// a world that is only written out needs no collision search, whose
    /// tree costs time and memory growing faster than the scene.
    void skipBroadPhase() { m_skipBroadPhase = true; }
    /// Enables the bodies that are enabled in the scene (making their
    /// proxies), as Box2D's own dump of the world needs them.
    void enableBodies();

    /// Adds a scene's bodies (with fixtures), joints and images, placed by the
    /// placement and named with the prefix. Joints whose bodies are missing
    /// are skipped with a warning. A body's mass is computed once it has all
    /// its fixtures (settleBodyMass), then its mass override, if any, is
    /// applied after a check that Box2D will take it.
    void addScene(const MetaWorld& scene, const Placement& placement = {}, const QString& namePrefix = QString());

    /// The Box2D world.
    b2World& world() { return *m_world; }
    /// Built items in creation order.
    const std::vector<BuiltBody>& bodies() const { return m_bodies; }
    const std::vector<BuiltJoint>& joints() const { return m_joints; }
    const std::vector<BuiltImage>& images() const { return m_images; }

    /// Index of a Box2D body among bodies(), or -1.
    int bodyIndex(const b2Body* body) const;
    /// Index of a Box2D joint among joints(), or -1.
    int jointIndex(const b2Joint* joint) const;

private:
    std::unique_ptr<b2World> m_world;
    DecompositionMethod m_method;
    bool m_skipBroadPhase = false;
    std::vector<BuiltBody> m_bodies;
    std::vector<BuiltJoint> m_joints;
    std::vector<BuiltImage> m_images;
};
