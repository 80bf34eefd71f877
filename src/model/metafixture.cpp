#include "model/metafixture.h"

#include "base/log.h"
#include "model/metabody.h"
#include "model/ringcheck.h"

#include <cmath>

float MetaFixture::validDensity(float density)
{
    if (std::isfinite(density) && density >= 0)
        return density;
    const float fallback = MetaFixture().density;
    plaxLog(LOG_WARNING, QStringLiteral("Fixture density %1 is not valid, using %2").arg(density).arg(fallback));
    return fallback;
}

void MetaFixture::markChanged()
{
    MetaItem::markChanged();
    if (m_body)
        m_body->markChanged();
}

void MetaFixture::setVertices(std::vector<Vec2> vertices)
{
    markChanged();
    if (m_selfIntersecting) {
        m_vertices = std::move(vertices);
        m_selfIntersecting = ringSelfIntersects(m_vertices);
        return;
    }
    // The ring did not cross itself: an edit of a few points need only
    // look at the edges it moved.
    std::swap(m_vertices, vertices);
    m_selfIntersecting = ringSelfIntersectsAfterEdit(vertices, m_vertices);
}

MetaShape& MetaFixture::addShape(ShapeType type, float radius)
{
    m_shapes.emplace_back(type, radius);
    m_shapes.back().m_fixture = this;
    markChanged();
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
