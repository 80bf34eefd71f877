#pragma once

#include <QString>

/// Writes a scene with every item kind into `folder` and returns its path:
/// bodies 1 to 3 ("base", "arm", "wheel"), one joint of each type (ids 1 to
/// 8: revolute, prismatic, distance, wheel, weld, friction, rope, motor, the
/// first between bodies 1 and 2, the others between 2 and 3), image 1
/// ("sprite" on body 1), sampler 1 ("tracer" on body 2, with a polygon path
/// and a line path) and object 1 ("crate", an instance of "object.plax").
/// The picture "sprite.png" (40 x 20 pixels) and "object.plax" are written
/// next to it.
QString writeItemScene(const QString& folder);
