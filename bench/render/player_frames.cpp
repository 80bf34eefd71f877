// Player frames of a scene: every dynamic body is moved a little before
// each frame (as stepping would move it; the generated bodies overlap, so a
// real step of them takes minutes), then the frame is drawn and read back.
#include "renderbench.h"

#include "document/editordocument.h"
#include "player/playerworld.h"
#include "views/playerview.h"
#include "views/texturecache.h"
#include "views/viewcamera.h"

#include <QtTest/QTest>

#include <cstdio>

namespace
{
void nudgeBodies(PlayerWorld& world, int frame)
{
    for (size_t i = 0; i < world.bodyCount(); ++i) {
        b2Body* body = world.body(i);
        if (body && body->GetType() == b2_dynamicBody) {
            const float turn = (frame % 2 ? 0.01f : -0.01f);
            body->SetTransform(body->GetPosition() + b2Vec2(turn, 0), body->GetAngle() + turn);
        }
    }
}
} // namespace

void benchPlayer(EditorDocument& document, const ViewCamera& start)
{
    PlayerView player(document, std::make_shared<TextureCache>());
    player.resize(1280, 800);
    player.show();
    if (!QTest::qWaitForWindowExposed(&player) || !player.simulation().world())
        return;
    player.setView(start.center, start.height);
    timeFrame(player);
    std::vector<FrameTime> frames;
    for (int i = 0; i < 30; ++i) {
        nudgeBodies(*player.simulation().world(), i);
        frames.push_back(timeFrame(player));
    }
    printFrame("player frame, whole scene in view:", medianFrame(frames));
}
