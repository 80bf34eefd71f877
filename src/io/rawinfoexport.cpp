#include "io/rawinfoexport.h"

#include "base/log.h"
#include "io/b2djson.h"
#include "io/jsontext.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <QDir>
#include <QFile>
#include <QMutex>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTemporaryDir>

namespace
{
bool writeAtomically(const QString& path, const QByteArray& text, const char* what)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        plaxLog(LOG_ERROR,
                QStringLiteral("Could not write %1 to '%2': %3").arg(QLatin1String(what), path, file.errorString()));
        return false;
    }
    return true;
}
// Box2D 2.4.1 dumps a chain as CreateChain(vs, n) followed by assignments
// of its neighbour vertices, but 2.4.1 has no two-argument CreateChain: the
// neighbours are arguments. Rewrite the calls so the source compiles.
QByteArray repairChainCalls(const QByteArray& dump)
{
    static const QRegularExpression call(
        QStringLiteral("shape\\.CreateChain\\(vs, (\\d+)\\);\\s*shape\\.m_prevVertex\\.Set\\(([^)]*)\\);\\s*"
                       "shape\\.m_nextVertex\\.Set\\(([^)]*)\\);"));
    QString text = QString::fromUtf8(dump);
    text.replace(call, QStringLiteral("shape.CreateChain(vs, \\1, b2Vec2(\\2), b2Vec2(\\3));"));
    return text.toUtf8();
}
} // namespace

QByteArray rawInfoText(const WorldBuild& build, const MetaWorld& scene, const ExportPropertyFilter& filter)
{
    const rapidjson::Document doc = b2dJson(exportStyle(scene), filter).write(build, scene);
    return jsonToText(doc, scene.exportOptions.usePrettyPrint);
}

bool writeRawInfoFile(const WorldBuild& build, const MetaWorld& scene, const ExportPropertyFilter& filter,
                      const QString& path)
{
    const QByteArray text = rawInfoText(build, scene, filter);
    if (text.isEmpty()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not write raw info to '%1': the scene could not be encoded").arg(path));
        return false;
    }
    return writeAtomically(path, text, "raw info");
}

QByteArray sourceCodeText(WorldBuild& build)
{
    // Box2D writes its dump to "box2d_dump.inl" in the current directory; run
    // it inside a private folder so nothing is left in the user's directory.
    static QMutex dumpMutex;
    QMutexLocker lock(&dumpMutex);
    QTemporaryDir scratch;
    if (!scratch.isValid())
        return QByteArray();
    const QString previous = QDir::currentPath();
    if (!QDir::setCurrent(scratch.path()))
        return QByteArray();
    build.world().Dump();
    QDir::setCurrent(previous);
    QFile dump(QDir(scratch.path()).filePath(QStringLiteral("box2d_dump.inl")));
    return dump.open(QIODevice::ReadOnly) ? repairChainCalls(dump.readAll()) : QByteArray();
}

bool writeSourceCodeFile(WorldBuild& build, const QString& path)
{
    const QByteArray text = sourceCodeText(build);
    if (text.isEmpty()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not write source code to '%1': the world dump failed").arg(path));
        return false;
    }
    return writeAtomically(path, text, "source code");
}
