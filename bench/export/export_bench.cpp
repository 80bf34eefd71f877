// The stages of a raw-info export of the large scene at 10,000 and 40,000
// bodies, timed one by one (median of three runs each): loading the scene
// file, building the Box2D world (which includes the decomposition of
// polygons, timed on its own as well) and writing the file. The world is
// built as the export builds it (without broad phase); the growth of the
// world build and of the whole from 10,000 to 40,000 bodies is printed with
// its goal.
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

#include <algorithm>
#include <cstdio>
#include <vector>

namespace
{
struct StageMedians
{
    double worldBuild = 0;
    double total = 0;
};

StageMedians timeStages(int bodies, int runs)
{
    QTemporaryDir dir;
    const QString scenePath = dir.filePath(QStringLiteral("big.plax"));
    const QString exportPath = dir.filePath(QStringLiteral("big.json"));
    saveSceneFile(*makeLargeScene(false, bodies), scenePath);

    std::vector<double> loads, decompositions, worldBuilds, writes, totals;
    size_t pieces = 0;
    for (int run = 0; run < runs; ++run) {
        std::unique_ptr<MetaWorld> scene;
        loads.push_back(timeSeconds([&] { scene = loadSceneFile(scenePath); }));
        if (!scene) {
            std::printf("  load failed\n");
            return {};
        }
        pieces = 0;
        decompositions.push_back(timeSeconds([&] {
            for (const auto& body : scene->bodies()) {
                for (const auto& fixture : body->fixtures()) {
                    if (fixture->shapes().front().type() == ShapeType::Polygon)
                        pieces += decomposePolygon(fixture->vertices(), fixture->isSelfIntersecting(),
                                                   DecompositionMethod::Bayazit)
                                      .pieces.size();
                }
            }
        }));
        std::unique_ptr<WorldBuild> build;
        worldBuilds.push_back(timeSeconds([&] {
            build = std::make_unique<WorldBuild>(*scene);
            build->skipBroadPhase();
            build->addScene(*scene);
        }));
        writes.push_back(timeSeconds([&] {
            writeRawInfoFile(*build, *scene, ExportPropertyFilter(scene->excludedJsonExportProperties), exportPath);
        }));
        totals.push_back(loads.back() + worldBuilds.back() + writes.back());
        if (run == 0)
            std::printf("  %d bodies: scene %.1f MB, export %.1f MB, %zu scene fixtures, %zu polygon pieces\n",
                        build->world().GetBodyCount(), double(QFileInfo(scenePath).size()) / 1e6,
                        double(QFileInfo(exportPath).size()) / 1e6, scene->fixtureCount(), pieces);
    }
    std::printf("  median of %d: load %.3f s, world build %.3f s (of which decomposition about %.3f s), "
                "write %.3f s, total %.3f s\n",
                runs, median(loads), median(worldBuilds), median(decompositions), median(writes), median(totals));
    return {median(worldBuilds), median(totals)};
}

const bool s_registered = registerBench("export/stages", [] {
    const StageMedians small = timeStages(kLargeSceneBodies, 5);
    const StageMedians large = timeStages(4 * kLargeSceneBodies, 3);
    if (small.worldBuild <= 0 || small.total <= 0)
        return;
    const double growth = large.worldBuild / small.worldBuild;
    std::printf("  world build, 40,000 vs 10,000 bodies: x%.2f  goal <= x4.4: %s; whole stages x%.2f\n", growth,
                growth <= 4.4 ? "met" : "MISSED", large.total / small.total);
});
} // namespace
