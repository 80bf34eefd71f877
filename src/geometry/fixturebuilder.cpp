#include "geometry/fixturebuilder.h"

#include "base/log.h"
#include "geometry/convexpiece.h"
#include "geometry/decompositionsettings.h"
#include "geometry/edgequad.h"
#include "geometry/fixturedef.h"
#include "geometry/geometryconstants.h"
#include "geometry/vertexcheck.h"
#include "model/metafixture.h"

#include <algorithm>
#include <cmath>

namespace
{
b2Vec2 toB2(const Vec2& v)
{
    return {v.x, v.y};
}

// Adds one shape to the body as a fixture of the shape. The fixture is made
// with density 0 and given its density afterwards, so that Box2D does not
// recompute the body's mass for a body that is still being built (see
// settleBodyMass).
b2Fixture* addFixture(MetaShape& shape, b2Body* body, const b2FixtureDef& def, const b2Shape& b2shape)
{
    b2FixtureDef withShape = def;
    withShape.shape = &b2shape;
    withShape.density = 0;
    b2Fixture* fixture = body->CreateFixture(&withShape);
    fixture->SetDensity(def.density);
    shape.createdFixtures.push_back(fixture);
    return fixture;
}

void addCircles(MetaShape& shape, const std::vector<Vec2>& vertices, b2Body* body, const b2FixtureDef& def)
{
    for (const Vec2& v : vertices) {
        b2CircleShape circle;
        circle.m_p = toB2(v);
        circle.m_radius = shape.radius();
        addFixture(shape, body, def, circle);
    }
}

// A convex piece already checked by checkBox2DPolygon.
void addPolygon(MetaShape& shape, const std::vector<Vec2>& piece, b2Body* body, const b2FixtureDef& def)
{
    b2Vec2 points[b2_maxPolygonVertices];
    const int count = static_cast<int>(piece.size());
    for (int i = 0; i < count; ++i)
        points[i] = toB2(piece[i]);
    b2PolygonShape polygon;
    polygon.Set(points, count);
    polygon.m_radius = GeometryConstants::kPolygonSkinRadius;
    addFixture(shape, body, def, polygon);
}

// Edge quads of edges i -> i+1; closed adds the edge from the last vertex to the first.
void addEdgeQuads(MetaShape& shape, const std::vector<Vec2>& vertices, bool closed, b2Body* body,
                  const b2FixtureDef& def)
{
    const size_t n = vertices.size();
    const size_t edges = closed ? n : (n == 0 ? 0 : n - 1);
    for (size_t i = 0; i < edges; ++i) {
        const std::array<Vec2, 4> quad = edgeQuad(vertices[i], vertices[(i + 1) % n], shape.radius());
        const std::vector<Vec2> piece(quad.begin(), quad.end());
        if (checkBox2DPolygon(piece) != PieceCheck::Ok) {
            // The end circles already cover an edge this short.
            plaxLog(LOG_DEBUG, "Skipping edge quad of a too short edge (%f,%f) (%f,%f)", vertices[i].x, vertices[i].y,
                    vertices[(i + 1) % n].x, vertices[(i + 1) % n].y);
            continue;
        }
        addPolygon(shape, piece, body, def);
    }
}

// One chain per direction. Open chains fold their ghost vertices back onto the
// end edges so that each end collides like a corner from both sides.
void addChainPair(MetaShape& shape, const std::vector<Vec2>& vertices, bool closed, b2Body* body,
                  const b2FixtureDef& def)
{
    std::vector<b2Vec2> points;
    points.reserve(vertices.size());
    for (const Vec2& v : vertices)
        points.push_back(toB2(v));
    for (int pass = 0; pass < 2; ++pass) {
        // The reversed loop keeps its first vertex so both walk the same ring.
        if (pass == 1)
            std::reverse(points.begin() + (closed ? 1 : 0), points.end());
        const int count = static_cast<int>(points.size());
        b2ChainShape chain;
        if (closed)
            chain.CreateLoop(points.data(), count);
        else
            chain.CreateChain(points.data(), count, points[1], points[count - 2]);
        chain.m_radius = GeometryConstants::kPolygonSkinRadius;
        b2Fixture* fixture = addFixture(shape, body, def, chain);
        if (pass == 1 && fixture)
            shape.reverseChainTwins.push_back(fixture);
    }
}

QString kindWord(ShapeType type)
{
    switch (type) {
    case ShapeType::Circle: return QStringLiteral("circle");
    case ShapeType::Polygon: return QStringLiteral("polygon");
    case ShapeType::Loop: return QStringLiteral("loop");
    default: return QStringLiteral("chain");
    }
}

// Refuses vertex lists and radii that Box2D cannot represent.
bool usableInput(const MetaShape& shape, const std::vector<Vec2>& vertices, const QString& description)
{
    if (!verticesUsable(vertices)) {
        plaxLog(LOG_WARNING, QStringLiteral("Aborting %1 fixture creation due to invalid vertex coordinates in fixture: %2")
                                 .arg(kindWord(shape.type()), description));
        return false;
    }
    const float r = shape.radius();
    const bool radiusMatters = shape.type() == ShapeType::Circle || shape.isRounded();
    if (radiusMatters && !(std::isfinite(r) && r >= 0 && r <= GeometryConstants::kMaxCoordinate)) {
        plaxLog(LOG_WARNING, QStringLiteral("Aborting %1 fixture creation due to invalid radius in fixture: %2")
                                 .arg(kindWord(shape.type()), description));
        return false;
    }
    return true;
}

void buildChainShape(MetaShape& shape, const std::vector<Vec2>& vertices, bool closed, const QString& description,
                     b2Body* body, const b2FixtureDef& def)
{
    if (shape.isRounded()) {
        addCircles(shape, vertices, body, def);
        addEdgeQuads(shape, vertices, closed, body, def);
        return;
    }
    const QString kind = closed ? QStringLiteral("loop") : QStringLiteral("chain");
    if (!passesCoincidenceCheck(vertices)) {
        plaxLog(LOG_WARNING, QStringLiteral("Aborting %1 fixture creation due to coincident vertices in fixture: %2")
                                 .arg(kind, description));
        return;
    }
    if (vertices.size() < (closed ? 3u : 2u)) {
        plaxLog(LOG_WARNING,
                QStringLiteral("Aborting %1 fixture creation due to too few vertices in fixture: %2").arg(kind, description));
        return;
    }
    addChainPair(shape, vertices, closed, body, def);
}

void buildPolygonShape(MetaShape& shape, const std::vector<Vec2>& vertices, bool selfIntersecting,
                       const QString& description, b2Body* body, const b2FixtureDef& def, DecompositionMethod method)
{
    const PolygonDecomposition result = decomposePolygon(vertices, selfIntersecting, method);
    logDecomposition(result, vertices, description);
    if (result.refusal != PolygonDecomposition::Refusal::None)
        return;
    for (const std::vector<Vec2>& piece : result.pieces)
        addPolygon(shape, piece, body, def);
    if (shape.isRounded()) {
        addCircles(shape, vertices, body, def);
        addEdgeQuads(shape, vertices, true, body, def);
    }
}
} // namespace

void createFixtures(MetaShape& shape, const QString& fixtureDescription, b2Body* body, const b2FixtureDef& def,
                    DecompositionMethod method)
{
    // Twins whose fixtures are no longer listed (the list was cleared) are stale.
    std::erase_if(shape.reverseChainTwins, [&](b2Fixture* f) {
        return std::find(shape.createdFixtures.begin(), shape.createdFixtures.end(), f) == shape.createdFixtures.end();
    });
    if (!body || !shape.fixture())
        return;
    if (body->GetWorld()->IsLocked()) {
        plaxLog(LOG_ERROR, QStringLiteral("Cannot create fixtures while the world is stepping: %1").arg(fixtureDescription));
        return;
    }
    const std::vector<Vec2>& vertices = shape.fixture()->vertices();
    if (!usableInput(shape, vertices, fixtureDescription))
        return;
    switch (shape.type()) {
    case ShapeType::Circle: addCircles(shape, vertices, body, def); break;
    case ShapeType::Loop: buildChainShape(shape, vertices, true, fixtureDescription, body, def); break;
    case ShapeType::Line: buildChainShape(shape, vertices, false, fixtureDescription, body, def); break;
    case ShapeType::Polygon:
        buildPolygonShape(shape, vertices, shape.fixture()->isSelfIntersecting(), fixtureDescription, body, def,
                          method);
        break;
    default:
        plaxLog(LOG_WARNING, QStringLiteral("Unknown shape type %1 skipped in fixture: %2")
                                 .arg(QString::number(int(shape.type())), fixtureDescription));
        break;
    }
}

void createFixtures(MetaShape& shape, const QString& fixtureDescription, b2Body* body, const b2FixtureDef& def)
{
    createFixtures(shape, fixtureDescription, body, def, DecompositionSettings::method());
}

void createFixtures(MetaFixture& fixture, b2Body* body, DecompositionMethod method)
{
    const b2FixtureDef def = fixtureDefFor(fixture);
    const QString description = fixture.description();
    for (size_t i = 0; i < fixture.shapes().size(); ++i)
        createFixtures(fixture.shape(i), description, body, def, method);
}

void createFixtures(MetaFixture& fixture, b2Body* body)
{
    createFixtures(fixture, body, DecompositionSettings::method());
}
