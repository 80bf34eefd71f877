#include "edits/transformsession.h"

#include "api/scripthookdata.h"
#include "base/log.h"
#include "editing/editorstate.h"
#include "editing/editswitches.h"
#include "editing/scriptcommand.h"
#include "editing/selection.h"
#include "edits/itemsnapshot.h"
#include "edits/selectionedits.h"
#include "engine/scriptdocument.h"
#include "hooks/hookevents.h"
#include "model/metaworld.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("TransformSession", text);
}

const char* manipulationType(TransformApi::Operation operation)
{
    switch (operation) {
    case TransformApi::Operation::Translate: return "TRANSLATE";
    case TransformApi::Operation::Rotate: return "ROTATE";
    case TransformApi::Operation::Scale: break;
    }
    return "SCALE";
}
} // namespace

TransformSession::TransformSession(ScriptDocument& document, EditMode mode, TransformApi::Operation operation, int pivotMode)
    : m_document(document), m_mode(mode), m_operation(operation), m_pivotMode(pivotMode == 2 ? 2 : 1)
{
    m_snapshot = std::make_unique<ItemSnapshot>(document.world(), document.selection(), m_mode);
    ScriptDocumentScope scope(&m_document);
    const ScriptVec2 centre = TransformApi::selectionCenter(m_mode);
    m_pivot = m_pivotMode == 2 ? document.editorState().cursor : Vec2{centre.x, centre.y};
}

TransformSession::~TransformSession()
{
    if (!m_done)
        cancel();
}

int TransformSession::count() const
{
    return m_snapshot->count();
}

bool TransformSession::usable(float a, float b) const
{
    if (!std::isfinite(a) || !std::isfinite(b))
        return false;
    return m_operation != TransformApi::Operation::Scale || (a != 0 && b != 0);
}

void TransformSession::preview(float a, float b)
{
    if (m_done || count() == 0)
        return;
    m_snapshot->restore();
    m_changed = false;
    if (!usable(a, b))
        return;
    ScriptDocumentScope scope(&m_document);
    SwitchScope recording(EditSwitches::s_recordUndoCommands, false);
    TransformApi::transformSelection(m_mode, m_operation, m_pivotMode, a, b);
    m_changed = true;
}

void TransformSession::cancel()
{
    if (m_done)
        return;
    m_snapshot->restore();
    m_done = true;
}

QString TransformSession::macroText(float a, float b) const
{
    const qsizetype n = count();
    const QString word = m_mode == EditMode::Vertices ? tr(n < 2 ? "vertex" : "vertices")
                                                      : SelectionEdits::kindWord(editModeItemKind(m_mode), n);
    switch (m_operation) {
    case TransformApi::Operation::Translate: return tr("translation of %1 %2").arg(n).arg(word);
    case TransformApi::Operation::Rotate: return tr("rotation of %1 %2").arg(n).arg(word);
    case TransformApi::Operation::Scale: break;
    }
    return (a * b < 0 ? tr("negative scale of %1 %2") : tr("scale of %1 %2")).arg(n).arg(word);
}

bool TransformSession::finish(float a, float b)
{
    if (m_done)
        return false;
    m_snapshot->restore();
    m_done = true;
    const bool identity = (m_operation == TransformApi::Operation::Translate && a == 0 && b == 0) ||
                          (m_operation == TransformApi::Operation::Rotate && a == 0) ||
                          (m_operation == TransformApi::Operation::Scale && a == 1 && b == 1);
    if (count() == 0 || identity || !usable(a, b))
        return false;
    {
        ScriptDocumentScope scope(&m_document);
        UndoMacroScope macro(m_document.undoStack(), macroText(a, b));
        TransformApi::transformSelection(m_mode, m_operation, m_pivotMode, a, b);
    }

    ScriptHookData data;
    data.manipulationType = QString::fromLatin1(manipulationType(m_operation));
    const Selection& selection = m_document.selection();
    switch (m_mode) {
    case EditMode::Bodies: data.bodies = selection.items(ItemKind::Body); break;
    case EditMode::Fixtures: data.fixtures = selection.items(ItemKind::Fixture); break;
    case EditMode::Vertices:
        for (const Selection::VertexRef& v : selection.vertices())
            data.vertices.emplace_back(v.fixture, v.index);
        break;
    case EditMode::Joints: data.joints = selection.items(ItemKind::Joint); break;
    case EditMode::Images: data.images = selection.items(ItemKind::Image); break;
    case EditMode::Samplers: data.samplers = selection.items(ItemKind::Sampler); break;
    default: data.objects = selection.items(ItemKind::Object); break;
    }
    HookEvents::raise(m_document, HookEvents::manipulationEvent(m_mode), data);
    return true;
}
