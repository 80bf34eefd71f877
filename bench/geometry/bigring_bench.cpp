// Big polygon fixtures: the self-intersection check (whole, and after one
// vertex moved), the decomposition and a
// whole raw-info export (scene file load, world build, write) of one star
// ring of 1k, 10k and 100k vertices with radii alternating 100 and 200, and
// of a traced-outline-like ring (a wobbly blob sampled densely, so that most
// corners are nearly straight), with the growth from each size to four times
// it. Every figure is the median of three runs. PLAX_BENCH_MAX_VERTICES caps
// the sizes (100,000 unless set; 400,000 is the largest).
#include "../bench.h"

#include "geometry/decomposition.h"
#include "io/exportfilter.h"
#include "io/rawinfoexport.h"
#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "model/ringcheck.h"
#include "physics/worldbuild.h"

#include <QTemporaryDir>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <vector>

namespace
{
std::vector<Vec2> starRing(int vertices)
{
    std::vector<Vec2> ring;
    ring.reserve(vertices);
    for (int i = 0; i < vertices; ++i) {
        const double a = 2 * std::numbers::pi * i / vertices;
        const double r = i % 2 ? 200.0 : 100.0;
        ring.push_back({static_cast<float>(r * std::cos(a)), static_cast<float>(r * std::sin(a))});
    }
    return ring;
}

// A blob with a few lobes and some fine wobble, sampled every 0.03 units or
// so (its size grows with the count), with 0.002 units of pixel noise.
std::vector<Vec2> tracedRing(int vertices)
{
    const double size = vertices / 10000.0;
    std::vector<Vec2> ring;
    ring.reserve(vertices);
    unsigned seed = 12345;
    auto noise = [&seed] {
        seed = seed * 1103515245u + 12345u;
        return ((seed >> 8) & 0xffff) / 65535.0 - 0.5;
    };
    for (int i = 0; i < vertices; ++i) {
        const double a = 2 * std::numbers::pi * i / vertices;
        const double r = size * (50 + 10 * std::sin(3 * a) + 3 * std::sin(17 * a));
        ring.push_back({static_cast<float>(r * std::cos(a) + 0.004 * noise()),
                        static_cast<float>(r * std::sin(a) + 0.004 * noise())});
    }
    return ring;
}

int maxVertices()
{
    const char* text = std::getenv("PLAX_BENCH_MAX_VERTICES");
    return text ? std::atoi(text) : 100000;
}

struct RingTimes
{
    double check = 0;
    double decomposition = 0;
    double exported = 0;
};

// Each stage is timed kRuns times; the figures are the medians.
constexpr int kRuns = 3;

RingTimes runRing(const char* family, const std::vector<Vec2>& ring)
{
    // The whole export as the batch tool does it, from a scene file on disk.
    QTemporaryDir dir;
    const QString scenePath = dir.filePath(QStringLiteral("ring.plax"));
    const QString exportPath = dir.filePath(QStringLiteral("ring.json"));
    {
        MetaWorld world;
        auto body = std::make_unique<MetaBody>();
        body->type = BodyType::Dynamic;
        MetaBody* added = world.addBody(std::move(body), 0, QStringLiteral("ring"));
        auto fixture = std::make_unique<MetaFixture>();
        fixture->setVertices(ring);
        fixture->addShape(ShapeType::Polygon, 0);
        world.addFixture(added, std::move(fixture), 0, QStringLiteral("outline"));
        saveSceneFile(world, scenePath);
    }

    // A vertex dragged a little (towards the centre, staying between its
    // neighbours), as the editor does it: the fixture's flag
    // follows from the edges at that vertex.
    MetaFixture edited;
    edited.setVertices(ring);
    std::vector<Vec2> moved = ring;
    moved[ring.size() / 3] = ring[ring.size() / 3] * 0.9999f;

    std::vector<double> edits, checks, decompositions, attempts, triangulations, loads, builds, writes, exports;
    bool crossing = false;
    PolygonDecomposition d;
    for (int run = 0; run < kRuns; ++run) {
        checks.push_back(timeSeconds([&] { crossing = ringSelfIntersects(ring); }));
        edits.push_back(timeSeconds([&] {
            edited.setVertices(moved);
            edited.setVertices(ring);
        }) / 2);
        decompositions.push_back(
            timeSeconds([&] { d = decomposePolygon(ring, crossing, DecompositionMethod::Bayazit); }));
        // The two stages apart: the Bayazit attempt (which may fail) and the triangulation.
        std::vector<std::vector<Vec2>> pieces;
        attempts.push_back(timeSeconds([&] { bayazitPieces(ring, pieces); }));
        std::vector<SkippedTriangle> skipped;
        pieces.clear();
        triangulations.push_back(timeSeconds([&] { triangulationPieces(ring, pieces, skipped); }));

        std::unique_ptr<MetaWorld> scene;
        const double load = timeSeconds([&] { scene = loadSceneFile(scenePath); });
        std::unique_ptr<WorldBuild> build;
        const double worldBuild = timeSeconds([&] {
            build = std::make_unique<WorldBuild>(*scene, DecompositionMethod::Bayazit);
            build->addScene(*scene);
        });
        const double write = timeSeconds([&] {
            writeRawInfoFile(*build, *scene, ExportPropertyFilter(scene->excludedJsonExportProperties), exportPath);
        });
        loads.push_back(load);
        builds.push_back(worldBuild);
        writes.push_back(write);
        exports.push_back(load + worldBuild + write);
    }
    const char* how = d.refusal != PolygonDecomposition::Refusal::None ? "refused"
                      : d.triangulated                                   ? "triangulated"
                                                                         : "bayazit";
    const RingTimes times{median(checks), median(decompositions), median(exports)};
    std::printf("%-7s n=%6zu  check %7.4f s (after a vertex edit %.4f)  decomposition %7.4f s (%zu pieces, %s; attempt %.4f, "
                "triangulation %.4f)  export %7.4f s (load %.4f, build %.4f, write %.4f)\n",
                family, ring.size(), times.check, median(edits), times.decomposition, d.pieces.size(), how, median(attempts),
                median(triangulations), times.exported, median(loads), median(builds), median(writes));
    return times;
}

// Runs a family at each size and prints how the time grows from a size to four times it.
void runFamily(const char* family, std::vector<Vec2> (*make)(int))
{
    std::vector<std::pair<int, RingTimes>> runs;
    for (int n : {1000, 4000, 10000, 25000, 100000, 400000}) {
        if (n <= maxVertices())
            runs.emplace_back(n, runRing(family, make(n)));
    }
    for (const auto& [n, small] : runs) {
        for (const auto& [m, large] : runs) {
            if (m == 4 * n)
                std::printf("%-7s n=%6d -> %6d  check x%.1f  decomposition x%.1f  export x%.1f\n", family, n, m,
                            large.check / small.check, large.decomposition / small.decomposition,
                            large.exported / small.exported);
        }
    }
}

const bool s_registered = registerBench("geometry/big-rings", [] {
    runFamily("star", starRing);
    runFamily("traced", tracedRing);
});
} // namespace
