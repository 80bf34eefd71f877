#include "geometrytestutil.h"

#include <cmath>
#include <numbers>

namespace TestRings
{
std::vector<Vec2> regular(int n, float radius, Vec2 centre)
{
    std::vector<Vec2> out;
    for (int i = 0; i < n; ++i) {
        const double a = 2 * std::numbers::pi * i / n;
        out.push_back({centre.x + radius * static_cast<float>(std::cos(a)),
                       centre.y + radius * static_cast<float>(std::sin(a))});
    }
    return out;
}

std::vector<Vec2> star(int points, float outer, float inner)
{
    std::vector<Vec2> out;
    for (int i = 0; i < 2 * points; ++i) {
        const double a = std::numbers::pi * i / points;
        const float r = i % 2 == 0 ? outer : inner;
        out.push_back({r * static_cast<float>(std::cos(a)), r * static_cast<float>(std::sin(a))});
    }
    return out;
}

std::vector<Vec2> randomStarShaped(std::mt19937& rng, int n, float minR, float maxR)
{
    std::uniform_real_distribution<float> radius(minR, maxR);
    std::vector<Vec2> out;
    for (int i = 0; i < n; ++i) {
        const double a = 2 * std::numbers::pi * i / n;
        const float r = radius(rng);
        out.push_back({r * static_cast<float>(std::cos(a)), r * static_cast<float>(std::sin(a))});
    }
    return out;
}

std::vector<Vec2> comb(int teeth, float toothWidth, float gap, float toothHeight, float slant)
{
    const float width = teeth * toothWidth + (teeth - 1) * gap;
    const float top = 1 + toothHeight;
    std::vector<Vec2> out{{0, 0}, {width, 0}};
    for (int t = teeth - 1; t >= 0; --t) {
        const float x0 = t * (toothWidth + gap);
        const float x1 = x0 + toothWidth;
        if (t != teeth - 1)
            out.push_back({x1, 1 + slant});
        out.push_back({x1, top});
        out.push_back({x0, top});
        if (t > 0)
            out.push_back({x0, 1});
    }
    return out;
}

std::vector<Vec2> withMidpoints(const std::vector<Vec2>& ring, int every)
{
    std::vector<Vec2> out;
    for (size_t i = 0; i < ring.size(); ++i) {
        out.push_back(ring[i]);
        if (static_cast<int>(i) % every == 0) {
            const Vec2& a = ring[i];
            const Vec2& b = ring[(i + 1) % ring.size()];
            out.push_back({(a.x + b.x) / 2, (a.y + b.y) / 2});
        }
    }
    return out;
}

std::vector<Vec2> reversed(std::vector<Vec2> ring)
{
    return {ring.rbegin(), ring.rend()};
}

std::vector<Vec2> square(float side)
{
    return {{0, 0}, {side, 0}, {side, side}, {0, side}};
}

double area(const std::vector<Vec2>& ring)
{
    double twice = 0;
    for (size_t i = 0; i < ring.size(); ++i) {
        const Vec2& a = ring[i];
        const Vec2& b = ring[(i + 1) % ring.size()];
        twice += static_cast<double>(a.x) * b.y - static_cast<double>(b.x) * a.y;
    }
    return twice / 2;
}

bool isConvexCcw(const std::vector<Vec2>& piece)
{
    const size_t n = piece.size();
    for (size_t i = 0; i < n; ++i) {
        const Vec2& a = piece[i];
        const Vec2& b = piece[(i + 1) % n];
        const Vec2& c = piece[(i + 2) % n];
        const double turn = (static_cast<double>(b.x) - a.x) * (static_cast<double>(c.y) - b.y) -
                            (static_cast<double>(b.y) - a.y) * (static_cast<double>(c.x) - b.x);
        if (!(turn > 0))
            return false;
    }
    return true;
}
} // namespace TestRings
