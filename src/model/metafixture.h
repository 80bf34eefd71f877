#pragma once

#include "model/metaitem.h"
#include "model/metashape.h"

#include <vector>

class MetaBody;

/// A fixture: material and collision settings, one vertex list in body
/// coordinates and one or more shapes over it.
class MetaFixture : public MetaItem
{
public:
    MetaFixture() : MetaItem(ItemKind::Fixture) {}

    /// The owning body, or null.
    MetaBody* body() const { return m_body; }

    float friction = 0.2f;
    float restitution = 0;
    float density = 1;
    /// The density a read value stands for: Box2D takes only finite,
    /// non-negative densities, so any other value is replaced by the default
    /// density 1 with the warning "Fixture density %1 is not valid, using %2".
    /// Every reader of fixtures applies this one rule.
    static float validDensity(float density);
    bool sensor = false;
    int filterCategoryBits = 0x0001;
    int filterMaskBits = 0xFFFF;
    int filterGroupIndex = 0;

    /// Vertex list shared by all shapes, in body coordinates.
    const std::vector<Vec2>& vertices() const { return m_vertices; }
    /// Replaces the vertex list and recomputes the self-intersection flag.
    void setVertices(std::vector<Vec2> vertices);
    /// True when two non-adjacent edges of the vertex ring intersect.
    bool isSelfIntersecting() const { return m_selfIntersecting; }

    /// Shapes of the fixture.
    const std::vector<MetaShape>& shapes() const { return m_shapes; }
    /// Shape at an index (must exist); its setters mark the fixture changed.
    MetaShape& shape(size_t index) { return m_shapes[index]; }
    /// Appends a shape and returns it.
    MetaShape& addShape(ShapeType type, float radius);
    /// Removes the last shape (if any).
    void removeLastShape()
    {
        if (!m_shapes.empty())
            m_shapes.pop_back();
        markChanged();
    }
    /// Removes every shape.
    void clearShapes()
    {
        m_shapes.clear();
        markChanged();
    }

    /// Text naming the fixture in log messages ("body/fixture").
    QString description() const;

    /// Marks its body changed as well.
    void markChanged() override;

private:
    friend class MetaBody;
    friend class MetaWorld;

    MetaBody* m_body = nullptr;
    std::vector<Vec2> m_vertices;
    std::vector<MetaShape> m_shapes;
    bool m_selfIntersecting = false;
};
