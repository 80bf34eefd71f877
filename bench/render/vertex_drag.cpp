// Dragging one vertex of a star-shaped polygon of 100,000 corners in the
// editor's vertex mode: each step of the drag moves the vertex (the preview
// of the transform tool) and draws the frame.
#include "renderbench.h"

#include "document/editordocument.h"
#include "editing/selection.h"
#include "model/metaworld.h"
#include "edits/transformsession.h"
#include "views/editorview.h"
#include "views/texturecache.h"

#include <QElapsedTimer>
#include <QtTest/QTest>

#include <cmath>
#include <cstdio>
#include <numbers>

namespace
{
constexpr int kCorners = 100000;

// Radii alternating 100 and 200: every other corner reflex.
std::vector<Vec2> star(int corners)
{
    std::vector<Vec2> ring;
    ring.reserve(size_t(corners));
    for (int i = 0; i < corners; ++i) {
        const double a = 2 * std::numbers::pi * i / corners;
        const double r = i % 2 ? 200.0 : 100.0;
        ring.push_back({float(r * std::cos(a)), float(r * std::sin(a))});
    }
    return ring;
}
// A blob with a few lobes and fine wobble, as traced from a picture.
std::vector<Vec2> blob(int corners)
{
    std::vector<Vec2> ring;
    ring.reserve(size_t(corners));
    unsigned seed = 12345;
    const auto noise = [&seed] {
        seed = seed * 1103515245u + 12345u;
        return double((seed >> 8) & 0xffff) / 65535.0 - 0.5;
    };
    const double size = corners / 10000.0;
    for (int i = 0; i < corners; ++i) {
        const double a = 2 * std::numbers::pi * i / corners;
        const double r = size * (50 + 10 * std::sin(3 * a) + 3 * std::sin(17 * a));
        ring.push_back({float(r * std::cos(a) + 0.004 * noise()), float(r * std::sin(a) + 0.004 * noise())});
    }
    return ring;
}

void dragCorner(const char* family, std::vector<Vec2> ring);
} // namespace

void benchVertexDrag()
{
    dragCorner("star", star(kCorners));
    dragCorner("traced blob", blob(kCorners));
}

namespace
{
void dragCorner(const char* family, std::vector<Vec2> ring)
{
    EditorDocument document;
    MetaWorld& world = document.world();
    auto body = std::make_unique<MetaBody>();
    body->type = BodyType::Dynamic;
    MetaBody* added = world.addBody(std::move(body), 0, QStringLiteral("star"));
    auto fixture = std::make_unique<MetaFixture>();
    fixture->setVertices(std::move(ring));
    fixture->addShape(ShapeType::Polygon, 0);
    const MetaFixture* outline = world.addFixture(added, std::move(fixture), 0, QStringLiteral("outline"));

    EditorView view(document, std::make_shared<TextureCache>());
    view.resize(1280, 800);
    view.show();
    if (!QTest::qWaitForWindowExposed(&view))
        return;
    view.zoomToFit();
    view.setEditMode(EditMode::Vertices);
    // A corner on the inner circle, as a user would pick it, with its fixture.
    const int corner = 1000;
    document.selection().add(ItemKind::Fixture, outline->id());
    document.selection().addVertex(outline->id(), corner);
    view.sceneChanged();
    timeFrame(view);
    const double fullBuild = view.lastBuildMilliseconds();

    std::vector<FrameTime> steps;
    std::vector<double> builds;
    TransformSession session(document, EditMode::Vertices, TransformApi::Operation::Translate);
    // The drag moves the corner towards the centre and back, staying between
    // its neighbours (the ring stays simple).
    const Vec2 inward = Vec2{0, 0} - outline->vertices()[size_t(corner)] * 0.01f;
    for (int i = 1; i <= 20; ++i) {
        const float along = 2.f * float(i % 10);
        QElapsedTimer timer;
        timer.start();
        session.preview(inward.x * along, inward.y * along);
        view.previewChanged();
        FrameTime step = timeFrame(view);
        step.wallMs = double(timer.nsecsElapsed()) / 1e6;
        steps.push_back(step);
        builds.push_back(view.lastBuildMilliseconds());
    }
    QElapsedTimer timer;
    timer.start();
    session.finish(inward.x * 3, inward.y * 3);
    const FrameTime release = timeFrame(view);
    const double releaseMs = double(timer.nsecsElapsed()) / 1e6;
    std::printf("drag one vertex of a %d-corner %s (selected, vertex mode): drawing built from scratch in %.1f ms\n",
                kCorners, family, fullBuild);
    printFrame("drag step (move and frame):", medianFrame(steps));
    std::printf("  %-34s %7.2f ms (drawing brought up to date in %.2f ms)\n", "release (one undo step and frame):",
                releaseMs, view.lastBuildMilliseconds());
    std::printf("  drawing brought up to date per step: median %.2f ms\n", medianOf(builds));
    (void)release;
}
} // namespace
