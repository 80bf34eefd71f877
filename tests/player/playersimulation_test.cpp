// The player's stepping without a window: loading, play and pause, single
// steps, reload, the timer's catch-up, dragging with the mouse, the display
// toggles and the information lines.

#include "player/playerscenes.h"
#include "player/testclock.h"

#include "base/settings.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "player/playersimulation.h"
#include "player/playerworld.h"
#include "support/logcapture.h"

#include <gtest/gtest.h>

#include <QMutex>
#include <QSignalSpy>

#include <cmath>

namespace
{
class PlayerSimulationTest : public ::testing::Test
{
protected:
    void SetUp() override { openAppSettings()->remove(QStringLiteral("player")); }
    void TearDown() override { openAppSettings()->remove(QStringLiteral("player")); }

    // One dynamic box falling from (0, 10) in an otherwise empty scene.
    void buildFallingBox(float hz = 60)
    {
        document.world().settings.stepsPerSecond = hz;
        box = PlayerScenes::addBody(document.world(), BodyType::Dynamic, {0, 10});
        PlayerScenes::addBox(document.world(), box, 0.5f);
    }

    std::unique_ptr<PlayerSimulation> start()
    {
        auto owned = std::make_unique<TestClock>();
        clock = owned.get();
        return std::make_unique<PlayerSimulation>(&document, std::move(owned));
    }

    b2Body* firstBody(PlayerSimulation& sim) { return sim.world()->body(0); }

    EditorDocument document;
    MetaBody* box = nullptr;
    TestClock* clock = nullptr;
};

TEST_F(PlayerSimulationTest, LoadsPausedWithTheRateAndIterationsOfTheScene)
{
    document.world().settings.velocityIterations = 11;
    document.world().settings.positionIterations = 6;
    buildFallingBox(30);
    auto sim = start();
    ASSERT_NE(sim->world(), nullptr);
    EXPECT_FALSE(sim->isPlaying());
    EXPECT_EQ(sim->statusText(), "Paused scene");
    EXPECT_EQ(sim->scheduler().hz(), 30.0f);
    EXPECT_EQ(sim->scheduler().stepIntervalMs(), 33);
    EXPECT_EQ(sim->timer().interval(), 33);
    EXPECT_FALSE(sim->timer().isActive());
    EXPECT_EQ(sim->velocityIterations(), 11);
    EXPECT_EQ(sim->positionIterations(), 6);
    EXPECT_EQ(PlayerSimulation::interactionStateName(), "player_idle");
}

TEST_F(PlayerSimulationTest, HalfAStepPerSecondStepsOneSecondAtATime)
{
    // Gentle gravity: Box2D caps a step's travel at 2 m.
    document.world().settings.gravity = {0, -1.5f};
    buildFallingBox(0.5f);
    auto sim = start();
    EXPECT_EQ(sim->timer().interval(), 1000);
    ASSERT_TRUE(sim->singleStep());
    EXPECT_EQ(firstBody(*sim)->GetLinearVelocity().y, -1.5f) << "gravity for one whole second";
    EXPECT_EQ(firstBody(*sim)->GetPosition().y, 10.0f - 1.5f);
}

TEST_F(PlayerSimulationTest, SixtyStepsPerSecondUseASeventeenMillisecondTimer)
{
    buildFallingBox(60);
    auto sim = start();
    EXPECT_EQ(sim->timer().interval(), 17);
    ASSERT_TRUE(sim->singleStep());
    EXPECT_FLOAT_EQ(firstBody(*sim)->GetLinearVelocity().y, -10.0f / 60.0f);
}

TEST_F(PlayerSimulationTest, PlayAndPauseRunTheTimerAndReportTheirStatus)
{
    buildFallingBox();
    auto sim = start();
    QSignalSpy status(sim.get(), &PlayerSimulation::statusMessage);
    QSignalSpy playing(sim.get(), &PlayerSimulation::playingChanged);

    sim->togglePlay();
    EXPECT_TRUE(sim->isPlaying());
    EXPECT_TRUE(sim->timer().isActive());
    EXPECT_EQ(sim->timer().interval(), 17);
    ASSERT_EQ(status.count(), 1);
    EXPECT_EQ(status.at(0).at(0).toString(), "Playing scene");
    EXPECT_EQ(playing.at(0).at(0).toBool(), true);

    clock->time += 100;
    const TickOutcome t = sim->onTimer();
    EXPECT_EQ(t.steps, 5) << "100 ms at 17 ms a step";
    EXPECT_EQ(sim->stepsTaken(), 5);

    sim->togglePlay();
    EXPECT_FALSE(sim->isPlaying());
    EXPECT_FALSE(sim->timer().isActive());
    ASSERT_EQ(status.count(), 2);
    EXPECT_EQ(status.at(1).at(0).toString(), "Paused scene");
    EXPECT_EQ(playing.at(1).at(0).toBool(), false);
}

TEST_F(PlayerSimulationTest, TheSpeedToggleStepsFourTimesAsOftenWithTheSameStepSize)
{
    buildFallingBox();
    auto sim = start();
    sim->togglePlay();
    sim->toggleFast();
    EXPECT_TRUE(sim->infoLines().value(0).endsWith("speed x4")) << sim->infoLines().value(0).toStdString();
    clock->time += 102;
    EXPECT_EQ(sim->onTimer().steps, 23) << "4.25 ms of clock per step";
    EXPECT_FLOAT_EQ(firstBody(*sim)->GetLinearVelocity().y, -10.0f * 23 / 60) << "each step still 1/60 s";
    EXPECT_EQ(sim->timer().interval(), 17);
    sim->toggleFast();
    clock->time += 34;
    EXPECT_EQ(sim->onTimer().steps, 2);
    EXPECT_FALSE(sim->infoLines().value(0).contains("speed"));
}

TEST_F(PlayerSimulationTest, PlayingStartsCountingFromThePressNotFromCreation)
{
    buildFallingBox();
    auto sim = start();
    clock->time = 5000;   // the view stood paused for five seconds
    sim->togglePlay();
    clock->time += 20;
    EXPECT_EQ(sim->onTimer().steps, 1);
    EXPECT_EQ(sim->scheduler().skippedSteps(), 0);
}

TEST_F(PlayerSimulationTest, SingleStepWhilePlayingDoesNothing)
{
    buildFallingBox();
    auto sim = start();
    sim->togglePlay();
    const b2Vec2 before = firstBody(*sim)->GetPosition();
    EXPECT_FALSE(sim->singleStep());
    EXPECT_EQ(sim->stepsTaken(), 0);
    EXPECT_EQ(firstBody(*sim)->GetPosition(), before);

    sim->togglePlay();
    EXPECT_TRUE(sim->singleStep());
    EXPECT_EQ(sim->stepsTaken(), 1);
    EXPECT_LT(firstBody(*sim)->GetPosition().y, before.y);
}

TEST_F(PlayerSimulationTest, ADelayedTickReportsSkippedStepsInTheInformation)
{
    buildFallingBox();
    auto sim = start();
    sim->togglePlay();
    clock->time += 1000;
    clock->costPerReading = 2;
    QSignalSpy repaint(sim.get(), &PlayerSimulation::repaintRequested);
    const TickOutcome t = sim->onTimer();
    EXPECT_EQ(t.steps, 9);
    EXPECT_TRUE(t.cutOff);
    EXPECT_EQ(repaint.count(), 1);
    EXPECT_TRUE(sim->infoLines().contains("Skipped steps: 50")) << sim->infoLines().join('|').toStdString();

    sim->togglePlay();
    EXPECT_EQ(sim->scheduler().skippedSteps(), 0) << "pausing forgets them";
    EXPECT_FALSE(sim->infoLines().join('|').contains("Skipped"));
}

TEST_F(PlayerSimulationTest, NoTickWorkWhileTheApplicationIsBusy)
{
    buildFallingBox();
    auto sim = start();
    bool busy = true;
    sim->setBusyCheck([&] { return busy; });
    sim->togglePlay();
    clock->time += 100;
    EXPECT_EQ(sim->onTimer().steps, 0);
    busy = false;
    EXPECT_EQ(sim->onTimer().steps, 5) << "the time is caught up afterwards";
}

TEST_F(PlayerSimulationTest, AFailedExportLeavesNoWorldAndPlayStepsNothing)
{
    buildFallingBox();
    auto sim = start();
    sim->setRawInfoWriter([](const EditorDocument&) { return PlayerRawInfo{"[1, 2", QString(), {}}; });
    {
        LogCapture capture;
        sim->reload();
        EXPECT_TRUE(capture.hasLineStartingWith(LOG_ERROR, "Failed to load world for player view\n"));
    }
    EXPECT_EQ(sim->world(), nullptr);
    ASSERT_FALSE(sim->loadError().isEmpty());
    const QStringList info = sim->infoLines();
    EXPECT_EQ(info.value(0), "No world to simulate");
    EXPECT_TRUE(info.join('\n').contains(sim->loadError())) << "the overlay shows the error";

    sim->togglePlay();
    clock->time += 500;
    sim->onTimer();
    EXPECT_FALSE(sim->singleStep());
    EXPECT_EQ(sim->stepsTaken(), 0);
    EXPECT_FALSE(sim->mousePress(0, 10));
    EXPECT_EQ(sim->keepResult(), 0);

    sim->setRawInfoWriter(writePlayerRawInfo);
    sim->reload();
    EXPECT_NE(sim->world(), nullptr);
    EXPECT_TRUE(sim->loadError().isEmpty());
}

TEST_F(PlayerSimulationTest, WithoutADocumentThereIsNoWorldAndPlayUsesTheDefaultRate)
{
    LogCapture capture;
    PlayerSimulation sim(nullptr);
    EXPECT_EQ(sim.world(), nullptr);
    EXPECT_TRUE(capture.has(LOG_ERROR, "Document is null while trying to load world"));
    sim.togglePlay();
    EXPECT_EQ(sim.scheduler().hz(), 60.0f);
    EXPECT_EQ(sim.timer().interval(), 16);
    sim.close();
}

TEST_F(PlayerSimulationTest, ReloadRestoresTheStartAndDropsTheDrag)
{
    buildFallingBox();
    auto sim = start();
    ASSERT_TRUE(sim->mousePress(0.2f, 10.1f));
    ASSERT_TRUE(sim->mouseMove(0.2f, 5));
    for (int i = 0; i < 30; ++i)
        sim->singleStep();
    ASSERT_LT(firstBody(*sim)->GetPosition().y, 10.0f);
    sim->reload();
    EXPECT_EQ(firstBody(*sim)->GetPosition(), b2Vec2(0, 10));
    EXPECT_FALSE(sim->mouseDrag().isDragging());
    EXPECT_EQ(sim->world()->world().GetJointCount(), 0);
    EXPECT_EQ(sim->stepsTaken(), 0);
}

TEST_F(PlayerSimulationTest, DraggingPullsADynamicBodyTowardThePointer)
{
    openAppSettings()->setValue("player/mousejointforce", 500.0f);
    document.world().settings.gravity = {0, 0};
    buildFallingBox();
    MetaBody* wall = PlayerScenes::addBody(document.world(), BodyType::Static, {-5, 0});
    PlayerScenes::addBox(document.world(), wall, 1);
    auto sim = start();
    EXPECT_EQ(sim->mouseForcePerMass(), 500.0f);

    EXPECT_FALSE(sim->mousePress(3, 3)) << "nothing there";
    EXPECT_FALSE(sim->mousePress(-5, 0)) << "static bodies stay put";
    ASSERT_TRUE(sim->mousePress(0.3f, 10.3f));
    b2MouseJoint* joint = sim->mouseDrag().joint();
    ASSERT_NE(joint, nullptr);
    b2Body* body = firstBody(*sim);
    EXPECT_EQ(joint->GetBodyB(), body);
    EXPECT_EQ(joint->GetBodyA(), sim->world()->groundBody());
    EXPECT_FLOAT_EQ(joint->GetMaxForce(), 500.0f * body->GetMass());
    EXPECT_FALSE(sim->mousePress(0, 10)) << "one drag at a time";

    QSignalSpy repaint(sim.get(), &PlayerSimulation::repaintRequested);
    ASSERT_TRUE(sim->mouseMove(4.3f, 10.3f));
    EXPECT_EQ(repaint.count(), 1) << "paused: the new target is drawn";
    const float startDistance = 4.0f;
    for (int i = 0; i < 60; ++i)
        sim->singleStep();
    const float distance = b2Distance(body->GetWorldPoint(b2Vec2(0.3f, 0.3f)), b2Vec2(4.3f, 10.3f));
    EXPECT_LT(distance, 0.25f * startDistance) << "the grabbed point follows the pointer";
    EXPECT_GT(body->GetPosition().x, 3.0f);

    EXPECT_TRUE(sim->mouseRelease());
    EXPECT_EQ(sim->world()->world().GetJointCount(), 0);
    EXPECT_FALSE(sim->mouseRelease());
    EXPECT_FALSE(sim->mouseMove(0, 0));
}

TEST_F(PlayerSimulationTest, DisplayTogglesComeFromTheSettingsAndGoBackOnClose)
{
    openAppSettings()->setValue("player/showfixtures", false);
    buildFallingBox();
    auto sim = start();
    EXPECT_FALSE(sim->toggles().showFixtures);
    EXPECT_TRUE(sim->toggles().showInfo);
    EXPECT_FALSE(sim->toggles().showRuler) << "the one toggle that starts off";

    sim->toggles().showInfo = false;
    sim->toggles().showFixtures = true;
    sim->togglePlay();
    sim->close();
    EXPECT_FALSE(sim->timer().isActive());
    EXPECT_EQ(sim->world(), nullptr);
    const auto settings = openAppSettings();
    EXPECT_EQ(settings->value("player/showinfo").toBool(), false);
    EXPECT_EQ(settings->value("player/showfixtures").toBool(), true);
    EXPECT_EQ(PlayerDisplayToggles::read(*settings), sim->toggles());
}

TEST_F(PlayerSimulationTest, TheProfileLineCountsAwakeBodiesAndContacts)
{
    EditorDocument& doc = document;
    PlayerScenes::buildPile(doc, 3, 2);
    auto sim = start();
    for (int i = 0; i < 90; ++i)
        sim->singleStep();
    int awake = 0;
    int touching = 0;
    b2World& w = sim->world()->world();
    for (const b2Body* b = w.GetBodyList(); b; b = b->GetNext())
        awake += b->GetType() != b2_staticBody && b->IsAwake();
    for (const b2Contact* c = w.GetContactList(); c; c = c->GetNext())
        touching += c->IsTouching();
    ASSERT_GT(touching, 0);
    const QString profile = sim->infoLines().filter("Step time:").value(0);
    EXPECT_TRUE(profile.endsWith(QStringLiteral("bodies awake: %1, contacts: %2").arg(awake).arg(touching)))
        << profile.toStdString();
    EXPECT_TRUE(sim->infoLines().contains("Steps: 90"));
}

TEST_F(PlayerSimulationTest, BodiesGoneWildDoNotStopTheOthers)
{
    buildFallingBox();
    for (float x : {5.0f, 10.0f}) {
        MetaBody* other = PlayerScenes::addBody(document.world(), BodyType::Dynamic, {x, 10});
        PlayerScenes::addBox(document.world(), other, 0.5f);
    }
    auto sim = start();
    b2World& w = sim->world()->world();
    sim->world()->body(1)->SetLinearVelocity(b2Vec2(std::nanf(""), std::nanf("")));
    sim->world()->body(2)->SetTransform(b2Vec2(1e30f, -1e30f), 0);
    sim->world()->body(2)->SetLinearVelocity(b2Vec2(1e30f, 0));
    for (int i = 0; i < 30; ++i)
        EXPECT_TRUE(sim->singleStep());
    EXPECT_EQ(sim->stepsTaken(), 30);
    EXPECT_LT(firstBody(*sim)->GetPosition().y, 9.5f) << "the sound body kept falling";
    EXPECT_EQ(w.GetBodyCount(), 4);
    EXPECT_FALSE(sim->infoLines().isEmpty());
}

// Box2D asks it about each new pair of touching fixtures from inside a step:
// it notes whether the world mutex was free at that moment.
struct MutexProbe : b2ContactFilter
{
    explicit MutexProbe(QMutex* m) : mutex(m) {}
    bool ShouldCollide(b2Fixture* a, b2Fixture* b) override
    {
        ++calls;
        if (mutex->tryLock()) {
            ++freeDuringStep;
            mutex->unlock();
        }
        return b2ContactFilter::ShouldCollide(a, b);
    }
    QMutex* mutex;
    int calls = 0;
    int freeDuringStep = 0;
};

TEST_F(PlayerSimulationTest, StepsHoldTheWorldMutex)
{
    buildFallingBox();
    // Ground overlapping the box: the first step meets the pair.
    PlayerScenes::addBox(document.world(), PlayerScenes::addBody(document.world(), BodyType::Static, {0, 9.5f}), 0.5f);
    auto sim = start();
    QMutex mutex;
    sim->setWorldMutex(&mutex);
    EXPECT_EQ(sim->worldMutex(), &mutex);
    MutexProbe probe(&mutex);
    sim->world()->world().SetContactFilter(&probe);
    ASSERT_TRUE(sim->singleStep());
    ASSERT_GT(probe.calls, 0);
    EXPECT_EQ(probe.freeDuringStep, 0) << "another user of the world waits while a step runs";
    EXPECT_TRUE(mutex.tryLock()) << "released after the step";
    mutex.unlock();

    // Loading, dragging and keeping take it too, and give it back.
    sim->reload();
    ASSERT_TRUE(sim->mousePress(0.1f, 10.1f));
    ASSERT_TRUE(sim->mouseMove(0.1f, 9));
    ASSERT_TRUE(sim->mouseRelease());
    sim->singleStep();
    EXPECT_EQ(sim->keepResult(), 1);
    EXPECT_TRUE(mutex.tryLock());
    mutex.unlock();
}
} // namespace
