#include "views/editorview.h"

#include "api/scripthookdata.h"
#include "api/scriptworld.h"
#include "base/settings.h"
#include "docscripts/customlabelscript.h"
#include "docscripts/documentscripts.h"
#include "document/editordocument.h"
#include "document/imagedata.h"
#include "editing/scriptcommand.h"
#include "edits/creationedits.h"
#include "engine/documentscripting.h"
#include "engine/scriptdocument.h"
#include "hooks/hookevents.h"
#include "model/metaworld.h"
#include "views/drawtool.h"
#include "views/labelpainter.h"
#include "views/selecttool.h"
#include "views/shapegeometry.h"
#include "views/texturecache.h"
#include "views/transformtool.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImageReader>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <optional>

namespace
{
// Pixels around the pointer that still hit an outline.
constexpr double kHitPixels = 4;
// Zoom per wheel notch.
constexpr double kWheelZoom = 1.15;
// A right click that moves less than this opens the context menu.
constexpr double kClickPixels = 4;

bool isSceneFile(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QLatin1String("plax") || suffix == QLatin1String("json");
}

bool isImageFile(const QString& path)
{
    return !QImageReader::imageFormat(path).isEmpty();
}
} // namespace

EditorView::EditorView(EditorDocument& document, std::shared_ptr<TextureCache> textures, QWidget* parent)
    : DocumentView(document, parent), m_textures(std::move(textures)), m_colors(ViewColors::fromSettings()),
      m_snap(SnapSettings::fromSettings())
{
    setObjectName(QStringLiteral("EditorView"));
    setAccessibleName(tr("Scene editor view"));
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setMinimumSize(64, 48);
    // A changed labels script (or the user's agreement to it) shows at once.
    connect(&document.documentScripts(), &DocumentScripts::changed, this, [this] { update(); });
    const EditorState& state = document.editorState();
    m_camera.center = state.viewCenter;
    m_camera.height = state.viewHeight > 0 ? state.viewHeight : 20;
    m_fitPending = true;
    m_showLabels = openAppSettings()->value(QLatin1String(kShowLabelsKey), true).toBool();
    m_tool = std::make_unique<SelectTool>(*this);
    connect(&document.undoStack(), &QUndoStack::indexChanged, this, [this] {
        m_previewing = false;
        sceneEdited();
    });
}

EditorView::~EditorView()
{
    m_tool.reset();
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
    m_updater.invalidate();
    m_picker.clear();
    sceneEdited();
}

void EditorView::sceneEdited()
{
    m_geometryDirty = true;
    m_typicalSizeDirty = true;
    m_pickerStale = true;
    update();
}

void EditorView::previewChanged()
{
    m_previewing = true;
    sceneEdited();
}

void EditorView::updateHeldFills()
{
    // Outside a preview: the fills a drag would start from, kept up to date
    // with each fixture's revision.
    std::vector<HeldFill> fills;
    std::vector<std::uint64_t> revisions;
    if (editMode() == EditMode::Vertices) {
        for (const Selection::VertexRef& v : document().selection().vertices()) {
            const MetaFixture* fixture = document().world().findFixture(v.fixture);
            if (!fixture || fixture->vertices().size() <= kHeldFillVertices ||
                std::any_of(fills.begin(), fills.end(), [&](const HeldFill& h) { return h.fixture == v.fixture; }))
                continue;
            HeldFill held{v.fixture, {}};
            const auto kept = std::find_if(m_heldFills.begin(), m_heldFills.end(),
                                           [&](const HeldFill& h) { return h.fixture == v.fixture; });
            const size_t k = size_t(kept - m_heldFills.begin());
            if (kept != m_heldFills.end() && m_heldFillRevisions[k] == fixture->revision())
                held.vertices = std::move(kept->vertices);
            else
                held.vertices = fixture->vertices();
            fills.push_back(std::move(held));
            revisions.push_back(fixture->revision());
        }
    }
    m_heldFills = std::move(fills);
    m_heldFillRevisions = std::move(revisions);
}

std::vector<HeldFill> EditorView::previewFills() const
{
    if (!m_previewing || editMode() != EditMode::Vertices)
        return {};
    // A fixture that grew past the limit since the last frame has no fill
    // held: it is drawn without one until the drag ends.
    std::vector<HeldFill> fills = m_heldFills;
    for (const Selection::VertexRef& v : document().selection().vertices()) {
        const MetaFixture* fixture = document().world().findFixture(v.fixture);
        if (fixture && fixture->vertices().size() > kHeldFillVertices &&
            std::none_of(fills.begin(), fills.end(), [&](const HeldFill& h) { return h.fixture == v.fixture; }))
            fills.push_back({v.fixture, {}});
    }
    return fills;
}

int EditorView::wantedCircleSegments() const
{
    // Zoomed out so far that a typical fixture covers only a few pixels, the
    // coarse drawing looks the same and draws far fewer triangles.
    const double pixels = double(m_typicalFixtureSize) / std::max(m_camera.worldPerPixel(), 1e-12);
    return m_typicalFixtureSize > 0 && pixels < SceneGeometry::kCoarseBelowPixels ? ShapeTessellator::kCoarseCircleSegments
                                                                   : ShapeTessellator::kCircleSegments;
}

const SceneGeometry& EditorView::geometry()
{
    if (!m_geometryDirty && m_geometry.circleSegments != wantedCircleSegments())
        m_geometryDirty = true;
    if (m_geometryDirty) {
        QElapsedTimer timer;
        timer.start();
        if (m_typicalSizeDirty) {
            m_typicalFixtureSize = SceneGeometry::measureTypicalFixtureSize(document().world());
            m_typicalSizeDirty = false;
        }
        if (!m_previewing)
            updateHeldFills();
        const GeometryChange change = m_updater.update(m_geometry, document().world(), document().selection(),
                                                       m_colors, document().filePath(), wantedCircleSegments(),
                                                       previewFills());
        m_buildMs = double(timer.nsecsElapsed()) / 1e6;
        m_geometryDirty = false;
        // Changes wait for the next frame's upload; a full one replaces them.
        if (change.full || m_pendingChange.full) {
            m_pendingChange = GeometryChange{};
        } else {
            GeometryChange& p = m_pendingChange;
            p.triangles.insert(p.triangles.end(), change.triangles.begin(), change.triangles.end());
            p.lines.insert(p.lines.end(), change.lines.begin(), change.lines.end());
            p.touch(change.lo);
            p.touch(change.hi);
        }
        m_uploadDirty = true;
    }
    return m_geometry;
}

const ScenePicker& EditorView::picker()
{
    // Only the bodies an edit touched are read again.
    if (m_pickerStale || !m_picker.isBuilt())
        m_picker.update(document().world(), document().filePath());
    m_pickerStale = false;
    return m_picker;
}

EditMode EditorView::editMode() const
{
    return document().editorState().editMode;
}

void EditorView::setEditMode(EditMode mode)
{
    if (m_tool)
        m_tool->cancel();
    setTool(nullptr);
    document().editorState().editMode = mode;
    emit editModeChanged(mode);
    update();
}

float EditorView::pickTolerance() const
{
    return float(kHitPixels * m_camera.worldPerPixel());
}

void EditorView::reloadSettings()
{
    m_colors = ViewColors::fromSettings();
    m_snap = SnapSettings::fromSettings();
    sceneChanged();
}

void EditorView::cameraChanged()
{
    if (isClosed())
        return;
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
    m_pendingChange = GeometryChange{};
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
    if (isClosed())
        return;
    adoptScriptedView();
    geometry();
    if (m_textures && m_textures->refresh()) {
        // A changed picture file: everything is uploaded and drawn again.
        m_pendingChange = GeometryChange{};
        m_uploadDirty = true;
    }
    if (m_uploadDirty) {
        m_renderer.update(m_geometry, m_pendingChange, *m_textures);
        m_pendingChange = GeometryChange{};
        m_pendingChange.full = false;
        m_uploadDirty = false;
    }
    m_renderer.paint(m_camera, m_colors, document().editorState().cursor, defaultFramebufferObject());
    m_labelCount = 0;
    m_hiddenLabelCount = 0;
    m_placedLabels.clear();
    const bool labels = m_showLabels && !m_geometry.labels.empty();
    if (!labels && !m_tool)
        return;
    QPainter painter(this);
    // The scene was drawn with raw OpenGL: hand the state back to the painter.
    painter.beginNativePainting();
    painter.endNativePainting();
    painter.setRenderHint(QPainter::TextAntialiasing);
    if (labels) {
        const ItemKind kind = editModeItemKind(editMode());
        // One pass of the custom labels script serves the whole repaint.
        std::optional<CustomLabelScript::Pass> pass;
        LabelPainter::Customize customize;
        if (CustomLabelScript* script = document().documentScripts().labels()) {
            pass.emplace(*script, document());
            if (pass->isReady()) {
                customize = [this, &pass](const SceneLabel& scene, CustomLabel* label) {
                    if (const MetaItem* item = document().world().findItem(scene.kind, scene.id))
                        pass->apply(*item, label);
                };
            }
        }
        const LabelPainter::Outcome outcome = LabelPainter::paint(painter, m_camera, m_geometry.labels, kind,
                                                                  m_colors.label, m_colors.selection,
                                                                  m_colors.background, customize);
        m_labelCount = outcome.drawn;
        m_hiddenLabelCount = outcome.hidden;
        m_placedLabels = outcome.placed;
        LabelPainter::paintHiddenHint(painter, m_camera, outcome.hidden, m_colors.label);
    }
    if (m_tool) {
        painter.setRenderHint(QPainter::Antialiasing);
        m_tool->paintOverlay(painter);
    }
}

void EditorView::setTool(std::unique_ptr<ViewTool> tool)
{
    // The old tool may be the caller: it is kept until the next event.
    m_retiredTool = std::move(m_tool);
    if (m_previewing) {
        m_previewing = false;
        sceneEdited();
    }
    m_tool = tool ? std::move(tool) : std::make_unique<SelectTool>(*this);
    toolChanged();
}

void EditorView::toolChanged()
{
    // A tool that ends leaves the last message (its result) in place.
    const QString text = m_tool->statusText();
    if (!text.isEmpty())
        emit statusMessage(text, 0);
    update();
}

QString EditorView::stateName() const
{
    return m_tool ? m_tool->stateName() : QStringLiteral("editor_idle");
}

void EditorView::showStatus(const QString& text, int timeoutMs)
{
    emit statusMessage(text, timeoutMs);
}

void EditorView::startTransform(TransformApi::Operation operation, QPointF pixel, bool dragging)
{
    if (m_tool)
        m_tool->cancel();
    auto tool = std::make_unique<TransformTool>(*this, operation, pixel, dragging);
    if (!tool->isActive()) {
        setTool(nullptr);
        showStatus(tool->refusal());
        return;
    }
    setTool(std::move(tool));
}

void EditorView::startDrawing(ShapeType shapeType)
{
    if (m_tool)
        m_tool->cancel();
    setTool(std::make_unique<DrawTool>(*this, shapeType));
}

void EditorView::trackInput(QInputEvent* event, QPointF pixel)
{
    m_retiredTool.reset();
    EditorState& state = document().editorState();
    state.mousePos = m_camera.toWorld(pixel);
    state.ctrlDown = event->modifiers().testFlag(Qt::ControlModifier);
    state.altDown = event->modifiers().testFlag(Qt::AltModifier);
}

void EditorView::mousePressEvent(QMouseEvent* event)
{
    trackInput(event, event->position());
    m_lastDragPixel = event->position();
    if (event->button() == Qt::MiddleButton) {
        m_panning = true;
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() == Qt::RightButton)
        m_rightPressPixel = event->position();
    if (m_tool->mousePress(event))
        update();
}

void EditorView::mouseMoveEvent(QMouseEvent* event)
{
    trackInput(event, event->position());
    if (m_panning) {
        m_fitPending = false;
        m_camera.panByPixels(event->position() - m_lastDragPixel);
        m_lastDragPixel = event->position();
        cameraChanged();
        return;
    }
    ViewTool* tool = m_tool.get();
    if (tool->mouseMove(event)) {
        const QString text = m_tool->statusText();
        if (tool == m_tool.get() && !text.isEmpty())
            emit statusMessage(text, 0);
        update();
    }
}

void EditorView::mouseReleaseEvent(QMouseEvent* event)
{
    trackInput(event, event->position());
    if (event->button() == Qt::MiddleButton && m_panning) {
        m_panning = false;
        unsetCursor();
        return;
    }
    if (m_tool->mouseRelease(event)) {
        update();
        return;
    }
    if (event->button() == Qt::RightButton) {
        const QPointF moved = event->position() - m_rightPressPixel;
        if (std::hypot(moved.x(), moved.y()) >= kClickPixels)
            return;
        const Vec2 world = m_camera.toWorld(event->position());
        if (event->modifiers().testFlag(Qt::ShiftModifier)) {
            // Shift and a right click put the cursor there (one undo step).
            ScriptDocumentScope scope(&document());
            UndoMacroScope macro(document().undoStack(), tr("set cursor"));
            WorldApi::setCursor(world.x, world.y);
            update();
            return;
        }
        emit contextMenuRequested(event->globalPosition().toPoint(), world);
    }
}

void EditorView::mouseDoubleClickEvent(QMouseEvent* event)
{
    trackInput(event, event->position());
    if (m_tool->mouseDoubleClick(event))
        update();
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

void EditorView::keyPressEvent(QKeyEvent* event)
{
    m_retiredTool.reset();
    EditorState& state = document().editorState();
    state.ctrlDown = event->modifiers().testFlag(Qt::ControlModifier);
    state.altDown = event->modifiers().testFlag(Qt::AltModifier);
    ViewTool* tool = m_tool.get();
    if (tool->keyPress(event)) {
        // A tool that ended in the handler has left its result in the status bar.
        if (tool == m_tool.get())
            emit statusMessage(m_tool->statusText(), 0);
        update();
        return;
    }
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (modifiers == Qt::NoModifier) {
        const QPointF mouse = mapFromGlobal(QCursor::pos());
        switch (event->key()) {
        case Qt::Key_G: startTransform(TransformApi::Operation::Translate, mouse, false); return;
        case Qt::Key_R: startTransform(TransformApi::Operation::Rotate, mouse, false); return;
        case Qt::Key_S: startTransform(TransformApi::Operation::Scale, mouse, false); return;
        default: break;
        }
        // The mode keys work here too, whatever the window's shortcuts do.
        for (int i = 0; i < kEditModeCount; ++i) {
            if (event->key() == Qt::Key_A + (editModeKey(EditMode(i)) - 'A')) {
                setEditMode(EditMode(i));
                return;
            }
        }
        if (event->key() >= Qt::Key_0 && event->key() <= Qt::Key_9) {
            HookEvents::raise(document(), ScriptHookEvent(SHE_KEY_0 + (event->key() - Qt::Key_0)), ScriptHookData());
            update();
            return;
        }
    }
    DocumentView::keyPressEvent(event);
}

void EditorView::aboutToClose()
{
    // A running tool puts back what it previewed while the document exists.
    if (m_tool)
        m_tool->cancel();
    m_retiredTool.reset();
    m_tool = std::make_unique<SelectTool>(*this);
}

void EditorView::focusOutEvent(QFocusEvent* event)
{
    if (isClosed()) {
        DocumentView::focusOutEvent(event);
        return;
    }
    document().editorState().ctrlDown = false;
    document().editorState().altDown = false;
    DocumentView::focusOutEvent(event);
}

int EditorView::addImageFiles(const QStringList& files, Vec2 at, bool dropped)
{
    const auto images = CreationEdits::addImages(document(), files, at, dropped);
    for (MetaImage* image : images)
        refreshImageData(*image, document().filePath());
    sceneChanged();
    return int(images.size());
}

void EditorView::dragEnterEvent(QDragEnterEvent* event)
{
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile()) {
            event->acceptProposedAction();
            return;
        }
    }
}

void EditorView::dropEvent(QDropEvent* event)
{
    QStringList images, scenes, ignored;
    for (const QUrl& url : event->mimeData()->urls()) {
        const QString path = url.toLocalFile();
        if (path.isEmpty())
            continue;
        if (isSceneFile(path))
            scenes.append(path);
        else if (isImageFile(path))
            images.append(path);
        else
            ignored.append(QFileInfo(path).fileName());
    }
    event->acceptProposedAction();
    if (!images.isEmpty())
        addImageFiles(images, m_camera.toWorld(event->position()), true);
    if (!scenes.isEmpty())
        emit sceneFilesDropped(scenes);
    if (!ignored.isEmpty())
        showStatus(tr("Ignored %1: not an image or scene file").arg(ignored.join(QStringLiteral(", "))), 6000);
}

void EditorView::setShowLabels(bool show)
{
    if (m_showLabels == show)
        return;
    m_showLabels = show;
    update();
}
