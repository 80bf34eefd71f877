#include "engine/scriptmessages.h"

#include "base/log.h"
#include "engine/scriptstate.h"
#include "engine/scriptuihooks.h"

#include <cstring>

using namespace AngelScript;

void scriptMessageCallback(const asSMessageInfo* message, void* /*param*/)
{
    if (!message || !message->message)
        return;
    if (std::strncmp(message->message, "Compiling void plaxscript", 25) == 0)
        return;
    int level = message->type == asMSGTYPE_ERROR ? LOG_ERROR : LOG_WARNING;
    int row = message->row + ScriptState::lineOffset();
    // A message without a position comes with row 0 and column 0.
    bool positionless = message->col == 0 && (row == -1 || message->row == 0);
    if (positionless)
        plaxLog(level, "%s", message->message);
    else
        plaxLog(level, "Line %d, col %d: %s", row, message->col, message->message);
    if (message->type == asMSGTYPE_ERROR && !positionless) {
        const ScriptUiHooks& hooks = ScriptUi::hooks();
        if (hooks.markErrorRow)
            hooks.markErrorRow(row);
    }
}
