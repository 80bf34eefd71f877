#include "io/scenewriter.h"

#include "base/log.h"
#include "io/jsontext.h"
#include "io/worldrecord.h"
#include "model/metaworld.h"

#include <QCoreApplication>
#include <QSaveFile>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("SceneWriter", text);
}
} // namespace

bool saveSceneFile(const MetaWorld& world, const QString& path)
{
    rapidjson::Document document(rapidjson::kObjectType);
    JsonStyle style;
    style.humanReadableFloats = world.exportOptions.useHumanReadableFloats;
    const JsonEncoder encoder(document.GetAllocator(), style);
    encoder.add(document, "metaworld", writeWorldRecord(world, encoder));

    const QByteArray text = jsonToText(document, world.exportOptions.usePrettyPrint);
    if (text.isEmpty()) {
        plaxLog(LOG_ERROR, tr("Could not write the scene as JSON for '%1'.").arg(path));
        return false;
    }

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        plaxLog(LOG_ERROR, tr("Could not open file '%1' for writing: %2").arg(path, file.errorString()));
        return false;
    }
    if (file.write(text) != text.size() || !file.commit()) {
        plaxLog(LOG_ERROR, tr("Could not write file '%1': %2").arg(path, file.errorString()));
        file.cancelWriting();
        return false;
    }
    return true;
}
