#include "views/viewcolors.h"

#include "base/settings.h"

#include <algorithm>

QColor ViewColors::bodyColor(BodyType type) const
{
    switch (type) {
    case BodyType::Kinematic: return kinematicBody;
    case BodyType::Dynamic: return dynamicBody;
    case BodyType::Static: break;
    }
    return staticBody;
}

ViewColors ViewColors::fromSettings()
{
    ViewColors c;
    auto settings = openAppSettings();
    settings->beginGroup(QStringLiteral("colors"));
    const auto read = [&settings](const char* key, QColor& colour) {
        const QColor value = QColor::fromString(settings->value(QLatin1String(key)).toString());
        if (value.isValid())
            colour = value;
    };
    read("background", c.background);
    read("grid", c.grid);
    read("axisX", c.axisX);
    read("axisY", c.axisY);
    read("staticBody", c.staticBody);
    read("kinematicBody", c.kinematicBody);
    read("dynamicBody", c.dynamicBody);
    read("selection", c.selection);
    read("joint", c.joint);
    read("jointSelected", c.jointSelected);
    read("imageOutline", c.imageOutline);
    read("object", c.object);
    read("cursor", c.cursor);
    read("label", c.label);
    read("playerviewbackgroundcolor", c.playerBackground);
    c.fillAlpha = std::clamp(settings->value(QStringLiteral("fillAlpha"), c.fillAlpha).toInt(), 0, 255);
    settings->endGroup();
    return c;
}
