#pragma once

#include "api/scripthandles.h"

class ScriptRegistrar;

/// Registers the members every item handle of the kinds joint, image,
/// sampler and object shares: opEquals, select, deselect, isSelected,
/// getName, setName, delete and the custom property method set; and the
/// global look-ups get<Kind>(int), get<Kind>(name), get<Kinds>(name),
/// getSelected<Kinds>() and getAll<Kinds>() with their short aliases,
/// add<Kind>(int, json) and select/deselect/delete of arrays.
template <class Handle>
void registerItemHandleBasics(ScriptRegistrar& reg);
