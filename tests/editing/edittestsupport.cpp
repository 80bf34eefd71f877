#include "edittestsupport.h"

bool RecordingHost::runCommandScript(const QString& script, const QString& progressText)
{
    scriptsRun << script;
    progressTexts << progressText;
    return runSucceeds;
}
