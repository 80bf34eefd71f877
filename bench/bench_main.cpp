// Runs every registered benchmark, or those whose names contain the first argument.
#include "bench.h"

#include "base/log.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace
{
std::vector<BenchCase>& cases()
{
    static std::vector<BenchCase> c;
    return c;
}
} // namespace

bool registerBench(const std::string& name, std::function<void()> run)
{
    cases().push_back({name, std::move(run)});
    return true;
}

double timeSeconds(const std::function<void()>& fn)
{
    auto start = std::chrono::steady_clock::now();
    fn();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    Log::setThreshold(LOG_ERROR);
    const std::string filter = argc > 1 ? argv[1] : "";
    for (const BenchCase& c : cases()) {
        if (!filter.empty() && c.name.find(filter) == std::string::npos)
            continue;
        std::printf("== %s\n", c.name.c_str());
        c.run();
    }
    return 0;
}
