#include "views/offscreenpicture.h"

#include "views/scenerenderer.h"
#include "views/texturecache.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>

#include <cmath>

OffscreenPicture::OffscreenPicture(int samples)
    : m_surface(std::make_unique<QOffscreenSurface>()), m_context(std::make_unique<QOpenGLContext>()),
      m_textures(std::make_shared<TextureCache>()), m_samples(samples)
{
    m_surface->create();
    if (!m_context->create() || !m_context->makeCurrent(m_surface.get()))
        return;
    m_renderer = std::make_unique<SceneRenderer>();
    m_ready = m_renderer->initialize();
}

OffscreenPicture::~OffscreenPicture()
{
    if (m_context->makeCurrent(m_surface.get())) {
        m_target.reset();
        if (m_renderer)
            m_renderer->release();
        m_context->doneCurrent();
    }
}

SceneRenderer& OffscreenPicture::renderer()
{
    m_context->makeCurrent(m_surface.get());
    return *m_renderer;
}

QImage OffscreenPicture::paint(const ViewCamera& camera, const ViewColors& colors)
{
    m_context->makeCurrent(m_surface.get());
    if (!m_target || m_target->size() != camera.pixelSize)
    {
        QOpenGLFramebufferObjectFormat format;
        format.setSamples(m_samples);
        m_target = std::make_unique<QOpenGLFramebufferObject>(camera.pixelSize, format);
    }
    m_target->bind();
    m_renderer->paint(camera, colors, {NAN, NAN}, m_target->handle());
    return lastFrame();
}

QImage OffscreenPicture::lastFrame()
{
    m_context->makeCurrent(m_surface.get());
    return m_target ? m_target->toImage() : QImage();
}

QImage OffscreenPicture::draw(const SceneGeometry& geometry, const ViewCamera& camera, const ViewColors& colors)
{
    if (!m_ready)
        return QImage();
    m_context->makeCurrent(m_surface.get());
    m_renderer->upload(geometry, *m_textures);
    return paint(camera, colors);
}

long differingPixels(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return long(std::max(a.width() * a.height(), b.width() * b.height()));
    const QImage x = a.convertToFormat(QImage::Format_ARGB32);
    const QImage y = b.convertToFormat(QImage::Format_ARGB32);
    long count = 0;
    for (int row = 0; row < x.height(); ++row) {
        const auto* p = reinterpret_cast<const QRgb*>(x.constScanLine(row));
        const auto* q = reinterpret_cast<const QRgb*>(y.constScanLine(row));
        for (int column = 0; column < x.width(); ++column)
            count += p[column] != q[column] ? 1 : 0;
    }
    return count;
}
