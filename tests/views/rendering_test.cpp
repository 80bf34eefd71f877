// Frames drawn by OpenGL (Mesa under Xvfb in `make test`), read back from the
// frame buffer at the pixels where known items must appear.
#include "base/log.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "edits/transformsession.h"
#include "editing/selection.h"
#include "model/metaworld.h"
#include "support/guitesting.h"
#include "support/logcapture.h"
#include "views/editorview.h"
#include "views/texturecache.h"
#include "views/viewcolors.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <cmath>

using namespace GuiTesting;

namespace
{
// A static square fixture around (5, 5), a revolute joint anchored at (5, 5)
// between it and a body at (9, 5), an image centred at (-5, 5) four units
// high (red top half, blue bottom half) and an image whose file is missing.
const char* kScene = R"({
  "metaworld": {
    "gravity": {"x": 0, "y": -10},
    "metabody": [
      {"id": 1, "name": "block", "type": "static", "position": {"x": 5, "y": 5},
       "fixture": [{"id": 1, "name": "square",
         "shapes": [{"type": "polygon", "vertices": {"x": [-2, 2, 2, -2], "y": [-2, -2, 2, 2]}}]}]},
      {"id": 2, "name": "other", "type": "dynamic", "position": {"x": 9, "y": 5}}
    ],
    "metajoint": [
      {"id": 1, "name": "pin", "type": "revolute", "bodyA": 1, "bodyB": 2,
       "anchorA": 0, "anchorB": {"x": -4, "y": 0}}
    ],
    "metaimage": [
      {"id": 1, "name": "picture", "file": "picture.png", "center": {"x": -5, "y": 5}, "scale": 4, "body": -1},
      {"id": 2, "name": "lost", "file": "missing.png", "center": {"x": -5, "y": -5}, "scale": 2, "body": -1}
    ]
  }
})";

QColor pixel(const QImage& frame, QPointF at)
{
    return frame.pixelColor(at.toPoint());
}

bool near(const QColor& a, const QColor& b, int tolerance = 3)
{
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

std::string describe(const QColor& c)
{
    return QString("(%1, %2, %3)").arg(c.red()).arg(c.green()).arg(c.blue()).toStdString();
}

class RenderingTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        // Opaque fills and an invisible grid make the expected colours exact.
        auto settings = openAppSettings();
        settings->clear();
        settings->setValue("colors/fillAlpha", 255);
        settings->setValue("colors/grid", ViewColors().background.name());
        QImage picture(4, 4, QImage::Format_RGB32);
        for (int y = 0; y < 4; ++y) {
            for (int x = 0; x < 4; ++x)
                picture.setPixelColor(x, y, y < 2 ? QColor(255, 0, 0) : QColor(0, 0, 255));
        }
        ASSERT_TRUE(picture.save(dir.filePath("picture.png")));
        const QString path = writeFile(dir, "scene.plax", kScene);
        ASSERT_TRUE(document.load(path)) << path.toStdString();
    }

    std::unique_ptr<EditorView> showView()
    {
        auto view = std::make_unique<EditorView>(document, std::make_shared<TextureCache>());
        view->resize(400, 300);
        view->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(view.get()));
        view->setView({0, 2}, 24);
        return view;
    }

    QTemporaryDir dir;
    EditorDocument document;
};
} // namespace

TEST_F(RenderingTest, FixtureJointAnchorAndImageAppearAtTheirPixels)
{
    LogCapture log;
    auto view = showView();
    const QImage frame = view->grabFramebuffer();
    ASSERT_FALSE(frame.isNull());
    const ViewColors colors;
    const ViewCamera& camera = view->camera();

    // Inside the square, away from its outline and from the joint's lines.
    const QColor fixture = pixel(frame, camera.toPixel({4, 3.5f}));
    EXPECT_TRUE(near(fixture, colors.staticBody)) << describe(fixture);
    // The joint's anchor marker at (5, 5).
    const QColor anchor = pixel(frame, camera.toPixel({5, 5}));
    EXPECT_TRUE(near(anchor, colors.joint)) << describe(anchor);
    // The image, the right way up.
    EXPECT_TRUE(near(pixel(frame, camera.toPixel({-5, 6})), Qt::red)) << describe(pixel(frame, camera.toPixel({-5, 6})));
    EXPECT_TRUE(near(pixel(frame, camera.toPixel({-5, 4})), Qt::blue)) << describe(pixel(frame, camera.toPixel({-5, 4})));
    // Empty space shows the background.
    EXPECT_TRUE(near(pixel(frame, camera.toPixel({3, -6})), colors.background));
    // The missing image draws a placeholder (not the background) and is reported once.
    EXPECT_FALSE(near(pixel(frame, camera.toPixel({-5.3f, -5.3f})), colors.background));
    view->grabFramebuffer(); // a second frame
    EXPECT_EQ(log.count(LOG_WARNING, "missing.png"), 1);
}

TEST_F(RenderingTest, SelectionIsHighlightedAndAChangedImageFileIsReloaded)
{
    auto view = showView();
    const ViewColors colors;
    document.selection().add(ItemKind::Body, 1);
    view->sceneChanged();
    QImage frame = view->grabFramebuffer();
    EXPECT_TRUE(near(pixel(frame, view->camera().toPixel({4, 3.5f})), colors.selection));

    QImage green(4, 4, QImage::Format_RGB32);
    green.fill(QColor(0, 255, 0));
    // A different size too, so that the change shows even within the same second.
    green = green.scaled(8, 8);
    ASSERT_TRUE(green.save(dir.filePath("picture.png")));
    view->update();
    frame = view->grabFramebuffer();
    EXPECT_TRUE(near(pixel(frame, view->camera().toPixel({-5, 6})), QColor(0, 255, 0)))
        << describe(pixel(frame, view->camera().toPixel({-5, 6})));
}

TEST_F(RenderingTest, SelectedFixturesShowTheirVerticesAndSelectedVerticesStandOut)
{
    auto view = showView();
    const ViewColors colors;
    const ViewCamera& camera = view->camera();
    // Just outside the square's corners, where only a marker can draw.
    const auto outside = [&](Vec2 corner) {
        const QPointF at = camera.toPixel(corner);
        return pixel(view->grabFramebuffer(), at + QPointF(corner.x < 5 ? -1.5 : 1.5, corner.y < 5 ? 1.5 : -1.5));
    };
    EXPECT_TRUE(near(outside({3, 3}), colors.background)) << "no markers without a selection";
    document.selection().add(ItemKind::Fixture, 1);
    document.selection().addVertex(1, 0);
    view->sceneChanged();
    EXPECT_TRUE(near(outside({3, 3}), colors.selection)) << describe(outside({3, 3}));
    EXPECT_TRUE(near(outside({7, 7}), colors.vertex)) << describe(outside({7, 7}));
}

TEST_F(RenderingTest, HugeAndNonFiniteCoordinatesDrawAndZoomToFit)
{
    const QString path = writeFile(dir, "huge.plax", R"({"metaworld": {"metabody": [
      {"id": 1, "type": "static", "position": {"x": 1e30, "y": -1e30},
       "fixture": [{"id": 1, "shapes": [{"type": "circle", "radius": 1e29, "vertices": {"x": [0], "y": [0]}}]}]},
      {"id": 2, "type": "static", "position": {"x": 1, "y": 1},
       "fixture": [{"id": 2, "shapes": [{"type": "polygon", "vertices": {"x": [0, 1, 1], "y": [0, 0, 1]}}]}]}
    ]}})");
    ASSERT_TRUE(document.load(path));
    auto view = showView();
    view->zoomToFit();
    EXPECT_TRUE(std::isfinite(view->camera().height));
    EXPECT_TRUE(std::isfinite(view->camera().center.x));
    EXPECT_FALSE(view->grabFramebuffer().isNull());
}

namespace
{
// Pixels of the label colour in the box where a label is written beside `at`.
int labelPixels(const QImage& frame, QPointF at, const QColor& colour)
{
    int count = 0;
    for (int y = int(at.y()) - 18; y < int(at.y()) - 2; ++y) {
        for (int x = int(at.x()) + 5; x < int(at.x()) + 50; ++x) {
            if (x >= 0 && y >= 0 && x < frame.width() && y < frame.height() && near(frame.pixelColor(x, y), colour, 40))
                ++count;
        }
    }
    return count;
}
} // namespace

TEST_F(RenderingTest, LabelsNameTheItemsOfTheEditModeAndCanBeHidden)
{
    const ViewColors colors;
    auto view = showView();
    QImage frame = view->grabFramebuffer();
    EXPECT_EQ(view->lastLabelCount(), 2); // "block" and "other"
    const QPointF other = view->camera().toPixel({9, 5});
    EXPECT_GT(labelPixels(frame, other, colors.label), 5);
    const QPointF pinMiddle = view->camera().toPixel({7, 5});
    EXPECT_EQ(labelPixels(frame, pinMiddle + QPointF(0, 20), colors.label), 0);

    // In the joint mode the joint is named, at the middle of its anchors.
    document.editorState().editMode = EditMode::Joints;
    frame = view->grabFramebuffer();
    EXPECT_EQ(view->lastLabelCount(), 1);

    view->setShowLabels(false);
    frame = view->grabFramebuffer();
    EXPECT_EQ(view->lastLabelCount(), 0);
    EXPECT_EQ(labelPixels(frame, other, colors.label), 0);
}

TEST_F(RenderingTest, BigScenesPanOverACachedPictureThatLooksLikeTheScene)
{
    auto view = showView();
    const QImage direct = view->grabFramebuffer();
    EXPECT_FALSE(view->lastFrameFromCache());

    // Every scene counts as big now: the first frame renders the picture,
    // the next, panned a little, only draws it.
    view->setFrameCacheThreshold(0);
    const QImage first = view->grabFramebuffer();
    EXPECT_FALSE(view->lastFrameFromCache());
    const ViewCamera camera = view->camera();
    for (const Vec2 p : {Vec2{4, 3.5f}, Vec2{5, 5}, Vec2{-5, 6}, Vec2{-5, 4}, Vec2{3, -6}}) {
        const QColor a = pixel(direct, camera.toPixel(p)), b = pixel(first, camera.toPixel(p));
        EXPECT_TRUE(near(a, b, 4)) << describe(a) << " against " << describe(b);
    }
    const float step = float(10 * camera.worldPerPixel());
    view->setView({camera.center.x + step, camera.center.y}, camera.height);
    const QImage panned = view->grabFramebuffer();
    EXPECT_TRUE(view->lastFrameFromCache());
    for (const Vec2 p : {Vec2{4, 3.5f}, Vec2{-5, 6}, Vec2{-5, 4}}) {
        const QColor a = pixel(direct, camera.toPixel(p));
        const QColor b = pixel(panned, view->camera().toPixel(p));
        EXPECT_TRUE(near(a, b, 4)) << describe(a) << " against " << describe(b);
    }
    // A change of the scene draws it again.
    view->sceneChanged();
    view->grabFramebuffer();
    EXPECT_FALSE(view->lastFrameFromCache());
}

// Refilling an outline of tens of thousands of corners at every step of a
// drag cannot keep up with the pointer: while its vertices are dragged it
// keeps the fill it had under its moving outline, and is filled anew when
// the drag ends. Small fixtures are filled anew at every step.
TEST_F(RenderingTest, AHugeOutlineKeepsItsFillWhileItsVerticesAreDragged)
{
    MetaWorld& world = document.world();
    MetaBody* body = world.addBody(std::make_unique<MetaBody>(), 0, QStringLiteral("disc"));
    body->position = {0, -6};
    auto made = std::make_unique<MetaFixture>();
    std::vector<Vec2> ring;
    const int corners = int(EditorView::kHeldFillVertices) + 10;
    for (int i = 0; i < corners; ++i) {
        const double a = 2 * 3.14159265358979 * i / corners;
        ring.push_back({float(3 * std::cos(a)), float(3 * std::sin(a))});
    }
    made->setVertices(std::move(ring));
    made->addShape(ShapeType::Polygon, 0);
    const MetaFixture* disc = world.addFixture(body, std::move(made), 0, QStringLiteral("rim"));
    const MetaFixture* square = world.findFixture(1);
    ASSERT_TRUE(square);

    auto view = showView();
    view->setEditMode(EditMode::Vertices);
    const ViewColors colors = ViewColors::fromSettings();
    const auto filled = [&](Vec2 at) {
        return !near(pixel(view->grabFramebuffer(), view->camera().toPixel(at)), colors.background);
    };
    struct Case
    {
        const MetaFixture* fixture;
        int picked;      // vertices picked, from the first on
        Vec2 move;
        Vec2 inside;     // inside before and after (away from crosses and names)
        Vec2 gained;     // inside only once the picked vertices moved
        bool held;
    };
    // An arc of the disc moves right; the square's first corner moves left.
    for (const Case& c : {Case{disc, 2000, {2, 0}, {1.5f, -5.2f}, {4.0f, -5.5f}, true},
                          Case{square, 1, {-1, 0}, {4, 4}, {2.6f, 4.5f}, false}}) {
        document.selection().clear();
        document.selection().add(ItemKind::Fixture, c.fixture->id());
        for (int i = 0; i < c.picked; ++i)
            document.selection().addVertex(c.fixture->id(), i);
        view->sceneChanged();
        SCOPED_TRACE(c.fixture->name().toStdString());
        EXPECT_TRUE(filled(c.inside));
        EXPECT_FALSE(filled(c.gained));

        TransformSession session(document, EditMode::Vertices, TransformApi::Operation::Translate);
        for (float step : {0.5f, 1.0f}) {
            session.preview(c.move.x * step, c.move.y * step);
            view->previewChanged();
            EXPECT_TRUE(filled(c.inside)) << "while dragging";
        }
        EXPECT_EQ(filled(c.gained), !c.held) << "while dragging";
        ASSERT_TRUE(session.finish(c.move.x, c.move.y));
        EXPECT_TRUE(filled(c.inside)) << "the drag ended";
        EXPECT_TRUE(filled(c.gained)) << "the drag ended";
    }
}
