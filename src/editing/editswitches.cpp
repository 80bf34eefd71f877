#include "editing/editswitches.h"

namespace EditSwitches
{
bool s_runCommandScripts = true;
bool s_recordUndoCommands = true;
int s_macroDepth = 0;
bool s_quiet = false;
} // namespace EditSwitches
