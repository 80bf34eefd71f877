#pragma once

#include "base/types.h"

class ScriptDocument;

// Turning what a sampler finds in its image into its paths, as one undoable
// edit of the document.
namespace SamplerPaths
{
/// Replaces the paths of sampler `samplerId` with the outlines it traces now
/// (see pathsFromOutlines), as one undo step "trace outline of sampler". The
/// sampler is recorded as deleted and added again under its id with the new
/// paths. False (nothing changed) when the sampler is missing or its image
/// cannot be read.
bool traceIntoPaths(ScriptDocument& document, ItemId samplerId, int maxPoints, int minAngle);
} // namespace SamplerPaths
