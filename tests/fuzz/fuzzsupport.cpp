#include "fuzzsupport.h"

#include "base/flags.h"
#include "base/log.h"
#include "io/scenewriter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

const QString& fuzzScratchFolder()
{
    static int argc = 1;
    static char name[] = "plax-fuzz";
    static char* argv[] = {name, nullptr};
    static QCoreApplication* app = new QCoreApplication(argc, argv);
    static QTemporaryDir* dir = [] {
        QStandardPaths::setTestModeEnabled(true);
        AppFlags::setBatchMode(true);
        Log::setThreshold(LOG_FATAL);
        // Removed when the process ends normally (a replay, or a fuzzing
        // run that found nothing).
        std::atexit([] { delete dir; });
        return new QTemporaryDir();
    }();
    static const QString path = dir->path();
    (void)app;
    return path;
}

QString writeScratchFile(const QString& name, const QByteArray& bytes)
{
    const QString path = QDir(fuzzScratchFolder()).filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        fuzzFailure("could not write a scratch file");
    return path;
}

QByteArray savedSceneBytes(const MetaWorld& scene, const QString& name)
{
    const QString path = QDir(fuzzScratchFolder()).filePath(name);
    if (!saveSceneFile(scene, path))
        return QByteArray();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void fuzzFailure(const char* what)
{
    std::fprintf(stderr, "property failed: %s\n", what);
    std::abort();
}
