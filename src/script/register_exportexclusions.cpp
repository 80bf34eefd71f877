#include "script/scriptexportexclusions.h"
#include "script/scriptregistrar.h"
#include "script/scriptregistration.h"

using namespace AngelScript;
using namespace ExportExclusionApi;

void registerExportExclusionFunctions(ScriptRegistrar& reg)
{
    const asDWORD cc = asCALL_CDECL;
    reg.global("void setExportPropertyExcluded(const string &in, bool)", asFUNCTION(setExportPropertyExcluded), cc);
    reg.global("bool isExportPropertyExcluded(const string &in)", asFUNCTION(isExportPropertyExcluded), cc);
    reg.global("string[]@ getExcludedExportProperties()", asFUNCTION(getExcludedExportProperties), cc);
}
