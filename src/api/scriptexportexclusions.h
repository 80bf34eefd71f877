#pragma once

#include "editing/scriptcommand.h"

#include <angelscript.h>
#include <angelscript/scriptarray.h>

#include <string>

/// "setExportPropertyExcluded('%1', %2);" with the new state, undone by the
/// same call with the old one.
class SetExportPropertyExcludedCommand : public ScriptCommand
{
public:
    /// The member path `path` changed from excluded `wasExcluded` to its opposite.
    SetExportPropertyExcludedCommand(EditHost* document, const QString& path, bool wasExcluded);
};

// The scene's list of raw-info members left out of every export
// ("excludedJsonExportProperties"), as scripts and the exported property
// table change it. A member is named by its path, like
// "/world/body/fixture/name".
namespace ExportExclusionApi
{
/// Leaves the member out of exports (true) or writes it again (false); an
/// edit command when the state changes. Paths must begin with "/world"
/// ("Ignoring invalid export property path: '%1'" otherwise).
void setExportPropertyExcluded(const std::string& path, bool excluded);
/// True when the member is left out.
bool isExportPropertyExcluded(const std::string& path);
/// The excluded member paths, in the scene's order.
AngelScript::CScriptArray* getExcludedExportProperties();
} // namespace ExportExclusionApi
