#include "editing/modifiedstate.h"

#include "editing/scriptcommand.h"

#include <QCoreApplication>
#include <QUndoStack>

#include <algorithm>

bool commandChangesScene(const QUndoCommand* command)
{
    if (!command)
        return false;
    if (command->childCount() > 0) {
        for (int i = 0; i < command->childCount(); ++i) {
            if (commandChangesScene(command->child(i)))
                return true;
        }
        return false;
    }
    if (command->text() == QCoreApplication::translate("DocumentScripting", "script execution"))
        return true;
    const auto* scriptCommand = dynamic_cast<const ScriptCommand*>(command);
    return scriptCommand && scriptCommand->modifiesScene();
}

bool isModified(const QUndoStack& stack)
{
    if (stack.isClean())
        return false;
    const int clean = stack.cleanIndex();
    if (clean < 0)
        return true;
    // The commands lying between the saved state and the current one: done
    // since the save when the index is above it, undone past it when below.
    const int from = std::min(clean, stack.index());
    const int to = std::max(clean, stack.index());
    for (int i = from; i < to; ++i) {
        if (commandChangesScene(stack.command(i)))
            return true;
    }
    return false;
}
