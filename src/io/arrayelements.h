#pragma once

#include "io/jsonsink.h"

#include <cstddef>
#include <functional>

/// The elements of a run, unless the caller gives another number.
constexpr size_t kArrayElementsRun = 64;

/// Writes the elements 0 to count - 1 of the sink's innermost open array by
/// calling write(sink, i) for each; write must write exactly one value.
/// Where the sink writes text, there are more than `run` elements and the
/// process may use more than one core, the elements are written in runs of
/// `run` by this thread and a helper thread together: runs written apart
/// are appended in order, so the text is the same as written one by one.
/// write is then called from both threads at once, each time with a sink of
/// its own, and must only read what it shares. A run of 0 writes every
/// element here.
void writeArrayElements(JsonSink& sink, size_t count, const std::function<void(JsonSink&, size_t)>& write,
                        size_t run = kArrayElementsRun);
