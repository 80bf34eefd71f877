#pragma once

#include "base/types.h"

#include <vector>

/// Index of the first vertex i whose successor (i + 1) mod n lies within the
/// coincidence distance of it, or -1. The last vertex is compared with the
/// first even for open lines. Lists of at most one vertex pass.
int findCoincidentVertices(const std::vector<Vec2>& vertices);

/// Runs the coincidence check and, on failure, logs the offending pair at
/// debug level ("Vertices are too close at ..."). True when the list passes.
bool passesCoincidenceCheck(const std::vector<Vec2>& vertices);

/// True when every coordinate is finite and within the supported magnitude.
bool verticesUsable(const std::vector<Vec2>& vertices);
