#include "model/metashape.h"

#include "base/flags.h"
#include "base/log.h"
#include "base/notify.h"
#include "model/metafixture.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace
{
const char* const kInvalidSettingsTitle = "Invalid settings";

QString tr(const char* text)
{
    return QCoreApplication::translate("MetaShape", text);
}

// Logs a refusal at error level and shows it to an interactive user.
void reportRefusal(const QString& message)
{
    plaxLog(LOG_ERROR, message);
    if (!AppFlags::suppressRefusalDialogs())
        UserNotifier::show(UserNotifier::Kind::Warning, tr(kInvalidSettingsTitle), message);
}

size_t vertexCount(const MetaShape& shape)
{
    return shape.fixture() ? shape.fixture()->vertices().size() : 0;
}
} // namespace

bool MetaShape::setType(ShapeType type)
{
    if (type == m_type)
        return false;
    switch (type) {
    case ShapeType::Circle:
        if (!(m_radius >= kMinEffectiveRadius)) {
            reportRefusal(tr("Please set a radius value greater than 0.005 to create a circle shape."));
            return false;
        }
        break;
    case ShapeType::Polygon:
        if (vertexCount(*this) <= 2) {
            reportRefusal(tr("You need at least three vertices in the fixture to create a polygon. The edges of the "
                             "polygon should not cross over each other."));
            return false;
        }
        break;
    case ShapeType::Loop:
        if (vertexCount(*this) <= 2) {
            reportRefusal(tr("You need at least three vertices in the fixture to create a loop."));
            return false;
        }
        break;
    default:
        break;
    }
    m_type = type;
    markFixtureChanged();
    return true;
}

void MetaShape::assign(ShapeType type, float radius)
{
    m_type = type;
    m_radius = radius;
    markFixtureChanged();
}

void MetaShape::markFixtureChanged()
{
    if (m_fixture)
        m_fixture->markChanged();
}

bool MetaShape::setRadius(float radius)
{
    // A radius that is not a number or infinite is refused like a negative one:
    // it could never be built.
    if (radius < 0 || !std::isfinite(radius)) {
        reportRefusal(tr("Please set a radius value of zero or greater.\nTo create a circle shape, please set a radius "
                         "value greater than 0.005"));
        return false;
    }
    if (radius >= kMinEffectiveRadius) {
        m_radius = radius;
        markFixtureChanged();
        return true;
    }
    if (m_type != ShapeType::Circle) {
        if (radius != 0)
            plaxLog(LOG_WARNING, tr("Radius values of less than 0.005 for non-circle shapes will be taken as zero."));
        m_radius = radius;
        markFixtureChanged();
        return true;
    }
    const QString message = tr("Circle shapes should have a radius value greater than 0.005");
    plaxLog(LOG_ERROR, message);
    if (AppFlags::suppressRefusalDialogs() || !UserNotifier::isInteractive())
        AppFlags::setInvalidSettingsFlag(true);
    else
        UserNotifier::show(UserNotifier::Kind::Warning, tr(kInvalidSettingsTitle), message);
    return false;
}

void MetaShape::conformToVertexCount(const QString& fixtureDescription, int shapeIndex)
{
    const size_t count = vertexCount(*this);
    if (count == 1 && (m_type == ShapeType::Polygon || m_type == ShapeType::Line || m_type == ShapeType::Loop)) {
        if (m_radius == 0) {
            m_radius = 0.5f;
            plaxLog(LOG_WARNING, QStringLiteral("Shape radius set to 0.5: %1:%2 (This happens when a shape has a radius "
                                                "of zero and only one vertex, to avoid having a zero radius circle.)")
                                     .arg(fixtureDescription, QString::number(shapeIndex)));
        }
        m_type = ShapeType::Circle;
        markFixtureChanged();
        plaxLog(LOG_WARNING,
                QStringLiteral("Shape type forced to circle: %1:%2").arg(fixtureDescription, QString::number(shapeIndex)));
    } else if (count == 2 && (m_type == ShapeType::Polygon || m_type == ShapeType::Loop)) {
        m_type = ShapeType::Line;
        markFixtureChanged();
        plaxLog(LOG_WARNING, QStringLiteral("Shape type forced to line: %1:%2").arg(fixtureDescription, QString::number(shapeIndex)));
    }
}

QString MetaShape::typeName(ShapeType type)
{
    switch (type) {
    case ShapeType::Circle: return tr("Circle");
    case ShapeType::Polygon: return tr("Polygon");
    case ShapeType::Line: return tr("Line");
    case ShapeType::Loop: return tr("Loop");
    default: return tr("Unknown shape type");
    }
}

QString MetaShape::typeWord(ShapeType type)
{
    switch (type) {
    case ShapeType::Circle: return QStringLiteral("circle");
    case ShapeType::Polygon: return QStringLiteral("polygon");
    case ShapeType::Line: return QStringLiteral("line");
    case ShapeType::Loop: return QStringLiteral("loop");
    default: return QStringLiteral("unknown");
    }
}

bool MetaShape::isReverseChainTwin(const b2Fixture* fixture) const
{
    return fixture && std::find(reverseChainTwins.begin(), reverseChainTwins.end(), fixture) != reverseChainTwins.end();
}

ShapeType MetaShape::typeFromWord(const QString& word)
{
    for (ShapeType t : {ShapeType::Circle, ShapeType::Polygon, ShapeType::Line, ShapeType::Loop}) {
        if (word == typeWord(t))
            return t;
    }
    return ShapeType::Unknown;
}
