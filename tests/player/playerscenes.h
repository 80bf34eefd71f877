#pragma once

#include "base/types.h"
#include "model/metabody.h"
#include "model/metashape.h"

#include <vector>

class EditorDocument;
class MetaFixture;
class MetaWorld;

/// Small scenes built straight into a document's model.
namespace PlayerScenes
{
/// Adds a body (no fixtures) and returns it.
MetaBody* addBody(MetaWorld& world, BodyType type, Vec2 position, float angle = 0);
/// Adds a fixture with one shape of the type over the vertices.
MetaFixture* addFixture(MetaWorld& world, MetaBody* body, std::vector<Vec2> vertices, ShapeType shapeType,
                        float radius = 0, float density = 1);
/// A box of half-size h as a polygon fixture centred at the body's origin.
MetaFixture* addBox(MetaWorld& world, MetaBody* body, float h);

/// A ground line and loop, a concave plank, and a pile of boxes and circles
/// (two hinged together) falling onto them: every shape type, a joint, and
/// bodies whose centre of mass lies off their origin.
void buildPile(EditorDocument& document, int columns = 4, int rows = 3);
} // namespace PlayerScenes
