// Stepping the player's world of 10,000 bodies against a bare Box2D world
// built by hand from the same bodies and fixtures. The player's world comes
// from the raw-info round trip and is stepped through the player's own step
// (rate check, optional mutex); the goal is to stay within 5% of the bare
// world. Batches of steps alternate between the two worlds so that load from
// other processes falls on both alike.
#include "bench.h"

#include "document/editordocument.h"
#include "model/metafixture.h"
#include "model/metashape.h"
#include "model/metaworld.h"
#include "player/playersimulation.h"
#include "player/playerworld.h"

#include <box2d/box2d.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

namespace
{
constexpr int kColumns = 100;
constexpr int kRows = 100;
constexpr float kHalf = 0.4f;

Vec2 placeOf(int column, int row)
{
    return {-50.0f + 1.0f * float(column) + 0.05f * float(row % 3), 1.0f + 1.0f * float(row)};
}

// The scene: a static floor box and a grid of dynamic boxes and circles.
void buildScene(EditorDocument& document)
{
    MetaWorld& world = document.world();
    auto floor = std::make_unique<MetaBody>();
    MetaBody* ground = world.addBody(std::move(floor), 0);
    auto slab = std::make_unique<MetaFixture>();
    slab->setVertices({{-60, -1}, {60, -1}, {60, 0}, {-60, 0}});
    slab->addShape(ShapeType::Polygon, 0);
    world.addFixture(ground, std::move(slab), 0);
    for (int r = 0; r < kRows; ++r) {
        for (int c = 0; c < kColumns; ++c) {
            auto body = std::make_unique<MetaBody>();
            body->type = BodyType::Dynamic;
            body->position = placeOf(c, r);
            MetaBody* added = world.addBody(std::move(body), 0);
            auto fixture = std::make_unique<MetaFixture>();
            fixture->density = 1;
            fixture->friction = 0.4f;
            if ((r + c) % 2) {
                fixture->setVertices({{0, 0}});
                fixture->addShape(ShapeType::Circle, kHalf);
            } else {
                fixture->setVertices({{-kHalf, -kHalf}, {kHalf, -kHalf}, {kHalf, kHalf}, {-kHalf, kHalf}});
                fixture->addShape(ShapeType::Polygon, 0);
            }
            world.addFixture(added, std::move(fixture), 0);
        }
    }
}

// The same bodies and fixtures straight through Box2D's API.
std::unique_ptr<b2World> buildBare()
{
    auto world = std::make_unique<b2World>(b2Vec2(0, -10));
    b2BodyDef groundDef;
    b2Body* ground = world->CreateBody(&groundDef);
    // Polygons are given their vertices in the scene's order, as the scene's
    // fixtures are, so that both worlds see the same contact features.
    b2PolygonShape slab;
    const b2Vec2 slabCorners[4] = {{-60, -1}, {60, -1}, {60, 0}, {-60, 0}};
    slab.Set(slabCorners, 4);
    b2FixtureDef slabDef;
    slabDef.shape = &slab;
    slabDef.friction = 0.2f;
    ground->CreateFixture(&slabDef);
    for (int r = 0; r < kRows; ++r) {
        for (int c = 0; c < kColumns; ++c) {
            b2BodyDef def;
            def.type = b2_dynamicBody;
            const Vec2 p = placeOf(c, r);
            def.position.Set(p.x, p.y);
            b2Body* body = world->CreateBody(&def);
            b2CircleShape circle;
            circle.m_radius = kHalf;
            b2PolygonShape box;
            const b2Vec2 corners[4] = {{-kHalf, -kHalf}, {kHalf, -kHalf}, {kHalf, kHalf}, {-kHalf, kHalf}};
            box.Set(corners, 4);
            b2FixtureDef fixture;
            fixture.density = 1;
            fixture.friction = 0.4f;
            fixture.shape = (r + c) % 2 ? static_cast<const b2Shape*>(&circle) : &box;
            body->CreateFixture(&fixture);
        }
    }
    return world;
}

// The wall clock pushed ahead on demand: a stall of the interface thread
// without having to wait for one.
class StalledClock : public PlayerClock
{
public:
    double nowMs() override { return m_wall.nowMs() + offsetMs; }
    double offsetMs = 0;   // how far the clock is pushed ahead

private:
    ElapsedPlayerClock m_wall;
};

const bool s_registered = registerBench("player/step-10k-bodies", [] {
    EditorDocument document;
    buildScene(document);
    std::unique_ptr<PlayerSimulation> player;
    const double load = timeSeconds([&] { player = std::make_unique<PlayerSimulation>(&document); });
    if (!player->world()) {
        std::printf("  player world failed to load: %s\n", qPrintable(player->loadError()));
        return;
    }
    PlayerRawInfo raw;
    const double write = timeSeconds([&] { raw = writePlayerRawInfo(document); });
    std::unique_ptr<b2World> bare;
    const double bareBuild = timeSeconds([&] { bare = buildBare(); });

    // Both worlds go through the same states, so batch i of one is compared
    // with batch i of the other; which world steps first alternates.
    const int batches = 25;
    const int perBatch = 4;
    std::vector<double> playerTimes, bareTimes, ratios;
    const auto stepPlayer = [&] {
        return timeSeconds([&] {
                   for (int i = 0; i < perBatch; ++i)
                       player->stepOnce();
               }) /
               perBatch;
    };
    const auto stepBare = [&] {
        return timeSeconds([&] {
                   for (int i = 0; i < perBatch; ++i)
                       bare->Step(1.0f / 60.0f, 8, 3);
               }) /
               perBatch;
    };
    for (int b = 0; b < batches; ++b) {
        double p = 0, q = 0;
        if (b % 2) {
            p = stepPlayer();
            q = stepBare();
        } else {
            q = stepBare();
            p = stepPlayer();
        }
        playerTimes.push_back(p);
        bareTimes.push_back(q);
        ratios.push_back(p / q);
    }
    // The two worlds should have done the same work: compare where they got to.
    const PlayerWorld& pw = *player->world();
    int same = 0;
    const b2Body* b = bare->GetBodyList();
    std::vector<const b2Body*> bareBodies;
    for (; b; b = b->GetNext())
        bareBodies.push_back(b);
    std::reverse(bareBodies.begin(), bareBodies.end());   // Box2D lists the newest first
    for (size_t i = 0; i < pw.bodyCount() && i < bareBodies.size(); ++i)
        same += pw.body(i)->GetPosition() == bareBodies[i]->GetPosition();

    const double p = median(playerTimes) * 1e3;
    const double q = median(bareTimes) * 1e3;
    std::printf("  %zu bodies, %d contacts; player world load (raw-info round trip) %.3f s, of which writing "
                "%.3f s (%.1f MB); bare build %.3f s\n",
                pw.bodyCount(), player->world()->world().GetContactCount(), load, write, double(raw.text.size()) / 1e6,
                bareBuild);
    std::printf("  step (median of %d paired batches of %d): player %.3f ms, bare Box2D %.3f ms, "
                "ratio %.3f (goal <= 1.05)\n",
                batches, perBatch, p, q, median(ratios));
    std::printf("  bodies at the same position after %d steps: %d of %zu\n", batches * perBatch, same,
                pw.bodyCount());
});
} // namespace

namespace
{
// A tick that comes a second late with a world whose steps take longer than
// the interval: catching up stops once the tick has used its time, so the
// interface thread is back after about one step.
const bool s_tickRegistered = registerBench("player/late-tick-10k-bodies", [] {
    EditorDocument document;
    buildScene(document);
    auto owned = std::make_unique<StalledClock>();
    StalledClock* clock = owned.get();
    PlayerSimulation player(&document, std::move(owned));
    if (!player.world())
        return;
    for (int i = 0; i < 60; ++i)   // into the thick of the pile
        player.stepOnce();
    player.togglePlay();
    std::vector<double> tickMs;
    TickOutcome last;
    for (int i = 0; i < 5; ++i) {
        clock->offsetMs += 1000;
        tickMs.push_back(timeSeconds([&] { last = player.onTimer(); }) * 1e3);
    }
    std::printf("  interval %d ms; ticks one second late took %.1f ms (median of 5), %d step(s) each, "
                "%.0f steps skipped\n",
                player.scheduler().stepIntervalMs(), median(tickMs), last.steps, player.scheduler().skippedSteps());
});
} // namespace
