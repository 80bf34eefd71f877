#pragma once

#include "base/types.h"
#include "geometry/triangulation.h"

#include <cstdint>
#include <mutex>
#include <vector>

/// The triangles that fill big rings, kept for the rings drawn lately: a
/// ring drawn again unchanged takes its triangles as they are, and one with
/// a few corners moved (a vertex dragged on a huge outline) is triangulated
/// again only where the moved corners have triangles. The patch is taken
/// only when it is sure to fill the same area: the ring is still simple and
/// every new triangle turns the right way; otherwise the whole ring is
/// triangulated. Triangles are counter-clockwise, as triangulateRing gives.
class RingFill
{
public:
    /// Rings with fewer corners than this are not kept (they triangulate quickly).
    static constexpr size_t kSmallestKept = 256;
    /// The most corners a patch may move.
    static constexpr size_t kMostMoved = 64;

    /// The shared store of the views.
    static RingFill& shared();
    /// Triangles filling a ring (of any size; small ones are not kept).
    std::vector<TriangleIndices> triangles(const std::vector<Vec2>& ring);
    /// How the last ring of kept size was filled.
    enum class Source
    {
        Kept,       ///< unchanged since it was drawn
        Patched,    ///< triangulated again around moved corners
        Triangulated
    };
    /// How the last kept-size ring was filled.
    Source lastSource() const { return m_lastSource; }
    /// Forgets every ring.
    void clear();

    /// The triangles of `before` (a simple ring) made again for `after`, the
    /// same ring with the corners `moved` elsewhere, changing only the
    /// triangles that have a moved corner; false when that cannot be done
    /// with every triangle turning counter-clockwise (the caller then
    /// triangulates the whole ring).
    static bool patch(const std::vector<Vec2>& after, const std::vector<int>& moved,
                      std::vector<TriangleIndices>& triangles);

private:
    struct Entry
    {
        std::vector<Vec2> ring;
        std::vector<TriangleIndices> triangles;
        int simple = -1; ///< 1 simple, 0 not, -1 not yet known
        std::uint64_t used = 0;
    };

    std::mutex m_mutex;
    std::vector<Entry> m_entries;
    std::uint64_t m_clock = 0;
    Source m_lastSource = Source::Triangulated;
};
