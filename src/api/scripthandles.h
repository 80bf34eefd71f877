#pragma once

#include "api/scriptvec2.h"
#include "base/types.h"

// The plaxscript handle types: small values naming a scene item by id (a
// vertex and a shape by fixture and index, a path by sampler and index).
// They never own the item; `valid` is false when the look-up failed. Each is
// registered as a plain value with the script-visible fields at their
// offsets; fields after the visible ones are the handle's own. Handles of at
// most 16 bytes hold only integers, larger ones any mix (the native calling
// convention passes them differently).

/// `world`: the scene of the current document.
struct ScriptWorld
{
    bool valid = false;
    int reserved = 0;
};

/// `body`: properties valid, pos, id, angle (position and angle as looked up).
struct ScriptBody
{
    bool valid = false;
    ScriptVec2 pos;
    ItemId id = 0;
    float angle = 0;
};

/// `fixture`: properties valid, id.
struct ScriptFixture
{
    bool valid = false;
    ItemId id = 0;
};

/// `shape`: properties valid, type; named by fixture id and shape index.
struct ScriptShape
{
    bool valid = false;
    int type = 0;
    ItemId fixture = 0;
    int index = 0;
};

/// `vertex`: properties valid, index, pos, wpos, x, y, wx, wy (local and
/// world position as looked up); named by fixture id and index.
struct ScriptVertex
{
    bool valid = false;
    unsigned index = 0;
    ScriptVec2 pos;
    ScriptVec2 wpos;
    float x = 0;
    float y = 0;
    float wx = 0;
    float wy = 0;
    ItemId fixture = 0;
};

/// `joint`: properties valid, id.
struct ScriptJoint
{
    bool valid = false;
    ItemId id = 0;
};

/// `image`: properties valid, center, id.
struct ScriptImage
{
    bool valid = false;
    ScriptVec2 center;
    ItemId id = 0;
    int reserved = 0;
};

/// `sampler`: properties valid, center, id.
struct ScriptSampler
{
    bool valid = false;
    ScriptVec2 center;
    ItemId id = 0;
    int reserved = 0;
};

/// `object`: properties valid, pos, id, angle.
struct ScriptObject
{
    bool valid = false;
    ScriptVec2 pos;
    ItemId id = 0;
    float angle = 0;
};

/// `path`: properties valid, type; named by sampler id and path index.
struct ScriptPath
{
    bool valid = false;
    int type = 0;
    ItemId sampler = 0;
    int index = 0;
};
