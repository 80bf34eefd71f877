#include "geometry/massguard.h"

#include "base/log.h"

#include <plax/box2d/massguard.h>

bool box2DAcceptsMassData(const b2MassData& mass, bool fixedRotation)
{
    return plax::box2DAcceptsMassData(mass, fixedRotation);
}

float box2DOriginInertia(float mass, b2Vec2 centre, double centredInertia)
{
    return plax::box2DOriginInertia(mass, centre, centredInertia);
}

bool settleBodyMass(b2Body* body, const QString& bodyName)
{
    switch (plax::settleBodyMass(body)) {
    case plax::MassSettlement::Box2D: return true;
    case plax::MassSettlement::DoublePrecisionInertia:
        plaxLog(LOG_WARNING, QStringLiteral("Body '%1' is too far from its fixtures for Box2D to centre its rotational "
                                            "inertia in single precision; the inertia is computed in double precision "
                                            "instead (about its centre of mass: %2)")
                                 .arg(bodyName, QString::number(body->GetInertia() -
                                                                body->GetMass() * b2Dot(body->GetLocalCenter(),
                                                                                        body->GetLocalCenter()))));
        return false;
    case plax::MassSettlement::DensitiesCleared:
        plaxLog(LOG_WARNING, QStringLiteral("The mass of body '%1' cannot be computed or represented (its densities "
                                            "are too large, or its rotational inertia is lost to rounding); its "
                                            "fixtures are given density 0")
                                 .arg(bodyName));
        return false;
    }
    return true;
}
