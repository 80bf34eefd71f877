#pragma once

#include <QString>

class EditorView;
class QKeyEvent;
class QMouseEvent;
class QPainter;

/// What an editor view does with the mouse and keys at a time: selecting
/// (the default), moving, turning or scaling the selection, drawing a shape.
/// The view hands its input to its current tool first; a tool returns false
/// for input it leaves to the view (panning, zooming, menus).
class ViewTool
{
public:
    /// A tool of `view`.
    explicit ViewTool(EditorView& view) : m_view(view) {}
    virtual ~ViewTool() = default;
    ViewTool(const ViewTool&) = delete;
    ViewTool& operator=(const ViewTool&) = delete;

    /// A mouse button went down.
    virtual bool mousePress(QMouseEvent* event) = 0;
    /// The mouse moved.
    virtual bool mouseMove(QMouseEvent* event) = 0;
    /// A mouse button went up.
    virtual bool mouseRelease(QMouseEvent* event) = 0;
    /// A double click.
    virtual bool mouseDoubleClick(QMouseEvent*) { return false; }
    /// A key was pressed.
    virtual bool keyPress(QKeyEvent*) { return false; }
    /// Draws the tool's marks over the scene (pixel coordinates).
    virtual void paintOverlay(QPainter&) {}
    /// What the status bar says while the tool runs (empty: nothing).
    virtual QString statusText() const { return QString(); }
    /// The name the view reports as its interaction state ("editor_idle", ...).
    virtual QString stateName() const = 0;
    /// Stops the tool without changing the scene.
    virtual void cancel() {}

protected:
    EditorView& m_view;
};
