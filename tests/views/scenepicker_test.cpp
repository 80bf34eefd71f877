// A picker brought up to date after edits must answer every query as a
// picker built from scratch does: the same hits in the same order, the same
// vertex positions and snapping vertices. It reads again only the bodies an
// edit touched.
#include "api/scriptapisupport.h"
#include "api/scriptbody.h"
#include "api/scriptfixture.h"
#include "document/editordocument.h"
#include "editing/scriptcommand.h"
#include "editing/selection.h"
#include "engine/scriptdocument.h"
#include "model/metaworld.h"
#include "views/editorview.h"
#include "views/scenepicker.h"
#include "views/testbodies.h"
#include "views/texturecache.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <sstream>

namespace
{
constexpr EditMode kModes[] = {EditMode::Bodies, EditMode::Fixtures, EditMode::Vertices, EditMode::Joints,
                               EditMode::Images, EditMode::Samplers, EditMode::Objects};

using TestBodies::addBody;
using TestBodies::addFixture;

// A grid of 20 by 15 overlapping bodies, a joint every few bodies and
// images on some of them.
void buildScene(MetaWorld& world)
{
    MetaBody* previous = nullptr;
    for (int i = 0; i < 300; ++i) {
        MetaBody* body = addBody(world, {float(i % 20) * 1.1f, float(i / 20) * 0.9f}, i);
        if (previous && i % 7 == 0) {
            auto joint = std::make_unique<MetaJoint>();
            joint->type = JointType::Distance;
            joint->bodyA = previous;
            joint->bodyB = body;
            joint->anchorB = {0.2f, 0.1f};
            world.addJoint(std::move(joint), 0);
        }
        if (i % 37 == 0) {
            auto image = std::make_unique<MetaImage>();
            image->body = body;
            image->scale = 0.8f;
            world.addImage(std::move(image), 0);
        }
        previous = body;
    }
}

// World positions of a body's vertices: where queries find it.
std::vector<Vec2> placesOf(const MetaBody* body)
{
    std::vector<Vec2> places;
    if (!body)
        return places;
    places.push_back(body->position);
    for (const auto& fixture : body->fixtures()) {
        for (const Vec2& v : fixture->vertices())
            places.push_back(bodyToWorld(body, v));
    }
    return places;
}

std::string describe(const std::vector<PickHit>& hits)
{
    std::ostringstream out;
    for (const PickHit& hit : hits)
        out << int(hit.kind) << ':' << hit.id << (hit.vertex >= 0 ? "/" + std::to_string(hit.vertex) : "") << ' ';
    return out.str();
}

std::string describe(const std::vector<Vec2>& points)
{
    std::ostringstream out;
    for (const Vec2& p : points)
        out << '(' << p.x << ',' << p.y << ") ";
    return out.str();
}

// Every query of `kept` against `fresh`: picks at the points and on a
// lattice over the scene, boxes, vertex positions of every fixture (and of
// fixtures gone) and snapping vertices.
void expectSameAnswers(const ScenePicker& kept, const ScenePicker& fresh, const MetaWorld& world,
                       std::vector<Vec2> points, const std::vector<ItemId>& goneFixtures, const std::string& step)
{
    for (int y = 0; y <= 12; ++y) {
        for (int x = 0; x <= 12; ++x)
            points.push_back({-1.f + float(x) * 1.9f, -1.f + float(y) * 1.2f});
    }
    Selection none, some;
    for (size_t i = 0; i < world.bodies().size(); i += 5)
        some.add(ItemKind::Fixture, world.bodies()[i]->fixtures().front()->id());
    for (const Vec2& point : points) {
        for (float tolerance : {0.03f, 0.3f}) {
            for (EditMode mode : kModes) {
                const auto a = kept.pick(mode, point, tolerance, none), b = fresh.pick(mode, point, tolerance, none);
                ASSERT_TRUE(a == b) << step << ": pick in mode " << int(mode) << " at " << point.x << ',' << point.y
                                    << "\n  kept:  " << describe(a) << "\n  fresh: " << describe(b);
            }
            const auto a = kept.pick(EditMode::Vertices, point, tolerance, some);
            ASSERT_TRUE(a == fresh.pick(EditMode::Vertices, point, tolerance, some)) << step << ": vertices of some";
        }
        const std::vector<ItemId> skip{world.bodies().front()->fixtures().back()->id()};
        for (const auto& skipped : {std::vector<ItemId>{}, skip}) {
            const auto a = kept.verticesNear(point, 0.4f, skipped), b = fresh.verticesNear(point, 0.4f, skipped);
            ASSERT_TRUE(a == b) << step << ": vertices near " << point.x << ',' << point.y << "\n  kept:  "
                                << describe(a) << "\n  fresh: " << describe(b);
        }
    }
    const std::pair<Vec2, Vec2> boxes[] = {{{-100, -100}, {100, 100}}, {{-1, -1}, {8, 6}},  {{3, 2}, {12, 9}},
                                           {{10, -2}, {25, 5}},        {{0.5f, 0.5f}, {2, 2}}, {{15, 8}, {30, 30}}};
    for (const auto& [lo, hi] : boxes) {
        for (EditMode mode : kModes) {
            for (const Selection* selection : {&none, &some}) {
                const auto a = kept.pickInBox(mode, lo, hi, *selection), b = fresh.pickInBox(mode, lo, hi, *selection);
                ASSERT_TRUE(a == b) << step << ": box in mode " << int(mode) << " from " << lo.x << ',' << lo.y
                                    << "\n  kept:  " << describe(a) << "\n  fresh: " << describe(b);
            }
        }
    }
    std::vector<ItemId> fixtures = goneFixtures;
    for (const auto& body : world.bodies()) {
        for (const auto& fixture : body->fixtures())
            fixtures.push_back(fixture->id());
    }
    for (ItemId id : fixtures) {
        for (int i = -1; i <= 7; ++i)
            ASSERT_TRUE(kept.vertexPosition(id, i) == fresh.vertexPosition(id, i))
                << step << ": vertex " << i << " of fixture " << id;
    }
}

// The edits of the randomised run.
struct Editor
{
    explicit Editor(MetaWorld& w) : world(w) {}

    MetaWorld& world;
    std::mt19937 random{11};
    std::vector<std::pair<ItemId, std::unique_ptr<MetaBody>>> removed; // to add back
    std::vector<ItemId> goneFixtures;
    std::vector<Vec2> places; // where the touched body was and is

    size_t pick(size_t count) { return random() % count; }

    std::string edit()
    {
        // Half the edits go to a few bodies, so that edits follow edits of the same body.
        const auto& bodies = world.bodies();
        MetaBody* body = bodies[pick(random() % 2 ? bodies.size() : std::min<size_t>(bodies.size(), 12))].get();
        places = placesOf(body);
        const std::string what = change(body);
        for (const Vec2& p : placesOf(world.findBody(bodyId)))
            places.push_back(p);
        return what;
    }

    ItemId bodyId = 0; // the body touched by the last edit

    std::string change(MetaBody* body)
    {
        bodyId = body->id();
        const auto& fixtures = body->fixtures();
        MetaFixture* fixture = fixtures.empty() ? nullptr : fixtures[pick(fixtures.size())].get();
        switch (pick(15)) {
        case 0:
            body->position = body->position + Vec2{0.7f, -0.4f};
            return "moved a body";
        case 1:
            body->angle += 0.9f;
            return "turned a body";
        case 2:
            if (fixture) {
                std::vector<Vec2> vertices = fixture->vertices();
                vertices.back() = vertices.back() + Vec2{0.3f, 0.2f};
                fixture->setVertices(vertices);
            }
            return "moved a vertex";
        case 3:
            if (fixture) {
                std::vector<Vec2> vertices = fixture->vertices();
                vertices.push_back(vertices.back() + Vec2{0.4f, -0.3f});
                vertices.push_back(vertices.front() + Vec2{-0.2f, 0.6f});
                fixture->setVertices(vertices);
            }
            return "added vertices";
        case 4:
            if (fixture && fixture->vertices().size() > 3) {
                std::vector<Vec2> vertices = fixture->vertices();
                vertices.pop_back();
                fixture->setVertices(vertices);
            }
            return "deleted a vertex";
        case 5:
            addFixture(world, body, {{0.2f, 0.2f}, {1.4f, 0.3f}, {0.9f, 1.1f}}, ShapeType::Polygon, 0);
            return "added a fixture";
        case 6:
            if (fixture && body->fixtures().size() > 1) {
                goneFixtures.push_back(fixture->id());
                world.removeFixture(fixture);
            }
            return "deleted a fixture";
        case 7:
            bodyId = addBody(world, {float(pick(20)) * 1.1f + 0.3f, float(pick(15)) * 0.9f + 0.2f}, int(pick(50)))
                         ->id();
            return "added a body";
        case 8: {
            for (size_t i = world.joints().size(); i-- > 0;) {
                MetaJoint* joint = world.joints()[i].get();
                if (joint->bodyA == body || joint->bodyB == body)
                    world.removeJoint(joint);
            }
            for (size_t i = world.images().size(); i-- > 0;) {
                if (world.images()[i]->body == body)
                    world.removeImage(world.images()[i].get());
            }
            removed.emplace_back(body->id(), world.removeBody(body));
            return "deleted a body";
        }
        case 9:
            // Undoing a delete: the body goes back to its place in the list.
            if (!removed.empty()) {
                auto [id, taken] = std::move(removed.back());
                removed.pop_back();
                world.addBody(std::move(taken), id, QStringLiteral("back%1").arg(id));
                bodyId = id;
                return "added a deleted body back";
            }
            return "nothing to add back";
        case 10:
            if (fixture)
                fixture->shape(0).setRadius(0.1f + 0.05f * float(pick(20)));
            return "changed a radius";
        case 11:
            world.setName(body, QStringLiteral("renamed%1").arg(pick(1000)));
            if (fixture)
                world.setName(fixture, QStringLiteral("f%1").arg(pick(1000)));
            return "renamed a body and a fixture";
        case 12:
            // Far out of the scene: beyond the grid of the last build.
            body->position = {float(pick(2)) ? 60.f : -45.f, float(pick(40))};
            return "moved a body far out";
        case 13:
            if (fixture) {
                std::vector<Vec2> vertices = fixture->vertices();
                vertices.front() = {NAN, 0};
                fixture->setVertices(vertices);
            }
            return "broke a vertex";
        default:
            // Several fixtures change at once and one comes back under a new id.
            if (fixture) {
                goneFixtures.push_back(fixture->id());
                std::unique_ptr<MetaFixture> taken = world.removeFixture(fixture);
                taken->setVertices({{-0.3f, 0.1f}, {0.5f, -0.7f}, {1.2f, 0.4f}, {0.2f, 1.3f}});
                world.addFixture(body, std::move(taken), 0, world.uniqueName(ItemKind::Fixture));
            }
            body->position = body->position + Vec2{-0.5f, 0.25f};
            return "replaced a fixture and moved its body";
        }
    }
};
} // namespace

TEST(ScenePicker, UpdatesAfterEditsAnswerAsAFreshBuild)
{
    MetaWorld world;
    buildScene(world);
    ScenePicker kept;
    kept.update(world);
    EXPECT_TRUE(kept.lastUpdateWasFull()) << "the first update builds";
    EXPECT_EQ(kept.lastBodiesRead(), world.bodies().size());

    Editor editor(world);
    size_t partial = 0, outOfGrid = 0;
    for (int step = 0; step < 110; ++step) {
        const std::string what = editor.edit();
        const std::string where = what + " (step " + std::to_string(step) + ")";
        kept.update(world);
        partial += kept.lastUpdateWasFull() ? 0 : 1;
        outOfGrid += what == "moved a body far out" && !kept.lastUpdateWasFull() ? 1 : 0;
        EXPECT_LE(kept.lastBodiesRead(), kept.lastUpdateWasFull() ? world.bodies().size() : 1u) << where;
        ScenePicker fresh;
        fresh.build(world);
        expectSameAnswers(kept, fresh, world, editor.places, editor.goneFixtures, where);
        if (testing::Test::HasFatalFailure())
            return;
    }
    EXPECT_GT(partial, 90u) << "edits of one body read only that body";
    EXPECT_GT(outOfGrid, 0u) << "a body moved out of the grid is kept up to date too";
}

TEST(ScenePicker, AnEditOfOneBodyReadsOnlyThatBody)
{
    MetaWorld world;
    buildScene(world);
    ScenePicker picker;
    picker.build(world);
    ASSERT_TRUE(picker.lastUpdateWasFull());

    picker.update(world);
    EXPECT_FALSE(picker.lastUpdateWasFull());
    EXPECT_EQ(picker.lastBodiesRead(), 0u) << "nothing changed";

    // A body moved onto empty ground is found there and no longer where it was.
    MetaBody* body = world.bodies()[40].get();
    const ItemId id = body->id();
    const Vec2 from = bodyToWorld(body, body->fixtures()[1]->vertices()[3]);
    body->position = body->position + Vec2{0, 20};
    picker.update(world);
    EXPECT_FALSE(picker.lastUpdateWasFull());
    EXPECT_EQ(picker.lastBodiesRead(), 1u);
    const Vec2 to = bodyToWorld(body, body->fixtures()[1]->vertices()[3]);
    const Selection none;
    EXPECT_EQ(picker.pick(EditMode::Bodies, to, 0.01f, none), (std::vector<PickHit>{{ItemKind::Body, id}}));
    for (const PickHit& hit : picker.pick(EditMode::Vertices, from, 0.01f, none))
        EXPECT_NE(hit.id, body->fixtures()[1]->id()) << "a vertex is found where it was";
    EXPECT_TRUE(picker.vertexPosition(body->fixtures()[1]->id(), 3) == to);

    // A body deleted and added back in its place, then a new one at the end.
    std::unique_ptr<MetaBody> taken = world.removeBody(world.bodies()[100].get());
    const ItemId takenId = taken->id();
    picker.update(world);
    EXPECT_FALSE(picker.lastUpdateWasFull());
    EXPECT_EQ(picker.lastBodiesRead(), 0u);
    world.addBody(std::move(taken), takenId);
    picker.update(world);
    EXPECT_FALSE(picker.lastUpdateWasFull());
    EXPECT_EQ(picker.lastBodiesRead(), 1u);
    addBody(world, {3, 3}, 5);
    picker.update(world);
    EXPECT_FALSE(picker.lastUpdateWasFull());
    EXPECT_EQ(picker.lastBodiesRead(), 1u);

    // Most of the scene moved: it is all read again.
    for (size_t i = 0; i < world.bodies().size(); i += 2)
        world.bodies()[i]->angle += 0.2f;
    picker.update(world);
    EXPECT_TRUE(picker.lastUpdateWasFull());
    EXPECT_EQ(picker.lastBodiesRead(), world.bodies().size());

    // Another world is built whole.
    MetaWorld other;
    buildScene(other);
    picker.update(other);
    EXPECT_TRUE(picker.lastUpdateWasFull());
    ScenePicker fresh;
    fresh.build(other);
    expectSameAnswers(picker, fresh, other, {}, {}, "another world");
}

TEST(ScenePicker, TheEditorViewUpdatesItsPickerAfterEditsAndRebuildsItAfterASceneChange)
{
    EditorDocument document;
    buildScene(document.world());
    EditorView view(document, std::make_shared<TextureCache>());
    ASSERT_TRUE(view.picker().lastUpdateWasFull());

    const auto expectUpToDate = [&](const std::string& step, bool full) {
        const ScenePicker& kept = view.picker();
        EXPECT_EQ(kept.lastUpdateWasFull(), full) << step;
        ScenePicker fresh;
        fresh.build(document.world(), document.filePath());
        expectSameAnswers(kept, fresh, document.world(), {}, {}, step);
    };
    MetaBody* body = document.world().bodies()[77].get();
    {
        ScriptDocumentScope scope(&document);
        UndoMacroScope macro(document.undoStack(), QStringLiteral("move"));
        ScriptBody handle = ScriptApi::bodyHandle(body);
        BodyApi::setPosition(&handle, 30, 4);
        BodyApi::setAngle(&handle, 1.2f);
    }
    expectUpToDate("moved a body", false);
    EXPECT_EQ(view.picker().lastBodiesRead(), 1u);
    EXPECT_EQ(view.picker().lastBodiesRead(), 1u) << "no edit since: nothing is read again";
    {
        ScriptDocumentScope scope(&document);
        UndoMacroScope macro(document.undoStack(), QStringLiteral("vertex"));
        ScriptFixture handle = ScriptApi::fixtureHandle(body->fixtures()[1].get());
        FixtureApi::addVertex(&handle, 2, 1.5f, 1.5f);
    }
    expectUpToDate("added a vertex", false);
    {
        ScriptDocumentScope scope(&document);
        UndoMacroScope macro(document.undoStack(), QStringLiteral("delete"));
        ScriptBody handle = ScriptApi::bodyHandle(document.world().bodies()[12].get());
        BodyApi::deleteBody(&handle);
    }
    expectUpToDate("deleted a body", false);
    document.undoStack().undo();
    expectUpToDate("undid the delete", false);
    document.undoStack().undo();
    document.undoStack().undo();
    expectUpToDate("undid the vertex and the move", false);
    EXPECT_EQ(view.picker().lastBodiesRead(), 1u);

    view.sceneChanged();
    expectUpToDate("the scene changed", true);
}
