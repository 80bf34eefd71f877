#pragma once

#include "player/playersimulation.h"
#include "views/documentview.h"
#include "views/playergeometry.h"
#include "views/scenerenderer.h"
#include "views/viewcamera.h"
#include "views/viewcolors.h"

#include <QElapsedTimer>

#include <memory>

class TextureCache;

/// A view that runs the document's scene as a Box2D simulation. The world
/// is built, stepped and dragged by PlayerSimulation (widget-free); the
/// view only draws the world each frame with the editor's renderer and
/// passes its input on. Keys: Space plays and pauses, Right arrow (or
/// period) steps once while paused, R reloads, F switches the fast mode, I
/// shows the information overlay, K keeps the result in the document. The
/// left button drags bodies, the middle button pans, the wheel zooms.
class PlayerView : public DocumentView
{
    Q_OBJECT

public:
    /// A paused player of `document`, loaded at once, drawing images from `textures`.
    PlayerView(EditorDocument& document, std::shared_ptr<TextureCache> textures, QWidget* parent = nullptr);
    ~PlayerView() override;

    QString kindWord() const override { return QStringLiteral("player"); }

    /// The simulation (world, stepping, dragging, toggles).
    PlayerSimulation& simulation() { return *m_simulation; }
    /// The view's camera.
    const ViewCamera& camera() const { return m_camera; }
    /// Shows the part of the world another view shows.
    void setView(Vec2 center, float height);
    /// Shows the whole world.
    void zoomToFit();

    /// Plays or pauses.
    void togglePlay();
    /// One step while paused.
    void singleStep();
    /// Builds the world from the document again.
    void reload();
    /// Normal or fast speed.
    void toggleFast();
    /// Keeps the simulated positions, angles and velocities in the document (one undo step).
    int keepResult();
    /// The interaction state the view reports ("player_idle").
    QString stateName() const { return PlayerSimulation::interactionStateName(); }

signals:
    /// A text for the status bar (0: no timeout).
    void statusMessage(const QString& text, int timeoutMs);
    /// Playing started or stopped.
    void playingChanged(bool playing);

protected:
    void initializeGL() override;
    void resizeGL(int width, int height) override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void aboutToClose() override;

private:
    void worldLoaded();
    void paintOverlay();

    std::shared_ptr<TextureCache> m_textures;
    ViewColors m_colors;
    ViewCamera m_camera;
    std::unique_ptr<PlayerSimulation> m_simulation;
    SceneRenderer m_renderer;
    PlayerGeometry m_geometry;
    SceneGeometry m_frame;
    bool m_geometryBuilt = false;
    bool m_fitPending = true;
    QElapsedTimer m_textureCheck; ///< when the image files were last looked at
    bool m_panning = false;
    QPointF m_lastPixel;
};
