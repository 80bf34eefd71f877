#include "api/scriptexportexclusions.h"

#include "api/scriptapisupport.h"
#include "base/log.h"
#include "editing/scripttext.h"
#include "model/metaworld.h"

#include <algorithm>

using namespace AngelScript;

namespace
{
QString excludedText(const QString& path, bool excluded)
{
    return QStringLiteral("setExportPropertyExcluded('%1', %2);")
        .arg(escapeForScriptString(path), excluded ? QStringLiteral("true") : QStringLiteral("false"));
}
} // namespace

SetExportPropertyExcludedCommand::SetExportPropertyExcludedCommand(EditHost* document, const QString& path,
                                                                   bool wasExcluded)
    : ScriptCommand(document, excludedText(path, !wasExcluded), excludedText(path, wasExcluded))
{
}

namespace ExportExclusionApi
{
void setExportPropertyExcluded(const std::string& pathText, bool excluded)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return;
    const QString path = QString::fromStdString(pathText);
    if (!path.startsWith(QLatin1String("/world")) || path.contains(QLatin1Char('\n'))) {
        plaxLog(LOG_WARNING, QStringLiteral("Ignoring invalid export property path: '%1'").arg(path));
        return;
    }
    QStringList& list = world->excludedJsonExportProperties;
    const bool was = list.contains(path);
    if (was == excluded)
        return;
    if (excluded) {
        // Kept sorted, so that undoing a removal puts the path back where it was.
        auto at = std::lower_bound(list.begin(), list.end(), path);
        list.insert(at, path);
    } else {
        list.removeAll(path);
    }
    ScriptApi::record<SetExportPropertyExcludedCommand>(path, was);
}

bool isExportPropertyExcluded(const std::string& path)
{
    MetaWorld* world = ScriptApi::world();
    return world && world->excludedJsonExportProperties.contains(QString::fromStdString(path));
}

CScriptArray* getExcludedExportProperties()
{
    CScriptArray* array = ScriptApi::newArray("array<string>");
    if (MetaWorld* world = ScriptApi::world(); world && array) {
        for (const QString& path : world->excludedJsonExportProperties) {
            std::string text = path.toStdString();
            ScriptApi::appendToArray(*array, &text);
        }
    }
    return array;
}
} // namespace ExportExclusionApi
