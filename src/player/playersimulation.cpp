#include "player/playersimulation.h"

#include "base/settings.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "player/keepresult.h"
#include "player/playerclock.h"
#include "player/playerinfo.h"
#include "player/playerworld.h"

#include <QCoreApplication>
#include <QMutexLocker>

PlayerSimulation::PlayerSimulation(EditorDocument* document, std::unique_ptr<PlayerClock> clock, QObject* parent)
    : QObject(parent), m_document(document), m_clock(clock ? std::move(clock) : std::make_unique<ElapsedPlayerClock>())
{
    const std::unique_ptr<QSettings> settings = openAppSettings();
    m_toggles = PlayerDisplayToggles::read(*settings);
    m_mouseForce = settings->value(QLatin1String(kMouseJointForceKey), kDefaultMouseJointForce).toFloat();
    m_timer.setInterval(m_scheduler.stepIntervalMs());
    m_scheduler.restartAt(m_clock->nowMs());
    connect(&m_timer, &QTimer::timeout, this, [this] { onTimer(); });
    reload();
}

PlayerSimulation::~PlayerSimulation()
{
    close();
}

void PlayerSimulation::destroyWorld()
{
    m_drag.forget();
    m_world.reset();
}

void PlayerSimulation::applyDocumentRate()
{
    if (m_document) {
        const WorldSettings& s = m_document->world().settings;
        m_scheduler.applyHz(s.stepsPerSecond);
        m_velocityIterations = s.velocityIterations;
        m_positionIterations = s.positionIterations;
    } else {
        m_scheduler.applyHz(60, 16);
    }
    m_timer.setInterval(m_scheduler.stepIntervalMs());
}

void PlayerSimulation::reload()
{
    {
        QMutexLocker lock(m_worldMutex);
        destroyWorld();
        m_stepsTaken = 0;
        m_world = PlayerWorld::load(m_document, &m_loadError, m_writer);
    }
    if (m_world)
        applyDocumentRate();
    // Outside the lock: a view may draw at once.
    emit repaintRequested();
}

QString PlayerSimulation::statusText() const
{
    return m_playing ? QCoreApplication::translate("PlayerView", "Playing scene")
                     : QCoreApplication::translate("PlayerView", "Paused scene");
}

void PlayerSimulation::togglePlay()
{
    m_playing = !m_playing;
    if (m_playing) {
        m_scheduler.restartAt(m_clock->nowMs());
        applyDocumentRate();
        m_timer.start();
    } else {
        m_timer.stop();
        m_scheduler.resetSkippedSteps();
    }
    emit playingChanged(m_playing);
    emit statusMessage(statusText());
    emit repaintRequested();
}

bool PlayerSimulation::singleStep()
{
    if (m_playing)
        return false;
    m_scheduler.restartAt(m_clock->nowMs());
    applyDocumentRate();
    const long long before = m_stepsTaken;
    stepOnce();
    emit repaintRequested();
    return m_stepsTaken > before;
}

void PlayerSimulation::stepOnce()
{
    QMutexLocker lock(m_worldMutex);
    if (m_scheduler.hzChanged())
        applyDocumentRate();
    if (!m_world)
        return;
    m_world->world().Step(m_scheduler.timeStep(), m_velocityIterations, m_positionIterations);
    ++m_stepsTaken;
}

TickOutcome PlayerSimulation::onTimer()
{
    if (m_busy && m_busy())
        return {};
    const TickOutcome outcome = m_scheduler.tick(*m_clock, [this] { stepOnce(); });
    if (outcome.repaint)
        emit repaintRequested();
    return outcome;
}

void PlayerSimulation::toggleFast()
{
    m_scheduler.setFast(!m_scheduler.isFast());
    emit repaintRequested();
}

bool PlayerSimulation::mousePress(float x, float y)
{
    if (!m_world)
        return false;
    QMutexLocker lock(m_worldMutex);
    return m_drag.press(m_world->world(), m_world->groundBody(), b2Vec2(x, y), m_mouseForce);
}

bool PlayerSimulation::mouseMove(float x, float y)
{
    {
        QMutexLocker lock(m_worldMutex);
        if (!m_drag.move(b2Vec2(x, y)))
            return false;
    }
    if (!m_playing)
        emit repaintRequested();
    return true;
}

bool PlayerSimulation::mouseRelease()
{
    if (!m_world)
        return false;
    {
        QMutexLocker lock(m_worldMutex);
        if (!m_drag.release(m_world->world()))
            return false;
    }
    emit repaintRequested();
    return true;
}

QStringList PlayerSimulation::infoLines() const
{
    PlayerInfo info = gatherPlayerInfo(m_world.get(), m_scheduler, m_playing);
    info.loadError = m_loadError;
    info.velocityIterations = m_velocityIterations;
    info.positionIterations = m_positionIterations;
    info.stepsTaken = m_stepsTaken;
    return playerInfoLines(info);
}

int PlayerSimulation::keepResult()
{
    if (!m_world || !m_document)
        return 0;
    QMutexLocker lock(m_worldMutex);
    return keepPlayerResult(*m_world, *m_document);
}

void PlayerSimulation::close()
{
    if (m_closed)
        return;
    m_closed = true;
    m_timer.stop();
    m_playing = false;
    const std::unique_ptr<QSettings> settings = openAppSettings();
    m_toggles.write(*settings);
    QMutexLocker lock(m_worldMutex);
    destroyWorld();
}
