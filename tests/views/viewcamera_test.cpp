#include "views/viewcamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(ViewCamera, PixelsAndWorldPointsMapBothWaysWithYUp)
{
    ViewCamera camera;
    camera.center = {10, 5};
    camera.height = 20;
    camera.pixelSize = {400, 200};
    EXPECT_EQ(camera.toPixel({10, 5}), QPointF(200, 100));
    // 10 pixels per world unit; up in the world is up on screen.
    EXPECT_EQ(camera.toPixel({11, 6}), QPointF(210, 90));
    const Vec2 back = camera.toWorld(QPointF(37, 151));
    EXPECT_NEAR(camera.toPixel(back).x(), 37, 1e-3);
    EXPECT_NEAR(camera.toPixel(back).y(), 151, 1e-3);
}

TEST(ViewCamera, ZoomKeepsThePointUnderTheMouseAndPanFollowsIt)
{
    ViewCamera camera;
    camera.pixelSize = {800, 600};
    const QPointF mouse(100, 500);
    const Vec2 under = camera.toWorld(mouse);
    camera.zoomAt(mouse, 0.5);
    EXPECT_FLOAT_EQ(camera.height, 10);
    EXPECT_NEAR(camera.toWorld(mouse).x, under.x, 1e-4);
    EXPECT_NEAR(camera.toWorld(mouse).y, under.y, 1e-4);

    const Vec2 grabbed = camera.toWorld(QPointF(300, 300));
    camera.panByPixels(QPointF(50, -20));
    EXPECT_NEAR(camera.toWorld(QPointF(350, 280)).x, grabbed.x, 1e-4);
    EXPECT_NEAR(camera.toWorld(QPointF(350, 280)).y, grabbed.y, 1e-4);

    camera.zoomAt(mouse, 1e30);
    EXPECT_FLOAT_EQ(camera.height, ViewCamera::kMaxHeight);
    camera.zoomAt(mouse, 1e-30);
    EXPECT_FLOAT_EQ(camera.height, ViewCamera::kMinHeight);
}

TEST(ViewCamera, FitShowsTheWholeBoxAndSurvivesBadBoxes)
{
    ViewCamera camera;
    camera.pixelSize = {800, 400};
    camera.fit({-100, 0}, {100, 10});
    // Wide box: the width decides.
    EXPECT_GE(camera.toPixel({100, 0}).x(), 0);
    EXPECT_LE(camera.toPixel({100, 0}).x(), 800);
    EXPECT_GE(camera.toPixel({-100, 0}).x(), 0);
    EXPECT_NEAR(camera.center.x, 0, 1e-6);
    EXPECT_NEAR(camera.center.y, 5, 1e-6);

    const float nan = std::numeric_limits<float>::quiet_NaN();
    camera.fit({nan, 0}, {1, 1});
    EXPECT_TRUE(std::isfinite(camera.height));
    EXPECT_TRUE(std::isfinite(camera.center.x));
    camera.fit({-3e38f, -3e38f}, {3e38f, 3e38f});
    EXPECT_TRUE(std::isfinite(camera.height));
    EXPECT_LE(camera.height, ViewCamera::kMaxHeight);
}

TEST(ViewCamera, ClipMatrixPutsTheViewEdgesAtPlusMinusOne)
{
    ViewCamera camera;
    camera.center = {3, 4};
    camera.height = 10;
    camera.pixelSize = {200, 100};
    const auto m = camera.worldToClip();
    const auto clip = [&m](Vec2 p) { return QPointF(m[0] * p.x + m[12], m[5] * p.y + m[13]); };
    EXPECT_NEAR(clip({3, 4}).x(), 0, 1e-6);
    EXPECT_NEAR(clip({3, 9}).y(), 1, 1e-6);
    EXPECT_NEAR(clip({13, 4}).x(), 1, 1e-6) << "twice as wide as high: 20 world units across";
}
