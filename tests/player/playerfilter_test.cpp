// What plays is what exports: the player's world leaves out what the scene's
// export filter script leaves out, and moves exactly as the world the runtime
// library loads from the export.
#include "base/flags.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "objects/documentexport.h"
#include "player/playerworld.h"

#include <plax/box2d/box2dscene.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstring>

namespace
{
const QByteArray kScene = R"({"metaworld": {
  "gravity": {"x": 0, "y": -10},
  "metabody": [
    {"id": 1, "name": "ground", "type": "static",
     "fixture": [{"id": 1, "shapes": [{"type": "line", "vertices": {"x": [-10, 10], "y": [0, 0]}}]}]},
    {"id": 2, "name": "gone", "type": "dynamic", "position": {"x": 0, "y": 2.4},
     "fixture": [{"id": 2, "density": 1, "shapes": [{"type": "circle", "radius": 0.5, "vertices": {"x": [0], "y": [0]}}]}]},
    {"id": 3, "name": "kept", "type": "dynamic", "position": {"x": 0.3, "y": 4}, "angle": 0.7,
     "fixture": [{"id": 3, "density": 2,
                  "shapes": [{"type": "polygon", "vertices": {"x": [-1, 1, 1, -1], "y": [-0.5, -0.5, 0.5, 0.5]}}]}]},
    {"id": 4, "name": "also kept", "type": "dynamic", "position": {"x": 4, "y": 1},
     "fixture": [{"id": 4, "density": 1, "shapes": [{"type": "circle", "radius": 0.4, "vertices": {"x": [0], "y": [0]}}]}]}
  ],
  "metajoint": [
    {"id": 1, "name": "tied to gone", "type": "revolute", "bodyA": 2, "bodyB": 4, "anchorA": 0, "anchorB": 0},
    {"id": 2, "name": "hinge", "type": "revolute", "bodyA": 1, "bodyB": 4, "anchorA": {"x": 4, "y": 3}, "anchorB": 0}
  ],
  "exportOptions": {"propertyExportFilterScriptFile": "filter.rs"}
}})";

// Leaves out the body in the way of "kept", and every body's angle.
const QByteArray kFilter = R"(
bool shouldExportItem(body b) { return b.getName() != "gone"; }
bool shouldExportProperty(body b, const string& in path) { return path != "/world/body/angle"; }
)";

// Scripts a scene names run in command-line mode without asking.
class BatchModeScope
{
public:
    BatchModeScope() : m_was(AppFlags::isBatchMode()) { AppFlags::setBatchMode(true); }
    ~BatchModeScope() { AppFlags::setBatchMode(m_was); }

private:
    bool m_was;
};

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

bool sameBits(b2Vec2 a, b2Vec2 b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}
} // namespace

TEST(PlayerExportFilter, ThePlayerRunsWhatTheExportWritesAndTheRuntimeLoads)
{
    BatchModeScope batch;
    QTemporaryDir dir;
    write(dir.filePath(QStringLiteral("scene.plax")), kScene);
    write(dir.filePath(QStringLiteral("filter.rs")), kFilter);
    EditorDocument document;
    ASSERT_TRUE(document.load(dir.filePath(QStringLiteral("scene.plax"))));

    QString error;
    const std::unique_ptr<PlayerWorld> player = PlayerWorld::load(&document, &error);
    ASSERT_TRUE(player) << error.toStdString();
    ASSERT_EQ(player->bodyCount(), 3u) << "the filter leaves out 'gone'";
    EXPECT_EQ(player->sceneBodyId(0), 1u);
    EXPECT_EQ(player->sceneBodyId(1), 3u) << "traces skip the body left out";
    EXPECT_EQ(player->sceneBodyId(2), 4u);
    EXPECT_EQ(player->body(1)->GetAngle(), 0.0f) << "the angle is left out of the export";
    EXPECT_EQ(player->world().GetJointCount(), 1) << "a joint to a body left out goes with it";

    const QString exported = dir.filePath(QStringLiteral("export.json"));
    ASSERT_TRUE(exportDocument(document, ExportKind::RawInfo, exported));
    std::string loadError;
    const std::unique_ptr<plax::Box2DScene> game = plax::loadBox2DScene(exported.toStdString(), &loadError);
    ASSERT_TRUE(game) << loadError;
    ASSERT_EQ(game->bodies().size(), player->bodyCount());
    EXPECT_EQ(game->body("gone"), nullptr);
    EXPECT_EQ(game->joints().size(), 1u);

    // Without 'gone' in the way "kept" falls onto the ground, in both alike.
    for (int i = 0; i < 120; ++i) {
        player->world().Step(1.0f / 60.0f, 8, 3);
        game->step();
    }
    for (size_t i = 0; i < game->bodies().size(); ++i) {
        EXPECT_TRUE(sameBits(player->body(i)->GetPosition(), game->bodies()[i]->GetPosition())) << "body " << i;
        EXPECT_EQ(player->body(i)->GetAngle(), game->bodies()[i]->GetAngle()) << "body " << i;
    }
    EXPECT_LT(game->body("kept")->GetPosition().y, 1.0f) << "it fell past where 'gone' stood";
}
