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
