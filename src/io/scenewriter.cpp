#include "io/scenewriter.h"

#include "base/log.h"
#include "io/bufferedfileoutput.h"
#include "io/filereferences.h"
#include "io/jsontextwriter.h"
#include "io/worldrecord.h"
#include "model/metaworld.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("SceneWriter", text);
}

// The "file" members of one item array, rewritten so that they name the same
// files from the folder the scene is written into.
template <typename Items>
void rebaseRecords(rapidjson::Value& record, const char* arrayKey, const Items& items, const MetaWorld& world,
                   FileReferenceKind kind, const QString& folder, const JsonEncoder& encoder)
{
    const auto array = record.FindMember(arrayKey);
    if (array == record.MemberEnd() || !array->value.IsArray() || array->value.Size() != items.size())
        return;
    for (rapidjson::SizeType i = 0; i < array->value.Size(); ++i) {
        const auto file = array->value[i].FindMember("file");
        if (file != array->value[i].MemberEnd())
            file->value = encoder.stringValue(sceneFileReference(world, kind, items[i]->file, folder));
    }
}
} // namespace

bool saveSceneFile(const MetaWorld& world, const QString& path)
{
    rapidjson::Document document(rapidjson::kObjectType);
    JsonStyle style;
    style.humanReadableFloats = world.exportOptions.useHumanReadableFloats;
    const JsonEncoder encoder(document.GetAllocator(), style);
    rapidjson::Value record = writeWorldRecord(world, encoder);
    const QString folder = QFileInfo(path).absolutePath();
    rebaseRecords(record, "metaimage", world.images(), world, FileReferenceKind::Image, folder, encoder);
    rebaseRecords(record, "metaobject", world.objects(), world, FileReferenceKind::Object, folder, encoder);
    rebaseRecords(record, "metasampler", world.samplers(), world, FileReferenceKind::SamplerOutput, folder, encoder);
    encoder.add(document, "metaworld", std::move(record));

    // The text goes straight to the file through a small buffer.
    BufferedFileOutput out(path);
    if (!out.isOpen()) {
        plaxLog(LOG_ERROR, tr("Could not open file '%1' for writing: %2").arg(path, out.errorString()));
        return false;
    }
    JsonTextWriter<BufferedFileOutput> writer(out, world.exportOptions.usePrettyPrint);
    if (!document.Accept(writer)) {
        plaxLog(LOG_ERROR, tr("Could not write the scene as JSON for '%1'.").arg(path));
        return false;
    }
    writer.finish();
    if (!out.commit()) {
        plaxLog(LOG_ERROR, tr("Could not write file '%1': %2").arg(path, out.errorString()));
        return false;
    }
    return true;
}
