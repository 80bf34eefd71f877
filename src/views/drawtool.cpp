#include "views/drawtool.h"

#include "document/editordocument.h"
#include "editing/selection.h"
#include "edits/creationedits.h"
#include "model/metashape.h"
#include "views/editorview.h"
#include "views/snapping.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace
{
// A click this close to the first point closes the shape.
constexpr double kClosePixels = 8;
} // namespace

DrawTool::DrawTool(EditorView& view, ShapeType shapeType) : ViewTool(view), m_shapeType(shapeType) {}

size_t DrawTool::needed() const
{
    return m_shapeType == ShapeType::Line ? 2 : 3;
}

Vec2 DrawTool::placed(QPointF pixel, Qt::KeyboardModifiers modifiers) const
{
    const Vec2 point = m_view.camera().toWorld(pixel);
    const SnapSettings& snap = m_view.snapSettings();
    if (modifiers.testFlag(Qt::AltModifier)) {
        const float radius = float(snap.vertexPixels * m_view.camera().worldPerPixel());
        const auto near = const_cast<EditorView&>(m_view).picker().verticesNear(point, radius, {});
        if (!near.empty())
            return near.front();
    }
    if (modifiers.testFlag(Qt::ControlModifier) || modifiers.testFlag(Qt::AltModifier))
        return Snapping::toGrid(point, snap.gridStep);
    return point;
}

bool DrawTool::mousePress(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) {
        cancel();
        m_view.showStatus(QObject::tr("Drawing cancelled"));
        m_view.setTool(nullptr);
        return true;
    }
    if (event->button() != Qt::LeftButton)
        return false;
    if (m_points.size() >= needed()) {
        const QPointF first = m_view.camera().toPixel(m_points.front());
        if (std::hypot(first.x() - event->position().x(), first.y() - event->position().y()) <= kClosePixels) {
            finish();
            return true;
        }
    }
    const Vec2 point = placed(event->position(), event->modifiers());
    if (std::isfinite(point.x) && std::isfinite(point.y))
        m_points.push_back(point);
    return true;
}

bool DrawTool::mouseMove(QMouseEvent* event)
{
    m_mousePixel = event->position();
    return true;
}

bool DrawTool::mouseRelease(QMouseEvent* event)
{
    return event->button() == Qt::LeftButton || event->button() == Qt::RightButton;
}

bool DrawTool::mouseDoubleClick(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return false;
    // The double click's first press already added its point.
    finish();
    return true;
}

bool DrawTool::keyPress(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        cancel();
        m_view.showStatus(QObject::tr("Drawing cancelled"));
        m_view.setTool(nullptr);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: finish(); return true;
    case Qt::Key_Backspace:
        if (!m_points.empty())
            m_points.pop_back();
        return true;
    default: return false;
    }
}

void DrawTool::cancel()
{
    m_points.clear();
}

void DrawTool::finish()
{
    // Points clicked twice in one place count once.
    std::vector<Vec2> points;
    for (const Vec2& p : m_points) {
        if (points.empty() || (p - points.back()).length() > 1e-6f)
            points.push_back(p);
    }
    if (points.size() < needed()) {
        m_view.showStatus(QObject::tr("A %1 needs at least %2 points").arg(MetaShape::typeWord(m_shapeType)).arg(needed()));
        return;
    }
    EditorDocument& doc = m_view.document();
    const std::vector<ItemId>& bodies = doc.selection().items(ItemKind::Body);
    const ItemId body = bodies.size() == 1 ? bodies.front() : 0;
    if (CreationEdits::addFixture(doc, body, m_shapeType, points, 0))
        m_view.showStatus(QObject::tr("Added a %1 fixture").arg(MetaShape::typeWord(m_shapeType)));
    else
        m_view.showStatus(QObject::tr("Could not make a %1 from these points").arg(MetaShape::typeWord(m_shapeType)));
    m_points.clear();
    m_view.setTool(nullptr);
}

QString DrawTool::statusText() const
{
    return QObject::tr("Drawing a %1: %2 points - click to add, Enter or a click on the first point to finish, "
                       "Backspace to take back, Esc to cancel (Ctrl: grid, Alt: vertices)")
        .arg(MetaShape::typeWord(m_shapeType))
        .arg(m_points.size());
}

void DrawTool::paintOverlay(QPainter& painter)
{
    if (m_points.empty())
        return;
    painter.setPen(QPen(QColor(255, 220, 120), 1.5));
    QPolygonF line;
    for (const Vec2& p : m_points)
        line << m_view.camera().toPixel(p);
    line << m_mousePixel;
    painter.drawPolyline(line);
    if (m_shapeType != ShapeType::Line && m_points.size() >= 2) {
        painter.setPen(QPen(QColor(255, 220, 120, 120), 1, Qt::DashLine));
        painter.drawLine(m_mousePixel, line.front());
    }
    painter.setBrush(QColor(255, 220, 120));
    for (const Vec2& p : m_points)
        painter.drawEllipse(m_view.camera().toPixel(p), 3, 3);
}
