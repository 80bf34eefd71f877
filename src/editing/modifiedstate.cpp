#include "editing/modifiedstate.h"

#include "editing/scriptcommand.h"

#include <QCoreApplication>
#include <QUndoStack>

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
    for (int i = 0; i < stack.index(); ++i) {
        if (commandChangesScene(stack.command(i)))
            return true;
    }
    return false;
}
