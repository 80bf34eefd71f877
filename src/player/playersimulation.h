#pragma once

#include "player/displaytoggles.h"
#include "player/mousedrag.h"
#include "player/playerclock.h"
#include "player/playerrawinfo.h"
#include "player/stepscheduler.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>

class EditorDocument;
class PlayerWorld;
class QMutex;

/// Everything a player view does except drawing: it builds the world from
/// the document, steps it on a timer with catch-up, plays, pauses, single
/// steps, reloads, switches speed, drags bodies with the mouse, keeps the
/// display toggles and the information lines, and can keep the simulated
/// result in the document. A view draws world() and forwards its input here.
class PlayerSimulation : public QObject
{
    Q_OBJECT

public:
    /// A paused simulation of a document (may be null), loaded at once. The
    /// display toggles and the mouse force are read from the application
    /// settings. The clock defaults to the wall clock.
    explicit PlayerSimulation(EditorDocument* document, std::unique_ptr<PlayerClock> clock = {},
                              QObject* parent = nullptr);
    ~PlayerSimulation() override;

    /// Replaces the stage that writes the document as raw info (used by the next load).
    void setRawInfoWriter(PlayerRawInfoWriter writer) { m_writer = std::move(writer); }
    /// Serialises stepping, loading and drawing with other users of the world (null: none).
    void setWorldMutex(QMutex* mutex) { m_worldMutex = mutex; }
    /// The world mutex, for drawing under it (may be null).
    QMutex* worldMutex() const { return m_worldMutex; }
    /// A test for "the application is busy with a modal operation": timer ticks do nothing meanwhile.
    void setBusyCheck(std::function<bool()> busy) { m_busy = std::move(busy); }

    /// Rebuilds the world from the document (dropping the mouse joint) and
    /// takes rate and iterations from its world settings. On failure the
    /// error is logged and kept, and there is no world.
    void reload();
    /// The world, or null when loading failed.
    PlayerWorld* world() const { return m_world.get(); }
    /// Why the last load failed (empty after a success).
    const QString& loadError() const { return m_loadError; }
    /// The document shown.
    EditorDocument* document() const { return m_document; }

    /// Flips between playing and paused; reports the status text.
    void togglePlay();
    /// True while playing.
    bool isPlaying() const { return m_playing; }
    /// "Playing scene" or "Paused scene".
    QString statusText() const;

    /// One step while paused; nothing while playing. True when a step was taken.
    bool singleStep();
    /// Advances the world one step of 1 / hz seconds (re-reading the rate
    /// first when it changed), under the world mutex. Nothing without a world.
    void stepOnce();
    /// The timer's work: catch up with the clock (see StepScheduler::tick).
    TickOutcome onTimer();

    /// Switches the fast mode (kFastSpeedFactor times as many steps).
    void toggleFast();
    /// The stepping state: rate, interval, skipped steps, fast mode.
    const StepScheduler& scheduler() const { return m_scheduler; }
    /// Steps taken since the last load.
    long long stepsTaken() const { return m_stepsTaken; }
    /// Iteration counts in use.
    int velocityIterations() const { return m_velocityIterations; }
    /// See velocityIterations().
    int positionIterations() const { return m_positionIterations; }
    /// The repeating timer that drives playing (running only while playing).
    const QTimer& timer() const { return m_timer; }

    /// Left button pressed at a world point: starts dragging a dynamic body there.
    bool mousePress(float x, float y);
    /// Pointer moved to a world point: moves the drag target (repaints when paused).
    bool mouseMove(float x, float y);
    /// Left button released: ends dragging.
    bool mouseRelease();
    /// The drag in progress.
    const MouseDrag& mouseDrag() const { return m_drag; }
    /// Force per kilogram of the mouse joint ("player/mousejointforce").
    float mouseForcePerMass() const { return m_mouseForce; }

    /// The display toggles of this view.
    PlayerDisplayToggles& toggles() { return m_toggles; }
    /// The overlay's lines.
    QStringList infoLines() const;
    /// The interaction state a player view reports.
    static QString interactionStateName() { return QStringLiteral("player_idle"); }

    /// Writes the bodies' simulated state into the document as one undo
    /// step; returns the number of bodies changed.
    int keepResult();

    /// Closing: stops the timer, writes the display toggles back to the
    /// settings and destroys the world. Done once; also on destruction.
    void close();

signals:
    /// The view should draw again.
    void repaintRequested();
    /// A text for the status bar (shown without timeout).
    void statusMessage(const QString& text);
    /// Playing started or stopped (the play action's icon follows).
    void playingChanged(bool playing);

private:
    void applyDocumentRate();
    void destroyWorld();

    EditorDocument* m_document;
    std::unique_ptr<PlayerClock> m_clock;
    PlayerRawInfoWriter m_writer = writePlayerRawInfo;
    QMutex* m_worldMutex = nullptr;
    std::function<bool()> m_busy;
    std::unique_ptr<PlayerWorld> m_world;
    QString m_loadError;
    StepScheduler m_scheduler;
    QTimer m_timer;
    MouseDrag m_drag;
    PlayerDisplayToggles m_toggles;
    float m_mouseForce = kDefaultMouseJointForce;
    int m_velocityIterations = 8;
    int m_positionIterations = 3;
    long long m_stepsTaken = 0;
    bool m_playing = false;
    bool m_closed = false;
};
