#include "document/editordocument.h"
#include "model/metaworld.h"
#include "player/displaytoggles.h"
#include "player/playerworld.h"
#include "views/playergeometry.h"
#include "views/shapegeometry.h"
#include "views/viewcamera.h"
#include "views/viewcolors.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{
// Two circles one unit across, at x = 0 and x = 100.
void buildScene(EditorDocument& document)
{
    for (float x : {0.f, 100.f}) {
        auto body = std::make_unique<MetaBody>();
        body->position = {x, 0};
        body->type = BodyType::Dynamic;
        MetaBody* added = document.world().addBody(std::move(body), 0);
        auto fixture = std::make_unique<MetaFixture>();
        fixture->setVertices({{0, 0}});
        fixture->addShape(ShapeType::Circle, 0.5f);
        document.world().addFixture(added, std::move(fixture), 0);
    }
}
} // namespace

TEST(PlayerGeometry, OnlyBodiesInSightAreDrawnAndFarViewsAreCoarse)
{
    EditorDocument document;
    buildScene(document);
    QString error;
    const std::unique_ptr<PlayerWorld> world = PlayerWorld::load(&document, &error);
    ASSERT_NE(world, nullptr) << error.toStdString();
    PlayerGeometry geometry;
    const ViewColors colors;
    geometry.build(*world, colors, QString());
    PlayerDisplayToggles toggles;
    toggles.showBodyNubs = false;
    toggles.showJointNubs = false;

    SceneGeometry all, near, far;
    geometry.place(*world, toggles, colors, all);
    ASSERT_FALSE(all.sharedTriangles.empty());
    ASSERT_EQ(all.sharedTriangles.size() % 2, 0u);
    ASSERT_EQ(all.sharedTriangles.size() % 3, 0u);
    for (std::uint32_t index : all.sharedTriangles)
        ASSERT_LT(index, all.sharedVertices.size());

    // Close to the first body: the second one is out of sight and left out.
    ViewCamera camera;
    camera.pixelSize = QSize(400, 300);
    camera.center = {0, 0};
    camera.height = 4;
    geometry.place(*world, toggles, colors, near, &camera);
    EXPECT_EQ(near.sharedTriangles.size(), all.sharedTriangles.size() / 2);
    EXPECT_EQ(near.sharedVertices.size(), all.sharedVertices.size() / 2);
    EXPECT_FALSE(near.sharedLines.empty()) << "close up, outlines are drawn";
    // The box of the frame still holds every body (zoom to fit uses it).
    EXPECT_GE(near.hi.x, 100.f);

    // So far out that a body is a pixel or two: the coarse drawing, without outlines.
    camera.center = {50, 0};
    camera.height = 400;
    geometry.place(*world, toggles, colors, far, &camera);
    EXPECT_LT(far.sharedTriangles.size(), all.sharedTriangles.size());
    EXPECT_GT(far.sharedTriangles.size(), 0u);
    EXPECT_TRUE(far.sharedLines.empty());
}
