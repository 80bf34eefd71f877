// Expanding object instances into one built world: placement, names, loops,
// failures and the too-small refusal.
#include "base/flags.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "objects/instanceattach.h"
#include "objects/objectexpansion.h"
#include "objects/objectmanager.h"
#include "objects/objectscenes.h"
#include "physics/worldbuild.h"
#include "support/logcapture.h"

#include <box2d/box2d.h>
#include <gtest/gtest.h>

#include <cmath>

using namespace ObjectScenes;

namespace
{
std::unique_ptr<EditorDocument> open(const QString& path)
{
    auto doc = std::make_unique<EditorDocument>();
    if (!doc->load(path))
        return nullptr;
    return doc;
}

QStringList bodyNames(const WorldBuild& build)
{
    QStringList names;
    for (const BuiltBody& b : build.bodies())
        names.append(b.name);
    return names;
}

const BuiltBody* findBody(const WorldBuild& build, const QString& name)
{
    for (const BuiltBody& b : build.bodies()) {
        if (b.name == name)
            return &b;
    }
    return nullptr;
}

double signedArea(const b2PolygonShape& p)
{
    double a = 0;
    for (int i = 0; i < p.m_count; ++i) {
        const b2Vec2 u = p.m_vertices[i];
        const b2Vec2 w = p.m_vertices[(i + 1) % p.m_count];
        a += double(u.x) * w.y - double(w.x) * u.y;
    }
    return a / 2;
}

bool hasWorldVertex(const b2Body* body, const b2PolygonShape& p, double x, double y)
{
    for (int i = 0; i < p.m_count; ++i) {
        const b2Vec2 w = body->GetWorldPoint(p.m_vertices[i]);
        if (std::fabs(w.x - x) < 1e-4 && std::fabs(w.y - y) < 1e-4)
            return true;
    }
    return false;
}

const QString kLoop = QStringLiteral("Detected loop in object instances, ignoring object file: %1");

// Keeps the process flags the expansion touches as they were.
class FlagGuard
{
public:
    FlagGuard() : m_batch(AppFlags::isBatchMode()), m_suppress(AppFlags::suppressRefusalDialogs()) {}
    ~FlagGuard()
    {
        AppFlags::setBatchMode(m_batch);
        AppFlags::setSuppressRefusalDialogs(m_suppress);
        AppFlags::setInvalidSettingsFlag(false);
    }

private:
    bool m_batch;
    bool m_suppress;
};
} // namespace

// leaf.plax is placed by mid.plax (mirrored, doubled), which the scene places
// rotated by 1.5 rad and scaled by 1.5. Every number below is worked out by
// hand from "inner placement first, then the outer one".
TEST(ObjectExpansion, NestedPlacementsComposeOutermostFirst)
{
    SceneFolder folder;
    folder.write("leaf.plax", scene(circleBody(1, "b", 2, 1, 0.5f, 0.25f) + "," +
                                    polygonBody(2, "p", 0, 0, {0, 0, 1, 0, 0, 1})));
    folder.write("mid.plax", scene("", instance(1, "leaf", "leaf.plax", 2, 0, 0, 2, true)));
    const QString top = folder.write("top.plax", scene(circleBody(1, "own", 5, 5, 1),
                                                       instance(1, "mid", "mid.plax", 0, 1, 1.5f, 1.5f, false)));
    auto doc = open(top);
    ASSERT_TRUE(doc);
    ObjectManager cache;
    std::vector<std::pair<int, int>> progress;
    auto expanded = buildExportWorld(*doc, cache, [&](int done, int total) { progress.emplace_back(done, total); });
    const WorldBuild& build = expanded->build();

    EXPECT_EQ(bodyNames(build), QStringList({"own", "mid/leaf/b", "mid/leaf/p"}));
    EXPECT_EQ(expanded->expandedInstanceCount(), 2);
    EXPECT_EQ(progress, (std::vector<std::pair<int, int>>{{0, 2}, {1, 2}, {2, 2}}));

    const double c = std::cos(1.5), s = std::sin(1.5);
    // Body b: (2,1) in leaf -> mirrored and doubled, shifted by (2,0) in mid:
    // (-2,2) -> rotated by 1.5, scaled by 1.5, shifted by (0,1).
    const BuiltBody* b = findBody(build, "mid/leaf/b");
    ASSERT_NE(b, nullptr);
    EXPECT_NEAR(b->body->GetPosition().x, 1.5 * (-2 * c - 2 * s), 1e-4);
    EXPECT_NEAR(b->body->GetPosition().y, 1 + 1.5 * (-2 * s + 2 * c), 1e-4);
    // The mirror turns 0.25 into -0.25; the outer rotation adds 1.5.
    EXPECT_NEAR(b->body->GetAngle(), 1.25, 1e-5);
    ASSERT_EQ(b->fixtures.size(), 1u);
    ASSERT_EQ(b->fixtures[0].fixture->GetType(), b2Shape::e_circle);
    const auto* circle = static_cast<const b2CircleShape*>(b->fixtures[0].fixture->GetShape());
    EXPECT_NEAR(circle->m_radius, 0.5 * 2 * 1.5, 1e-5);

    // Triangle p: counter-clockwise after the mirror, three times the size.
    const BuiltBody* p = findBody(build, "mid/leaf/p");
    ASSERT_NE(p, nullptr);
    ASSERT_EQ(p->fixtures.size(), 1u);
    ASSERT_EQ(p->fixtures[0].fixture->GetType(), b2Shape::e_polygon);
    const auto* poly = static_cast<const b2PolygonShape*>(p->fixtures[0].fixture->GetShape());
    EXPECT_NEAR(signedArea(*poly), 0.5 * 9, 1e-3);
    // Leaf corners (0,0), (1,0), (0,1) -> mid (2,0), (0,0), (2,2) -> scene.
    EXPECT_TRUE(hasWorldVertex(p->body, *poly, 1.5 * 2 * c, 1 + 1.5 * 2 * s));
    EXPECT_TRUE(hasWorldVertex(p->body, *poly, 0, 1));
    EXPECT_TRUE(hasWorldVertex(p->body, *poly, 1.5 * (2 * c - 2 * s), 1 + 1.5 * (2 * s + 2 * c)));

    // The scene's own body is not moved.
    EXPECT_NEAR(findBody(build, "own")->body->GetPosition().x, 5, 1e-6);

    // The object documents stay cached while the world lives, then go.
    EXPECT_EQ(cache.entryCount(), 2);
    expanded.reset();
    EXPECT_EQ(cache.entryCount(), 0);
}

TEST(ObjectExpansion, LoopsAreSkippedWithAWarning)
{
    SceneFolder folder;
    LogCapture log;
    ObjectManager cache;

    // A file placing itself: exported directly, its instance closes the loop.
    const QString self = folder.write("self.plax", scene(circleBody(1, "b", 0, 0, 1), instance(1, "me", "self.plax")));
    auto selfDoc = open(self);
    ASSERT_TRUE(selfDoc);
    EXPECT_EQ(bodyNames(buildExportWorld(*selfDoc, cache)->build()), QStringList({"b"}));
    EXPECT_TRUE(log.contains(LOG_WARNING, kLoop.arg("self.plax")));

    // A places B places A, placed by a host: the inner A is skipped, B expanded.
    log.clear();
    folder.write("a.plax", scene(circleBody(1, "a-body", 0, 0, 1), instance(1, "toB", "b.plax")));
    folder.write("b.plax", scene(circleBody(1, "b-body", 0, 0, 1), instance(1, "toA", "a.plax")));
    auto host = open(folder.write("host.plax", scene("", instance(1, "top", "a.plax"))));
    ASSERT_TRUE(host);
    auto expanded = buildExportWorld(*host, cache);
    EXPECT_EQ(bodyNames(expanded->build()), QStringList({"top/a-body", "top/toB/b-body"}));
    EXPECT_EQ(log.texts(LOG_WARNING).count(kLoop.arg("a.plax")), 1);
}

TEST(ObjectExpansion, MissingAndBrokenFilesAreSkipped)
{
    SceneFolder folder;
    folder.write("wheel.plax", scene(circleBody(1, "rim", 0, 0, 0.5f)));
    folder.write("broken.plax", "{\"metaworld\": {\"metabody\": [");
    auto doc = open(folder.write("main.plax", scene("", instance(1, "gone", "nowhere.plax") + "," +
                                                         instance(2, "bad", "broken.plax") + "," +
                                                         instance(3, "ok", "wheel.plax") + "," +
                                                         instance(4, "", "wheel.plax", 1, 0))));
    ASSERT_TRUE(doc);
    ObjectManager cache;
    LogCapture log;
    auto expanded = buildExportWorld(*doc, cache);
    // An unnamed instance is named after its id.
    EXPECT_EQ(bodyNames(expanded->build()), QStringList({"ok/rim", "object4/rim"}));
    EXPECT_TRUE(log.contains(LOG_WARNING, "Could not load file for object during export: nowhere.plax"));
    EXPECT_TRUE(log.contains(LOG_WARNING, "Could not load file for object during export: broken.plax"));
}

TEST(ObjectExpansion, TooSmallCircleIsDroppedAndReported)
{
    FlagGuard flags;
    AppFlags::setBatchMode(true);
    AppFlags::setSuppressRefusalDialogs(false);
    SceneFolder folder;
    folder.write("ball.plax", scene(circleBody(1, "ball", 0, 0, 1)));
    auto doc = open(folder.write("main.plax", scene("", instance(1, "tiny", "ball.plax", 0, 0, 0, 0.001f) + "," +
                                                         instance(2, "small", "ball.plax", 0, 0, 0, 0.01f))));
    ASSERT_TRUE(doc);
    ObjectManager cache;
    LogCapture log;
    auto expanded = buildExportWorld(*doc, cache);
    const WorldBuild& build = expanded->build();

    ASSERT_EQ(bodyNames(build), QStringList({"tiny/ball", "small/ball"}));
    EXPECT_TRUE(build.bodies()[0].fixtures.empty()) << "radius 0.001 is below the minimum";
    ASSERT_EQ(build.bodies()[1].fixtures.size(), 1u) << "radius 0.01 is kept";
    EXPECT_NEAR(build.bodies()[1].fixtures[0].fixture->GetShape()->m_radius, 0.01, 1e-6);
    EXPECT_EQ(log.texts(LOG_WARNING).count(objectExpansionTooSmallMessage()), 1);
    EXPECT_TRUE(objectExpansionTooSmallMessage().startsWith(
        "Some shapes generated by object instances were ignored during export because they became too small."));
    EXPECT_FALSE(AppFlags::suppressRefusalDialogs()) << "suppression is restored";

    // A later expansion without refusals starts from a cleared flag and says nothing.
    log.clear();
    auto fine = open(folder.write("fine.plax", scene("", instance(1, "big", "ball.plax"))));
    ASSERT_TRUE(fine);
    buildExportWorld(*fine, cache);
    EXPECT_FALSE(log.contains(0, objectExpansionTooSmallMessage()));
}

TEST(ObjectExpansion, DeepChainsStopAtTheNestingLimit)
{
    // f0 places f1 places f2 ... f70, each with one body.
    SceneFolder folder;
    const int files = kMaxObjectNesting + 7;
    for (int i = 0; i < files; ++i) {
        const QByteArray inner =
            i + 1 < files ? instance(1, QStringLiteral("i%1").arg(i + 1), QStringLiteral("f%1.plax").arg(i + 1)) : "";
        folder.write(QStringLiteral("f%1.plax").arg(i), scene(circleBody(1, QStringLiteral("b%1").arg(i), 0, 0, 1), inner));
    }
    auto doc = open(folder.path("f0.plax"));
    ASSERT_TRUE(doc);
    ObjectManager cache;
    LogCapture log;
    auto expanded = buildExportWorld(*doc, cache);
    // The scene's own body, then one per followed nesting level.
    EXPECT_EQ(int(expanded->build().bodies().size()), 1 + kMaxObjectNesting);
    EXPECT_EQ(expanded->expandedInstanceCount(), kMaxObjectNesting);
    EXPECT_TRUE(log.contains(LOG_WARNING, QStringLiteral("ignoring object file: f%1.plax").arg(kMaxObjectNesting + 1)));

    // Attaching follows the same bound.
    log.clear();
    attachSceneObjects(*doc, cache);
    EXPECT_TRUE(log.contains(LOG_WARNING, QStringLiteral("ignoring object file: f%1.plax").arg(kMaxObjectNesting + 1)));
    detachDocumentInstances(*doc, cache);
    expanded.reset();
    EXPECT_EQ(cache.entryCount(), 0);
}
