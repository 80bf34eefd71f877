#include "player/mousedrag.h"

#include <cmath>

namespace
{
// Collects the first dynamic body whose fixture shape really touches the box
// (the broad phase only knows fattened bounds).
class TouchQuery : public b2QueryCallback
{
public:
    TouchQuery(const b2Vec2& point, float halfSize)
    {
        m_box.SetAsBox(halfSize, halfSize, point, 0);
        m_identity.SetIdentity();
    }

    bool ReportFixture(b2Fixture* fixture) override
    {
        b2Body* body = fixture->GetBody();
        if (body->GetType() != b2_dynamicBody)
            return true;
        const b2Shape* shape = fixture->GetShape();
        for (int child = 0; child < shape->GetChildCount(); ++child) {
            if (b2TestOverlap(shape, child, &m_box, 0, body->GetTransform(), m_identity)) {
                found = body;
                return false;
            }
        }
        return true;
    }

    b2Body* found = nullptr;

private:
    b2PolygonShape m_box;
    b2Transform m_identity;
};
} // namespace

b2Body* dynamicBodyAt(b2World& world, const b2Vec2& point, float halfSize)
{
    TouchQuery query(point, halfSize);
    b2AABB box;
    box.lowerBound = point - b2Vec2(halfSize, halfSize);
    box.upperBound = point + b2Vec2(halfSize, halfSize);
    world.QueryAABB(&query, box);
    return query.found;
}

bool MouseDrag::press(b2World& world, b2Body* ground, const b2Vec2& point, float forcePerMass)
{
    if (m_joint || !ground || !std::isfinite(point.x) || !std::isfinite(point.y))
        return false;
    b2Body* body = dynamicBodyAt(world, point);
    if (!body)
        return false;
    b2MouseJointDef def;
    def.bodyA = ground;
    def.bodyB = body;
    def.collideConnected = false;
    def.target = point;
    def.maxForce = forcePerMass * body->GetMass();
    b2LinearStiffness(def.stiffness, def.damping, 5.0f, 0.7f, ground, body);
    m_joint = static_cast<b2MouseJoint*>(world.CreateJoint(&def));
    body->SetAwake(true);
    return true;
}

bool MouseDrag::move(const b2Vec2& point)
{
    if (!m_joint)
        return false;
    if (std::isfinite(point.x) && std::isfinite(point.y))
        m_joint->SetTarget(point);
    return true;
}

bool MouseDrag::release(b2World& world)
{
    if (!m_joint)
        return false;
    world.DestroyJoint(m_joint);
    m_joint = nullptr;
    return true;
}
