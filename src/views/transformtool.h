#pragma once

#include "edits/transformsession.h"
#include "views/viewtool.h"

#include <QPointF>

#include <memory>

/// Moves (G or a drag), turns (R) or scales (S) the selection of the edit
/// mode with the mouse. The selection follows the mouse as a preview; a
/// left click (or, for a drag, releasing the button) or Enter applies it as
/// one undo step, a right click or Escape puts everything back. Typed
/// numbers replace the mouse: "dx,dy" for a move, degrees for a turn, "s" or
/// "sx,sy" for a scale. X and Y keep the change to one axis; C switches the
/// pivot of turns and scales between the selection centre and the cursor.
/// Ctrl snaps the change to whole steps (grid, angle, scale steps); Alt puts
/// the moved selection centre on the nearest vertex of another item, or on
/// the nearest grid point.
class TransformTool : public ViewTool
{
public:
    /// Starts on the selection of the view's edit mode; `dragging` ends on release.
    TransformTool(EditorView& view, TransformApi::Operation operation, QPointF startPixel, bool dragging);
    ~TransformTool() override;

    /// False when there is nothing to transform (see refusal()).
    bool isActive() const { return m_session && m_session->count() > 0; }
    /// Why the tool did not start.
    QString refusal() const;

    bool mousePress(QMouseEvent* event) override;
    bool mouseMove(QMouseEvent* event) override;
    bool mouseRelease(QMouseEvent* event) override;
    bool keyPress(QKeyEvent* event) override;
    void paintOverlay(QPainter& painter) override;
    QString statusText() const override;
    QString stateName() const override;
    void cancel() override;

private:
    struct Value
    {
        float a = 0, b = 0;
        bool valid = true;
    };
    Value currentValue() const;
    Value typedValue() const;
    Value mouseValue() const;
    void updatePreview();
    void apply();
    void restartSession();

    TransformApi::Operation m_operation;
    std::unique_ptr<TransformSession> m_session;
    int m_pivotMode = 1;
    bool m_dragging;
    QPointF m_startPixel;
    QPointF m_currentPixel;
    Qt::KeyboardModifiers m_modifiers;
    QString m_typed;
    char m_axis = 0; // 'x', 'y' or 0
    Vec2 m_reference; // the selection centre at the start
};
