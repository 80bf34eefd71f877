// Big polygon fixtures: the self-intersection check, the decomposition and a
// whole raw-info export (scene file load, world build, write) of one star
// ring of 1k, 10k and 100k vertices with radii alternating 100 and 200, and
// of a traced-outline-like ring (a wobbly blob sampled densely, so that most
// corners are nearly straight). PLAX_BENCH_MAX_VERTICES caps the sizes.
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

void runRing(const char* family, const std::vector<Vec2>& ring)
{
    bool crossing = false;
    const double check = timeSeconds([&] { crossing = ringSelfIntersects(ring); });
    PolygonDecomposition d;
    const double decomposition =
        timeSeconds([&] { d = decomposePolygon(ring, crossing, DecompositionMethod::Bayazit); });

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
        fixture->addShape(SHAPE_POLYGON, 0);
        world.addFixture(added, std::move(fixture), 0, QStringLiteral("outline"));
        saveSceneFile(world, scenePath);
    }
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
    const char* how = d.refusal != PolygonDecomposition::Refusal::None ? "refused"
                      : d.triangulated                                   ? "triangulated"
                                                                         : "bayazit";
    std::printf("%-7s n=%6zu  check %8.4f s  decomposition %8.4f s (%zu pieces, %s)  export %8.4f s "
                "(load %.4f, build %.4f, write %.4f)\n",
                family, ring.size(), check, decomposition, d.pieces.size(), how, load + worldBuild + write, load,
                worldBuild, write);
}

const bool s_registered = registerBench("geometry/big-rings", [] {
    for (int n : {1000, 10000, 25000, 100000}) {
        if (n <= maxVertices())
            runRing("star", starRing(n));
    }
    for (int n : {1000, 10000, 25000, 100000}) {
        if (n <= maxVertices())
            runRing("traced", tracedRing(n));
    }
});
} // namespace
