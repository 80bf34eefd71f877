#include "player/playerinfo.h"

#include "player/playerworld.h"
#include "player/stepscheduler.h"

#include <QCoreApplication>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("PlayerInfo", text);
}
} // namespace

PlayerInfo gatherPlayerInfo(PlayerWorld* world, const StepScheduler& scheduler, bool playing)
{
    PlayerInfo info;
    info.playing = playing;
    info.hz = scheduler.hz();
    info.speedFactor = scheduler.speedFactor();
    info.skippedSteps = scheduler.skippedSteps();
    if (!world)
        return info;
    info.hasWorld = true;
    b2World& w = world->world();
    info.bodies = int(world->bodyCount());
    info.joints = w.GetJointCount();
    info.stepMs = w.GetProfile().step;
    for (const b2Body* b = w.GetBodyList(); b; b = b->GetNext()) {
        if (b->GetType() != b2_staticBody && b->IsAwake())
            ++info.awakeBodies;
    }
    for (const b2Contact* c = w.GetContactList(); c; c = c->GetNext()) {
        if (c->IsTouching())
            ++info.contacts;
    }
    return info;
}

QStringList playerInfoLines(const PlayerInfo& info)
{
    QStringList lines;
    if (!info.hasWorld) {
        lines << tr("No world to simulate");
        if (!info.loadError.isEmpty())
            lines << info.loadError.split(QLatin1Char('\n'));
        return lines;
    }
    QString state = info.playing ? tr("Playing") : tr("Paused");
    state += tr(", %1 Hz").arg(double(info.hz), 0, 'g', 4);
    if (info.speedFactor != 1.0f)
        state += tr(", speed x%1").arg(double(info.speedFactor));
    lines << state;
    lines << tr("Iterations: velocity %1, position %2").arg(info.velocityIterations).arg(info.positionIterations);
    lines << tr("Steps: %1").arg(info.stepsTaken);
    lines << tr("Bodies: %1, joints: %2").arg(info.bodies).arg(info.joints);
    lines << tr("Step time: %1 ms, bodies awake: %2, contacts: %3")
                 .arg(double(info.stepMs), 0, 'f', 2)
                 .arg(info.awakeBodies)
                 .arg(info.contacts);
    if (info.skippedSteps >= 1)
        lines << tr("Skipped steps: %1").arg(qRound64(info.skippedSteps));
    return lines;
}
