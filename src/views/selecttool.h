#pragma once

#include "views/scenepicker.h"
#include "views/viewtool.h"

#include <QPointF>

#include <optional>
#include <vector>

/// The editor view's default tool. A click selects the topmost item of the
/// edit mode under the pointer (Shift adds, Ctrl toggles); when several
/// items lie there, a menu lists them by name and kind to choose from. A
/// drag on empty space selects the items inside the box (Shift adds, Ctrl
/// removes); a drag that starts on a selected item moves the selection. In
/// the vertex mode a double click on an edge of a selected fixture inserts a
/// vertex there.
class SelectTool : public ViewTool
{
public:
    /// The tool of `view`.
    explicit SelectTool(EditorView& view);

    bool mousePress(QMouseEvent* event) override;
    bool mouseMove(QMouseEvent* event) override;
    bool mouseRelease(QMouseEvent* event) override;
    bool mouseDoubleClick(QMouseEvent* event) override;
    void paintOverlay(QPainter& painter) override;
    QString stateName() const override;
    void cancel() override;

    /// The menu text naming a hit: "ball (body)", "vertex 2 of box (fixture)".
    static QString describe(const MetaWorld& world, const PickHit& hit);

private:
    void click(QMouseEvent* event);
    void boxSelect(QMouseEvent* event);
    std::optional<PickHit> choose(const std::vector<PickHit>& hits, const QPoint& globalPos);

    bool m_pressed = false;
    bool m_boxing = false;
    bool m_onSelection = false;
    Qt::KeyboardModifiers m_pressModifiers;
    QPointF m_pressPixel;
    QPointF m_currentPixel;
};
