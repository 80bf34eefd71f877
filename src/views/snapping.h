#pragma once

#include "base/types.h"

/// The steps of the editor's snapping, kept in the settings group
/// "editing": delta snapping (Ctrl) moves by whole grid steps, turns by whole
/// angle steps and scales by whole scale steps; absolute snapping (Alt) puts
/// the moved point on the nearest vertex of another item within a few pixels,
/// else on the nearest grid point.
struct SnapSettings
{
    /// Grid step in world units ("editing/snaptranslatestep").
    float gridStep = 0.5f;
    /// Angle step in degrees ("editing/snaprotatestep").
    float angleStepDegrees = 15;
    /// Scale factor step ("editing/snapscalestep").
    float scaleStep = 0.1f;
    /// Pixels within which a vertex attracts ("editing/snapvertexpixels").
    int vertexPixels = 10;

    /// The settings with the user's values; unusable values keep the defaults.
    static SnapSettings fromSettings();
};

/// Snapping arithmetic.
namespace Snapping
{
/// `value` rounded to a whole number of `step`s (unchanged for a step that is not positive).
float toStep(float value, float step);
/// The grid point nearest to `point`.
Vec2 toGrid(Vec2 point, float step);
} // namespace Snapping
