#include "geometry/box2dpolygon.h"

#include <plax/box2d/polygonset.h>

#include <box2d/box2d.h>

#include <algorithm>

Box2DPolygonJudgement judgeBox2DPolygon(const std::vector<Vec2>& points)
{
    Box2DPolygonJudgement result;
    const int count = int(points.size());
    if (count < 3 || count > b2_maxPolygonVertices)
        return result;
    b2Vec2 given[b2_maxPolygonVertices];
    for (int i = 0; i < count; ++i)
        given[i] = b2Vec2(points[size_t(i)].x, points[size_t(i)].y);
    // Box2D's own steps, shared with the runtime library that loads exports.
    const plax::PolygonSetOutcome set = plax::predictPolygonSet(given, count);
    if (set.weldedCount < count) {
        result.verdict = Box2DPolygonVerdict::Welded;
        return result;
    }
    result.verdict = Box2DPolygonVerdict::HullChanged;
    const int m = set.hullCount;
    for (int k = 0; k < m; ++k)
        result.hull.push_back({given[set.hull[k]].x, given[set.hull[k]].y});
    if (m < 3)
        return result;
    result.area = set.area;

    // The same cyclic order as given, or a point was dropped or moved.
    bool same = m == count;
    for (int k = 0; same && k < m; ++k)
        same = set.hull[(k + 1) % m] == (set.hull[k] + 1) % count;
    if (!same) {
        for (int i = 0; i < count && result.droppedIndex < 0; ++i) {
            if (std::find(set.hull, set.hull + m, i) == set.hull + m)
                result.droppedIndex = i;
        }
        return result;
    }
    result.verdict = set.asserts ? Box2DPolygonVerdict::AreaTooSmall : Box2DPolygonVerdict::Unchanged;
    return result;
}
