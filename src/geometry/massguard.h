#pragma once

#include <box2d/box2d.h>

/// True when adding a shape of the given density to the body keeps Box2D's
/// mass computation valid. On a dynamic body Box2D moves the rotational
/// inertia from the body origin to the centre of mass by a single-precision
/// subtraction and asserts that the result is positive; a small fixture far
/// from the body origin (a 2 cm box at 1 km) loses it to rounding. This
/// repeats that sum and refuses when the result keeps no reliable digits.
/// Static, kinematic and fixed-rotation bodies and zero densities always pass.
bool massStaysValid(const b2Body* body, const b2Shape& shape, float density);
