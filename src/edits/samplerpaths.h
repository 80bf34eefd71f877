#pragma once

#include "base/types.h"

#include <QStringList>

#include <vector>

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

/// What fixturesFromPaths() made.
struct PathFixtures
{
    /// Fixtures made.
    int made = 0;
    /// Names of the samplers skipped for want of a body, in order.
    QStringList samplersWithoutBody;
};

/// Makes one fixture of every path of the samplers `samplerIds`, on each
/// sampler's body or, for a sampler without one, on `fallbackBody` (0 for
/// none), as one undo step "fixtures from paths". Samplers with neither are
/// skipped and named in the result.
PathFixtures fixturesFromPaths(ScriptDocument& document, const std::vector<ItemId>& samplerIds, ItemId fallbackBody);
} // namespace SamplerPaths
