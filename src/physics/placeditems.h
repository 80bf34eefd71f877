#pragma once

#include "physics/placement.h"

#include <memory>

class MetaFixture;
class MetaImage;
class MetaJoint;

/// Detached copies of scene items as a placement puts them, for building and
/// writing. Local geometry is scaled and mirrored; a mirrored vertex ring is
/// reversed so polygons stay counter-clockwise; relative angles, angular
/// limits and revolute motor speeds change sign under a mirror. A circle
/// radius that the scale takes below the minimum is refused by the shape
/// rules; such a shape is left out of the copy.
std::unique_ptr<MetaFixture> placedFixture(const MetaFixture& fixture, const Placement& placement);
/// Placed joint (anchors, axis, angles, lengths).
std::unique_ptr<MetaJoint> placedJoint(const MetaJoint& joint, const Placement& placement);
/// Placed image; `onBody` tells whether its centre is in body coordinates.
std::unique_ptr<MetaImage> placedImage(const MetaImage& image, const Placement& placement, bool onBody);
