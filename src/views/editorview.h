#pragma once

#include "api/scripttransform.h"
#include "editing/editmode.h"
#include "views/documentview.h"
#include "views/labelpainter.h"
#include "views/scenegeometryupdate.h"
#include "views/scenepicker.h"
#include "views/scenerenderer.h"
#include "views/snapping.h"
#include "views/viewcamera.h"
#include "views/viewcolors.h"

#include <memory>
#include <vector>

class QInputEvent;
class TextureCache;
class ViewTool;

/// The editing view of a document: draws the scene with OpenGL and turns
/// mouse and key input into view changes (middle drag pans, the wheel zooms
/// at the mouse) and edits through its tools: selecting by click and box,
/// moving, turning and scaling the selection (G, R, S, or dragging), drawing
/// polygons, lines and loops. Every edit goes through the script API, so it
/// is one undo step. The drawing is rebuilt when the document's undo stack
/// moves (every change is recorded there), not per frame.
class EditorView : public DocumentView
{
    Q_OBJECT

public:
    /// A view of `document` drawing images from `textures` (shared by the document's views).
    EditorView(EditorDocument& document, std::shared_ptr<TextureCache> textures, QWidget* parent = nullptr);
    ~EditorView() override;

    QString kindWord() const override { return QStringLiteral("editor"); }

    /// The view's camera (centre, height, pixel size).
    const ViewCamera& camera() const { return m_camera; }
    /// Takes the camera of another view of the same document.
    void copyViewSettings(const EditorView& other);
    /// Shows everything the scene draws.
    void zoomToFit();
    /// Sets the camera directly (centre and shown height).
    void setView(Vec2 center, float height);
    /// Rebuilds the whole drawing on the next frame and the picker at the next
    /// pick (after changes that the undo stack does not show, like a reload).
    void sceneChanged();
    /// Brings the drawing up to date on the next frame and the picker at the
    /// next pick, reading again only what changed (the undo stack moved, a
    /// tool's preview changed the scene).
    void sceneEdited();
    /// The current drawing of the scene (built now if out of date).
    const SceneGeometry& geometry();
    /// The picker of the scene as it is now (brought up to date now if the
    /// scene changed since).
    const ScenePicker& picker();
    /// Scenes of more vertices than this pan over a cached picture (tests set it low).
    void setFrameCacheThreshold(size_t vertices) { m_renderer.setFrameCacheThreshold(vertices); }
    /// True when the last frame drew the cached picture.
    bool lastFrameFromCache() const { return m_renderer.lastFrameFromCache(); }
    /// Samples per pixel of the last frame (0 where OpenGL offers no multisampling).
    int lastFrameSamples() const { return m_renderer.samples(); }
    /// Vertices the last frame drew (the chunks in sight).
    size_t lastDrawnVertices() const { return m_renderer.drawnVertices(); }
    /// Milliseconds the last geometry build took.
    double lastBuildMilliseconds() const { return m_buildMs; }
    /// Parts of the drawing the last build drew (every part when it drew all).
    size_t lastPartsDrawn() const { return m_updater.lastPartsDrawn(); }

    /// The document's edit mode.
    EditMode editMode() const;
    /// Changes the document's edit mode; a running tool stops.
    void setEditMode(EditMode mode);
    /// World units that a few pixels cover: how near the pointer must be to thin things.
    float pickTolerance() const;
    /// The snapping steps.
    const SnapSettings& snapSettings() const { return m_snap; }
    /// Re-reads the snapping steps and colours from the settings.
    void reloadSettings();

    /// Starts moving (G), turning (R) or scaling (S) the selection with the
    /// mouse from `pixel`; `dragging` ends it when the button is released.
    void startTransform(TransformApi::Operation operation, QPointF pixel, bool dragging);
    /// Starts drawing a polygon, line or loop fixture by clicks (shape type 1, 2 or 3).
    void startDrawing(ShapeType shapeType);
    /// Replaces the current tool (null: back to selecting).
    void setTool(std::unique_ptr<ViewTool> tool);
    /// The current tool's interaction state name ("editor_idle", "editor_translate", ...).
    QString stateName() const;
    /// Shows a message in the status bar (through statusMessage()).
    void showStatus(const QString& text, int timeoutMs = 4000);
    /// Asks for a repaint after a preview changed the scene without recording.
    /// Until the preview ends (a new undo step, or another tool), fixtures
    /// of more than kHeldFillVertices vertices whose vertices it moves keep
    /// the fill they had before it under their moving outline: refilling a
    /// huge outline at every step of a drag would not keep up with the
    /// pointer.
    void previewChanged();
    /// See previewChanged().
    static constexpr size_t kHeldFillVertices = 20000;
    /// Puts a dropped or chosen list of image files into the scene at a world point ("add images").
    int addImageFiles(const QStringList& files, Vec2 at, bool dropped);

    /// Setting that keeps whether new views draw names.
    static constexpr const char* kShowLabelsKey = "editor/showlabels";
    /// Shows or hides the names of the items of the current edit mode.
    void setShowLabels(bool show);
    /// Whether names are drawn.
    bool showLabels() const { return m_showLabels; }
    /// Labels drawn in the last frame.
    int lastLabelCount() const { return m_labelCount; }
    /// Labels the last frame left out because they would have covered others.
    int lastHiddenLabelCount() const { return m_hiddenLabelCount; }
    /// The labels the last frame wrote: which item each names and where it stands.
    const std::vector<LabelPainter::Placed>& lastPlacedLabels() const { return m_placedLabels; }

signals:
    /// Asks for a simulation view of this view's document.
    void openPlayerView(EditorView* view);
    /// A text for the status bar (timeout in milliseconds, 0 for none).
    void statusMessage(const QString& text, int timeoutMs);
    /// The right button was released without dragging: the context menu is wanted at `globalPos`.
    void contextMenuRequested(const QPoint& globalPos, Vec2 world);
    /// Scene files were dropped on the view (the workspace opens them).
    void sceneFilesDropped(const QStringList& files);
    /// The edit mode changed through this view.
    void editModeChanged(EditMode mode);

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void aboutToClose() override;

private:
    // The fills a vertex drag would hold (taken outside previews).
    void updateHeldFills();
    // The fills a running vertex preview holds.
    std::vector<HeldFill> previewFills() const;
    void cameraChanged();
    void fitToScene();
    void adoptScriptedView();
    void trackInput(QInputEvent* event, QPointF pixel);
    void cleanupGL();
    void toolChanged();
    int wantedCircleSegments() const;

    std::shared_ptr<TextureCache> m_textures;
    ViewColors m_colors;
    SnapSettings m_snap;
    ViewCamera m_camera;
    Vec2 m_writtenCenter;
    float m_writtenHeight = 0;
    SceneRenderer m_renderer;
    SceneGeometry m_geometry;
    SceneGeometryUpdater m_updater;
    GeometryChange m_pendingChange; ///< changes not yet uploaded
    ScenePicker m_picker;
    bool m_pickerStale = false; // the scene was edited since the picker's last update
    std::unique_ptr<ViewTool> m_tool;
    std::unique_ptr<ViewTool> m_retiredTool;
    bool m_geometryDirty = true;
    bool m_previewing = false;
    std::vector<HeldFill> m_heldFills;
    std::vector<std::uint64_t> m_heldFillRevisions;
    bool m_typicalSizeDirty = true;
    float m_typicalFixtureSize = 0;
    bool m_uploadDirty = true;
    bool m_fitPending = false;
    double m_buildMs = 0;
    QPointF m_lastDragPixel;
    QPointF m_rightPressPixel;
    bool m_panning = false;
    bool m_showLabels = true;
    int m_labelCount = 0;
    int m_hiddenLabelCount = 0;
    std::vector<LabelPainter::Placed> m_placedLabels;
};
