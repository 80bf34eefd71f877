#include "views/selecttool.h"

#include "api/scriptpath.h"
#include "document/editordocument.h"
#include "editing/scriptcommand.h"
#include "editing/selection.h"
#include "edits/selectionchange.h"
#include "edits/selectionedits.h"
#include "engine/scriptdocument.h"
#include "model/metaworld.h"
#include "sampling/samplerframe.h"
#include "views/editorview.h"
#include "views/hittest.h"

#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace
{
// How far the mouse moves before a press becomes a drag.
constexpr double kDragPixels = 4;

std::pair<ItemId, int> refOf(const PickHit& hit)
{
    return {hit.id, hit.vertex};
}

// Calls visit(sampler id, path index, path, sampler frame) for each path of
// the selected samplers until it returns true; true when one did.
template <class Visit>
bool visitSelectedPaths(EditorDocument& doc, Visit visit)
{
    for (ItemId id : doc.selection().items(ItemKind::Sampler)) {
        const MetaSampler* sampler = doc.world().findSampler(id);
        if (!sampler)
            continue;
        const SamplerFrame frame = SamplerFrame::of(*sampler);
        for (size_t p = 0; p < sampler->paths.size(); ++p) {
            if (visit(id, int(p), sampler->paths[p], frame))
                return true;
        }
    }
    return false;
}

SelectionChangeMode changeMode(Qt::KeyboardModifiers modifiers, bool box)
{
    if (modifiers.testFlag(Qt::ShiftModifier))
        return SelectionChangeMode::Add;
    if (modifiers.testFlag(Qt::ControlModifier))
        return box ? SelectionChangeMode::Remove : SelectionChangeMode::Toggle;
    return SelectionChangeMode::Replace;
}
} // namespace

SelectTool::SelectTool(EditorView& view) : ViewTool(view) {}

QString SelectTool::stateName() const
{
    return m_boxing ? QStringLiteral("editor_boxselect") : QStringLiteral("editor_idle");
}

void SelectTool::cancel()
{
    m_pressed = m_boxing = false;
    m_dragged.reset();
}

QString SelectTool::describe(const MetaWorld& world, const PickHit& hit)
{
    const MetaItem* item = world.findItem(hit.kind, hit.id);
    const QString name = item ? item->name() : QString::number(hit.id);
    if (hit.vertex >= 0)
        return QObject::tr("vertex %1 of %2 (fixture)").arg(hit.vertex).arg(name);
    return QStringLiteral("%1 (%2)").arg(name, itemKindWord(hit.kind));
}

std::optional<SelectTool::ControlPoint> SelectTool::controlPointAt(QPointF pixel)
{
    const Vec2 point = m_view.camera().toWorld(pixel);
    const float reach = m_view.pickTolerance() * 1.5f;
    std::optional<ControlPoint> found;
    visitSelectedPaths(m_view.document(), [&](ItemId id, int p, const MetaPath& path, const SamplerFrame& frame) {
        for (size_t i = 0; i < path.controlPoints.size(); ++i) {
            if ((frame.toWorld(path.controlPoints[i]) - point).length() <= reach) {
                found = ControlPoint{id, p, int(i)};
                return true;
            }
        }
        return false;
    });
    return found;
}

bool SelectTool::editPathAt(QMouseEvent* event)
{
    EditorDocument& doc = m_view.document();
    const Vec2 point = m_view.camera().toWorld(event->position());
    ScriptDocumentScope scope(&doc);
    if (const auto cp = controlPointAt(event->position()); cp && event->modifiers().testFlag(Qt::ShiftModifier)) {
        UndoMacroScope macro(doc.undoStack(), QObject::tr("delete control point"));
        ScriptPath path = PathApi::getPath(int(cp->sampler), cp->path);
        PathApi::deleteControlPoint(&path, cp->index);
        return true;
    }
    // A double click on a path puts a point there.
    return visitSelectedPaths(doc, [&](ItemId id, int p, const MetaPath& path, const SamplerFrame& frame) {
        const size_t n = path.controlPoints.size();
        const size_t edges = n < 2 ? 0 : path.type == ShapeType::Line ? n - 1 : n;
        for (size_t i = 0; i < edges; ++i) {
            const auto foot = HitTest::pointOnEdge(point, frame.toWorld(path.controlPoints[i]),
                                                   frame.toWorld(path.controlPoints[(i + 1) % n]), m_view.pickTolerance());
            if (!foot)
                continue;
            UndoMacroScope macro(doc.undoStack(), QObject::tr("insert control point"));
            ScriptPath handle = PathApi::getPath(int(id), p);
            const Vec2 local = frame.toLocal(*foot);
            PathApi::addControlPoint(&handle, int(i) + 1, local.x, local.y);
            return true;
        }
        return false;
    });
}

bool SelectTool::mousePress(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return false;
    if (m_view.editMode() == EditMode::Samplers && event->modifiers() == Qt::NoModifier) {
        m_dragged = controlPointAt(event->position());
        if (m_dragged) {
            m_pressed = true;
            m_pressPixel = m_currentPixel = event->position();
            return true;
        }
    }
    m_pressed = true;
    m_boxing = false;
    m_pressPixel = m_currentPixel = event->position();
    m_pressModifiers = event->modifiers();
    // A press on a selected item may become a move of the selection.
    EditorDocument& doc = m_view.document();
    const auto hits = m_view.picker().pick(m_view.editMode(), m_view.camera().toWorld(event->position()),
                                           m_view.pickTolerance(), doc.selection());
    m_onSelection = false;
    for (const PickHit& hit : hits) {
        const bool selected = hit.vertex >= 0 ? doc.selection().containsVertex(hit.id, hit.vertex)
                                              : doc.selection().contains(hit.kind, hit.id);
        m_onSelection = m_onSelection || selected;
    }
    return true;
}

bool SelectTool::mouseMove(QMouseEvent* event)
{
    if (!m_pressed || !(event->buttons() & Qt::LeftButton))
        return false;
    m_currentPixel = event->position();
    if (m_dragged)
        return true;
    const QPointF moved = m_currentPixel - m_pressPixel;
    if (!m_boxing && std::hypot(moved.x(), moved.y()) < kDragPixels)
        return false;
    if (m_onSelection && m_pressModifiers == Qt::NoModifier) {
        m_pressed = false;
        m_view.startTransform(TransformApi::Operation::Translate, m_pressPixel, true);
        return true;
    }
    m_boxing = true;
    return true;
}

bool SelectTool::mouseRelease(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_pressed)
        return false;
    m_pressed = false;
    m_currentPixel = event->position();
    if (m_dragged) {
        // The point moves by the distance dragged (it does not jump to the
        // mouse, which pressed it within a few pixels), as one undo step.
        const ControlPoint cp = *m_dragged;
        m_dragged.reset();
        const QPointF moved = m_currentPixel - m_pressPixel;
        EditorDocument& doc = m_view.document();
        const MetaSampler* sampler = doc.world().findSampler(cp.sampler);
        if (!sampler || std::hypot(moved.x(), moved.y()) < 1 || cp.path >= int(sampler->paths.size())
            || cp.index >= int(sampler->paths[size_t(cp.path)].controlPoints.size()))
            return true;
        const SamplerFrame frame = SamplerFrame::of(*sampler);
        const Vec2 start = frame.toWorld(sampler->paths[size_t(cp.path)].controlPoints[size_t(cp.index)]);
        const Vec2 delta = m_view.camera().toWorld(m_currentPixel) - m_view.camera().toWorld(m_pressPixel);
        const Vec2 local = frame.toLocal(start + delta);
        ScriptDocumentScope scope(&doc);
        UndoMacroScope macro(doc.undoStack(), QObject::tr("move control point"));
        ScriptPath path = PathApi::getPath(int(cp.sampler), cp.path);
        PathApi::setControlPoint(&path, cp.index, local.x, local.y);
        return true;
    }
    if (m_boxing) {
        m_boxing = false;
        boxSelect(event);
    } else {
        click(event);
    }
    return true;
}

bool SelectTool::mouseDoubleClick(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_view.editMode() == EditMode::Samplers)
        return editPathAt(event);
    if (event->button() != Qt::LeftButton || m_view.editMode() != EditMode::Vertices)
        return false;
    // Insert a vertex on the nearest edge of a selected fixture.
    EditorDocument& doc = m_view.document();
    const Vec2 point = m_view.camera().toWorld(event->position());
    const float tolerance = m_view.pickTolerance();
    for (ItemId id : doc.selection().items(ItemKind::Fixture)) {
        const MetaFixture* fixture = doc.world().findFixture(id);
        if (!fixture || fixture->vertices().size() < 2)
            continue;
        const size_t n = fixture->vertices().size();
        for (size_t i = 0; i < n; ++i) {
            const auto foot = HitTest::pointOnEdge(point, m_view.picker().vertexPosition(id, int(i)),
                                                   m_view.picker().vertexPosition(id, int((i + 1) % n)), tolerance);
            if (!foot)
                continue;
            // The new vertex goes between i and i + 1, in body coordinates.
            SelectionEdits::insertVertex(doc, id, int(i) + 1, worldToBody(fixture->body(), *foot));
            m_view.showStatus(QObject::tr("Inserted a vertex into %1").arg(fixture->name()));
            return true;
        }
    }
    return false;
}

void SelectTool::click(QMouseEvent* event)
{
    EditorDocument& doc = m_view.document();
    const EditMode mode = m_view.editMode();
    const auto hits = m_view.picker().pick(mode, m_view.camera().toWorld(event->position()), m_view.pickTolerance(),
                                           doc.selection());
    const SelectionChangeMode how = changeMode(event->modifiers(), false);
    if (hits.empty()) {
        if (how == SelectionChangeMode::Replace)
            changeSelection(doc, mode, {}, how);
        return;
    }
    std::optional<PickHit> chosen = hits.front();
    if (hits.size() > 1)
        chosen = choose(hits, event->globalPosition().toPoint());
    if (chosen)
        changeSelection(doc, mode, {refOf(*chosen)}, how);
}

std::optional<PickHit> SelectTool::choose(const std::vector<PickHit>& hits, const QPoint& globalPos)
{
    QMenu menu(&m_view);
    menu.setObjectName(QStringLiteral("PickMenu"));
    menu.setAccessibleName(QObject::tr("Items under the pointer"));
    menu.setTitle(QObject::tr("Items under the pointer"));
    const MetaWorld& world = m_view.document().world();
    for (size_t i = 0; i < hits.size(); ++i) {
        QAction* action = menu.addAction(describe(world, hits[i]));
        action->setData(int(i));
    }
    QAction* picked = menu.exec(globalPos);
    if (!picked)
        return std::nullopt;
    return hits[size_t(picked->data().toInt())];
}

void SelectTool::boxSelect(QMouseEvent* event)
{
    const Vec2 a = m_view.camera().toWorld(m_pressPixel);
    const Vec2 b = m_view.camera().toWorld(m_currentPixel);
    const Vec2 lo{std::min(a.x, b.x), std::min(a.y, b.y)}, hi{std::max(a.x, b.x), std::max(a.y, b.y)};
    if (!(hi.x > lo.x) || !(hi.y > lo.y)) {
        m_view.showStatus(QObject::tr("The box is empty: nothing selected"));
        return;
    }
    EditorDocument& doc = m_view.document();
    const auto hits = m_view.picker().pickInBox(m_view.editMode(), lo, hi, doc.selection());
    std::vector<std::pair<ItemId, int>> refs;
    for (const PickHit& hit : hits)
        refs.push_back(refOf(hit));
    changeSelection(doc, m_view.editMode(), refs, changeMode(event->modifiers(), true));
}

void SelectTool::paintOverlay(QPainter& painter)
{
    if (m_dragged && m_pressed) {
        painter.setPen(QPen(QColor(255, 150, 60), 1, Qt::DashLine));
        painter.drawLine(m_pressPixel, m_currentPixel);
        painter.setBrush(QColor(255, 150, 60));
        painter.drawRect(QRectF(m_currentPixel - QPointF(3, 3), QSizeF(6, 6)));
        return;
    }
    if (!m_boxing)
        return;
    QColor fill(120, 170, 255, 40);
    painter.setPen(QPen(QColor(150, 190, 255), 1, Qt::DashLine));
    painter.setBrush(fill);
    painter.drawRect(QRectF(m_pressPixel, m_currentPixel).normalized());
}
