#include "docscripts/documentscriptshost.h"

#include "docscripts/documentscripts.h"

void DocumentScriptsHost::documentScriptSettingChanged(DocumentScript script)
{
    documentScripts().settingChanged(script);
}

void DocumentScriptsHost::afterExportCommandChanged()
{
    documentScripts().afterExportCommandChanged();
}
