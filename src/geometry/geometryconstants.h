#pragma once

/// Shared numbers of fixture construction and polygon decomposition.
namespace GeometryConstants
{
/// Two consecutive vertices closer than this (squared distance, inclusive) are coincident.
constexpr float kCoincidentDistanceSquared = 2.5e-05f;
/// Skin radius given to every Box2D polygon and chain shape we create.
constexpr float kPolygonSkinRadius = 0.01f;
/// An edge shorter than this is not normalised when building its rounded quad.
constexpr float kEdgeDirectionEpsilon = 1.1920929e-07f;
/// A piece or triangle whose area is at most this is degenerate.
constexpr double kDegenerateArea = 2.3841858e-07;
/// Largest number of vertices of one Box2D polygon.
constexpr int kMaxPolygonVertices = 8;
/// Box2D merges polygon points closer than this (squared distance, exclusive).
constexpr float kWeldDistanceSquared = 0.0025f * 0.0025f;
/// A corner whose sine (cross product over both edge lengths) is at most this
/// counts as co-linear: Box2D's single-precision hull could drop it.
constexpr double kColinearSine = 1e-5;
/// Vertex coordinates beyond this magnitude are refused: single precision
/// arithmetic inside Box2D (areas, mass) stops being meaningful.
constexpr float kMaxCoordinate = 1e7f;
} // namespace GeometryConstants
