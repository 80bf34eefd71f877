// A view's drawing kept up to date part by part must be the drawing built
// from scratch: the same vertices in the same order, chunks, labels,
// images and box, and, on screen, the same pixels.
#include "editing/selection.h"
#include "model/metaworld.h"
#include "views/offscreenpicture.h"
#include "views/scenegeometryupdate.h"
#include "views/scenerenderer.h"
#include "views/testbodies.h"
#include "views/texturecache.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

namespace
{
using TestBodies::addBody;
using TestBodies::addFixture;

// A grid of 40 by 30 bodies (several regions) and a joint every few bodies.
void buildScene(MetaWorld& world)
{
    MetaBody* previous = nullptr;
    for (int i = 0; i < 1200; ++i) {
        MetaBody* body = addBody(world, {float(i % 40) * 1.1f, float(i / 40) * 0.9f}, i);
        if (previous && i % 7 == 0) {
            auto joint = std::make_unique<MetaJoint>();
            joint->type = JointType::Distance;
            joint->bodyA = previous;
            joint->bodyB = body;
            world.addJoint(std::move(joint), 0);
        }
        previous = body;
    }
}

// What a geometry draws, in drawing order.
struct Drawn
{
    std::vector<GeomVertex> triangles, lines;
    std::vector<std::array<float, 4>> boxes;
};

Drawn drawn(const SceneGeometry& g)
{
    Drawn d;
    for (const GeomChunk& chunk : g.chunks) {
        d.triangles.insert(d.triangles.end(), g.triangles.begin() + chunk.firstTriangle,
                           g.triangles.begin() + chunk.firstTriangle + chunk.triangleCount);
        d.lines.insert(d.lines.end(), g.lines.begin() + chunk.firstLine,
                       g.lines.begin() + chunk.firstLine + chunk.lineCount);
        d.boxes.push_back({chunk.lo.x, chunk.lo.y, chunk.hi.x, chunk.hi.y});
    }
    return d;
}

bool sameVertices(const std::vector<GeomVertex>& a, const std::vector<GeomVertex>& b)
{
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(GeomVertex)) == 0);
}

void expectSameDrawing(const SceneGeometry& kept, const SceneGeometry& fresh, const std::string& step)
{
    const Drawn a = drawn(kept), b = drawn(fresh);
    EXPECT_TRUE(sameVertices(a.triangles, b.triangles)) << step;
    EXPECT_TRUE(sameVertices(a.lines, b.lines)) << step;
    EXPECT_EQ(a.boxes, b.boxes) << step;
    ASSERT_EQ(kept.labels.size(), fresh.labels.size()) << step;
    for (size_t i = 0; i < kept.labels.size(); ++i) {
        const SceneLabel &x = kept.labels[i], &y = fresh.labels[i];
        ASSERT_TRUE(x.at == y.at && x.text == y.text && x.kind == y.kind && x.id == y.id && x.selected == y.selected)
            << step << ": label " << i;
    }
    EXPECT_EQ(kept.images.size(), fresh.images.size()) << step;
    EXPECT_TRUE(kept.lo == fresh.lo && kept.hi == fresh.hi) << step;
    EXPECT_EQ(kept.typicalFixtureSize, fresh.typicalFixtureSize) << step;
}

// One random edit of the kinds an editor makes.
std::string edit(MetaWorld& world, Selection& selection, std::mt19937& random)
{
    const auto& bodies = world.bodies();
    MetaBody* body = bodies[random() % bodies.size()].get();
    switch (random() % 14) {
    case 0:
        body->position = body->position + Vec2{0.3f, -0.2f};
        return "moved a body";
    case 1:
        body->angle += 0.5f;
        return "turned a body";
    case 2: {
        MetaFixture* fixture = body->fixtures()[1].get();
        std::vector<Vec2> vertices = fixture->vertices();
        vertices[2] = vertices[2] + Vec2{0.05f, 0.1f};
        fixture->setVertices(vertices);
        return "moved a vertex";
    }
    case 3:
        selection.add(ItemKind::Fixture, body->fixtures()[1]->id());
        selection.addVertex(body->fixtures()[1]->id(), 1);
        return "selected a fixture and a vertex";
    case 4:
        selection.add(ItemKind::Body, body->id());
        return "selected a body";
    case 5:
        selection.clear();
        return "cleared the selection";
    case 6:
        world.setName(body, QStringLiteral("renamed%1").arg(random() % 1000));
        return "renamed a body";
    case 7: {
        // Joints name their bodies: those go first.
        for (size_t i = world.joints().size(); i-- > 0;) {
            MetaJoint* joint = world.joints()[i].get();
            if (joint->bodyA == body || joint->bodyB == body)
                world.removeJoint(joint);
        }
        selection.remove(ItemKind::Body, body->id());
        for (const auto& fixture : body->fixtures())
            selection.remove(ItemKind::Fixture, fixture->id());
        world.removeBody(body);
        return "deleted a body";
    }
    case 9:
        world.setName(body->fixtures()[2].get(), QStringLiteral("fixture%1").arg(random() % 1000));
        return "renamed a fixture";
    case 10:
        body->fixtures()[0]->shape(0).setRadius(0.2f + 0.01f * float(random() % 20));
        return "changed a circle's radius";
    case 11:
        body->fixtures()[1]->shape(0).setType(random() % 2 ? ShapeType::Loop : ShapeType::Polygon);
        return "changed a shape's type";
    case 12: {
        const MetaFixture* fixture = body->fixtures()[1].get();
        if (!selection.vertices().empty())
            selection.removeVertex(selection.vertices().front().fixture, selection.vertices().front().index);
        else
            selection.addVertex(fixture->id(), 3);
        return "picked or dropped a vertex";
    }
    case 13: {
        // The last fixture goes and comes back under a new id and name.
        MetaFixture* fixture = body->fixtures().back().get();
        selection.remove(ItemKind::Fixture, fixture->id());
        std::unique_ptr<MetaFixture> taken = world.removeFixture(fixture);
        world.addFixture(body, std::move(taken), 0, world.uniqueName(ItemKind::Fixture));
        return "replaced a fixture";
    }
    default:
        addBody(world, {float(random() % 40) * 1.1f + 0.3f, float(random() % 30) * 0.9f + 0.2f}, int(random() % 50));
        return "added a body";
    }
}
} // namespace

TEST(SceneGeometryUpdate, EditsDrawAgainOnlyTheirPartsAndGiveTheDrawingBuiltFromScratch)
{
    MetaWorld world;
    buildScene(world);
    Selection selection;
    const ViewColors colors;
    SceneGeometryUpdater updater;
    SceneGeometry kept;
    GeometryChange change = updater.update(kept, world, selection, colors, QString(), 32);
    EXPECT_TRUE(change.full);
    const size_t parts = updater.lastPartsDrawn();
    EXPECT_GT(parts, 10u) << "the scene has many regions";

    // Nothing changed: nothing is drawn again.
    change = updater.update(kept, world, selection, colors, QString(), 32);
    EXPECT_FALSE(change.full);
    EXPECT_TRUE(change.isEmpty());
    EXPECT_EQ(updater.lastPartsDrawn(), 0u);

    std::mt19937 random(7);
    size_t partial = 0;
    for (int step = 0; step < 90; ++step) {
        const std::string what = edit(world, selection, random) + " (step " + std::to_string(step) + ")";
        change = updater.update(kept, world, selection, colors, QString(), 32);
        if (!change.full) {
            ++partial;
            EXPECT_LE(updater.lastPartsDrawn(), 4u) << what;
        }
        expectSameDrawing(kept, SceneGeometry::build(world, selection, colors, QString(), 32), what);
    }
    EXPECT_GT(partial, 60u) << "most edits draw only their parts";

    // Other colours or detail draw everything.
    ViewColors other = colors;
    other.staticBody = Qt::red;
    EXPECT_TRUE(updater.update(kept, world, selection, other, QString(), 32).full);
    expectSameDrawing(kept, SceneGeometry::build(world, selection, other, QString(), 32), "colours");
    EXPECT_TRUE(updater.update(kept, world, selection, other, QString(), 6).full);
    expectSameDrawing(kept, SceneGeometry::build(world, selection, other, QString(), 6), "detail");
}

TEST(SceneGeometryUpdate, CornersMovedFarApartOnABigOutlineAreAllWritten)
{
    // A 400-corner outline, selected in vertex mode (markers at every
    // corner): moving corners far apart in one edit changes stretches of
    // the same part with many unchanged vertices between them, and a
    // single corner at the very start or end changes the first or the last.
    MetaWorld world;
    buildScene(world);
    MetaBody* body = addBody(world, {10, 40}, 3);
    std::vector<Vec2> ring;
    for (int i = 0; i < 400; ++i) {
        const double a = 2 * 3.141592653589793 * i / 400;
        const double r = i % 2 ? 6.0 : 5.0;
        ring.push_back({float(r * std::cos(a)), float(r * std::sin(a))});
    }
    MetaFixture* outline = addFixture(world, body, ring, ShapeType::Polygon, 0);
    Selection selection;
    selection.add(ItemKind::Fixture, outline->id());
    selection.addVertex(outline->id(), 7);
    const ViewColors colors;
    SceneGeometryUpdater updater;
    SceneGeometry kept;
    updater.update(kept, world, selection, colors, QString(), 32);
    const std::vector<std::vector<int>> moves = {{10, 150, 320}, {0}, {399}, {0, 399}, {5, 6, 200}};
    for (const std::vector<int>& moved : moves) {
        std::vector<Vec2> vertices = outline->vertices();
        for (int i : moved)
            vertices[size_t(i)] = vertices[size_t(i)] * 0.98f;
        outline->setVertices(vertices);
        const GeometryChange change = updater.update(kept, world, selection, colors, QString(), 32);
        EXPECT_FALSE(change.full);
        EXPECT_EQ(updater.lastPartsDrawn(), 1u);
        size_t linesWritten = 0;
        for (const auto& [first, count] : change.lines)
            linesWritten += count;
        EXPECT_GT(linesWritten, 0u);
        EXPECT_LT(linesWritten, 400u) << "stretches near the moved corners, not the outline's 800 line ends";
        expectSameDrawing(kept, SceneGeometry::build(world, selection, colors, QString(), 32),
                          "moved " + std::to_string(moved.size()) + " corners from " + std::to_string(moved.front()));
    }
}

// Without and with multisampling (the cached picture is then drawn
// multisampled and resolved, in its out-of-date box as well).
class CachedPictureRedraw : public ::testing::TestWithParam<int>
{
};

TEST_P(CachedPictureRedraw, RedrawnWhereItChangedHasThePixelsOfOneDrawnAfresh)
{
    MetaWorld world;
    buildScene(world);
    Selection selection;
    ViewColors colors;
    colors.fillAlpha = 140;
    ViewCamera camera;
    camera.pixelSize = QSize(360, 240);
    camera.center = {22, 13};
    camera.height = 30;

    OffscreenPicture kept(GetParam()), fresh(GetParam());
    ASSERT_TRUE(kept.isReady() && fresh.isReady());
    kept.renderer().setFrameCacheThreshold(0);
    fresh.renderer().setFrameCacheThreshold(0);
    SceneGeometryUpdater updater;
    SceneGeometry geometry;
    updater.update(geometry, world, selection, colors, QString(), 32);
    auto textures = std::make_shared<TextureCache>();
    kept.renderer().upload(geometry, *textures);
    kept.paint(camera, colors);
    EXPECT_FALSE(kept.renderer().lastFrameFromCache());

    std::mt19937 random(11);
    int fromCache = 0;
    for (int step = 0; step < 25; ++step) {
        const std::string what = edit(world, selection, random) + " (step " + std::to_string(step) + ")";
        const GeometryChange change = updater.update(geometry, world, selection, colors, QString(), 32);
        kept.renderer().update(geometry, change, *textures);
        const QImage picture = kept.paint(camera, colors);
        fromCache += kept.renderer().lastFrameFromCache() ? 1 : 0;
        const QImage expected = fresh.draw(SceneGeometry::build(world, selection, colors, QString(), 32), camera, colors);
        EXPECT_EQ(differingPixels(picture, expected), 0) << what;
    }
    if (GetParam() == 0) {
        EXPECT_GT(fromCache, 15) << "edits keep the cached picture";
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, CachedPictureRedraw, ::testing::Values(0, 4));
