// Load and save times of a large scene: 10,000 bodies with four fixtures each
// (circle, polygon, rounded line, loop) and a joint between every tenth pair.
#include "bench.h"
#include "largescene.h"

#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>

namespace
{
void run(bool humanReadable)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("large.plax"));
    const QString resaved = dir.filePath(QStringLiteral("resaved.plax"));
    std::unique_ptr<MetaWorld> scene = makeLargeScene(humanReadable);
    const double firstSave = timeSeconds([&] { saveSceneFile(*scene, path); });
    std::unique_ptr<MetaWorld> loaded;
    const double load = timeSeconds([&] { loaded = loadSceneFile(path); });
    if (!loaded) {
        std::printf("  load failed\n");
        return;
    }
    const double resave = timeSeconds([&] { saveSceneFile(*loaded, resaved); });
    std::printf("  %s floats: %d bodies, %zu fixtures, %zu joints, file %.1f MB\n",
                humanReadable ? "readable" : "hex", int(loaded->bodies().size()), loaded->fixtureCount(),
                loaded->joints().size(), double(QFileInfo(path).size()) / 1e6);
    std::printf("  first save %.3f s, load %.3f s, resave %.3f s\n", firstSave, load, resave);
}

const bool s_registered = registerBench("io/scene-10k-bodies", [] {
    run(false);
    run(true);
});
} // namespace
