#pragma once

#include "api/scripthandles.h"
#include "editing/editmode.h"

#include <angelscript.h>
#include <angelscript/scriptarray.h>

class ScriptRegistrar;

// translate, rotate, scale, duplicate and step of plaxscript, and the
// editor's selection centre. Every change goes through the recorded setters.
//
// Pivot modes of rotate and scale: 0 turns or scales each item about its own
// centre (a body's or object's origin, an image's or sampler's centre, a
// fixture's vertex centroid, a vertex in place); 1 about the centre of all the
// items given (for one item the same as 0); 2 about the cursor. The anchor
// selector of a joint's translate and rotate: 0 anchor A, 1 anchor B, any
// other value both.
namespace TransformApi
{
/// The centre of the selected items of an edit mode (the mean of their
/// centres); (0, 0) when none is selected.
ScriptVec2 selectionCenter(EditMode mode);
/// The script function getSelectionCenter(mode): the edit mode by its index
/// (0 bodies, 1 fixtures, 2 vertices, 3 joints, 4 images, 5 samplers, 6
/// objects); (0, 0) for any other number.
ScriptVec2 getSelectionCenter(int mode);

/// What transformSelection does.
enum class Operation
{
    Translate,
    Rotate,
    Scale,
};

/// Transforms the selected items of an edit mode through the same recorded setters the script
/// functions use: translate by (a, b), rotate by the angle a, scale by the
/// factors (a, b). `pivotMode` is that of rotate and scale (0 each item's
/// own centre, 1 the centre of the selection, 2 the cursor). Joints move
/// both anchors; scaling joints scales the anchors' distances to the pivot.
void transformSelection(EditMode mode, Operation operation, int pivotMode, float a, float b = 0);

/// Duplicates the selected items of an edit mode in place (fresh ids and
/// names) through the script API's duplicate, selecting the copies instead of
/// the originals; returns how many were made. Vertices are not duplicated.
int duplicateSelection(EditMode mode);

/// The script function createFixture(body, path): a fixture on the body made
/// from a sampler's path, recorded like any new fixture (an invalid handle
/// if the path cannot make one; the reason is logged).
ScriptFixture createFixtureFromPath(const ScriptBody& body, const ScriptPath& path);

/// Registers translate, rotate and scale for every handle type and array.
void registerTransforms(ScriptRegistrar& reg);
/// Registers duplicate for every handle type and array, and step.
void registerDuplicateAndStep(ScriptRegistrar& reg);
} // namespace TransformApi
