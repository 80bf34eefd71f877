#include "api/scriptexportexclusions.h"
#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"

using namespace AngelScript;
using namespace ExportExclusionApi;

void registerExportExclusionFunctions(ScriptRegistrar& reg)
{
    const asDWORD cc = asCALL_CDECL;
    reg.global("void setExportPropertyExcluded(const string &in, bool)", asFUNCTION(setExportPropertyExcluded), cc);
    reg.global("bool isExportPropertyExcluded(const string &in)", asFUNCTION(isExportPropertyExcluded), cc);
    reg.global("string[]@ getExcludedExportProperties()", asFUNCTION(getExcludedExportProperties), cc);
}
