// The whole `plax -i big.plax -e out.json` process against a jsoncpp parse of
// the same input, measured side by side in alternating pairs, with the peak
// memory of each process, at 10,000 and 40,000 bodies.
#include "bench.h"
#include "largescene.h"

#include "io/scenewriter.h"
#include "model/metaworld.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

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

// Runs a program to its end through the peak-memory helper; its wall time
// and its own peak resident memory.
ProcessRun runProcess(const std::vector<std::string>& arguments, const QString& resultPath)
{
    ProcessRun run;
    std::vector<std::string> helped{PLAX_PEAK_MEMORY, resultPath.toStdString()};
    helped.insert(helped.end(), arguments.begin(), arguments.end());
    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
        std::vector<char*> argv;
        for (const std::string& a : helped)
            argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    if (pid > 0 && waitpid(pid, &status, 0) == pid) {
        run.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        run.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
        QFile result(resultPath);
        bool read = false;
        if (result.open(QIODevice::ReadOnly))
            run.peakMegabytes = result.readAll().trimmed().toDouble(&read) / 1024.0;
        run.ok = run.ok && read;
    }
    return run;
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
            plax = runProcess({PLAX_BINARY, "-q", "-i", scenePath.toStdString(), "-e", exportPath.toStdString()},
                              dir.filePath(QStringLiteral("plax-peak.txt")));
        };
        const auto runParse = [&] {
            parse = runProcess({PLAX_JSONCPP_PARSE, scenePath.toStdString()},
                               dir.filePath(QStringLiteral("parse-peak.txt")));
        };
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
} // namespace
