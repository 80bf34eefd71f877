#pragma once

#include <QStringList>

class PlayerWorld;
class StepScheduler;

/// What the overlay reports about a world and its stepping, gathered at one moment.
struct PlayerInfo
{
    bool hasWorld = false;
    QString loadError;        ///< why there is no world
    bool playing = false;
    float hz = 60;
    float speedFactor = 1;
    int velocityIterations = 8;
    int positionIterations = 3;
    double skippedSteps = 0;
    long long stepsTaken = 0;
    int bodies = 0;           ///< bodies of the scene (the ground body not counted)
    int joints = 0;
    float stepMs = 0;         ///< duration of the last step
    int awakeBodies = 0;
    int contacts = 0;         ///< contacts whose fixtures touch
};

/// Gathers the numbers of a world (may be null) and its stepping.
PlayerInfo gatherPlayerInfo(PlayerWorld* world, const StepScheduler& scheduler, bool playing);

/// The overlay's lines: state and rate, scene size, the profile line (step
/// time, bodies awake, contacts), and "Skipped steps: %1" when at least one
/// step was dropped. Without a world: the load error.
QStringList playerInfoLines(const PlayerInfo& info);
