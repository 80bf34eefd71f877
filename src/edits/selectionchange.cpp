#include "edits/selectionchange.h"

#include "api/scriptapisupport.h"
#include "api/scriptfixture.h"
#include "editing/scriptcommand.h"
#include "editing/selection.h"
#include "engine/scriptdocument.h"
#include "model/metaworld.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdint>
#include <unordered_set>

namespace
{
using Ref = std::pair<ItemId, int>;

std::uint64_t keyOf(const Ref& ref)
{
    return (std::uint64_t(ref.first) << 32) | std::uint32_t(ref.second);
}

bool isSelected(ScriptDocument& document, EditMode mode, const Ref& ref)
{
    const Selection& selection = document.selection();
    return mode == EditMode::Vertices ? selection.containsVertex(ref.first, ref.second)
                                      : selection.contains(editModeItemKind(mode), ref.first);
}

void setState(ScriptDocument& document, EditMode mode, const Ref& ref, bool selected)
{
    MetaWorld& world = document.world();
    if (mode == EditMode::Vertices) {
        MetaFixture* fixture = world.findFixture(ref.first);
        if (!fixture || ref.second < 0 || size_t(ref.second) >= fixture->vertices().size())
            return;
        ScriptVertex handle = ScriptApi::vertexHandle(fixture, ref.second);
        if (selected)
            VertexApi::select(&handle);
        else
            VertexApi::deselect(&handle);
        return;
    }
    if (MetaItem* item = world.findItem(editModeItemKind(mode), ref.first))
        ScriptApi::setSelected(*item, selected);
}
} // namespace

bool changeSelection(ScriptDocument& document, EditMode mode, const std::vector<Ref>& items, SelectionChangeMode how)
{
    std::vector<std::pair<Ref, bool>> changes;
    // Sets beside the lists, so that selecting all vertices of a huge
    // outline does not compare every pair.
    std::unordered_set<std::uint64_t> changed;
    if (how == SelectionChangeMode::Replace) {
        std::unordered_set<std::uint64_t> listed;
        listed.reserve(items.size());
        for (const Ref& ref : items)
            listed.insert(keyOf(ref));
        std::vector<Ref> current;
        if (mode == EditMode::Vertices) {
            for (const Selection::VertexRef& v : document.selection().vertices())
                current.emplace_back(v.fixture, v.index);
        } else {
            for (ItemId id : document.selection().items(editModeItemKind(mode)))
                current.emplace_back(id, -1);
        }
        for (const Ref& ref : current) {
            if (!listed.count(keyOf(ref))) {
                changes.push_back({ref, false});
                changed.insert(keyOf(ref));
            }
        }
    }
    for (const Ref& ref : items) {
        const bool selected = isSelected(document, mode, ref);
        bool wanted = selected;
        switch (how) {
        case SelectionChangeMode::Replace:
        case SelectionChangeMode::Add: wanted = true; break;
        case SelectionChangeMode::Remove: wanted = false; break;
        case SelectionChangeMode::Toggle: wanted = !selected; break;
        }
        if (wanted != selected && changed.insert(keyOf(ref)).second)
            changes.push_back({ref, wanted});
    }
    if (changes.empty())
        return false;

    const bool anySelected = std::any_of(changes.begin(), changes.end(), [](const auto& c) { return c.second; });
    const QString word = mode == EditMode::Vertices ? QStringLiteral("vertex") : itemKindWord(editModeItemKind(mode));
    const QString text = QCoreApplication::translate("SelectionEdits", anySelected ? "%1 selection" : "%1 deselection")
                             .arg(QCoreApplication::translate("SelectionEdits", word.toLatin1().constData()));
    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), text);
    // Deselections first, so the selection order follows the picks.
    for (const auto& [ref, selected] : changes) {
        if (!selected)
            setState(document, mode, ref, false);
    }
    for (const auto& [ref, selected] : changes) {
        if (selected)
            setState(document, mode, ref, true);
    }
    return true;
}
