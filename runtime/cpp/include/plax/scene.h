#pragma once

#include "plax/customproperties.h"
#include "plax/jointvalues.h"
#include "plax/values.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace plax
{
/// The world settings of a scene.
struct WorldSettings
{
    Vec2 gravity{0, -10};
    bool allowSleep = true;
    bool autoClearForces = true;
    bool warmStarting = true;
    bool continuousPhysics = true;
    bool subStepping = false;
    float stepsPerSecond = 60;     ///< the rate the scene was made for
    int velocityIterations = 8;
    int positionIterations = 3;
    /// Names of the collision bit planes (bit 0 first); may be empty.
    std::vector<std::string> collisionBitplanes;
};

/// The kinds of fixture shape a file holds.
enum class ShapeType
{
    Circle,
    Polygon,   ///< convex, at most 8 vertices
    Edge,
    Chain,     ///< open, or a loop when its last vertex repeats its first
};

/// One fixture's shape in body coordinates; members of other types are unused.
struct ShapeDescription
{
    ShapeType type = ShapeType::Circle;
    Vec2 center;                   ///< circle
    float radius = 0;              ///< circle
    std::vector<Vec2> vertices;    ///< polygon, chain
    Vec2 vertex1, vertex2;         ///< edge
    bool hasVertex0 = false;       ///< edge neighbours: both make it one-sided
    bool hasVertex3 = false;
    Vec2 vertex0, vertex3;
    bool hasPrevVertex = false;    ///< chain neighbours of an open chain
    bool hasNextVertex = false;
    Vec2 prevVertex, nextVertex;

    /// True for a chain whose last vertex repeats its first (at least four vertices).
    bool isLoop() const;
};

/// One fixture record.
struct FixtureDescription
{
    std::string name;
    float friction = 0.2f;
    float restitution = 0;
    float density = 0;
    bool sensor = false;
    std::uint16_t categoryBits = 0x0001;
    std::uint16_t maskBits = 0xFFFF;
    std::int16_t groupIndex = 0;
    ShapeDescription shape;
    CustomProperties properties;
};

/// Body types, numbered as in files and in Box2D.
enum class BodyType
{
    Static = 0,
    Kinematic = 1,
    Dynamic = 2,
};

/// One body record with its fixtures.
struct BodyDescription
{
    std::string name;
    BodyType type = BodyType::Static;
    Vec2 position;
    float angle = 0;
    Vec2 linearVelocity;
    float angularVelocity = 0;
    float linearDamping = 0;
    float angularDamping = 0;
    float gravityScale = 1;
    bool bullet = false;
    bool allowSleep = true;
    bool awake = true;
    bool active = true;
    bool fixedRotation = false;
    /// The mass the body had when it was written ("massData-..." members);
    /// a physics backend applies it when its own computation differs.
    bool hasMassData = false;
    float mass = 0;
    Vec2 massCenter;
    float inertia = 0;             ///< about the body origin
    std::vector<FixtureDescription> fixtures;
    CustomProperties properties;
};

/// One joint record. Bodies and, for a gear joint, the two joints it couples
/// are positions in the scene's arrays (-1 for none).
struct JointDescription
{
    std::string name;
    int bodyA = -1;
    int bodyB = -1;
    int joint1 = -1;               ///< gear
    int joint2 = -1;               ///< gear
    JointValues values;
    CustomProperties properties;
};

/// One image: everything a game needs to draw a sprite.
struct ImageDescription
{
    std::string name;
    std::string file;              ///< as exported (relative to the file, or absolute)
    int body = -1;                 ///< position in the bodies, or -1 for the world
    Vec2 center;                   ///< in the body's frame (the world's without a body)
    float angle = 0;               ///< relative to the body
    float scale = 1;               ///< height in world units
    float aspectScale = 1;         ///< width over height, beside the file's own ratio
    float opacity = 1;
    bool flip = false;             ///< mirrored left to right
    int filter = 1;                ///< texture filtering: 0 nearest, 1 linear
    float renderOrder = 0;         ///< draw lower values first
    Color colorTint;
    /// Bottom-left, bottom-right, top-right, top-left, in the body's frame.
    bool hasCorners = false;
    std::array<Vec2, 4> corners{};
    /// The corners as x, y pairs; their texture coordinates (v = 0 at the
    /// image's top row); two triangles over the corners.
    std::vector<float> vertexPointer;
    std::vector<float> texCoordPointer;
    std::vector<int> drawElements;
    CustomProperties properties;
};

/// One object instance as the editor placed it (its items are already among
/// the scene's bodies, joints and images).
struct ObjectDescription
{
    std::string name;
    std::string path;
    Vec2 position;
    float angle = 0;
    float scale = 1;
    bool flip = false;
    CustomProperties properties;
};

/// A whole raw-info file as plain data, independent of any physics engine.
struct SceneDescription
{
    WorldSettings world;
    CustomProperties properties;
    std::vector<BodyDescription> bodies;
    std::vector<JointDescription> joints;
    std::vector<ImageDescription> images;
    std::vector<ObjectDescription> objects;
};
} // namespace plax
