#pragma once

// What Box2D 2.4.1 needs of a scene description before anything is built:
// the values it would assert on are found here, so a build never starts on a
// record it cannot finish.

#include "plax/scene.h"

#include <box2d/box2d.h>

#include <string>

namespace plax::detail
{
/// Largest magnitude of a body position, offset included: far enough for any
/// level, near enough that body transforms stay finite in single precision.
constexpr float kMaxPosition = 1e18f;
/// Largest magnitude of a shape coordinate or radius in body coordinates (the
/// editor refuses larger ones too).
constexpr float kMaxShapeCoordinate = 1e7f;

/// An empty string when Box2D can build every record of the scene placed at
/// the offset; otherwise why not, with the record's JSON pointer.
std::string checkForBox2D(const SceneDescription& scene, b2Vec2 offset);

/// The vertices a polygon record is built from: a polygon of two vertices is
/// built as a two-sided edge instead.
bool polygonIsEdge(const ShapeDescription& shape);
} // namespace plax::detail
