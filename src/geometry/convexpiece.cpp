#include "geometry/convexpiece.h"

#include "geometry/box2dpolygon.h"
#include "geometry/geometryconstants.h"
#include "geometry/signedarea.h"
#include "geometry/vertexcheck.h"

#include <cmath>

using namespace GeometryConstants;

PieceCheck checkConvexPiece(const std::vector<DVec2>& piece)
{
    const size_t n = piece.size();
    if (n < 3)
        return PieceCheck::BadCount;
    if (!(signedArea(piece) > kDegenerateArea))
        return PieceCheck::SmallArea;
    for (size_t i = 0; i < n; ++i) {
        const DVec2 a = piece[(i + n - 1) % n];
        const DVec2 b = piece[i];
        const DVec2 c = piece[(i + 1) % n];
        const DVec2 e1 = b - a;
        const DVec2 e2 = c - b;
        const double lengths = std::sqrt((e1.x * e1.x + e1.y * e1.y) * (e2.x * e2.x + e2.y * e2.y));
        if (!(cross(e1, e2) > kColinearSine * lengths))
            return PieceCheck::CoLinear;
    }
    return PieceCheck::Ok;
}

PieceCheck checkBox2DPolygon(const std::vector<Vec2>& piece)
{
    const size_t n = piece.size();
    if (n < 3 || n > static_cast<size_t>(kMaxPolygonVertices) || !verticesUsable(piece))
        return PieceCheck::BadCount;
    switch (judgeBox2DPolygon(piece).verdict) {
    case Box2DPolygonVerdict::Unchanged: break;
    case Box2DPolygonVerdict::BadCount: return PieceCheck::BadCount;
    case Box2DPolygonVerdict::Welded:
    case Box2DPolygonVerdict::AreaTooSmall: return PieceCheck::SmallArea;
    case Box2DPolygonVerdict::HullChanged: return PieceCheck::CoLinear;
    }
    return signedArea(piece) > kDegenerateArea ? PieceCheck::Ok : PieceCheck::SmallArea;
}
