#include "geometry/bayazit.h"

#include "geometry/bayazitpredicates.h"
#include "geometry/convexpiece.h"
#include "geometry/segmentgrid.h"
#include "geometry/signedarea.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <memory>
#include <set>

using namespace BayazitPredicates;

namespace
{
using Ring = std::vector<DVec2>;

// One ring still to decompose: a circular list of nodes starting at `head`.
// Node keys increase along the ring from some node on (one wrap), so the
// position of a node in the ring's own order follows from its key and the
// head's key; the reflex nodes are kept ordered by key. A big ring that is
// queried often files its edges in its own grid; when it is split the larger
// half keeps the grid (the edges that left are taken out of it) and the
// smaller half starts over with plain scans.
struct EdgeGrid
{
    SegmentGrid grid;
    // Id -> start node of the edge filed under it.
    std::vector<int> records;
};

struct RingState
{
    int head = -1;
    int size = 0;
    std::set<std::pair<double, int>> reflex;
    // Edge scans made over this ring; past a few, it gets a grid of its edges.
    long long scanned = 0;
    std::unique_ptr<EdgeGrid> edges;
    // Number of the check call that judged this ring as a finished piece, or -1.
    int made = -1;
};

struct Hit
{
    double distance = DBL_MAX;
    DVec2 point;
    int node = -1;
};

class Engine
{
public:
    Engine(const Ring& ring, const BayazitPieceCheck& check) : m_points(ring), m_check(check)
    {
        const int n = int(ring.size());
        const int r = newRing();
        for (int k = 0; k < n; ++k) {
            const int node = newNode(k, double(k), r);
            m_next[size_t(node)] = (k + 1) % n;
            m_prev[size_t(node)] = (k + n - 1) % n;
        }
        m_rings[size_t(r)].head = 0;
        m_rings[size_t(r)].size = n;
        for (int k = 0; k < n; ++k)
            updateReflex(r, k);
        m_pending.push_back(r);
    }

    BayazitOutcome run(std::vector<Ring>& pieces, std::vector<int>* made)
    {
        if (!judgeIfFinished(m_pending.back()))
            return BayazitOutcome::PieceRejected;
        // Every split resolves one reflex vertex, so a simple ring needs fewer
        // splits than it has vertices; the budget stops rings that are not simple.
        size_t budget = 2 * m_points.size() + 8;
        while (!m_pending.empty()) {
            const int r = m_pending.back();
            m_pending.pop_back();
            const int reflex = firstReflex(r);
            if (reflex < 0) {
                if (made)
                    made->push_back(m_rings[size_t(r)].made);
                pieces.push_back(finish(r));
                continue;
            }
            if (budget-- == 0)
                return BayazitOutcome::Refused;
            if (!split(r, reflex))
                return BayazitOutcome::Refused;
            if (m_rejected)
                return BayazitOutcome::PieceRejected;
        }
        return BayazitOutcome::Done;
    }

private:
    DVec2 at(int node) const { return m_points[size_t(m_vert[size_t(node)])]; }
    int next(int node) const { return m_next[size_t(node)]; }
    int prev(int node) const { return m_prev[size_t(node)]; }

    int newRing()
    {
        m_rings.emplace_back();
        return int(m_rings.size()) - 1;
    }

    int newNode(int vertex, double key, int ring)
    {
        m_vert.push_back(vertex);
        m_next.push_back(-1);
        m_prev.push_back(-1);
        m_key.push_back(key);
        m_owner.push_back(ring);
        m_record.push_back(-1);
        return int(m_vert.size()) - 1;
    }

    bool isReflex(int node) const { return right(at(prev(node)), at(node), at(next(node))); }

    void updateReflex(int r, int node)
    {
        auto& reflex = m_rings[size_t(r)].reflex;
        reflex.erase({m_key[size_t(node)], node});
        if (isReflex(node))
            reflex.insert({m_key[size_t(node)], node});
    }

    int firstReflex(int r) const
    {
        const RingState& ring = m_rings[size_t(r)];
        if (ring.reflex.empty())
            return -1;
        auto it = ring.reflex.lower_bound({m_key[size_t(ring.head)], INT_MIN});
        if (it == ring.reflex.end())
            it = ring.reflex.begin();
        return it->second;
    }

    // Whether node a comes before node b in ring r's order.
    bool before(int r, int a, int b) const
    {
        const double head = m_key[size_t(m_rings[size_t(r)].head)];
        const double ka = m_key[size_t(a)];
        const double kb = m_key[size_t(b)];
        const bool wrapA = ka < head;
        const bool wrapB = kb < head;
        if (wrapA != wrapB)
            return wrapB;
        return ka < kb;
    }

    // Takes the node's edge out of its ring's grid, if it is filed there.
    void unfile(int node)
    {
        int& id = m_record[size_t(node)];
        if (id < 0)
            return;
        m_rings[size_t(owner(node))].edges->grid.remove(id);
        id = -1;
    }

    // The edge starting at node changed (or is new): file it in its ring's grid.
    void edgeChanged(int node)
    {
        unfile(node);
        EdgeGrid* edges = m_rings[size_t(owner(node))].edges.get();
        if (!edges)
            return;
        const int id = int(edges->records.size());
        edges->records.push_back(node);
        edges->grid.insert(id, at(node), at(next(node)));
        m_record[size_t(node)] = id;
    }

    int filedNode(const EdgeGrid& edges, int id) const { return edges.records[size_t(id)]; }

    void buildGridIfWorthIt(int r)
    {
        RingState& ring = m_rings[size_t(r)];
        if (ring.edges || ring.scanned <= 8LL * ring.size + 4096)
            return;
        std::vector<DVec2> points;
        int node = ring.head;
        do {
            points.push_back(at(node));
            node = next(node);
        } while (node != ring.head);
        ring.edges = std::make_unique<EdgeGrid>(EdgeGrid{SegmentGrid(points, points.size() / 2 + 1), {}});
        do {
            edgeChanged(node);
            node = next(node);
        } while (node != ring.head);
    }

    // Calls f(start node) for every edge of ring r.
    template <class F>
    void scanEdges(int r, F&& f)
    {
        const int head = m_rings[size_t(r)].head;
        int node = head;
        do {
            f(node);
            node = next(node);
        } while (node != head);
        m_rings[size_t(r)].scanned += m_rings[size_t(r)].size;
    }

    // Nearest edge hit by the forward extension of edge (i-1, i): an edge
    // (j-1, j) crossing it from right to left; the hit's node is j.
    void considerLower(int r, int i, int s, Hit& hit) const
    {
        const int t = next(s);
        const DVec2 a = at(prev(i)), b = at(i);
        DVec2 p;
        if (left(a, b, at(t)) && rightOn(a, b, at(s)) && lineIntersection(a, b, at(t), at(s), p) &&
            right(at(next(i)), b, p)) {
            const double d = distanceSquared(b, p);
            if (d < hit.distance || (d == hit.distance && before(r, t, hit.node)))
                hit = {d, p, t};
        }
    }

    // Nearest edge hit by the backward extension of edge (i, i+1): an edge
    // (j, j+1) crossing it; the hit's node is j.
    void considerUpper(int r, int i, int s, Hit& hit) const
    {
        const int t = next(s);
        const DVec2 c = at(next(i)), b = at(i);
        DVec2 p;
        if (left(c, b, at(t)) && rightOn(c, b, at(s)) && lineIntersection(c, b, at(s), at(t), p) &&
            left(at(prev(i)), b, p)) {
            const double d = distanceSquared(b, p);
            if (d < hit.distance || (d == hit.distance && before(r, s, hit.node)))
                hit = {d, p, s};
        }
    }

    template <class Consider>
    void castRay(int r, const DVec2& from, const DVec2& direction, Hit& hit, Consider&& consider)
    {
        EdgeGrid& edges = *m_rings[size_t(r)].edges;
        const double margin = 2 * edges.grid.cellSize();
        edges.grid.walk(
            from, edges.grid.exitPoint(from, direction),
            [&](int id) {
                consider(filedNode(edges, id));
                return true;
            },
            [&](double distance) { return hit.node < 0 || std::sqrt(hit.distance) + margin >= distance; });
    }

    void findHits(int r, int i, Hit& lower, Hit& upper)
    {
        if (!m_rings[size_t(r)].edges) {
            scanEdges(r, [&](int s) {
                considerLower(r, i, s, lower);
                considerUpper(r, i, s, upper);
            });
            return;
        }
        const DVec2 b = at(i);
        castRay(r, b, b - at(prev(i)), lower, [&](int s) { considerLower(r, i, s, lower); });
        castRay(r, b, b - at(next(i)), upper, [&](int s) { considerUpper(r, i, s, upper); });
    }

    bool canSee(int r, int i, int j)
    {
        const DVec2 pi = at(i), pj = at(j);
        if (isReflex(i)) {
            if (leftOn(pi, at(prev(i)), pj) && rightOn(pi, at(next(i)), pj))
                return false;
        } else if (rightOn(pi, at(next(i)), pj) || leftOn(pi, at(prev(i)), pj)) {
            return false;
        }
        if (isReflex(j)) {
            if (leftOn(pj, at(prev(j)), pi) && rightOn(pj, at(next(j)), pi))
                return false;
        } else if (rightOn(pj, at(next(j)), pi) || leftOn(pj, at(prev(j)), pi)) {
            return false;
        }
        bool blocked = false;
        auto test = [&](int k) {
            const int k1 = next(k);
            if (k == i || k1 == i || k == j || k1 == j)
                return;
            if (segmentsTouch(pi, pj, at(k), at(k1)))
                blocked = true;
        };
        EdgeGrid* edges = m_rings[size_t(r)].edges.get();
        if (!edges) {
            scanEdges(r, test);
            return !blocked;
        }
        edges->grid.walk(
            pi, pj,
            [&](int id) {
                test(filedNode(*edges, id));
                return !blocked;
            },
            [](double) { return true; });
        return !blocked;
    }

    // The best-scoring vertex of the range from..to that i can see, or -1.
    int bestVisible(int r, int i, int from, int to)
    {
        struct Candidate
        {
            double score;
            int order;
            int node;
        };
        std::vector<Candidate> candidates;
        const DVec2 pi = at(i);
        int order = 0;
        for (int j = from;; j = next(j)) {
            if (j != i && j != prev(i) && j != next(i)) {
                const DVec2 pj = at(j);
                double score = 1 / (distanceSquared(pi, pj) + 1);
                if (isReflex(j))
                    score += (rightOn(at(prev(j)), pj, pi) && leftOn(at(next(j)), pj, pi)) ? 3 : 2;
                else
                    score += 1;
                candidates.push_back({score, order++, j});
            }
            if (j == to)
                break;
        }
        m_rings[size_t(r)].scanned += order;
        // Highest score first, the earliest in the range among equals: the
        // first visible one is the one a scan of all visible vertices picks.
        auto lower = [](const Candidate& a, const Candidate& b) {
            return a.score < b.score || (a.score == b.score && a.order > b.order);
        };
        std::make_heap(candidates.begin(), candidates.end(), lower);
        while (!candidates.empty()) {
            std::pop_heap(candidates.begin(), candidates.end(), lower);
            const int j = candidates.back().node;
            candidates.pop_back();
            if (canSee(r, i, j))
                return j;
        }
        return -1;
    }

    // Steps from a forward to b and from b forward to a, stopping at the
    // shorter: whether a..b is the shorter arc, and its number of steps.
    std::pair<bool, int> shorterArc(int a, int b) const
    {
        int x = a, y = b;
        for (int steps = 0;; ++steps) {
            if (x == b)
                return {true, steps};
            if (y == a)
                return {false, steps};
            x = next(x);
            y = next(y);
        }
    }

    // Gives the nodes from..to (a whole ring) to ring `to`, moving their reflex entries.
    void moveNodes(int from, int fromRing, int toRing)
    {
        auto& source = m_rings[size_t(fromRing)].reflex;
        auto& target = m_rings[size_t(toRing)].reflex;
        int node = from;
        do {
            unfile(node);
            m_owner[size_t(node)] = toRing;
            const auto entry = std::make_pair(m_key[size_t(node)], node);
            if (source.erase(entry))
                target.insert(entry);
            node = next(node);
        } while (node != from);
    }

    // Keys 0, 1, 2, ... along the ring from its head.
    void renumber(int r)
    {
        RingState& ring = m_rings[size_t(r)];
        ring.reflex.clear();
        int node = ring.head;
        double key = 0;
        do {
            m_key[size_t(node)] = key++;
            node = next(node);
        } while (node != ring.head);
        do {
            updateReflex(r, node);
            node = next(node);
        } while (node != ring.head);
    }

    bool split(int r, int i)
    {
        buildGridIfWorthIt(r);
        Hit lower, upper;
        findHits(r, i, lower, upper);
        if (lower.node < 0 || upper.node < 0)
            return false;
        if (lower.node == next(upper.node)) {
            // No vertex between the two hits: split at a Steiner point.
            splitAtSteiner(r, i, upper.node, lower.node, (lower.point + upper.point) * 0.5);
            return true;
        }
        const int best = bestVisible(r, i, lower.node, upper.node);
        if (best < 0)
            return false;
        splitAtDiagonal(r, i, best);
        return true;
    }

    // The ring i..best keeps i's nodes; best..i gets copies of both ends.
    void splitAtDiagonal(int r, int i, int best)
    {
        const int size = m_rings[size_t(r)].size;
        const auto [lowerShorter, steps] = shorterArc(i, best);
        const int lowerSize = lowerShorter ? steps + 1 : size - steps + 1;
        const int upperSize = size + 2 - lowerSize;

        const int pi = prev(i);
        const int nb = next(best);
        const int b2 = newNode(m_vert[size_t(best)], m_key[size_t(best)], r);
        const int i2 = newNode(m_vert[size_t(i)], m_key[size_t(i)], r);
        m_next[size_t(best)] = i;
        m_prev[size_t(i)] = best;
        m_next[size_t(b2)] = nb;
        m_prev[size_t(nb)] = b2;
        m_next[size_t(pi)] = i2;
        m_prev[size_t(i2)] = pi;
        m_next[size_t(i2)] = b2;
        m_prev[size_t(b2)] = i2;
        const auto halves = finishSplit(r, i, lowerSize, b2, upperSize, lowerShorter);
        edgeChanged(best);
        edgeChanged(b2);
        edgeChanged(i2);
        updateReflex(owner(i), i);
        updateReflex(owner(best), best);
        updateReflex(owner(b2), b2);
        updateReflex(owner(i2), i2);
        judgeHalves(halves);
    }

    // The ring i..u, s keeps i's nodes; s', l..i gets copies of s and i.
    void splitAtSteiner(int r, int i, int u, int l, const DVec2& point)
    {
        double a = m_key[size_t(u)];
        double b = m_key[size_t(l)];
        double key = a < b ? a + (b - a) / 2 : a + 1;
        if (a < b && !(a < key && key < b)) {
            renumber(r);
            a = m_key[size_t(u)];
            b = m_key[size_t(l)];
            key = a < b ? a + (b - a) / 2 : a + 1;
        }
        const int size = m_rings[size_t(r)].size;
        const auto [lowerShorter, steps] = shorterArc(i, u);
        const int lowerSize = (lowerShorter ? steps + 1 : size + 1 - steps) + 1;
        const int upperSize = size + 3 - lowerSize;

        m_points.push_back(point);
        const int vertex = int(m_points.size()) - 1;
        const int pi = prev(i);
        const int s = newNode(vertex, key, r);
        const int s2 = newNode(vertex, key, r);
        const int i2 = newNode(m_vert[size_t(i)], m_key[size_t(i)], r);
        m_next[size_t(u)] = s;
        m_prev[size_t(s)] = u;
        m_next[size_t(s)] = i;
        m_prev[size_t(i)] = s;
        m_next[size_t(s2)] = l;
        m_prev[size_t(l)] = s2;
        m_next[size_t(pi)] = i2;
        m_prev[size_t(i2)] = pi;
        m_next[size_t(i2)] = s2;
        m_prev[size_t(s2)] = i2;
        const auto halves = finishSplit(r, i, lowerSize, s2, upperSize, lowerShorter);
        edgeChanged(u);
        edgeChanged(s);
        edgeChanged(s2);
        edgeChanged(i2);
        for (int node : {i, u, s, s2, l, i2})
            updateReflex(owner(node), node);
        judgeHalves(halves);
    }

    int owner(int node) const { return m_owner[size_t(node)]; }

    // Gives the smaller half a new ring (moving its nodes there) and queues
    // both halves, the lower one (starting at i) to be taken first.
    std::pair<int, int> finishSplit(int r, int i, int lowerSize, int upperHead, int upperSize, bool lowerSmaller)
    {
        const int fresh = newRing();
        const int lowerRing = lowerSmaller ? fresh : r;
        const int upperRing = lowerSmaller ? r : fresh;
        moveNodes(lowerSmaller ? i : upperHead, r, fresh);
        m_rings[size_t(lowerRing)].head = i;
        m_rings[size_t(lowerRing)].size = lowerSize;
        m_rings[size_t(upperRing)].head = upperHead;
        m_rings[size_t(upperRing)].size = upperSize;
        m_pending.push_back(upperRing);
        m_pending.push_back(lowerRing);
        return {lowerRing, upperRing};
    }

    // Judges the halves of a split that are finished pieces, lower first.
    void judgeHalves(std::pair<int, int> halves)
    {
        if (judgeIfFinished(halves.first))
            judgeIfFinished(halves.second);
    }

    // The points of ring r from its head.
    Ring pointsOf(int r) const
    {
        Ring piece;
        piece.reserve(size_t(m_rings[size_t(r)].size));
        const int head = m_rings[size_t(r)].head;
        int node = head;
        do {
            piece.push_back(at(node));
            node = next(node);
        } while (node != head);
        return piece;
    }

    // A ring without reflex vertices stays as it is until it is taken as a
    // piece, so it is judged now: a bad piece ends the decomposition before
    // the rest of the ring is worked through. False when the check turns it down.
    bool judgeIfFinished(int r)
    {
        RingState& ring = m_rings[size_t(r)];
        if (!ring.reflex.empty() || !m_check)
            return true;
        ring.made = m_madeCount++;
        if (m_check(pointsOf(r)))
            return true;
        m_rejected = true;
        return false;
    }

    Ring finish(int r)
    {
        Ring piece = pointsOf(r);
        const int head = m_rings[size_t(r)].head;
        int node = head;
        do {
            m_owner[size_t(node)] = -1;
            m_record[size_t(node)] = -1;
            node = next(node);
        } while (node != head);
        m_rings[size_t(r)].edges.reset();
        return piece;
    }

    std::vector<DVec2> m_points;
    const BayazitPieceCheck& m_check;
    // Per node: its point, neighbours, ring, and id in that ring's grid (or -1).
    std::vector<int> m_vert, m_next, m_prev, m_owner, m_record;
    std::vector<double> m_key;
    std::vector<RingState> m_rings;
    std::vector<int> m_pending;
    // Check calls made so far, and whether one turned its piece down.
    int m_madeCount = 0;
    bool m_rejected = false;
};
} // namespace

BayazitOutcome bayazitDecompose(const std::vector<DVec2>& ring, std::vector<std::vector<DVec2>>& pieces,
                                const BayazitPieceCheck& check, std::vector<int>* made)
{
    pieces.clear();
    if (made)
        made->clear();
    if (ring.size() < 3)
        return BayazitOutcome::Refused;
    for (const DVec2& p : ring) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y))
            return BayazitOutcome::Refused;
    }
    if (!(signedArea(ring) > 0))
        return BayazitOutcome::Refused;
    Engine engine(ring, check);
    const BayazitOutcome outcome = engine.run(pieces, made);
    if (outcome != BayazitOutcome::Done) {
        pieces.clear();
        if (made)
            made->clear();
    }
    return outcome;
}

bool bayazitDecompose(const std::vector<DVec2>& ring, std::vector<std::vector<DVec2>>& pieces)
{
    return bayazitDecompose(ring, pieces, {}) == BayazitOutcome::Done;
}
