#pragma once

#include "views/scenegeometry.h"
#include "views/viewcamera.h"
#include "views/viewcolors.h"

#include <QImage>

#include <memory>

class QOffscreenSurface;
class QOpenGLFramebufferObject;
class QOpenGLContext;
class SceneRenderer;
class TextureCache;

/// Draws scene geometries with the views' renderer into a frame buffer of
/// its own (no window), for comparing the pictures of two drawings pixel
/// by pixel.
class OffscreenPicture
{
public:
    /// Pictures drawn with this many samples a pixel (0: none).
    explicit OffscreenPicture(int samples = 0);
    ~OffscreenPicture();

    /// True when an OpenGL context could be made.
    bool isReady() const { return m_ready; }
    /// The picture of `geometry` as `camera` sees it (a fresh upload).
    QImage draw(const SceneGeometry& geometry, const ViewCamera& camera, const ViewColors& colors = {});
    /// The renderer, current, for tests that drive it step by step.
    SceneRenderer& renderer();
    /// Reads the renderer's last frame.
    QImage lastFrame();
    /// Paints the uploaded geometry again, as a view's frame does.
    QImage paint(const ViewCamera& camera, const ViewColors& colors = {});

private:
    std::unique_ptr<QOffscreenSurface> m_surface;
    std::unique_ptr<QOpenGLContext> m_context;
    std::unique_ptr<SceneRenderer> m_renderer;
    std::unique_ptr<QOpenGLFramebufferObject> m_target;
    std::shared_ptr<TextureCache> m_textures;
    int m_samples = 0;
    bool m_ready = false;
};

/// Number of pixels in which two pictures of the same size differ (all of
/// them when the sizes differ).
long differingPixels(const QImage& a, const QImage& b);
