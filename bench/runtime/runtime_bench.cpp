// The runtime library loading the 10,000-body export, against the two
// yardsticks it has to beat: the exporter writing that file, and a bare
// RapidJSON parse of it. Medians of five runs; the file is read from disk in
// every load and every parse, both warm in the page cache. Besides wall time
// each figure is given as processor time of this process, which other
// programs running at the same time disturb less.
#include "bench.h"
#include "largescene.h"

#include "io/exportfilter.h"
#include "io/rawinfoexport.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <plax/box2d/box2dscene.h>
#include <plax/rawinforeader.h>

#include <rapidjson/document.h>

#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace
{
// Wall and processor seconds of one call.
struct Timing
{
    double wall = 0;
    double cpu = 0;
};

Timing timeBoth(const std::function<void()>& fn)
{
    const std::clock_t start = std::clock();
    Timing t;
    t.wall = timeSeconds(fn);
    t.cpu = double(std::clock() - start) / CLOCKS_PER_SEC;
    return t;
}

struct Medians
{
    std::vector<double> wall, cpu;
    void add(const Timing& t)
    {
        wall.push_back(t.wall);
        cpu.push_back(t.cpu);
    }
    double medianWall() const { return median(wall); }
    double medianCpu() const { return median(cpu); }
};

std::string readWhole(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void runtimeLoad(bool humanReadable)
{
    constexpr int kRuns = 5;
    QTemporaryDir dir;
    const QString exportPath = dir.filePath(QStringLiteral("big.json"));
    const std::string path = exportPath.toStdString();
    std::unique_ptr<MetaWorld> scene = makeLargeScene(humanReadable, kLargeSceneBodies);
    // The exporter builds its world (decomposing polygons) before it writes.
    Medians exporterBuilds;
    std::unique_ptr<WorldBuild> exporterWorld;
    for (int run = 0; run < kRuns; ++run) {
        exporterWorld.reset();
        exporterBuilds.add(timeBoth([&] {
            exporterWorld = std::make_unique<WorldBuild>(*scene);
            exporterWorld->addScene(*scene);
        }));
    }
    const WorldBuild& build = *exporterWorld;

    Medians writes, parses, reads, builds, loads;
    size_t bodies = 0, fixtures = 0;
    for (int run = 0; run < kRuns; ++run) {
        writes.add(timeBoth(
            [&] { writeRawInfoFile(build, *scene, ExportPropertyFilter(scene->excludedJsonExportProperties), exportPath); }));
        parses.add(timeBoth([&] {
            const std::string text = readWhole(path);
            rapidjson::Document document;
            document.Parse(text.data(), text.size());
            if (document.HasParseError())
                std::printf("  the export does not parse\n");
        }));
        plax::SceneDescription description;
        std::string error;
        reads.add(timeBoth([&] { plax::readRawInfoFile(path, description, &error); }));
        std::unique_ptr<plax::Box2DScene> built;
        builds.add(timeBoth([&] { built = plax::Box2DScene::create(std::move(description), &error); }));
        built.reset();
        loads.add(timeBoth([&] { built = plax::loadBox2DScene(path, &error); }));
        if (!built) {
            std::printf("  load failed: %s\n", error.c_str());
            return;
        }
        bodies = built->bodies().size();
        fixtures = size_t(built->fixtures().size());
    }
    std::printf("  %s floats, %.1f MB, %zu bodies, %zu fixtures, median of %d (wall / processor seconds):\n",
                humanReadable ? "human-readable" : "hex", double(QFileInfo(exportPath).size()) / 1e6, bodies, fixtures,
                kRuns);
    std::printf("    exporter world build %.3f / %.3f s, then write %.3f / %.3f s\n", exporterBuilds.medianWall(),
                exporterBuilds.medianCpu(), writes.medianWall(), writes.medianCpu());
    std::printf("    bare RapidJSON read+parse %.3f / %.3f s\n", parses.medianWall(), parses.medianCpu());
    std::printf("    runtime load %.3f / %.3f s (read %.3f / %.3f s, Box2D world %.3f / %.3f s)\n", loads.medianWall(),
                loads.medianCpu(), reads.medianWall(), reads.medianCpu(), builds.medianWall(), builds.medianCpu());
    std::printf("    load / write: %.2f wall, %.2f processor; load / (world build + write): %.2f wall, %.2f processor\n",
                loads.medianWall() / writes.medianWall(), loads.medianCpu() / writes.medianCpu(),
                loads.medianWall() / (exporterBuilds.medianWall() + writes.medianWall()),
                loads.medianCpu() / (exporterBuilds.medianCpu() + writes.medianCpu()));
    std::printf("    load / parse: %.2f wall, %.2f processor\n", loads.medianWall() / parses.medianWall(),
                loads.medianCpu() / parses.medianCpu());
}

const bool s_registered = registerBench("runtime/load", [] {
    runtimeLoad(false);
    runtimeLoad(true);
});
} // namespace
