#include "io/rawinfoexport.h"

#include "base/log.h"
#include "io/b2djson.h"
#include "io/bufferedfileoutput.h"
#include "io/chaincallrepair.h"
#include "io/jsontextwriter.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <QDir>
#include <QFile>
#include <QMutex>
#include <QTemporaryDir>

#include <rapidjson/stringbuffer.h>

#include <string_view>

namespace
{

// Streams the raw info into a text output stream; false when a value could
// not be written.
template <typename OutputStream>
bool streamRawInfo(const WorldBuild& build, const MetaWorld& scene, const ExportPropertyFilter& filter,
                   OutputStream& out)
{
    JsonTextWriter<OutputStream> writer(out, scene.exportOptions.usePrettyPrint);
    HandlerSink<JsonTextWriter<OutputStream>> sink(writer);
    b2dJson(exportStyle(scene), filter).write(build, scene, sink);
    writer.finish();
    return sink.ok();
}

// Runs Box2D's world dump inside a private folder (it writes
// "box2d_dump.inl" into the current directory) and hands the dump file,
// still open, to use. False when the dump could not be made.
template <typename Use>
bool withWorldDump(WorldBuild& build, Use use)
{
    static QMutex dumpMutex;
    QMutexLocker lock(&dumpMutex);
    build.enableBodies();
    QTemporaryDir scratch;
    if (!scratch.isValid())
        return false;
    const QString previous = QDir::currentPath();
    if (!QDir::setCurrent(scratch.path()))
        return false;
    build.world().Dump();
    QDir::setCurrent(previous);
    QFile dump(QDir(scratch.path()).filePath(QStringLiteral("box2d_dump.inl")));
    if (!dump.open(QIODevice::ReadOnly))
        return false;
    if (dump.size() == 0)
        return use(std::string_view());
    const uchar* bytes = dump.map(0, dump.size());
    if (!bytes) {
        const QByteArray text = dump.readAll();
        return use(std::string_view(text.constData(), size_t(text.size())));
    }
    return use(std::string_view(reinterpret_cast<const char*>(bytes), size_t(dump.size())));
}
} // namespace

QByteArray rawInfoText(const WorldBuild& build, const MetaWorld& scene, const ExportPropertyFilter& filter)
{
    rapidjson::StringBuffer buffer;
    if (!streamRawInfo(build, scene, filter, buffer))
        return QByteArray();
    return QByteArray(buffer.GetString(), qsizetype(buffer.GetSize()));
}

bool writeRawInfoFile(const WorldBuild& build, const MetaWorld& scene, const ExportPropertyFilter& filter,
                      const QString& path)
{
    BufferedFileOutput out(path);
    if (!out.isOpen()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not write raw info to '%1': %2").arg(path, out.errorString()));
        return false;
    }
    if (!streamRawInfo(build, scene, filter, out)) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not write raw info to '%1': the scene could not be encoded").arg(path));
        return false;
    }
    if (!out.commit()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not write raw info to '%1': %2").arg(path, out.errorString()));
        return false;
    }
    return true;
}

QByteArray sourceCodeText(WorldBuild& build)
{
    QByteArray text;
    withWorldDump(build, [&](std::string_view dump) {
        text.reserve(qsizetype(dump.size()));
        repairChainCalls(dump, [&](const char* data, size_t length) { text.append(data, qsizetype(length)); });
        return true;
    });
    return text;
}

bool writeSourceCodeFile(WorldBuild& build, const QString& path)
{
    BufferedFileOutput out(path);
    if (!out.isOpen()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not write source code to '%1': %2").arg(path, out.errorString()));
        return false;
    }
    const bool dumped = withWorldDump(build, [&](std::string_view dump) {
        repairChainCalls(dump, [&](const char* data, size_t length) { out.write(data, length); });
        return !dump.empty();
    });
    if (!dumped) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not write source code to '%1': the world dump failed").arg(path));
        return false;
    }
    if (!out.commit()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not write source code to '%1': %2").arg(path, out.errorString()));
        return false;
    }
    return true;
}

// Kept apart from the streaming writer, so that it is not inlined into it.
rapidjson::Document b2dJson::write(const WorldBuild& build, const MetaWorld& scene) const
{
    rapidjson::Document doc;
    bool ok = true;
    auto generate = [&](rapidjson::Document& handler) {
        HandlerSink<rapidjson::Document> sink(handler);
        write(build, scene, sink);
        ok = sink.ok();
        return ok;
    };
    doc.Populate(generate);
    if (!ok)
        doc.SetObject();
    return doc;
}
