#include "plax/box2d/polygonset.h"

namespace plax
{
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

PolygonSetOutcome predictPolygonSet(const b2Vec2* points, int count)
{
    PolygonSetOutcome out;
    if (count < 3 || count > b2_maxPolygonVertices)
        return out;
    for (int i = 0; i < count; ++i) {
        const b2Vec2 v = points[i];
        bool unique = true;
        for (int j = 0; j < out.weldedCount && unique; ++j)
            unique = !(b2DistanceSquared(v, out.welded[j]) < ((0.5f * b2_linearSlop) * (0.5f * b2_linearSlop)));
        if (unique)
            out.welded[out.weldedCount++] = v;
    }
    const int n = out.weldedCount;
    if (n < 3)
        return out;
    const b2Vec2* ps = out.welded;

    int i0 = 0;
    float x0 = ps[0].x;
    for (int i = 1; i < n; ++i) {
        const float x = ps[i].x;
        if (x > x0 || (x == x0 && ps[i].y < ps[i0].y)) {
            i0 = i;
            x0 = x;
        }
    }
    int m = 0;
    int ih = i0;
    for (;;) {
        if (m >= b2_maxPolygonVertices)
            return out;
        out.hull[m] = ih;
        int ie = 0;
        for (int j = 1; j < n; ++j) {
            if (ie == ih) {
                ie = j;
                continue;
            }
            const b2Vec2 r = ps[ie] - ps[out.hull[m]];
            const b2Vec2 v = ps[j] - ps[out.hull[m]];
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
    out.hullCount = m;
    if (m < 3)
        return out;

    const b2Vec2 s = ps[out.hull[0]];
    float area = 0.0f;
    for (int k = 0; k < m; ++k) {
        const b2Vec2 e1 = ps[out.hull[k]] - s;
        const b2Vec2 e2 = (k + 1 < m ? ps[out.hull[k + 1]] : ps[out.hull[0]]) - s;
        area += 0.5f * crossF(e1, e2);
    }
    out.area = area;
    out.asserts = !(area > b2_epsilon);
    return out;
}
} // namespace plax
