#pragma once

#include "model/metafixture.h"

#include <memory>
#include <vector>

/// Body types (values as in the raw-info export).
enum class BodyType : int
{
    Static = 0,
    Kinematic = 1,
    Dynamic = 2,
};

/// A rigid body with its fixtures.
class MetaBody : public MetaItem
{
public:
    MetaBody() : MetaItem(ItemKind::Body) {}

    BodyType type = BodyType::Static;
    Vec2 position;
    float angle = 0;
    Vec2 linearVelocity;
    float angularVelocity = 0;
    float linearDamping = 0;
    float angularDamping = 0;
    float gravityScale = 1;
    bool bullet = false;
    bool sleepingAllowed = true;
    bool awake = true;
    bool active = true;
    bool fixedRotation = false;
    float massDataMass = 0;
    Vec2 massDataCenter;
    float massDataI = 0;

    /// Fixtures in order.
    const std::vector<std::unique_ptr<MetaFixture>>& fixtures() const { return m_fixtures; }

    /// Appends a fixture to a body that is not yet part of a world (a world
    /// adds fixtures through MetaWorld::addFixture).
    MetaFixture* adoptFixture(std::unique_ptr<MetaFixture> fixture);

    /// Scene-file word of a body type ("static", "kinematic", "dynamic").
    static QString typeWord(BodyType type);

private:
    friend class MetaWorld;

    std::vector<std::unique_ptr<MetaFixture>> m_fixtures;
};

/// A point in body coordinates in world coordinates (unchanged without a body).
Vec2 bodyToWorld(const MetaBody* body, Vec2 local);
/// A world point in body coordinates (unchanged without a body).
Vec2 worldToBody(const MetaBody* body, Vec2 world);

/// bodyToWorld for many points of one body: the angle's cosine and sine are
/// worked out once, and each point comes out exactly as bodyToWorld gives it.
class BodyFrame
{
public:
    /// The frame of a body (the identity without one).
    explicit BodyFrame(const MetaBody* body);
    /// A point in body coordinates in world coordinates.
    Vec2 toWorld(Vec2 local) const
    {
        if (!m_body)
            return local;
        return m_position + Vec2{m_cos * local.x - m_sin * local.y, m_sin * local.x + m_cos * local.y};
    }

private:
    bool m_body = false;
    Vec2 m_position;
    float m_cos = 1;
    float m_sin = 0;
};
