// A player frame draws its bodies from shared corners, and circles fan out
// from a corner of their rim: both must give the very pixels of the plain
// drawing they replace.
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "player/displaytoggles.h"
#include "player/playerworld.h"
#include "views/offscreenpicture.h"
#include "views/playergeometry.h"
#include "views/shapegeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>

namespace
{
void addFixture(MetaWorld& world, MetaBody* body, std::vector<Vec2> vertices, ShapeType type, float radius)
{
    auto fixture = std::make_unique<MetaFixture>();
    fixture->setVertices(std::move(vertices));
    fixture->addShape(type, radius);
    world.addFixture(body, std::move(fixture), 0);
}

// Bodies of every kind of fixture, turned and overlapping, some reaching
// past the edges of the view, and a joint between two of them.
void buildScene(EditorDocument& document)
{
    MetaWorld& world = document.world();
    MetaBody* previous = nullptr;
    for (int i = 0; i < 40; ++i) {
        auto body = std::make_unique<MetaBody>();
        body->type = i % 3 == 0 ? BodyType::Static : i % 3 == 1 ? BodyType::Dynamic : BodyType::Kinematic;
        body->position = {float(i % 8) * 2.3f - 8.f, float(i / 8) * 1.9f - 4.f};
        body->angle = float(i) * 0.37f;
        MetaBody* added = world.addBody(std::move(body), 0);
        addFixture(world, added, {{0.1f * float(i % 5), 0.2f}}, ShapeType::Circle, 0.6f + 0.05f * float(i % 4));
        addFixture(world, added, {{0, 0}, {1.5f, 0.2f}, {0.7f, 0.5f}, {1.2f, 1.4f}, {-0.3f, 0.9f}}, ShapeType::Polygon,
                   i % 2 ? 0.15f : 0.f);
        addFixture(world, added, {{-1, -1}, {0.2f, -1.3f}, {1.1f, -0.6f}}, ShapeType::Line, i % 4 == 0 ? 0.1f : 0.f);
        addFixture(world, added, {{-1.5f, 0}, {-1, 0.7f}, {-0.4f, 0.1f}}, ShapeType::Loop, 0);
        if (previous && i % 5 == 0) {
            auto joint = std::make_unique<MetaJoint>();
            joint->type = JointType::Revolute;
            joint->bodyA = previous;
            joint->bodyB = added;
            world.addJoint(std::move(joint), 0);
        }
        previous = added;
    }
}

// The frame drawn the plain way: every triangle and line with its own corners.
SceneGeometry unshared(const SceneGeometry& frame)
{
    SceneGeometry plain = frame;
    plain.sharedVertices.clear();
    plain.sharedTriangles.clear();
    plain.sharedLines.clear();
    plain.triangles.clear();
    plain.lines.clear();
    for (std::uint32_t i : frame.sharedTriangles)
        plain.triangles.push_back(frame.sharedVertices[i]);
    plain.triangles.insert(plain.triangles.end(), frame.triangles.begin(), frame.triangles.end());
    for (std::uint32_t i : frame.sharedLines)
        plain.lines.push_back(frame.sharedVertices[i]);
    plain.lines.insert(plain.lines.end(), frame.lines.begin(), frame.lines.end());
    plain.chunks.clear();
    GeomChunk all;
    all.lo = {-INFINITY, -INFINITY};
    all.hi = {INFINITY, INFINITY};
    all.triangleCount = int(plain.triangles.size());
    all.lineCount = int(plain.lines.size());
    plain.chunks.push_back(all);
    return plain;
}
} // namespace

TEST(PlayerFrame, SharedCornersDrawTheSamePixelsAsPlainTriangles)
{
    EditorDocument document;
    buildScene(document);
    QString error;
    const std::unique_ptr<PlayerWorld> world = PlayerWorld::load(&document, &error);
    ASSERT_NE(world, nullptr) << error.toStdString();
    ViewColors colors;
    colors.fillAlpha = 120;
    PlayerGeometry geometry;
    geometry.build(*world, colors, QString());
    OffscreenPicture picture;
    ASSERT_TRUE(picture.isReady());

    // Close up (full detail, outlines) and far out (the coarse drawing), a
    // view cutting through bodies and one holding them all.
    const struct
    {
        Vec2 center;
        float height;
    } views[] = {{{0, 0}, 6}, {{-5, 2}, 3}, {{0, 0}, 18}, {{0, 0}, 400}};
    for (const auto& view : views) {
        ViewCamera camera;
        camera.pixelSize = QSize(320, 240);
        camera.center = view.center;
        camera.height = view.height;
        SceneGeometry frame;
        geometry.place(*world, PlayerDisplayToggles{}, colors, frame, &camera);
        ASSERT_FALSE(frame.sharedTriangles.empty());
        EXPECT_LT(frame.sharedVertices.size(), frame.sharedTriangles.size() + frame.sharedLines.size())
            << "corners are shared";
        const QImage shared = picture.draw(frame, camera, colors);
        const QImage plain = picture.draw(unshared(frame), camera, colors);
        ASSERT_FALSE(shared.isNull());
        EXPECT_EQ(differingPixels(shared, plain), 0) << "view height " << view.height;
        EXPECT_NE(differingPixels(shared, picture.draw(SceneGeometry{}, camera, colors)), 0) << "something is drawn";
    }
}

TEST(PlayerFrame, ADiscFannedFromItsRimCoversThePixelsOfAFanFromItsCentre)
{
    OffscreenPicture picture;
    ASSERT_TRUE(picture.isReady());
    ViewCamera camera;
    camera.pixelSize = QSize(300, 200);
    camera.center = {0, 0};
    camera.height = 20;
    const QColor fill(40, 160, 220, 140);
    for (int segments : {6, 16, 32}) {
        SceneGeometry rim, centre;
        ShapeTessellator tessellator(rim, segments);
        tessellator.setCoarse(true);
        // Circles at odd places and sizes, overlapping, so that every pixel
        // covered twice would show.
        for (int i = 0; i < 60; ++i) {
            const Vec2 c{-14.f + float(i % 10) * 3.1f + 0.013f * float(i), -8.f + float(i / 10) * 3.3f};
            const float radius = 0.2f + 0.37f * float(i % 7);
            tessellator.circle(c, radius, 0, fill, fill);
            // The plain fan: a triangle from the centre to each pair of rim corners.
            constexpr float kPi = std::numbers::pi_v<float>;
            Vec2 previous{c.x + radius * std::cos(0.f), c.y + radius * std::sin(0.f)};
            for (int k = 1; k <= segments; ++k) {
                const float t = 2 * kPi * float(k) / float(segments);
                const Vec2 next{c.x + radius * std::cos(t), c.y + radius * std::sin(t)};
                for (Vec2 p : {c, previous, next})
                    centre.triangles.push_back(geomVertex(p, fill));
                previous = next;
            }
        }
        EXPECT_EQ(rim.triangles.size() + size_t(60 * 2 * 3), centre.triangles.size()) << "two fewer triangles each";
        for (SceneGeometry* g : {&rim, &centre}) {
            GeomChunk all;
            all.lo = {-INFINITY, -INFINITY};
            all.hi = {INFINITY, INFINITY};
            all.triangleCount = int(g->triangles.size());
            g->chunks.push_back(all);
        }
        EXPECT_EQ(differingPixels(picture.draw(rim, camera), picture.draw(centre, camera)), 0) << segments << " segments";
    }
}
