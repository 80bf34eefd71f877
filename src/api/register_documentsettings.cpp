#include "api/scriptdocumentsettings.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

using namespace AngelScript;
using namespace DocumentSettingsApi;

void registerDocumentSettingsFunctions(ScriptRegistrar& reg)
{
    const asDWORD cc = asCALL_CDECL;
    reg.global("string getCustomLabelsScriptFile()", asFUNCTION(getCustomLabelsScriptFile), cc);
    reg.global("void setCustomLabelsScriptFile(const string &in)", asFUNCTION(setCustomLabelsScriptFile), cc);
    reg.global("string getPropertyExportFilterScriptFile()", asFUNCTION(getPropertyExportFilterScriptFile), cc);
    reg.global("void setPropertyExportFilterScriptFile(const string &in)",
               asFUNCTION(setPropertyExportFilterScriptFile), cc);
    reg.global("string getPropertyDisplayFilterScriptFile()", asFUNCTION(getPropertyDisplayFilterScriptFile), cc);
    reg.global("void setPropertyDisplayFilterScriptFile(const string &in)",
               asFUNCTION(setPropertyDisplayFilterScriptFile), cc);
    reg.global("string getAfterExportSystemCommand()", asFUNCTION(getAfterExportSystemCommand), cc);
    reg.global("string getAfterExportSystemDirectory()", asFUNCTION(getAfterExportSystemDirectory), cc);
    reg.global("bool isAfterExportSystemHookEnabled()", asFUNCTION(isAfterExportSystemHookEnabled), cc);
    reg.global("void setAfterExportSystemHook(const string &in, const string &in, bool)",
               asFUNCTION(setAfterExportSystemHook), cc);
}
