#pragma once

#include <box2d/box2d.h>

/// Settings key of the mouse joint's force per kilogram of the dragged body.
inline constexpr const char* kMouseJointForceKey = "player/mousejointforce";
/// Its default value.
inline constexpr float kDefaultMouseJointForce = 1200.0f;

/// Dragging a body of the player's world with the mouse: a Box2D mouse joint
/// from the ground body to the body under the pointer, pulling it toward the
/// pointer with a force proportional to its mass, 5 Hz and damping ratio 0.7.
class MouseDrag
{
public:
    /// Starts dragging the dynamic body whose fixture touches the ±0.001 box
    /// around the point. False when already dragging or nothing is there.
    bool press(b2World& world, b2Body* ground, const b2Vec2& point, float forcePerMass);
    /// Moves the target to the point; false when not dragging.
    bool move(const b2Vec2& point);
    /// Ends dragging, destroying the joint; false when not dragging.
    bool release(b2World& world);
    /// Drops the joint without touching the world (the world is going away).
    void forget() { m_joint = nullptr; }

    /// The joint being dragged, or null.
    b2MouseJoint* joint() const { return m_joint; }
    /// True while a body is dragged.
    bool isDragging() const { return m_joint != nullptr; }

private:
    b2MouseJoint* m_joint = nullptr;
};

/// The first dynamic body with a fixture touching the box of ±halfSize around
/// the point, or null.
b2Body* dynamicBodyAt(b2World& world, const b2Vec2& point, float halfSize = 0.001f);
