#pragma once

#include "base/types.h"

#include <QString>

/// Physics settings of a world (defaults: a new scene, as a fresh Box2D world).
struct WorldSettings
{
    Vec2 gravity{0, -10};
    bool allowSleep = true;
    bool autoClearForces = true;
    bool warmStarting = true;
    bool continuousPhysics = true;
    bool subStepping = false;
    int positionIterations = 3;
    int velocityIterations = 8;
    float stepsPerSecond = 60;

    friend bool operator==(const WorldSettings&, const WorldSettings&) = default;
};

/// How exports are written, stored with the scene.
struct ExportOptions
{
    bool useHumanReadableFloats = false;
    bool useGsonFormat = false;
    bool usePrettyPrint = true;
    bool compactCommonFloats = true;
    bool compactZeroVecs = true;
    bool saveFullPathForImages = false;
    bool saveFullPathForObjects = false;
    bool saveFullPathForSamplerOutput = false;
    bool saveImagePathsRelativeToPLAXFile = true;
    bool saveObjectPathsRelativeToPLAXFile = true;
    bool saveSamplerOutputPathsRelativeToPLAXFile = true;
    QString extraImagePathRelative;
    QString extraObjectPathRelative;
    QString propertyExportFilterScriptFile;

    friend bool operator==(const ExportOptions&, const ExportOptions&) = default;
};

/// Scripts that customise the editor's display of this scene.
struct DisplayOptions
{
    QString customLabelsScriptFile;
    QString propertyDisplayFilterScriptFile;

    friend bool operator==(const DisplayOptions&, const DisplayOptions&) = default;
};

/// A system command run after an export.
struct SystemHook
{
    QString directory;
    bool enabled = false;
    QString command;

    friend bool operator==(const SystemHook&, const SystemHook&) = default;
};
