#include "views/transformtool.h"

#include "document/editordocument.h"
#include "editing/selection.h"
#include "model/metaworld.h"
#include "views/editorview.h"
#include "views/snapping.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace
{
using Op = TransformApi::Operation;

constexpr float kDegrees = float(180.0 / M_PI);

QString number(float value)
{
    return QString::number(double(value), 'g', 6);
}

// The fixtures the selection of a mode moves (they do not attract snapping).
std::vector<ItemId> movingFixtures(EditorDocument& doc, EditMode mode)
{
    std::vector<ItemId> ids;
    const Selection& selection = doc.selection();
    if (mode == EditMode::Bodies) {
        for (ItemId id : selection.items(ItemKind::Body)) {
            if (const MetaBody* body = doc.world().findBody(id))
                for (const auto& f : body->fixtures())
                    ids.push_back(f->id());
        }
    } else if (mode == EditMode::Fixtures) {
        ids = selection.items(ItemKind::Fixture);
    } else if (mode == EditMode::Vertices) {
        for (const Selection::VertexRef& v : selection.vertices())
            ids.push_back(v.fixture);
    }
    return ids;
}
} // namespace

TransformTool::TransformTool(EditorView& view, Op operation, QPointF startPixel, bool dragging)
    : ViewTool(view), m_operation(operation), m_dragging(dragging), m_startPixel(startPixel),
      m_currentPixel(startPixel)
{
    restartSession();
    if (m_session)
        m_reference = m_session->pivot();
}

TransformTool::~TransformTool()
{
    if (m_session)
        m_session->cancel();
}

void TransformTool::restartSession()
{
    if (m_session)
        m_session->cancel();
    m_session = std::make_unique<TransformSession>(m_view.document(), m_view.editMode(), m_operation, m_pivotMode);
}

QString TransformTool::refusal() const
{
    return QObject::tr("Nothing selected to %1 in this edit mode")
        .arg(m_operation == Op::Translate ? QObject::tr("move")
                                          : m_operation == Op::Rotate ? QObject::tr("rotate") : QObject::tr("scale"));
}

QString TransformTool::stateName() const
{
    switch (m_operation) {
    case Op::Translate: return QStringLiteral("editor_translate");
    case Op::Rotate: return QStringLiteral("editor_rotate");
    case Op::Scale: break;
    }
    return QStringLiteral("editor_scale");
}

TransformTool::Value TransformTool::typedValue() const
{
    const QStringList parts = m_typed.split(QLatin1Char(','));
    bool ok1 = true, ok2 = true;
    const float first = parts[0].isEmpty() || parts[0] == QLatin1String("-") ? 0 : parts[0].toFloat(&ok1);
    const bool two = parts.size() > 1;
    const float second = two ? (parts[1].isEmpty() || parts[1] == QLatin1String("-") ? 0 : parts[1].toFloat(&ok2)) : 0;
    Value v;
    v.valid = ok1 && ok2 && parts.size() <= 2;
    switch (m_operation) {
    case Op::Translate:
        if (two)
            v = {first, second, v.valid};
        else
            v = {m_axis == 'y' ? 0 : first, m_axis == 'y' ? first : 0, v.valid};
        break;
    case Op::Rotate: v = {first / kDegrees, 0, v.valid && !two}; break;
    case Op::Scale:
        if (two)
            v = {first, second, v.valid};
        else
            v = {m_axis == 'y' ? 1 : first, m_axis == 'x' ? 1 : first, v.valid};
        break;
    }
    v.valid = v.valid && std::isfinite(v.a) && std::isfinite(v.b);
    return v;
}

TransformTool::Value TransformTool::mouseValue() const
{
    const Vec2 start = m_view.camera().toWorld(m_startPixel);
    const Vec2 now = m_view.camera().toWorld(m_currentPixel);
    const SnapSettings& snap = m_view.snapSettings();
    const bool deltaSnap = m_modifiers.testFlag(Qt::ControlModifier);
    const bool absoluteSnap = m_modifiers.testFlag(Qt::AltModifier);
    const Vec2 pivot = m_session->pivot();
    Value v;
    switch (m_operation) {
    case Op::Translate: {
        Vec2 d = now - start;
        if (m_axis == 'x')
            d.y = 0;
        if (m_axis == 'y')
            d.x = 0;
        if (deltaSnap)
            d = Snapping::toGrid(d, snap.gridStep);
        if (absoluteSnap) {
            // The selection centre lands on a vertex of another item, or on the grid.
            const Vec2 target = m_reference + d;
            const float radius = float(snap.vertexPixels * m_view.camera().worldPerPixel());
            const auto near = m_view.picker().verticesNear(target, radius, movingFixtures(m_view.document(), m_view.editMode()));
            const Vec2 snapped = near.empty() ? Snapping::toGrid(target, snap.gridStep) : near.front();
            d = snapped - m_reference;
        }
        v = {d.x, d.y};
        break;
    }
    case Op::Rotate: {
        float angle = std::atan2(now.y - pivot.y, now.x - pivot.x) - std::atan2(start.y - pivot.y, start.x - pivot.x);
        angle = std::remainder(angle, float(2 * M_PI));
        if (deltaSnap)
            angle = Snapping::toStep(angle * kDegrees, snap.angleStepDegrees) / kDegrees;
        v = {angle, 0};
        break;
    }
    case Op::Scale: {
        const float from = (start - pivot).length();
        float factor = from > 0 ? (now - pivot).length() / from : 1;
        if (deltaSnap)
            factor = Snapping::toStep(factor, snap.scaleStep);
        v = {m_axis == 'y' ? 1 : factor, m_axis == 'x' ? 1 : factor};
        break;
    }
    }
    v.valid = std::isfinite(v.a) && std::isfinite(v.b);
    return v;
}

TransformTool::Value TransformTool::currentValue() const
{
    return m_typed.isEmpty() ? mouseValue() : typedValue();
}

void TransformTool::updatePreview()
{
    const Value v = currentValue();
    if (v.valid)
        m_session->preview(v.a, v.b);
    else
        m_session->preview(m_operation == Op::Scale ? 1 : 0, m_operation == Op::Scale ? 1 : 0);
    m_view.previewChanged();
}

void TransformTool::apply()
{
    const Value v = currentValue();
    const bool zeroScale = m_operation == Op::Scale && (v.a == 0 || v.b == 0);
    if (!v.valid || zeroScale) {
        m_session->cancel();
        m_view.showStatus(zeroScale ? QObject::tr("A scale by 0 was refused: nothing changed")
                                    : QObject::tr("'%1' is not a usable value: nothing changed").arg(m_typed));
    } else if (!m_session->finish(v.a, v.b)) {
        m_view.showStatus(QObject::tr("Nothing changed"));
    } else {
        m_view.showStatus(m_session->macroText(v.a, v.b));
    }
    m_view.sceneChanged();
    m_view.setTool(nullptr);
}

void TransformTool::cancel()
{
    if (m_session)
        m_session->cancel();
    m_view.previewChanged();
}

bool TransformTool::mousePress(QMouseEvent* event)
{
    m_modifiers = event->modifiers();
    if (event->button() == Qt::RightButton) {
        cancel();
        m_view.showStatus(QObject::tr("Cancelled"));
        m_view.setTool(nullptr);
        return true;
    }
    if (event->button() == Qt::LeftButton && !m_dragging) {
        m_currentPixel = event->position();
        apply();
        return true;
    }
    return event->button() == Qt::LeftButton;
}

bool TransformTool::mouseMove(QMouseEvent* event)
{
    m_modifiers = event->modifiers();
    m_currentPixel = event->position();
    updatePreview();
    return true;
}

bool TransformTool::mouseRelease(QMouseEvent* event)
{
    m_modifiers = event->modifiers();
    if (event->button() == Qt::LeftButton && m_dragging) {
        m_currentPixel = event->position();
        apply();
        return true;
    }
    // The right button's release after a cancel belongs to the cancel.
    return event->button() == Qt::RightButton;
}

bool TransformTool::keyPress(QKeyEvent* event)
{
    m_modifiers = event->modifiers();
    const QString text = event->text();
    switch (event->key()) {
    case Qt::Key_Escape:
        cancel();
        m_view.showStatus(QObject::tr("Cancelled"));
        m_view.setTool(nullptr);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: apply(); return true;
    case Qt::Key_Backspace: m_typed.chop(1); break;
    case Qt::Key_X: m_axis = m_axis == 'x' ? 0 : 'x'; break;
    case Qt::Key_Y: m_axis = m_axis == 'y' ? 0 : 'y'; break;
    case Qt::Key_C:
        if (m_operation == Op::Translate)
            return true;
        m_pivotMode = m_pivotMode == 1 ? 2 : 1;
        restartSession();
        break;
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_Shift: break;
    default:
        if (text.size() == 1 && (text[0].isDigit() || text == QLatin1String(".") || text == QLatin1String("-") ||
                                 text == QLatin1String(","))) {
            m_typed += text;
            break;
        }
        return false;
    }
    updatePreview();
    return true;
}

QString TransformTool::statusText() const
{
    if (!m_session)
        return QString();
    const Value v = currentValue();
    QString what;
    switch (m_operation) {
    case Op::Translate: what = QObject::tr("Move by %1, %2").arg(number(v.a), number(v.b)); break;
    case Op::Rotate:
        what = QObject::tr("Rotate by %1° about the %2")
                   .arg(number(v.a * kDegrees), m_pivotMode == 2 ? QObject::tr("cursor") : QObject::tr("selection centre"));
        break;
    case Op::Scale:
        what = QObject::tr("Scale by %1, %2 about the %3")
                   .arg(number(v.a), number(v.b), m_pivotMode == 2 ? QObject::tr("cursor") : QObject::tr("selection centre"));
        break;
    }
    if (!m_typed.isEmpty())
        what += QObject::tr(" [typed: %1]").arg(m_typed);
    if (m_axis)
        what += QObject::tr(" [%1 axis only]").arg(QChar::fromLatin1(char(m_axis - 32)));
    const SnapSettings& snap = m_view.snapSettings();
    QString hint;
    if (m_operation == Op::Translate)
        hint = QObject::tr("Ctrl: steps of %1 - Alt: onto vertices and grid points").arg(number(snap.gridStep));
    else if (m_operation == Op::Rotate)
        hint = QObject::tr("Ctrl: steps of %1° - C: pivot").arg(number(snap.angleStepDegrees));
    else
        hint = QObject::tr("Ctrl: steps of %1 - C: pivot").arg(number(snap.scaleStep));
    if (m_modifiers.testFlag(Qt::ControlModifier))
        hint += QObject::tr(" (snapping by steps)");
    if (m_modifiers.testFlag(Qt::AltModifier) && m_operation == Op::Translate)
        hint += QObject::tr(" (snapping onto points)");
    return QObject::tr("%1 - %2 - X/Y: axis - type a value - Enter or click: apply - Esc: cancel").arg(what, hint);
}

void TransformTool::paintOverlay(QPainter& painter)
{
    if (m_operation == Op::Translate)
        return;
    const QPointF pivot = m_view.camera().toPixel(m_session->pivot());
    painter.setPen(QPen(QColor(255, 200, 80), 1, Qt::DashLine));
    painter.drawLine(pivot, m_currentPixel);
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(pivot, 4, 4);
}
