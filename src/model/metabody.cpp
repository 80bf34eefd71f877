#include "model/metabody.h"

#include <cmath>

MetaFixture* MetaBody::adoptFixture(std::unique_ptr<MetaFixture> fixture)
{
    if (world())
        return nullptr;
    fixture->m_body = this;
    m_fixtures.push_back(std::move(fixture));
    markChanged();
    return m_fixtures.back().get();
}

QString MetaBody::typeWord(BodyType type)
{
    switch (type) {
    case BodyType::Static: return QStringLiteral("static");
    case BodyType::Kinematic: return QStringLiteral("kinematic");
    case BodyType::Dynamic: return QStringLiteral("dynamic");
    }
    return QStringLiteral("static");
}

namespace
{
Vec2 rotated(Vec2 v, float angle)
{
    const float c = std::cos(angle), s = std::sin(angle);
    return {c * v.x - s * v.y, s * v.x + c * v.y};
}
} // namespace

Vec2 bodyToWorld(const MetaBody* body, Vec2 local)
{
    return body ? body->position + rotated(local, body->angle) : local;
}

BodyFrame::BodyFrame(const MetaBody* body) : m_body(body != nullptr)
{
    if (body) {
        m_position = body->position;
        m_cos = std::cos(body->angle);
        m_sin = std::sin(body->angle);
    }
}

Vec2 worldToBody(const MetaBody* body, Vec2 world)
{
    return body ? rotated(world - body->position, -body->angle) : world;
}
