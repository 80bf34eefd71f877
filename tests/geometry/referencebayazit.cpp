// The decomposition as it was before halves became linked lists and queries
// went through a grid: every split copies both halves and scans every edge.
// Kept only as the reference the current one must agree with.
#include "referencealgorithms.h"

#include "geometry/signedarea.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace
{
using Ring = std::vector<DVec2>;

bool left(const DVec2& a, const DVec2& b, const DVec2& c)
{
    return orient2d(a, b, c) > 0;
}

bool leftOn(const DVec2& a, const DVec2& b, const DVec2& c)
{
    return orient2d(a, b, c) >= 0;
}

bool right(const DVec2& a, const DVec2& b, const DVec2& c)
{
    return orient2d(a, b, c) < 0;
}

bool rightOn(const DVec2& a, const DVec2& b, const DVec2& c)
{
    return orient2d(a, b, c) <= 0;
}

// Point where the line through p1, p2 meets the line through q1, q2.
bool lineIntersection(const DVec2& p1, const DVec2& p2, const DVec2& q1, const DVec2& q2, DVec2& out)
{
    const DVec2 r = p2 - p1;
    const DVec2 s = q2 - q1;
    const double denominator = cross(r, s);
    if (denominator == 0 || !std::isfinite(denominator))
        return false;
    const double t = cross(q1 - p1, s) / denominator;
    out = p1 + r * t;
    return std::isfinite(out.x) && std::isfinite(out.y);
}

bool onSegment(const DVec2& a, const DVec2& b, const DVec2& p)
{
    return std::min(a.x, b.x) <= p.x && p.x <= std::max(a.x, b.x) && std::min(a.y, b.y) <= p.y &&
           p.y <= std::max(a.y, b.y);
}

int sign(double v)
{
    return (v > 0) - (v < 0);
}

// Closed segments a-b and c-d share a point.
bool segmentsTouch(const DVec2& a, const DVec2& b, const DVec2& c, const DVec2& d)
{
    const int o1 = sign(orient2d(a, b, c));
    const int o2 = sign(orient2d(a, b, d));
    const int o3 = sign(orient2d(c, d, a));
    const int o4 = sign(orient2d(c, d, b));
    if (o1 != o2 && o3 != o4)
        return true;
    return (o1 == 0 && onSegment(a, b, c)) || (o2 == 0 && onSegment(a, b, d)) || (o3 == 0 && onSegment(c, d, a)) ||
           (o4 == 0 && onSegment(c, d, b));
}

class Decomposer
{
public:
    explicit Decomposer(const Ring& ring) : m_ring(ring), m_n(static_cast<int>(ring.size())) {}

    const DVec2& at(int i) const { return m_ring[((i % m_n) + m_n) % m_n]; }
    int wrap(int i) const { return ((i % m_n) + m_n) % m_n; }

    bool isReflex(int i) const { return right(at(i - 1), at(i), at(i + 1)); }

    int firstReflex() const
    {
        for (int i = 0; i < m_n; ++i) {
            if (isReflex(i))
                return i;
        }
        return -1;
    }

    // Inclusive run of vertices from..to, walking forward with wrap-around.
    Ring range(int from, int to) const
    {
        Ring out;
        const int count = wrap(to - from) + 1;
        out.reserve(count + 1);
        for (int k = 0; k < count; ++k)
            out.push_back(at(from + k));
        return out;
    }

    // Whether the diagonal i-j lies inside the ring and crosses no edge.
    bool canSee(int i, int j) const
    {
        if (isReflex(i)) {
            if (leftOn(at(i), at(i - 1), at(j)) && rightOn(at(i), at(i + 1), at(j)))
                return false;
        } else if (rightOn(at(i), at(i + 1), at(j)) || leftOn(at(i), at(i - 1), at(j))) {
            return false;
        }
        if (isReflex(j)) {
            if (leftOn(at(j), at(j - 1), at(i)) && rightOn(at(j), at(j + 1), at(i)))
                return false;
        } else if (rightOn(at(j), at(j + 1), at(i)) || leftOn(at(j), at(j - 1), at(i))) {
            return false;
        }
        for (int k = 0; k < m_n; ++k) {
            const int k1 = wrap(k + 1);
            if (k == i || k1 == i || k == j || k1 == j)
                continue;
            if (segmentsTouch(at(i), at(j), at(k), at(k1)))
                return false;
        }
        return true;
    }

    // Splits the ring at reflex vertex i into two; false when it cannot.
    bool split(int i, Ring& lower, Ring& upper) const
    {
        double lowerDist = DBL_MAX;
        double upperDist = DBL_MAX;
        DVec2 lowerInt;
        DVec2 upperInt;
        int lowerIndex = -1;
        int upperIndex = -1;
        for (int j = 0; j < m_n; ++j) {
            DVec2 p;
            // Edge (j-1, j) against the forward extension of edge (i-1, i).
            if (left(at(i - 1), at(i), at(j)) && rightOn(at(i - 1), at(i), at(j - 1)) &&
                lineIntersection(at(i - 1), at(i), at(j), at(j - 1), p) && right(at(i + 1), at(i), p)) {
                const double d = distanceSquared(at(i), p);
                if (d < lowerDist) {
                    lowerDist = d;
                    lowerInt = p;
                    lowerIndex = j;
                }
            }
            // Edge (j, j+1) against the backward extension of edge (i, i+1).
            if (left(at(i + 1), at(i), at(j + 1)) && rightOn(at(i + 1), at(i), at(j)) &&
                lineIntersection(at(i + 1), at(i), at(j), at(j + 1), p) && left(at(i - 1), at(i), p)) {
                const double d = distanceSquared(at(i), p);
                if (d < upperDist) {
                    upperDist = d;
                    upperInt = p;
                    upperIndex = j;
                }
            }
        }
        if (lowerIndex < 0 || upperIndex < 0)
            return false;

        if (lowerIndex == wrap(upperIndex + 1)) {
            // No vertex between the two hits: split at a Steiner point.
            const DVec2 steiner = (lowerInt + upperInt) * 0.5;
            lower = range(i, upperIndex);
            lower.push_back(steiner);
            upper = range(lowerIndex, i);
            upper.insert(upper.begin(), steiner);
            return true;
        }

        double bestScore = 0;
        int best = -1;
        const int last = lowerIndex <= upperIndex ? upperIndex : upperIndex + m_n;
        for (int jj = lowerIndex; jj <= last; ++jj) {
            const int j = wrap(jj);
            if (j == i || j == wrap(i - 1) || j == wrap(i + 1) || !canSee(i, j))
                continue;
            double score = 1 / (distanceSquared(at(i), at(j)) + 1);
            if (isReflex(j))
                score += (rightOn(at(j - 1), at(j), at(i)) && leftOn(at(j + 1), at(j), at(i))) ? 3 : 2;
            else
                score += 1;
            if (score > bestScore) {
                bestScore = score;
                best = j;
            }
        }
        if (best < 0)
            return false;
        lower = range(i, best);
        upper = range(best, i);
        return true;
    }

private:
    const Ring& m_ring;
    int m_n;
};
} // namespace

bool Reference::bayazitDecompose(const std::vector<DVec2>& ring, std::vector<std::vector<DVec2>>& pieces)
{
    pieces.clear();
    if (ring.size() < 3)
        return false;
    for (const DVec2& p : ring) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y))
            return false;
    }
    if (!(signedArea(ring) > 0))
        return false;

    // Every split resolves one reflex vertex, so a simple ring needs fewer
    // splits than it has vertices; the budget stops rings that are not simple.
    size_t budget = 2 * ring.size() + 8;
    std::vector<Ring> pending{ring};
    std::vector<Ring> finished;
    while (!pending.empty()) {
        Ring current = std::move(pending.back());
        pending.pop_back();
        if (current.size() < 3)
            return false;
        Decomposer decomposer(current);
        const int reflex = decomposer.firstReflex();
        if (reflex < 0) {
            finished.push_back(std::move(current));
            continue;
        }
        if (budget-- == 0)
            return false;
        Ring lower;
        Ring upper;
        if (!decomposer.split(reflex, lower, upper))
            return false;
        pending.push_back(std::move(upper));
        pending.push_back(std::move(lower));
    }
    pieces = std::move(finished);
    return true;
}
