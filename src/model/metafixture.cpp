#include "model/metafixture.h"

#include "model/metabody.h"
#include "model/ringcheck.h"

void MetaFixture::setVertices(std::vector<Vec2> vertices)
{
    m_vertices = std::move(vertices);
    m_selfIntersecting = ringSelfIntersects(m_vertices);
}

MetaShape& MetaFixture::addShape(int type, float radius)
{
    m_shapes.emplace_back(type, radius);
    m_shapes.back().m_fixture = this;
    return m_shapes.back();
}

QString MetaFixture::description() const
{
    auto label = [](const MetaItem* item) {
        return item->name().isEmpty() ? QStringLiteral("#%1").arg(item->id()) : item->name();
    };
    if (!m_body)
        return label(this);
    return label(m_body) + QLatin1Char('/') + label(this);
}
