#pragma once

#include <QStringList>

class PlayerWorld;
class StepScheduler;

/// What the overlay reports about a world and its stepping, gathered at one moment.
struct PlayerInfo
{
    bool hasWorld = false;    ///< a world was loaded
    QString loadError;        ///< why there is no world
    bool playing = false;     ///< playing rather than paused
    float hz = 60;            ///< steps per second as set
    float speedFactor = 1;    ///< 1, or the fast mode's factor
    int velocityIterations = 8;   ///< velocity iterations per step
    int positionIterations = 3;   ///< position iterations per step
    double skippedSteps = 0;  ///< steps dropped by the last cut-off catch-up
    long long stepsTaken = 0; ///< steps since the last load
    int bodies = 0;           ///< bodies of the scene (the ground body not counted)
    int joints = 0;           ///< joints of the world, a mouse joint included
    float stepMs = 0;         ///< duration of the last step
    int awakeBodies = 0;      ///< moving bodies that are awake
    int contacts = 0;         ///< contacts whose fixtures touch
};

/// Gathers the numbers of a world (may be null) and its stepping.
PlayerInfo gatherPlayerInfo(PlayerWorld* world, const StepScheduler& scheduler, bool playing);

/// The overlay's lines: state and rate, scene size, the profile line (step
/// time, bodies awake, contacts), and "Skipped steps: %1" when at least one
/// step was dropped. Without a world: the load error.
QStringList playerInfoLines(const PlayerInfo& info);
