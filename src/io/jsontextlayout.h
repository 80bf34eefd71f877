#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

/// Where a JSON text writer stands: its style and the containers open, the
/// outermost first. A writer started from another's layout writes what that
/// one would write next, so that runs of an array's elements can be written
/// apart (on other threads) and their texts joined in order.
struct JsonTextLayout
{
    /// One open container.
    struct Level
    {
        bool array = false;
        /// An array written on one line (its elements are plain values).
        bool singleLine = true;
        /// Whether singleLine has been decided (by the first element).
        bool decided = false;
        /// Members or elements written so far.
        size_t count = 0;
    };

    bool pretty = false;
    /// A member's key was written and its value is due.
    bool afterKey = false;
    std::vector<Level> levels;
};

/// Text written apart from a sink, to be appended to it: what was written,
/// the layout where it ended, the elements of the innermost array it holds,
/// and whether every value could be written.
struct JsonTextRun
{
    std::string_view text;
    const JsonTextLayout* end = nullptr;
    size_t elements = 0;
    bool ok = true;
};
