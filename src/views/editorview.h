#pragma once

#include "views/documentview.h"
#include "views/scenerenderer.h"
#include "views/viewcamera.h"
#include "views/viewcolors.h"

#include <memory>

class TextureCache;

/// The editing view of a document: draws the scene with OpenGL and turns
/// mouse input into view changes (middle drag pans, the wheel zooms at the
/// mouse) and selections (a click selects the topmost body or fixture, by the
/// edit mode; shift adds). Selections are made through the script API, so each
/// click is one undo step. The drawing is rebuilt when the document's undo
/// stack moves (every change is recorded there), not per frame.
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
    /// Rebuilds the drawing on the next frame (after changes that the undo stack does not show, like a reload).
    void sceneChanged();
    /// The current drawing of the scene (built now if out of date).
    const SceneGeometry& geometry();
    /// Milliseconds the last geometry build took.
    double lastBuildMilliseconds() const { return m_buildMs; }
    /// Setting that keeps whether new views draw names.
    static constexpr const char* kShowLabelsKey = "editor/showlabels";
    /// Shows or hides the names of the items of the current edit mode.
    void setShowLabels(bool show);
    /// Whether names are drawn.
    bool showLabels() const { return m_showLabels; }
    /// Labels drawn in the last frame.
    int lastLabelCount() const { return m_labelCount; }

signals:
    /// Asks for a simulation view of this view's document.
    void openPlayerView(EditorView* view);

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void cameraChanged();
    void fitToScene();
    void adoptScriptedView();
    void selectAt(const QPointF& pixel, bool add);
    void cleanupGL();

    std::shared_ptr<TextureCache> m_textures;
    ViewColors m_colors;
    ViewCamera m_camera;
    Vec2 m_writtenCenter;
    float m_writtenHeight = 0;
    SceneRenderer m_renderer;
    SceneGeometry m_geometry;
    bool m_geometryDirty = true;
    bool m_uploadDirty = true;
    bool m_fitPending = false;
    double m_buildMs = 0;
    QPointF m_lastDragPixel;
    bool m_panning = false;
    bool m_showLabels = true;
    int m_labelCount = 0;
};
