#pragma once

#include "plax/scene.h"

#include <box2d/box2d.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace plax
{
/// A scene description turned into Box2D 2.4.1 bodies, fixtures and joints,
/// either in a world of its own or merged into a world the game already has.
/// It keeps the description, so that names, custom properties and images stay
/// at hand, and maps every created Box2D object back to its record.
///
/// The world is built as the editor builds it when it exports, so that it
/// simulates identically: bodies in record order, each with its fixtures in
/// record order (made with density 0 and given their density afterwards),
/// then the body's mass (Box2D's own, or the file's when that differs, as
/// after a mass override); then the joints, gear joints last. Chains collide
/// from both sides in the editor, while Box2D 2.4.1's chains are one-sided:
/// every chain record therefore also gets a reversed twin chain right after
/// it, mapped to the same record. Open chains without neighbour vertices get
/// the neighbours that make their ends collide like corners.
///
/// Pointers returned stay valid as long as the Box2D objects do: destroying a
/// body through Box2D leaves a dangling entry here.
class Box2DScene
{
public:
    /// Builds the scene into a new world with the scene's gravity and solver
    /// flags, owned by the result. Null, with the reason in `error` naming the
    /// record ("/body/2/fixture/0/polygon/vertices: ..."), when a record
    /// cannot be built; nothing is created then.
    static std::unique_ptr<Box2DScene> create(SceneDescription scene, std::string* error);

    /// Adds the scene's bodies, joints and images to an existing world,
    /// translated by `offset` (bodies, images without a body, and the world
    /// points of pulley and mouse joints). The world's settings are left
    /// alone. The world must outlive the result, which does not own it.
    /// Null with `error` when a record cannot be built; nothing is added then.
    static std::unique_ptr<Box2DScene> merge(b2World& world, SceneDescription scene, b2Vec2 offset,
                                             std::string* error);

    /// Destroys the world when it owns it; a merged scene leaves its bodies in the world.
    ~Box2DScene();
    Box2DScene(const Box2DScene&) = delete;
    Box2DScene& operator=(const Box2DScene&) = delete;

    /// The world the scene is in.
    b2World& world() const { return *m_world; }
    /// True when the world was made for this scene (and dies with it).
    bool ownsWorld() const { return m_ownedWorld != nullptr; }
    /// The description the scene was built from.
    const SceneDescription& description() const { return m_scene; }
    /// Gravity, steps per second and iteration counts of the file.
    const WorldSettings& settings() const { return m_scene.world; }
    /// The world's custom properties.
    const CustomProperties& worldProperties() const { return m_scene.properties; }
    /// Advances the world by one step of 1 / stepsPerSecond seconds (at least
    /// 1 step per second) with the file's iteration counts.
    void step();

    /// Bodies, fixtures (without reversed twins) and joints in record order.
    const std::vector<b2Body*>& bodies() const { return m_bodies; }
    const std::vector<b2Fixture*>& fixtures() const { return m_fixtures; }
    const std::vector<b2Joint*>& joints() const { return m_joints; }
    /// Images in record order, placed by the offset of a merge.
    const std::vector<ImageDescription>& images() const { return m_scene.images; }

    /// The first body, fixture, joint or image with that name in record order, or null.
    b2Body* body(std::string_view name) const;
    b2Fixture* fixture(std::string_view name) const;
    b2Joint* joint(std::string_view name) const;
    const ImageDescription* image(std::string_view name) const;
    /// All of them with that name, in record order.
    std::vector<b2Body*> bodiesNamed(std::string_view name) const;
    std::vector<b2Fixture*> fixturesNamed(std::string_view name) const;
    std::vector<b2Joint*> jointsNamed(std::string_view name) const;
    std::vector<const ImageDescription*> imagesNamed(std::string_view name) const;

    /// The record of a Box2D object of this scene (a twin chain gives its
    /// fixture's record), or null for objects this scene did not create.
    const BodyDescription* record(const b2Body* body) const;
    const FixtureDescription* record(const b2Fixture* fixture) const;
    const JointDescription* record(const b2Joint* joint) const;
    /// The name of an object of this scene (empty when unknown or unnamed).
    const std::string& name(const b2Body* body) const;
    const std::string& name(const b2Fixture* fixture) const;
    const std::string& name(const b2Joint* joint) const;
    /// The custom properties of an object of this scene (empty when unknown).
    const CustomProperties& properties(const b2Body* body) const;
    const CustomProperties& properties(const b2Fixture* fixture) const;
    const CustomProperties& properties(const b2Joint* joint) const;

    /// The body an image is drawn on, or null for an image fixed in the world.
    b2Body* imageBody(const ImageDescription& image) const;
    /// The images drawn on a body, in record order.
    std::vector<const ImageDescription*> imagesOf(const b2Body* body) const;
    /// An image's corners in world coordinates at its body's current place
    /// (bottom-left, bottom-right, top-right, top-left).
    std::array<b2Vec2, 4> imageCorners(const ImageDescription& image) const;
    /// The images sorted by render order (stable: file order among equals),
    /// the order to draw them in.
    std::vector<const ImageDescription*> imagesInRenderOrder() const;

private:
    Box2DScene() = default;
    static std::unique_ptr<Box2DScene> build(b2World* world, std::unique_ptr<b2World> owned, SceneDescription scene,
                                             b2Vec2 offset, std::string* error);

    SceneDescription m_scene;
    std::unique_ptr<b2World> m_ownedWorld;
    b2World* m_world = nullptr;
    std::vector<b2Body*> m_bodies;
    std::vector<b2Fixture*> m_fixtures;
    std::vector<b2Joint*> m_joints;
    // Box2D objects and their records, sorted by address once built: one
    // allocation each, looked up by binary search.
    template <typename Object, typename Record>
    using RecordIndex = std::vector<std::pair<const Object*, const Record*>>;
    RecordIndex<b2Body, BodyDescription> m_bodyRecords;
    RecordIndex<b2Fixture, FixtureDescription> m_fixtureRecords;
    RecordIndex<b2Joint, JointDescription> m_jointRecords;
};

/// Reads a raw-info file and builds it into a new world (see Box2DScene::create).
/// Null with the reason in `error` when the file cannot be read or built.
std::unique_ptr<Box2DScene> loadBox2DScene(const std::string& path, std::string* error);
/// The same from raw-info JSON text.
std::unique_ptr<Box2DScene> loadBox2DSceneFromText(std::string_view json, std::string* error);
/// Reads a raw-info file and merges it into a world at an offset (see Box2DScene::merge).
std::unique_ptr<Box2DScene> mergeBox2DScene(b2World& world, const std::string& path, b2Vec2 offset,
                                            std::string* error);
} // namespace plax
