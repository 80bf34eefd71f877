// The whole `plax -i big.plax -e out.json` process against a jsoncpp parse of
// the same input, measured side by side in alternating pairs, with the peak
// memory of each process, at 10,000 and 40,000 bodies; each figure with
// its goal: the export under half a parse at 10,000 bodies, its peak memory
// under 80 MB there and under 2.5 times the input at 40,000, and its wall
// time growing at most 4.4 times from 10,000 to 40,000 bodies.
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
    double systemSeconds = 0;
    bool ok = false;
};

// Runs a program to its end through the peak-memory helper; its wall time,
// its own peak resident memory and its system time.
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
        if (result.open(QIODevice::ReadOnly)) {
            const QList<QByteArray> lines = result.readAll().trimmed().split('\n');
            run.peakMegabytes = lines.front().trimmed().toDouble(&read) / 1024.0;
            if (lines.size() > 1)
                run.systemSeconds = lines[1].trimmed().toDouble();
        }
        run.ok = run.ok && read;
    }
    return run;
}

const char* verdict(bool met)
{
    return met ? "met" : "MISSED";
}

struct ExportRun
{
    double seconds = 0;
    double systemSeconds = 0;
    double peakMegabytes = 0;
    double inputMegabytes = 0;
};

ExportRun compareWithJsoncpp(int bodies, int pairs)
{
    QTemporaryDir dir;
    const QString scenePath = dir.filePath(QStringLiteral("big.plax"));
    const QString exportPath = dir.filePath(QStringLiteral("big.json"));
    saveSceneFile(*makeLargeScene(false, bodies), scenePath);
    const double inputMegabytes = double(QFileInfo(scenePath).size()) / 1e6;
    std::vector<double> plaxTimes, plaxSystem, parseTimes, ratios, plaxPeaks, parsePeaks;
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
            return {};
        }
        plaxTimes.push_back(plax.seconds);
        plaxSystem.push_back(plax.systemSeconds);
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
    const double ratio = median(ratios);
    std::printf("  ratio plax / jsoncpp over %d pairs: median %.2f (min %.2f, max %.2f)", pairs, ratio,
                *std::min_element(ratios.begin(), ratios.end()), *std::max_element(ratios.begin(), ratios.end()));
    if (bodies == kLargeSceneBodies)
        std::printf("  goal < 0.5: %s", verdict(ratio < 0.5));
    std::printf("\n");
    const double peak = median(plaxPeaks);
    if (bodies == kLargeSceneBodies)
        std::printf("  peak memory %.0f MB  goal < 80 MB: %s\n", peak, verdict(peak < 80));
    else
        std::printf("  peak memory %.2f x the input  goal < 2.5 x: %s\n", peak / inputMegabytes,
                    verdict(peak / inputMegabytes < 2.5));
    return {median(plaxTimes), median(plaxSystem), peak, inputMegabytes};
}

const bool s_process = registerBench("export/process-vs-jsoncpp", [] {
    const ExportRun small = compareWithJsoncpp(kLargeSceneBodies, 11);
    const ExportRun large = compareWithJsoncpp(4 * kLargeSceneBodies, 5);
    if (small.seconds <= 0)
        return;
    const double growth = large.seconds / small.seconds;
    std::printf("  plax -i -e, 40,000 vs 10,000 bodies: wall x%.2f  goal <= x4.4: %s; system time %.2f s to %.2f s "
                "(x%.1f)\n",
                growth, verdict(growth <= 4.4), small.systemSeconds, large.systemSeconds,
                small.systemSeconds > 0 ? large.systemSeconds / small.systemSeconds : 0.0);
});
} // namespace
