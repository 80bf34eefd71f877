// Decomposition time of star-shaped and comb rings of growing size.
#include "../bench.h"

#include "geometry/decomposition.h"
#include "model/ringcheck.h"

#include <cmath>
#include <cstdio>
#include <numbers>
#include <vector>

namespace
{
// Star with `vertices` points alternating between two radii (half reflex).
std::vector<Vec2> starRing(int vertices)
{
    std::vector<Vec2> ring;
    for (int i = 0; i < vertices; ++i) {
        const double a = 2 * std::numbers::pi * i / vertices;
        const double r = i % 2 ? 60.0 : 100.0;
        ring.push_back({static_cast<float>(r * std::cos(a)), static_cast<float>(r * std::sin(a))});
    }
    return ring;
}

// Comb with slanted gap floors and about `vertices` points.
std::vector<Vec2> combRing(int vertices)
{
    const int teeth = std::max(1, (vertices - 2) / 4);
    const float width = 1, gap = 1, top = 10;
    std::vector<Vec2> ring{{0, 0}, {teeth * (width + gap) - gap, 0}};
    for (int t = teeth - 1; t >= 0; --t) {
        const float x0 = t * (width + gap);
        if (t != teeth - 1)
            ring.push_back({x0 + width, 1.2f});
        ring.push_back({x0 + width, top});
        ring.push_back({x0, top});
        if (t > 0)
            ring.push_back({x0, 1});
    }
    return ring;
}

void runFamily(const char* name, std::vector<Vec2> (*make)(int))
{
    for (int n : {10, 100, 1000}) {
        const std::vector<Vec2> ring = make(n);
        const int repeats = n <= 10 ? 2000 : (n <= 100 ? 50 : 1);
        for (auto method : {DecompositionMethod::Bayazit, DecompositionMethod::Triangulation}) {
            size_t pieces = 0;
            bool fellBack = false;
            const double seconds = timeSeconds([&] {
                for (int r = 0; r < repeats; ++r) {
                    const PolygonDecomposition d = decomposePolygon(ring, false, method);
                    pieces = d.pieces.size();
                    fellBack = d.bayazitFailure != BayazitFailure::None;
                }
            });
            std::printf("%-5s n=%5zu %-13s %10.3f ms  pieces=%zu%s\n", name, ring.size(),
                        method == DecompositionMethod::Bayazit ? "bayazit" : "triangulation",
                        1000 * seconds / repeats, pieces, fellBack ? " (fell back)" : "");
        }
        const double check = timeSeconds([&] {
            for (int r = 0; r < repeats; ++r)
                ringSelfIntersects(ring);
        });
        std::printf("%-5s n=%5zu %-13s %10.3f ms\n", name, ring.size(), "ringcheck", 1000 * check / repeats);
    }
}

const bool s_registered = registerBench("geometry/decomposition", [] {
    runFamily("star", starRing);
    runFamily("comb", combRing);
});
} // namespace
