#pragma once

#include <functional>
#include <string>
#include <vector>

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

/// The median of some timings (the upper one of an even count); 0 for none.
double median(std::vector<double> values);
