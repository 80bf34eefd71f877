#pragma once

#include <QString>

#include <vector>

class MetaFixture;
class b2Fixture;

/// Shape types of a fixture's shapes (values as stored). A file or a script
/// may name a number outside the list; the shape keeps it as an unknown type.
enum class ShapeType : int
{
    Unknown = -1,
    Circle = 0,
    Polygon = 1,
    Line = 2,
    Loop = 3,
};

/// Minimum effective radius: a radius below it counts as zero for every non-circle type.
constexpr float kMinEffectiveRadius = 0.005f;

/// One shape of a fixture: a type and a radius over the fixture's shared vertex list.
class MetaShape
{
public:
    /// A shape of a fixture (the owner may be set later by the fixture).
    explicit MetaShape(ShapeType type = ShapeType::Polygon, float radius = 0) : m_type(type), m_radius(radius) {}

    /// Shape type (a listed value, or any other number for an unknown type).
    ShapeType type() const { return m_type; }
    /// Radius in world units.
    float radius() const { return m_radius; }
    /// True when the radius is at least the minimum effective radius.
    bool isRounded() const { return m_radius >= kMinEffectiveRadius; }
    /// The fixture holding the vertices, or null.
    MetaFixture* fixture() const { return m_fixture; }

    /// Changes the type when the vertex count and radius allow it; refusals are reported.
    bool setType(ShapeType type);
    /// Changes the radius when valid for the type; refusals are reported.
    bool setRadius(float radius);
    /// Load-time repair of the type for the vertex count.
    void conformToVertexCount(const QString& fixtureDescription, int shapeIndex);

    /// Sets type and radius without any rule (readers and undo).
    void assign(ShapeType type, float radius);

    /// Translatable display name of a type ("Circle", ..., "Unknown shape type").
    static QString typeName(ShapeType type);
    /// Scene-file word of a type ("circle", ..., "unknown").
    static QString typeWord(ShapeType type);
    /// Type for a scene-file word; Unknown for "unknown" or any other text.
    static ShapeType typeFromWord(const QString& word);

    /// Box2D fixtures that construction created for this shape, in creation order.
    ///
    /// An unrounded line or loop is built as two one-sided Box2D chains, one
    /// per direction, so that it collides from both sides; both are listed
    /// here, the forward chain first. Writers that want one record per scene
    /// shape skip the fixtures for which isReverseChainTwin() is true.
    std::vector<b2Fixture*> createdFixtures;
    /// The reverse-direction twins among createdFixtures (see there).
    std::vector<b2Fixture*> reverseChainTwins;

    /// True when the fixture is the reverse-direction twin of a line or loop
    /// chain built for this shape (its vertices are the forward chain's reversed).
    bool isReverseChainTwin(const b2Fixture* fixture) const;
    /// Forgets the created fixtures and their twin marks (the fixtures themselves
    /// belong to their Box2D body).
    void clearCreatedFixtures()
    {
        createdFixtures.clear();
        reverseChainTwins.clear();
    }

private:
    friend class MetaFixture;

    // A change of type or radius is a change of the fixture.
    void markFixtureChanged();

    ShapeType m_type;
    float m_radius;
    MetaFixture* m_fixture = nullptr;
};
