#include "views/playerview.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "player/playerworld.h"
#include "views/texturecache.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QMutex>
#include <QOpenGLContext>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr double kWheelZoom = 1.15;
} // namespace

PlayerView::PlayerView(EditorDocument& document, std::shared_ptr<TextureCache> textures, QWidget* parent)
    : DocumentView(document, parent), m_textures(std::move(textures)), m_colors(ViewColors::fromSettings())
{
    setObjectName(QStringLiteral("PlayerView"));
    setAccessibleName(tr("Scene player view"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(64, 48);
    // A running world changes every frame: never from a cached picture.
    m_renderer.setFrameCacheThreshold(std::numeric_limits<size_t>::max());
    m_simulation = std::make_unique<PlayerSimulation>(&document);
    // Nothing is stepped while a modal dialog (a question, a progress box) runs.
    m_simulation->setBusyCheck([] { return QApplication::activeModalWidget() != nullptr; });
    connect(m_simulation.get(), &PlayerSimulation::repaintRequested, this, [this] { update(); });
    connect(m_simulation.get(), &PlayerSimulation::statusMessage, this,
            [this](const QString& text) { emit statusMessage(text, 0); });
    connect(m_simulation.get(), &PlayerSimulation::playingChanged, this, &PlayerView::playingChanged);
    m_camera.center = document.editorState().viewCenter;
    m_camera.height = document.editorState().viewHeight > 0 ? document.editorState().viewHeight : 20;
}

PlayerView::~PlayerView()
{
    if (m_simulation)
        m_simulation->close();
    if (context()) {
        makeCurrent();
        m_renderer.release();
        doneCurrent();
    }
}

void PlayerView::aboutToClose()
{
    // The toggles go back to the settings and the world goes, while the document exists.
    m_simulation->close();
    m_geometry.clear();
    m_geometryBuilt = false;
}

void PlayerView::setView(Vec2 center, float height)
{
    m_camera.center = center;
    m_camera.height = std::clamp(height, ViewCamera::kMinHeight, ViewCamera::kMaxHeight);
    m_fitPending = false;
    update();
}

void PlayerView::zoomToFit()
{
    PlayerWorld* world = m_simulation->world();
    if (!world)
        return;
    if (!m_geometryBuilt)
        worldLoaded();
    m_geometry.place(*world, m_simulation->toggles(), m_colors, m_frame);
    if (m_frame.hi.x >= m_frame.lo.x)
        m_camera.fit(m_frame.lo, m_frame.hi);
    m_fitPending = false;
    update();
}

void PlayerView::worldLoaded()
{
    m_geometry.clear();
    m_geometryBuilt = false;
    if (PlayerWorld* world = m_simulation->world()) {
        m_geometry.build(*world, m_colors, document().filePath());
        m_geometryBuilt = true;
    }
}

void PlayerView::togglePlay()
{
    m_simulation->togglePlay();
    update();
}

void PlayerView::singleStep()
{
    if (m_simulation->singleStep())
        update();
}

void PlayerView::reload()
{
    m_simulation->reload();
    worldLoaded();
    emit statusMessage(m_simulation->world() ? tr("Reloaded scene") : tr("The scene could not be loaded"), 3000);
    update();
}

void PlayerView::toggleFast()
{
    m_simulation->toggleFast();
    emit statusMessage(m_simulation->scheduler().isFast() ? tr("Fast speed") : tr("Normal speed"), 3000);
    update();
}

int PlayerView::keepResult()
{
    const int kept = m_simulation->keepResult();
    emit statusMessage(tr("Kept the simulated state of %1 bodies in the scene").arg(kept), 5000);
    return kept;
}

void PlayerView::initializeGL()
{
    m_renderer.initialize();
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] {
        makeCurrent();
        m_renderer.release();
        doneCurrent();
    });
}

void PlayerView::resizeGL(int width, int height)
{
    m_camera.pixelSize = QSize(width, height);
    if (m_fitPending && width > 0 && height > 0 && document().editorState().viewHeight <= 0)
        zoomToFit();
}

void PlayerView::paintGL()
{
    if (isClosed())
        return;
    {
        // The world may be shared: it is read under its mutex, when there is one.
        QMutex* mutex = m_simulation->worldMutex();
        if (mutex)
            mutex->lock();
        PlayerWorld* world = m_simulation->world();
        if (world && !m_geometryBuilt)
            worldLoaded();
        if (world)
            m_geometry.place(*world, m_simulation->toggles(), m_colors, m_frame, &m_camera);
        else
            m_frame = SceneGeometry{};
        if (mutex)
            mutex->unlock();
    }
    // A running scene paints every frame: its image files are looked at on
    // disk once a second, not at every frame.
    if (m_textures && (!m_textureCheck.isValid() || m_textureCheck.hasExpired(1000))) {
        m_textures->refresh();
        m_textureCheck.start();
    }
    m_renderer.upload(m_frame, *m_textures);
    ViewColors colors = m_colors;
    colors.background = m_colors.playerBackground;
    m_renderer.setShowGrid(m_simulation->toggles().showReferenceGrid);
    m_renderer.paint(m_camera, colors, {NAN, NAN}, defaultFramebufferObject());
    paintOverlay();
}

void PlayerView::paintOverlay()
{
    const bool info = m_simulation->toggles().showInfo;
    const QString error = m_simulation->loadError();
    if (!info && error.isEmpty())
        return;
    QPainter painter(this);
    painter.beginNativePainting();
    painter.endNativePainting();
    QFont font(QStringLiteral("Sans"));
    font.setPointSizeF(9);
    painter.setFont(font);
    QStringList lines = info ? m_simulation->infoLines() : QStringList();
    if (!info && !error.isEmpty())
        lines << tr("The scene could not be loaded:") << error.split(QLatin1Char('\n'));
    const QFontMetrics metrics(font);
    // A dark panel behind the text keeps it readable over a busy scene.
    int width = 0;
    for (const QString& line : lines)
        width = std::max(width, metrics.horizontalAdvance(line));
    painter.fillRect(QRect(4, 4, width + 10, int(lines.size()) * metrics.height() + 8), QColor(0, 0, 0, 150));
    int y = 8 + metrics.ascent();
    for (const QString& line : lines) {
        painter.setPen(QColor(0, 0, 0, 160));
        painter.drawText(QPointF(9, y + 1), line);
        painter.setPen(m_colors.label);
        painter.drawText(QPointF(8, y), line);
        y += metrics.height();
    }
}

void PlayerView::mousePressEvent(QMouseEvent* event)
{
    m_lastPixel = event->position();
    if (event->button() == Qt::MiddleButton) {
        m_panning = true;
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() == Qt::LeftButton) {
        const Vec2 p = m_camera.toWorld(event->position());
        if (m_simulation->mousePress(p.x, p.y))
            update();
    }
}

void PlayerView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_panning) {
        m_camera.panByPixels(event->position() - m_lastPixel);
        m_lastPixel = event->position();
        m_fitPending = false;
        update();
        return;
    }
    const Vec2 p = m_camera.toWorld(event->position());
    if (m_simulation->mouseMove(p.x, p.y))
        update();
}

void PlayerView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton && m_panning) {
        m_panning = false;
        unsetCursor();
        return;
    }
    if (event->button() == Qt::LeftButton && m_simulation->mouseRelease())
        update();
}

void PlayerView::wheelEvent(QWheelEvent* event)
{
    const double notches = event->angleDelta().y() / 120.0;
    if (notches == 0)
        return;
    m_camera.zoomAt(event->position(), std::pow(kWheelZoom, -notches));
    m_fitPending = false;
    update();
    event->accept();
}

void PlayerView::keyPressEvent(QKeyEvent* event)
{
    if (event->modifiers() & ~Qt::KeypadModifier) {
        DocumentView::keyPressEvent(event);
        return;
    }
    PlayerDisplayToggles& toggles = m_simulation->toggles();
    switch (event->key()) {
    case Qt::Key_Space: togglePlay(); return;
    case Qt::Key_Right:
    case Qt::Key_Period: singleStep(); return;
    case Qt::Key_R: reload(); return;
    case Qt::Key_F: toggleFast(); return;
    case Qt::Key_K: keepResult(); return;
    case Qt::Key_I: toggles.showInfo = !toggles.showInfo; break;
    case Qt::Key_G: toggles.showReferenceGrid = !toggles.showReferenceGrid; break;
    case Qt::Key_Home: zoomToFit(); return;
    default: DocumentView::keyPressEvent(event); return;
    }
    update();
}
