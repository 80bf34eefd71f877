// The whole `plax -i big.plax -e out.json` process against a jsoncpp parse of
// the same input, measured side by side in alternating pairs, with the peak
// memory of each process, at 10,000 and 40,000 bodies; and the stages of the
// export at 40,000 bodies.
#include "bench.h"
#include "largescene.h"

#include "io/exportfilter.h"
#include "io/rawinfoexport.h"
#include "io/sceneloader.h"
#include "io/scenewriter.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace
{
struct ProcessRun
{
    double seconds = 0;
    double peakMegabytes = 0;
    bool ok = false;
};

// Runs a program to its end; its wall time and peak resident memory.
ProcessRun runProcess(const std::vector<std::string>& arguments)
{
    ProcessRun run;
    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
        std::vector<char*> argv;
        for (const std::string& a : arguments)
            argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid > 0 && wait4(pid, &status, 0, &usage) == pid) {
        run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        run.peakMegabytes = double(usage.ru_maxrss) / 1024.0;
        run.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    return run;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

void compareWithJsoncpp(int bodies, int pairs)
{
    QTemporaryDir dir;
    const QString scenePath = dir.filePath(QStringLiteral("big.plax"));
    const QString exportPath = dir.filePath(QStringLiteral("big.json"));
    saveSceneFile(*makeLargeScene(false, bodies), scenePath);
    const double inputMegabytes = double(QFileInfo(scenePath).size()) / 1e6;
    std::vector<double> plaxTimes, parseTimes, ratios, plaxPeaks, parsePeaks;
    for (int i = 0; i < pairs; ++i) {
        // Alternating order, so that neither side always runs on a warm cache.
        ProcessRun plax, parse;
        const auto runPlax = [&] {
            plax = runProcess({PLAX_BINARY, "-q", "-i", scenePath.toStdString(), "-e", exportPath.toStdString()});
        };
        const auto runParse = [&] { parse = runProcess({PLAX_JSONCPP_PARSE, scenePath.toStdString()}); };
        if (i % 2 == 0) {
            runPlax();
            runParse();
        } else {
            runParse();
            runPlax();
        }
        if (!plax.ok || !parse.ok) {
            std::printf("  a run failed (plax %d, jsoncpp %d)\n", int(plax.ok), int(parse.ok));
            return;
        }
        plaxTimes.push_back(plax.seconds);
        parseTimes.push_back(parse.seconds);
        ratios.push_back(plax.seconds / parse.seconds);
        plaxPeaks.push_back(plax.peakMegabytes);
        parsePeaks.push_back(parse.peakMegabytes);
    }
    std::printf("  %d bodies: input %.1f MB, export %.1f MB\n", bodies, inputMegabytes,
                double(QFileInfo(exportPath).size()) / 1e6);
    std::printf("  plax -i -e: median %.3f s, peak %.0f MB (%.2f x the input); jsoncpp parse: median %.3f s, "
                "peak %.0f MB\n",
                median(plaxTimes), median(plaxPeaks), median(plaxPeaks) / inputMegabytes, median(parseTimes),
                median(parsePeaks));
    std::printf("  ratio plax / jsoncpp over %d pairs: median %.2f (min %.2f, max %.2f)\n", pairs, median(ratios),
                *std::min_element(ratios.begin(), ratios.end()), *std::max_element(ratios.begin(), ratios.end()));
}

const bool s_process = registerBench("export/process-vs-jsoncpp", [] {
    compareWithJsoncpp(kLargeSceneBodies, 11);
    compareWithJsoncpp(4 * kLargeSceneBodies, 5);
});

const bool s_stages = registerBench("export/stages-40k-bodies", [] {
    QTemporaryDir dir;
    const QString scenePath = dir.filePath(QStringLiteral("big.plax"));
    saveSceneFile(*makeLargeScene(false, 4 * kLargeSceneBodies), scenePath);
    std::unique_ptr<MetaWorld> scene;
    const double load = timeSeconds([&] { scene = loadSceneFile(scenePath); });
    std::unique_ptr<WorldBuild> build;
    const double worldBuild = timeSeconds([&] {
        build = std::make_unique<WorldBuild>(*scene);
        build->addScene(*scene);
    });
    const double write = timeSeconds([&] {
        writeRawInfoFile(*build, *scene, ExportPropertyFilter(scene->excludedJsonExportProperties),
                         dir.filePath(QStringLiteral("big.json")));
    });
    std::printf("  load %.3f s, world build %.3f s, write %.3f s\n", load, worldBuild, write);
});
} // namespace
