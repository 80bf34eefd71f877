#pragma once

#include "geometry/decomposition.h"

#include <box2d/box2d.h>

#include <QString>

class MetaFixture;
class MetaShape;

/// Builds the Box2D fixtures of one shape on a body from a prepared fixture
/// definition (see fixtureDefFor) and appends them to shape.createdFixtures.
/// This is the one place where scene shapes become Box2D shapes.
///
/// - Circle: one circle per vertex with the shape's radius.
/// - Loop / line, rounded (radius at least 0.005): one circle per vertex, then
///   one edge quad per edge (loops include the closing edge).
/// - Loop / line, not rounded: after the coincidence check, two one-sided
///   chains with skin radius 0.01, forward then reversed, so the shape
///   collides from both sides (Box2D chains only collide on the right of their
///   direction). Open chains get ghost vertices that fold back onto the end
///   edges, which makes each end behave as a corner that collides. The
///   reversed chain is recorded in shape.reverseChainTwins.
/// - Polygon: convex pieces of decomposePolygon with the given method, then,
///   when rounded, the circles and closed ring of edge quads.
///
/// Anything Box2D would assert on is refused or skipped with a log line. The
/// description names the fixture in log lines (may be empty).
///
/// The body's mass is left as it was: once the body has all its fixtures,
/// settleBodyMass (massguard.h) computes it for the whole body.
void createFixtures(MetaShape& shape, const QString& fixtureDescription, b2Body* body, const b2FixtureDef& def,
                    DecompositionMethod method);

/// As above, with the decomposition method of the application settings.
void createFixtures(MetaShape& shape, const QString& fixtureDescription, b2Body* body, const b2FixtureDef& def);

/// Builds every shape of a scene fixture on a body, with the fixture's own
/// material, filter and description and the given decomposition method.
void createFixtures(MetaFixture& fixture, b2Body* body, DecompositionMethod method);

/// As above, with the decomposition method of the application settings.
void createFixtures(MetaFixture& fixture, b2Body* body);
