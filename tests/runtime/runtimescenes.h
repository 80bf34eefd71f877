#pragma once

#include "base/types.h"

#include <memory>
#include <vector>

class MetaWorld;

/// Scenes the runtime tests export and load.
namespace RuntimeScenes
{
/// A scene with every shape a scene holds (circles of one and several
/// vertices, convex, concave and rounded polygons, lines and loops plain and
/// rounded), every joint type a scene holds (revolute, prismatic, rigid and
/// springy distance, wheel, weld, friction, rope, motor), bodies of every
/// type and flag, a mass override, sensors and filters, images and custom
/// properties, all falling and colliding for a few seconds. `seed` varies
/// positions and values.
std::unique_ptr<MetaWorld> everyShapeAndJoint(unsigned seed = 1);
} // namespace RuntimeScenes
