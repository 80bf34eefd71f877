#include "geometry/box2dpolygon.h"

#include <box2d/box2d.h>

#include <algorithm>

namespace
{
// Box2D's b2Cross and b2Vec2::LengthSquared, term by term in float.
float crossF(b2Vec2 a, b2Vec2 b)
{
    return a.x * b.y - a.y * b.x;
}

float lengthSquaredF(b2Vec2 v)
{
    return v.x * v.x + v.y * v.y;
}
} // namespace

Box2DPolygonJudgement judgeBox2DPolygon(const std::vector<Vec2>& points)
{
    Box2DPolygonJudgement result;
    const int count = int(points.size());
    if (count < 3 || count > b2_maxPolygonVertices)
        return result;

    b2Vec2 ps[b2_maxPolygonVertices];
    for (int i = 0; i < count; ++i) {
        const b2Vec2 v(points[size_t(i)].x, points[size_t(i)].y);
        for (int j = 0; j < i; ++j) {
            if (b2DistanceSquared(v, ps[j]) < ((0.5f * b2_linearSlop) * (0.5f * b2_linearSlop))) {
                result.verdict = Box2DPolygonVerdict::Welded;
                return result;
            }
        }
        ps[i] = v;
    }

    // Gift wrapping from the rightmost point (lowest on a tie), as Box2D does.
    int i0 = 0;
    float x0 = ps[0].x;
    for (int i = 1; i < count; ++i) {
        const float x = ps[i].x;
        if (x > x0 || (x == x0 && ps[i].y < ps[i0].y)) {
            i0 = i;
            x0 = x;
        }
    }
    int hull[b2_maxPolygonVertices];
    int m = 0;
    int ih = i0;
    for (;;) {
        if (m >= b2_maxPolygonVertices) {
            result.verdict = Box2DPolygonVerdict::HullChanged;
            return result;
        }
        hull[m] = ih;
        int ie = 0;
        for (int j = 1; j < count; ++j) {
            if (ie == ih) {
                ie = j;
                continue;
            }
            const b2Vec2 r = ps[ie] - ps[hull[m]];
            const b2Vec2 v = ps[j] - ps[hull[m]];
            const float c = crossF(r, v);
            if (c < 0.0f)
                ie = j;
            if (c == 0.0f && lengthSquaredF(v) > lengthSquaredF(r))
                ie = j;
        }
        ++m;
        ih = ie;
        if (ie == i0)
            break;
    }
    for (int k = 0; k < m; ++k)
        result.hull.push_back({ps[hull[k]].x, ps[hull[k]].y});
    if (m < 3) {
        result.verdict = Box2DPolygonVerdict::HullChanged;
        return result;
    }

    // The centroid's area, relative to the first hull vertex.
    const b2Vec2 s = ps[hull[0]];
    float area = 0.0f;
    for (int k = 0; k < m; ++k) {
        const b2Vec2 e1 = ps[hull[k]] - s;
        const b2Vec2 e2 = (k + 1 < m ? ps[hull[k + 1]] : ps[hull[0]]) - s;
        area += 0.5f * crossF(e1, e2);
    }
    result.area = area;

    // The same cyclic order as given, or a point was dropped or moved.
    bool same = m == count;
    for (int k = 0; same && k < m; ++k)
        same = hull[(k + 1) % m] == (hull[k] + 1) % count;
    if (!same) {
        for (int i = 0; i < count && result.droppedIndex < 0; ++i) {
            if (std::find(hull, hull + m, i) == hull + m)
                result.droppedIndex = i;
        }
        result.verdict = Box2DPolygonVerdict::HullChanged;
        return result;
    }
    result.verdict = area > b2_epsilon ? Box2DPolygonVerdict::Unchanged : Box2DPolygonVerdict::AreaTooSmall;
    return result;
}
