#include "geometry/fixturedef.h"

#include "base/log.h"
#include "model/metafixture.h"

#include <cmath>
#include <cstdint>

namespace
{
float sanitized(float value, bool allowNegative, const char* what, const MetaFixture& fixture)
{
    if (std::isfinite(value) && (allowNegative || value >= 0))
        return value;
    plaxLog(LOG_WARNING, QStringLiteral("Invalid %1 %2 replaced by 0 for fixture: %3")
                             .arg(QLatin1String(what), QString::number(value), fixture.description()));
    return 0;
}
} // namespace

b2FixtureDef fixtureDefFor(const MetaFixture& fixture)
{
    b2FixtureDef def;
    def.friction = sanitized(fixture.friction, false, "friction", fixture);
    def.density = sanitized(fixture.density, false, "density", fixture);
    def.restitution = sanitized(fixture.restitution, true, "restitution", fixture);
    def.isSensor = fixture.sensor;
    def.filter.categoryBits = static_cast<std::uint16_t>(fixture.filterCategoryBits);
    def.filter.maskBits = static_cast<std::uint16_t>(fixture.filterMaskBits);
    def.filter.groupIndex = static_cast<std::int16_t>(fixture.filterGroupIndex);
    return def;
}
