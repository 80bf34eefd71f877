#include "views/editorview.h"

#include "base/settings.h"
#include "document/editordocument.h"
#include "model/metaworld.h"
#include "script/scriptapisupport.h"
#include "script/scriptbody.h"
#include "script/scriptfixture.h"
#include "editing/editmode.h"
#include "views/hittest.h"
#include "views/labelpainter.h"
#include "views/texturecache.h"

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace
{
// Pixels around the pointer that still hit an outline.
constexpr double kHitPixels = 4;
// Zoom per wheel notch.
constexpr double kWheelZoom = 1.15;
} // namespace

EditorView::EditorView(EditorDocument& document, std::shared_ptr<TextureCache> textures, QWidget* parent)
    : DocumentView(document, parent), m_textures(std::move(textures)), m_colors(ViewColors::fromSettings())
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(64, 48);
    const EditorState& state = document.editorState();
    m_camera.center = state.viewCenter;
    m_camera.height = state.viewHeight > 0 ? state.viewHeight : 20;
    m_fitPending = true;
    m_showLabels = openAppSettings()->value(QLatin1String(kShowLabelsKey), true).toBool();
    connect(&document.undoStack(), &QUndoStack::indexChanged, this, [this] { sceneChanged(); });
}

EditorView::~EditorView()
{
    if (context()) {
        context()->disconnect(this);
        makeCurrent();
        m_renderer.release();
        doneCurrent();
    }
}

void EditorView::copyViewSettings(const EditorView& other)
{
    m_camera.center = other.m_camera.center;
    m_camera.height = other.m_camera.height;
    m_fitPending = false;
    cameraChanged();
}

void EditorView::setView(Vec2 center, float height)
{
    m_camera.center = center;
    m_camera.height = std::clamp(height, ViewCamera::kMinHeight, ViewCamera::kMaxHeight);
    m_fitPending = false;
    cameraChanged();
}

void EditorView::zoomToFit()
{
    fitToScene();
    m_fitPending = false;
}

void EditorView::fitToScene()
{
    const SceneGeometry& g = geometry();
    if (g.isEmpty())
        m_camera.fit({-10, -10}, {10, 10});
    else
        m_camera.fit(g.lo, g.hi);
    cameraChanged();
}

void EditorView::sceneChanged()
{
    m_geometryDirty = true;
    update();
}

const SceneGeometry& EditorView::geometry()
{
    if (m_geometryDirty) {
        QElapsedTimer timer;
        timer.start();
        m_geometry = SceneGeometry::build(document().world(), document().selection(), m_colors, document().filePath());
        m_buildMs = double(timer.nsecsElapsed()) / 1e6;
        m_geometryDirty = false;
        m_uploadDirty = true;
    }
    return m_geometry;
}

void EditorView::cameraChanged()
{
    EditorState& state = document().editorState();
    state.viewCenter = m_camera.center;
    state.viewHeight = m_camera.height;
    state.viewPixelHeight = float(m_camera.pixelSize.height());
    m_writtenCenter = m_camera.center;
    m_writtenHeight = m_camera.height;
    update();
}

void EditorView::adoptScriptedView()
{
    // A script may have set the view through the editor-state functions.
    const EditorState& state = document().editorState();
    if (state.viewCenter == m_writtenCenter && state.viewHeight == m_writtenHeight)
        return;
    if (!hasFocus() && !isActiveWindow())
        return;
    m_camera.center = state.viewCenter;
    m_camera.height = std::clamp(state.viewHeight, ViewCamera::kMinHeight, ViewCamera::kMaxHeight);
    m_writtenCenter = state.viewCenter;
    m_writtenHeight = state.viewHeight;
}

void EditorView::initializeGL()
{
    m_renderer.initialize();
    m_uploadDirty = true;
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { cleanupGL(); });
}

void EditorView::cleanupGL()
{
    makeCurrent();
    m_renderer.release();
    doneCurrent();
}

void EditorView::resizeGL(int width, int height)
{
    m_camera.pixelSize = QSize(width, height);
    // Until the user moves the view, a new view keeps the whole scene in sight
    // while its window settles (maximising, docking).
    if (m_fitPending && width > 0 && height > 0)
        fitToScene();
    else
        cameraChanged();
}

void EditorView::paintGL()
{
    adoptScriptedView();
    geometry();
    if (m_textures && m_textures->refresh())
        m_uploadDirty = true;
    if (m_uploadDirty) {
        m_renderer.upload(m_geometry, *m_textures);
        m_uploadDirty = false;
    }
    m_renderer.paint(m_camera, m_colors, document().editorState().cursor);
    m_labelCount = 0;
    if (m_showLabels && !m_geometry.labels.empty()) {
        QPainter painter(this);
        // The scene was drawn with raw OpenGL: hand the state back to the painter.
        painter.beginNativePainting();
        painter.endNativePainting();
        painter.setRenderHint(QPainter::TextAntialiasing);
        const ItemKind kind = editModeItemKind(editModeFromWord(document().editorState().editMode));
        m_labelCount = LabelPainter::paint(painter, m_camera, m_geometry.labels, kind, m_colors.label, m_colors.selection);
    }
}

void EditorView::setShowLabels(bool show)
{
    if (m_showLabels == show)
        return;
    m_showLabels = show;
    update();
}

void EditorView::mousePressEvent(QMouseEvent* event)
{
    m_lastDragPixel = event->position();
    if (event->button() == Qt::MiddleButton) {
        m_panning = true;
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() == Qt::LeftButton)
        selectAt(event->position(), event->modifiers().testFlag(Qt::ShiftModifier));
}

void EditorView::mouseMoveEvent(QMouseEvent* event)
{
    EditorState& state = document().editorState();
    state.mousePos = m_camera.toWorld(event->position());
    state.ctrlDown = event->modifiers().testFlag(Qt::ControlModifier);
    state.altDown = event->modifiers().testFlag(Qt::AltModifier);
    if (m_panning) {
        m_fitPending = false;
        m_camera.panByPixels(event->position() - m_lastDragPixel);
        m_lastDragPixel = event->position();
        cameraChanged();
    }
}

void EditorView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton && m_panning) {
        m_panning = false;
        unsetCursor();
    }
}

void EditorView::wheelEvent(QWheelEvent* event)
{
    const double notches = event->angleDelta().y() / 120.0;
    if (notches == 0)
        return;
    m_camera.zoomAt(event->position(), std::pow(kWheelZoom, -notches));
    m_fitPending = false;
    cameraChanged();
    event->accept();
}

void EditorView::selectAt(const QPointF& pixel, bool add)
{
    EditorDocument& doc = document();
    const Vec2 point = m_camera.toWorld(pixel);
    const float tolerance = float(kHitPixels * m_camera.worldPerPixel());
    const bool fixtures = doc.editorState().editMode == QLatin1String("fixtures");
    const ItemKind kind = fixtures ? ItemKind::Fixture : ItemKind::Body;
    MetaFixture* hitFixture = HitTest::topmostFixture(doc.world(), point, tolerance);
    const MetaItem* hit = fixtures ? static_cast<MetaItem*>(hitFixture)
                                   : static_cast<MetaItem*>(hitFixture ? hitFixture->body() : nullptr);
    const std::vector<ItemId> selected = doc.selection().items(kind);
    bool changesSomething = hit && !doc.selection().contains(kind, hit->id());
    for (ItemId id : selected) {
        if (!add && (!hit || id != hit->id()))
            changesSomething = true;
    }
    if (!changesSomething)
        return;
    ScriptDocumentScope scope(&doc);
    UndoMacroScope macro(doc.undoStack(), fixtures ? tr("fixture selection") : tr("body selection"));
    if (!add) {
        for (ItemId id : selected) {
            if (hit && id == hit->id())
                continue;
            if (fixtures) {
                ScriptFixture h = ScriptApi::fixtureHandle(doc.world().findFixture(id));
                FixtureApi::deselect(&h);
            } else {
                ScriptBody h = ScriptApi::bodyHandle(doc.world().findBody(id));
                BodyApi::deselect(&h);
            }
        }
    }
    if (hit && !doc.selection().contains(kind, hit->id())) {
        if (fixtures) {
            ScriptFixture h = ScriptApi::fixtureHandle(static_cast<const MetaFixture*>(hit));
            FixtureApi::select(&h);
        } else {
            ScriptBody h = ScriptApi::bodyHandle(static_cast<const MetaBody*>(hit));
            BodyApi::select(&h);
        }
    }
}
