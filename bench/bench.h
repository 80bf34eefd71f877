#pragma once

#include <functional>
#include <string>

/// A benchmark: a name and a function that prints its own timings.
struct BenchCase
{
    std::string name;
    std::function<void()> run;
};

/// Registers a benchmark at static initialisation; returns a dummy for that purpose.
bool registerBench(const std::string& name, std::function<void()> run);

/// Seconds taken by a function.
double timeSeconds(const std::function<void()>& fn);
