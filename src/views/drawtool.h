#pragma once

#include "base/types.h"
#include "model/metashape.h"
#include "views/viewtool.h"

#include <QPointF>

#include <vector>

/// Draws a polygon, line or loop fixture by clicks: each left click adds a
/// point (Ctrl puts it on the grid, Alt on a nearby vertex), Backspace takes
/// the last one back, Enter, a double click or a click on the first point
/// finishes, Escape or a right click gives up. The fixture goes onto the
/// selected body (a new body when none or several are selected), as one
/// undo step.
class DrawTool : public ViewTool
{
public:
    /// Draws a fixture of shape type 1 (polygon), 2 (line) or 3 (loop).
    DrawTool(EditorView& view, ShapeType shapeType);

    bool mousePress(QMouseEvent* event) override;
    bool mouseMove(QMouseEvent* event) override;
    bool mouseRelease(QMouseEvent* event) override;
    bool mouseDoubleClick(QMouseEvent* event) override;
    bool keyPress(QKeyEvent* event) override;
    void paintOverlay(QPainter& painter) override;
    QString statusText() const override;
    QString stateName() const override { return QStringLiteral("editor_draw"); }
    void cancel() override;

    /// The points clicked so far (world coordinates).
    const std::vector<Vec2>& points() const { return m_points; }

private:
    Vec2 placed(QPointF pixel, Qt::KeyboardModifiers modifiers) const;
    void finish();
    size_t needed() const;

    ShapeType m_shapeType;
    std::vector<Vec2> m_points;
    QPointF m_mousePixel;
};
