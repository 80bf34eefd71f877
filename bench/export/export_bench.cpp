// The stages of a raw-info export of the large scene, timed one by one:
// loading the scene file, building the Box2D world (which includes the
// decomposition of polygons, timed on its own as well) and writing the file.
#include "bench.h"
#include "largescene.h"

#include "geometry/decomposition.h"
#include "io/exportfilter.h"
#include "io/rawinfoexport.h"
#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>

namespace
{
const bool s_registered = registerBench("export/raw-info-10k-bodies", [] {
    QTemporaryDir dir;
    const QString scenePath = dir.filePath(QStringLiteral("big.plax"));
    const QString exportPath = dir.filePath(QStringLiteral("big.json"));
    saveSceneFile(*makeLargeScene(false), scenePath);

    std::unique_ptr<MetaWorld> scene;
    const double load = timeSeconds([&] { scene = loadSceneFile(scenePath); });
    if (!scene) {
        std::printf("  load failed\n");
        return;
    }
    size_t pieces = 0;
    const double decomposition = timeSeconds([&] {
        for (const auto& body : scene->bodies()) {
            for (const auto& fixture : body->fixtures()) {
                if (fixture->shapes().front().type() == SHAPE_POLYGON)
                    pieces += decomposePolygon(fixture->vertices(), fixture->isSelfIntersecting(),
                                               DecompositionMethod::Bayazit)
                                  .pieces.size();
            }
        }
    });
    std::unique_ptr<WorldBuild> build;
    const double worldBuild = timeSeconds([&] {
        build = std::make_unique<WorldBuild>(*scene);
        build->addScene(*scene);
    });
    const double write = timeSeconds([&] {
        writeRawInfoFile(*build, *scene, ExportPropertyFilter(scene->excludedJsonExportProperties), exportPath);
    });
    std::printf("  scene %.1f MB, export %.1f MB, %d bodies, %zu scene fixtures, %zu polygon pieces\n",
                double(QFileInfo(scenePath).size()) / 1e6, double(QFileInfo(exportPath).size()) / 1e6,
                build->world().GetBodyCount(), scene->fixtureCount(), pieces);
    std::printf("  load %.3f s, world build %.3f s (of which decomposition about %.3f s), write %.3f s, total %.3f s\n",
                load, worldBuild, decomposition, write, load + worldBuild + write);
});
} // namespace
