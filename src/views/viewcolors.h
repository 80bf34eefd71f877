#pragma once

#include "model/metabody.h"

#include <QColor>

/// Every colour the editor view draws with, in one place. Defaults can be
/// overridden in the settings group "colors" (keys as the member names,
/// values "#aarrggbb" or "#rrggbb").
struct ViewColors
{
    QColor background{38, 40, 46};
    QColor grid{58, 61, 70};
    QColor axisX{190, 70, 70};
    QColor axisY{70, 170, 80};
    QColor staticBody{120, 200, 120};
    QColor kinematicBody{120, 150, 230};
    QColor dynamicBody{235, 190, 90};
    QColor selection{255, 255, 255};
    QColor joint{200, 120, 230};
    QColor jointSelected{255, 230, 255};
    QColor imageOutline{160, 160, 160};
    QColor object{150, 150, 170};
    QColor cursor{255, 90, 40};
    QColor label{230, 230, 230};
    QColor samplerOutline{80, 220, 230};
    QColor path{255, 150, 60};
    QColor vertex{110, 200, 255};
    /// Clear colour of player views ("colors/playerviewbackgroundcolor").
    QColor playerBackground{30, 34, 40};
    /// Opacity (0..255) of fixture fills; outlines are opaque.
    int fillAlpha = 90;

    /// Outline colour of a body type.
    QColor bodyColor(BodyType type) const;
    /// The defaults with the user's settings applied.
    static ViewColors fromSettings();

    friend bool operator==(const ViewColors&, const ViewColors&) = default;
};
