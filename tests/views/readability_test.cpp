// A view that reads at a glance, checked on the frames it draws: names that
// never print over each other (and a note when some had to be left out), the
// selection standing out in every edit mode, body types told apart by colour,
// smooth edges where OpenGL multisamples.
#include "base/settings.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "support/guitesting.h"
#include "views/editorview.h"
#include "views/texturecache.h"
#include "views/viewcolors.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTemporaryDir>
#include <QtTest/QTest>

#include <set>

using namespace GuiTesting;

namespace
{
// Two wheels side by side (their names would print over each other), nine
// bodies piled on one spot, a static ground, a kinematic platform, a dynamic
// crate turned by 0.5, a joint between the wheels and an image.
QByteArray scene()
{
    QByteArray pile;
    for (int i = 1; i <= 9; ++i) {
        pile += QStringLiteral(R"(,{"id": %1, "name": "pile%2", "type": "static", "position": {"x": 8, "y": 8},
            "fixture": [{"id": %1, "shapes": [{"type": "circle", "radius": 0.2, "vertices": {"x": [0], "y": [0]}}]}]})")
                    .arg(10 + i)
                    .arg(i)
                    .toUtf8();
    }
    return R"({"metaworld": {"metabody": [
      {"id": 1, "name": "wheelL", "type": "dynamic", "position": {"x": 0, "y": 0},
       "fixture": [{"id": 1, "shapes": [{"type": "circle", "radius": 0.5, "vertices": {"x": [0], "y": [0]}}]}]},
      {"id": 2, "name": "wheelR", "type": "dynamic", "position": {"x": 1, "y": 0},
       "fixture": [{"id": 2, "shapes": [{"type": "circle", "radius": 0.5, "vertices": {"x": [0], "y": [0]}}]}]},
      {"id": 3, "name": "ground", "type": "static", "position": {"x": -6, "y": -6},
       "fixture": [{"id": 3, "shapes": [{"type": "polygon", "vertices": {"x": [-2, 2, 2, -2], "y": [-1, -1, 1, 1]}}]}]},
      {"id": 4, "name": "platform", "type": "kinematic", "position": {"x": 0, "y": -6},
       "fixture": [{"id": 4, "shapes": [{"type": "polygon", "vertices": {"x": [-2, 2, 2, -2], "y": [-1, -1, 1, 1]}}]}]},
      {"id": 5, "name": "crate", "type": "dynamic", "position": {"x": 6, "y": -6}, "angle": 0.5,
       "fixture": [{"id": 5, "shapes": [{"type": "polygon", "vertices": {"x": [-2, 2, 2, -2], "y": [-2, -2, 2, 2]}}]}]})" +
           pile + R"(],
    "metajoint": [{"id": 1, "name": "axle", "type": "distance", "bodyA": 1, "bodyB": 2,
                   "anchorA": {"x": 0, "y": -3}, "anchorB": {"x": 0, "y": -3}}],
    "metaimage": [{"id": 1, "name": "picture", "file": "picture.png", "center": {"x": -6, "y": 6}, "scale": 3, "body": -1}]
    }})";
}

bool near(const QColor& a, const QColor& b, int tolerance)
{
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

// Pixels within `tolerance` of `colour` in a box of the frame.
int pixelsLike(const QImage& frame, const QRect& box, const QColor& colour, int tolerance = 40)
{
    int count = 0;
    const QRect inside = box.intersected(frame.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            count += near(frame.pixelColor(x, y), colour, tolerance) ? 1 : 0;
    }
    return count;
}

class ReadabilityTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        openAppSettings()->clear();
        openAppSettings()->setValue("colors/fillAlpha", 255);
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(QColor(90, 90, 90));
        ASSERT_TRUE(picture.save(dir.filePath("picture.png")));
        ASSERT_TRUE(document.load(writeFile(dir, "scene.plax", scene())));
        view = std::make_unique<EditorView>(document, std::make_shared<TextureCache>());
        view->resize(480, 360);
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
        view->setView({1, 1}, 24);
    }
    void TearDown() override
    {
        view.reset();
        openAppSettings()->clear();
    }
    QImage frame() { return view->grabFramebuffer(); }
    QPoint pixel(Vec2 world) const { return view->camera().toPixel(world).toPoint(); }

    QTemporaryDir dir;
    EditorDocument document;
    std::unique_ptr<EditorView> view;
};
} // namespace

TEST_F(ReadabilityTest, LabelsNeverOverlapAndThoseLeftOutAreNoted)
{
    const ViewColors colors;
    QImage shot = frame();
    const auto& placed = view->lastPlacedLabels();
    ASSERT_EQ(int(placed.size()), view->lastLabelCount());
    std::set<ItemId> named;
    for (size_t i = 0; i < placed.size(); ++i) {
        named.insert(placed[i].id);
        EXPECT_GT(pixelsLike(shot, placed[i].box.toAlignedRect(), colors.label), 3)
            << "the name of body " << placed[i].id << " is written in its box";
        for (size_t j = i + 1; j < placed.size(); ++j) {
            EXPECT_FALSE(placed[i].box.intersects(placed[j].box))
                << "bodies " << placed[i].id << " and " << placed[j].id << " print over each other";
        }
    }
    EXPECT_TRUE(named.count(1) && named.count(2)) << "both wheels are named, side by side";
    // Nine names on one spot: six places around it, three left out.
    EXPECT_EQ(view->lastHiddenLabelCount(), 3);
    const QRect corner(0, view->height() - 24, view->width() / 2, 24);
    EXPECT_GT(pixelsLike(shot, corner, colors.label, 60), 10) << "the note about the names left out";

    // The selected item's name is written first, so it is never the one left out.
    document.selection().add(ItemKind::Body, 19);
    view->sceneChanged();
    shot = frame();
    ASSERT_FALSE(view->lastPlacedLabels().empty());
    EXPECT_EQ(view->lastPlacedLabels().front().id, ItemId(19));
    EXPECT_EQ(view->lastHiddenLabelCount(), 3);

    // Zoomed in on the wheels, every name fits and no note is shown.
    view->setView({0.5f, 0}, 4);
    shot = frame();
    EXPECT_EQ(view->lastHiddenLabelCount(), 0);
    EXPECT_EQ(pixelsLike(shot, corner, colors.label, 60), 0);
}

TEST_F(ReadabilityTest, BodyTypesAreToldApartByColour)
{
    const ViewColors colors;
    const QImage shot = frame();
    const QColor ground = shot.pixelColor(pixel({-6.5f, -6}));
    const QColor platform = shot.pixelColor(pixel({-0.5f, -6}));
    const QColor crate = shot.pixelColor(pixel({6, -6.5f}));
    EXPECT_TRUE(near(ground, colors.staticBody, 4));
    EXPECT_TRUE(near(platform, colors.kinematicBody, 4));
    EXPECT_TRUE(near(crate, colors.dynamicBody, 4));
    // Apart by more than a shade: each pair differs clearly in hue.
    for (const auto& [a, b] : {std::pair{ground, platform}, {platform, crate}, {crate, ground}}) {
        const int hueGap = std::abs(a.hslHue() - b.hslHue());
        EXPECT_GE(std::min(hueGap, 360 - hueGap), 60);
    }
}

namespace
{
// The brightest pixel of a box: its lightest channel sum.
int brightest(const QImage& frame, const QRect& box)
{
    int best = 0;
    const QRect inside = box.intersected(frame.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            const QColor c = frame.pixelColor(x, y);
            best = std::max(best, c.red() + c.green() + c.blue());
        }
    }
    return best;
}
} // namespace

TEST_F(ReadabilityTest, TheSelectionStandsOutInEveryEditMode)
{
    const ViewColors colors;
    view->setShowLabels(false);
    struct Case
    {
        const char* mode;
        ItemKind kind;
        ItemId id;
        Vec2 edge; // a point on the item's outline
        Vec2 beside; // a point just outside it
    };
    // Bodies, joints and images: the outline turns white over a halo that
    // reaches a pixel or two beyond it, where the background showed before.
    const Case cases[] = {
        {"bodies", ItemKind::Body, 3, {-4, -6}, {-3.87f, -6}},
        {"joints", ItemKind::Joint, 1, {0.5f, -3}, {0.5f, -2.87f}},
        {"images", ItemKind::Image, 1, {-6, 7.5f}, {-6, 7.63f}},
    };
    const auto box = [this](Vec2 at) { return QRect(pixel(at) - QPoint(1, 1), QSize(3, 3)); };
    const int white = 3 * 235;
    for (const Case& c : cases) {
        document.editorState().editMode = QString::fromLatin1(c.mode);
        document.selection().clear();
        view->sceneChanged();
        const QImage before = frame();
        document.selection().add(c.kind, c.id);
        view->sceneChanged();
        const QImage after = frame();
        EXPECT_GE(brightest(after, box(c.edge)), brightest(before, box(c.edge)) + 150)
            << c.mode << ": the outline turns to the selection colour";
        EXPECT_GE(brightest(after, box(c.edge)), 3 * 200) << c.mode;
        EXPECT_GE(brightest(after, box(c.beside)), brightest(before, box(c.beside)) + 150)
            << c.mode << ": a halo beside the outline";
    }

    // Fixtures and vertices: the selected fixture's outline turns white and
    // its corners are marked, the picked vertex larger and white.
    for (const char* mode : {"fixtures", "vertices"}) {
        document.editorState().editMode = QString::fromLatin1(mode);
        document.selection().clear();
        document.selection().add(ItemKind::Fixture, 3);
        document.selection().addVertex(3, 0);
        view->sceneChanged();
        const QImage shot = frame();
        EXPECT_GE(brightest(shot, box({-6, -5})), white) << mode << ": the outline";
        EXPECT_GT(pixelsLike(shot, QRect(pixel({-8, -7}) - QPoint(3, 3), QSize(7, 7)), colors.selection, 30), 20)
            << mode << ": the picked vertex";
        EXPECT_GT(pixelsLike(shot, QRect(pixel({-4, -7}) - QPoint(2, 2), QSize(5, 5)), colors.vertex, 30), 5)
            << mode << ": another vertex";
    }
}

TEST_F(ReadabilityTest, EdgesAreSmoothWhereOpenGLMultisamples)
{
    // Pixels along the turned crate's slanted sides that are neither the
    // fill nor the background (nor the grid): blended edges.
    const ViewColors colors;
    const auto blendedPixels = [&](EditorView& v) {
        v.setShowLabels(false);
        v.setView({1, 1}, 24);
        const QImage shot = v.grabFramebuffer();
        const QRect box(v.camera().toPixel({3, -3}).toPoint(), v.camera().toPixel({9, -9}).toPoint());
        int blended = 0;
        for (int y = box.top(); y <= box.bottom(); ++y) {
            for (int x = box.left(); x <= box.right(); ++x) {
                const QColor c = shot.pixelColor(x, y);
                if (!near(c, colors.dynamicBody, 6) && !near(c, colors.background, 6) && !near(c, colors.grid, 6) &&
                    !near(c, colors.grid.lighter(140), 6))
                    ++blended;
            }
        }
        return blended;
    };
    view.reset();
    // Asked for explicitly (a software rasterizer, as under Xvfb, gets none by default).
    openAppSettings()->setValue(DocumentView::kSamplesKey, 4);
    EditorView smooth(document, std::make_shared<TextureCache>());
    smooth.resize(480, 360);
    smooth.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&smooth));
    const int smoothEdges = blendedPixels(smooth);
    if (smooth.lastFrameSamples() == 0)
        GTEST_SKIP() << "this OpenGL offers no multisampling";
    EXPECT_GE(smooth.lastFrameSamples(), 2);
    EXPECT_GT(smoothEdges, 40) << "edge pixels mixed from the colours on both sides";
    // A big scene's cached picture is drawn multisampled too.
    smooth.setFrameCacheThreshold(0);
    EXPECT_GT(blendedPixels(smooth), smoothEdges / 2) << "the cached picture is as smooth";
    smooth.setView({1.2f, 1}, 24);
    smooth.grabFramebuffer();
    EXPECT_TRUE(smooth.lastFrameFromCache());

    openAppSettings()->setValue(DocumentView::kSamplesKey, 0);
    EditorView sharp(document, std::make_shared<TextureCache>());
    sharp.resize(480, 360);
    sharp.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&sharp));
    EXPECT_LT(blendedPixels(sharp), smoothEdges / 4) << "turned off, the edges are stairs";
    EXPECT_EQ(sharp.lastFrameSamples(), 0);
}

TEST(Multisampling, IsOnByDefaultOnlyWhereItIsCheap)
{
    EXPECT_TRUE(DocumentView::isSoftwareRenderer("llvmpipe (LLVM 15.0.6, 256 bits)"));
    EXPECT_TRUE(DocumentView::isSoftwareRenderer("softpipe"));
    EXPECT_TRUE(DocumentView::isSoftwareRenderer("Google SwiftShader"));
    EXPECT_FALSE(DocumentView::isSoftwareRenderer("NVIDIA GeForce RTX 3060/PCIe/SSE2"));
    EXPECT_FALSE(DocumentView::isSoftwareRenderer("Mesa Intel(R) UHD Graphics 620 (KBL GT2)"));
    EXPECT_FALSE(DocumentView::isSoftwareRenderer("AMD Radeon RX 6600 (radeonsi, navi23, LLVM 15.0.6, DRM 3.49)"));
}
