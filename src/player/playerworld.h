#pragma once

#include "base/types.h"
#include "player/playerrawinfo.h"

#include <box2d/box2d.h>

#include <QString>

#include <memory>
#include <vector>

class EditorDocument;
class MetaWorld;
class WorldBuild;

/// The Box2D world a player runs: the document written as raw info (object
/// instances expanded) and read back, plus a static ground body for the
/// mouse joint. Every body keeps its place in the raw info, so it can be
/// traced back to the document's body it came from.
class PlayerWorld
{
public:
    /// Builds the world of a document. Null, with the reason in `error`
    /// (also logged), when there is no document or the raw info cannot be
    /// written or read back.
    static std::unique_ptr<PlayerWorld> load(const EditorDocument* document, QString* error,
                                             const PlayerRawInfoWriter& writer = writePlayerRawInfo);
    /// Destroys the world (before the read-back scene it points into).
    ~PlayerWorld();
    PlayerWorld(const PlayerWorld&) = delete;
    PlayerWorld& operator=(const PlayerWorld&) = delete;

    /// The simulated world.
    b2World& world();
    /// The static body with default settings that mouse joints hold on to.
    b2Body* groundBody() const { return m_ground; }
    /// The world as built from the raw info: bodies, joints and placed images
    /// in record order, traced to the read-back scene.
    const WorldBuild& build() const { return *m_build; }
    /// The scene read back from the raw info (images and names for drawing).
    const MetaWorld& scene() const { return *m_scene; }

    /// Number of bodies built from the raw info (the ground body not counted).
    size_t bodyCount() const;
    /// The Box2D body of a body record.
    b2Body* body(size_t index) const;
    /// Id of the document's body a body record came from; 0 for bodies of
    /// object instances and when the trace was lost.
    ItemId sceneBodyId(size_t index) const;

private:
    PlayerWorld() = default;

    std::unique_ptr<MetaWorld> m_scene;   // declared first: the build points into it
    std::unique_ptr<WorldBuild> m_build;
    b2Body* m_ground = nullptr;
    std::vector<ItemId> m_sceneBodyIds;
};
