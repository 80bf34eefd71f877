#include "views/scenegeometryupdate.h"

#include "model/metaworld.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{
bool sameLabel(const SceneLabel& a, const SceneLabel& b)
{
    return a.at == b.at && a.kind == b.kind && a.id == b.id && a.selected == b.selected && a.text == b.text;
}

bool sameImage(const ImageDraw& a, const ImageDraw& b)
{
    return a.corners == b.corners && a.texCoords == b.texCoords && a.opacity == b.opacity && a.tint == b.tint &&
           a.path == b.path;
}

template <typename T, typename Same>
bool sameRange(const T* a, const std::vector<T>& b, Same same)
{
    for (size_t i = 0; i < b.size(); ++i) {
        if (!same(a[i], b[i]))
            return false;
    }
    return true;
}

// Copies into `into`, from `first` on, the primitives of `corners` vertices
// of `from` that differ from what is there, noting the stretches written
// (stretches close together as one) and, when `moved` is given, where each
// differing primitive was and is. True when nothing differed.
bool copyDifferences(std::vector<GeomVertex>& into, size_t first, const std::vector<GeomVertex>& from, size_t corners,
                     std::vector<std::pair<size_t, size_t>>& written, GeometryChange* moved)
{
    // Same vertices between two differing ones that are written with them.
    constexpr size_t kGap = 64;
    GeomVertex* const to = into.data() + first;
    const size_t count = from.size();
    size_t start = count, end = 0; // the stretch being gathered
    const auto write = [&] {
        std::copy(from.begin() + long(start), from.begin() + long(end), to + start);
        written.emplace_back(first + start, end - start);
    };
    for (size_t i = 0; i < count; i += corners) {
        const size_t n = std::min(corners, count - i);
        if (std::memcmp(to + i, from.data() + i, n * sizeof(GeomVertex)) == 0)
            continue;
        if (moved) {
            for (size_t k = i; k < i + n; ++k) {
                moved->touch({to[k].x, to[k].y});
                moved->touch({from[k].x, from[k].y});
            }
        }
        if (start < count && i - end >= kGap) {
            write();
            start = i;
        } else if (start == count) {
            start = i;
        }
        end = i + n;
    }
    if (start == count)
        return true;
    write();
    return false;
}

// Grows a box as SceneGeometry's own box grows (an empty box takes the other).
void unite(Vec2& lo, Vec2& hi, Vec2 otherLo, Vec2 otherHi)
{
    if (otherHi.x < otherLo.x)
        return;
    if (hi.x < lo.x) {
        lo = otherLo;
        hi = otherHi;
        return;
    }
    lo = {std::min(lo.x, otherLo.x), std::min(lo.y, otherLo.y)};
    hi = {std::max(hi.x, otherHi.x), std::max(hi.y, otherHi.y)};
}
} // namespace

void GeometryChange::touch(Vec2 p)
{
    if (!std::isfinite(p.x) || !std::isfinite(p.y))
        return;
    unite(lo, hi, p, p);
}

const std::vector<std::uint32_t>* SceneGeometryUpdater::cellOf(const Slot& slot) const
{
    return slot.part == ScenePart::Region ? &m_regions.cells[slot.index] : nullptr;
}

GeometryChange SceneGeometryUpdater::update(SceneGeometry& geometry, const MetaWorld& world,
                                            const Selection& selection, const ViewColors& colors,
                                            const QString& sceneFilePath, int circleSegments,
                                            const std::vector<HeldFill>& heldFills)
{
    size_t objectSlots = 0;
    for (const Slot& slot : m_slots)
        objectSlots += slot.part == ScenePart::Object ? 1 : 0;
    bool full = !m_valid || m_world != &world || !(colors == m_colors) || sceneFilePath != m_filePath ||
                circleSegments != m_circleSegments || world.objects().size() != objectSlots;
    m_world = &world;
    m_colors = colors;
    m_filePath = sceneFilePath;
    m_circleSegments = circleSegments;

    // Which bodies draw differently: their digests against the last ones.
    const auto& bodies = world.bodies();
    std::vector<BodyState> states(bodies.size());
    std::vector<unsigned char> changed(bodies.size(), 1);
    SceneRegions regions;
    regions.places.resize(bodies.size());
    std::unordered_map<const MetaBody*, size_t> previousIndex;
    auto marks = SceneGeometry::selectionMarks(world, selection);
    // A fixture drawn with a held fill draws differently too (a fill is held
    // for one drag: a new one comes after the drag's undo step).
    for (const HeldFill& held : heldFills) {
        const MetaFixture* fixture = world.findFixture(held.fixture);
        if (fixture && fixture->body())
            marks[fixture->body()] += 0x94D049BB133111EBull * (std::uint64_t(held.fixture) * 2 + 1);
    }
    m_heldFills = &heldFills;
    for (size_t i = 0; i < bodies.size(); ++i) {
        const MetaBody* body = bodies[i].get();
        const auto mark = marks.find(body);
        states[i] = {body, SceneGeometry::bodyDigest(*body, mark == marks.end() ? 0 : mark->second)};
        if (full)
            continue;
        size_t before = i;
        if (before >= m_bodies.size() || m_bodies[before].body != body) {
            if (previousIndex.empty()) {
                for (size_t k = 0; k < m_bodies.size(); ++k)
                    previousIndex.emplace(m_bodies[k].body, k);
            }
            const auto it = previousIndex.find(body);
            before = it == previousIndex.end() ? m_bodies.size() : it->second;
        }
        if (before < m_bodies.size() && m_bodies[before].digest == states[i].digest) {
            changed[i] = 0;
            regions.places[i] = m_regions.places[before];
        }
    }
    for (size_t i = 0; i < bodies.size(); ++i) {
        if (changed[i])
            regions.places[i] = SceneRegions::placeOf(*bodies[i]);
    }
    regions.arrange();
    m_bodies = std::move(states);

    // Regions to draw again: those whose bodies changed, came or went.
    std::vector<unsigned char> dirty;
    if (!full) {
        full = regions.side != m_regions.side || !(regions.lo == m_regions.lo) || !(regions.hi == m_regions.hi);
    }
    if (!full) {
        dirty.assign(regions.cells.size(), 0);
        size_t dirtyCount = 0, used = 0;
        for (size_t c = 0; c < regions.cells.size(); ++c) {
            const std::vector<std::uint32_t>& cell = regions.cells[c];
            const std::vector<const MetaBody*>& before = m_cellBodies[c];
            bool d = cell.size() != before.size();
            for (size_t k = 0; k < cell.size() && !d; ++k)
                d = changed[cell[k]] || bodies[cell[k]].get() != before[k];
            dirty[c] = d ? 1 : 0;
            dirtyCount += d ? 1 : 0;
            used += cell.empty() && before.empty() ? 0 : 1;
        }
        // When most of the scene changed, drawing it all at once is as quick.
        full = dirtyCount > std::max<size_t>(4, used / 2);
    }
    m_regions = std::move(regions);
    m_cellBodies.resize(m_regions.cells.size());
    for (size_t c = 0; c < m_regions.cells.size(); ++c) {
        if (full || dirty[c]) {
            m_cellBodies[c].clear();
            for (std::uint32_t i : m_regions.cells[c])
                m_cellBodies[c].push_back(bodies[i].get());
        }
    }
    if (full) {
        buildAll(geometry, world, selection);
        return GeometryChange{};
    }

    GeometryChange change;
    change.full = false;
    m_partsDrawn = 0;
    bool labelsMoved = false;
    for (Slot& slot : m_slots) {
        if (slot.part == ScenePart::Region && !dirty[slot.index])
            continue;
        drawSlot(slot, geometry, world, selection, change, labelsMoved);
    }
    if (labelsMoved) {
        m_labelScratch.clear();
        m_labelScratch.reserve(geometry.labels.size());
        for (Slot& slot : m_slots) {
            const size_t first = m_labelScratch.size();
            m_labelScratch.insert(m_labelScratch.end(), geometry.labels.begin() + long(slot.firstLabel),
                                  geometry.labels.begin() + long(slot.firstLabel + slot.labelCount));
            slot.firstLabel = first;
        }
        geometry.labels.swap(m_labelScratch);
    }
    finish(geometry);
    // Stretches left behind by parts that moved to the end: once they are
    // a third of the arrays, everything is laid out afresh.
    size_t used = 0;
    for (const Slot& slot : m_slots)
        used += slot.triangleCount + slot.lineCount;
    const size_t total = geometry.triangles.size() + geometry.lines.size();
    if (total - used > std::max<size_t>(total / 3, 65536)) {
        buildAll(geometry, world, selection);
        return GeometryChange{};
    }
    return change;
}

void SceneGeometryUpdater::buildAll(SceneGeometry& geometry, const MetaWorld& world, const Selection& selection)
{
    geometry.clear();
    geometry.circleSegments = m_circleSegments;
    geometry.triangles.reserve(world.fixtureCount() * size_t(m_circleSegments) * 2);
    geometry.lines.reserve(world.fixtureCount() * size_t(m_circleSegments));
    geometry.labels.reserve(world.bodies().size() + world.fixtureCount());
    m_slots.clear();
    const auto addSlot = [this](ScenePart part, size_t index) {
        Slot slot;
        slot.part = part;
        slot.index = index;
        m_slots.push_back(slot);
    };
    addSlot(ScenePart::Images, 0);
    for (size_t c = 0; c < m_regions.cells.size(); ++c)
        addSlot(ScenePart::Region, c);
    addSlot(ScenePart::Joints, 0);
    addSlot(ScenePart::Samplers, 0);
    for (size_t i = 0; i < world.objects().size(); ++i)
        addSlot(ScenePart::Object, i);
    Vec2 lo{1, 1}, hi{-1, -1};
    for (Slot& slot : m_slots) {
        slot.firstTriangle = geometry.triangles.size();
        slot.firstLine = geometry.lines.size();
        slot.firstLabel = geometry.labels.size();
        const size_t firstImage = geometry.images.size();
        const size_t chunks = geometry.chunks.size();
        // Each part's own box, then the union (as one running box would be).
        geometry.lo = {1, 1};
        geometry.hi = {-1, -1};
        SceneGeometry::drawPart(geometry, world, selection, m_colors, m_filePath, m_circleSegments, slot.part,
                                cellOf(slot), slot.index, m_heldFills);
        slot.lo = geometry.lo;
        slot.hi = geometry.hi;
        unite(lo, hi, slot.lo, slot.hi);
        slot.triangleCount = slot.triangleRoom = geometry.triangles.size() - slot.firstTriangle;
        slot.lineCount = slot.lineRoom = geometry.lines.size() - slot.firstLine;
        slot.labelCount = geometry.labels.size() - slot.firstLabel;
        slot.images.assign(geometry.images.begin() + long(firstImage), geometry.images.end());
        slot.chunks.assign(geometry.chunks.begin() + long(chunks), geometry.chunks.end());
        for (GeomChunk& chunk : slot.chunks) {
            chunk.firstTriangle -= int(slot.firstTriangle);
            chunk.firstLine -= int(slot.firstLine);
        }
    }
    geometry.lo = lo;
    geometry.hi = hi;
    geometry.typicalFixtureSize = m_regions.typicalSize();
    m_valid = true;
    m_partsDrawn = m_slots.size();
}

void SceneGeometryUpdater::drawSlot(Slot& slot, SceneGeometry& geometry, const MetaWorld& world,
                                    const Selection& selection, GeometryChange& change, bool& labelsMoved)
{
    SceneGeometry& part = m_scratch;
    part.clear();
    SceneGeometry::drawPart(part, world, selection, m_colors, m_filePath, m_circleSegments, slot.part, cellOf(slot),
                            slot.index, m_heldFills);
    // Where a part keeps its number of vertices (a dragged corner moves a
    // few), one pass finds the primitives that differ, copies them and,
    // when both arrays kept theirs, notes where they were and are.
    const bool trianglesFit = part.triangles.size() == slot.triangleCount;
    const bool linesFit = part.lines.size() == slot.lineCount;
    GeometryChange* const movedPrimitives = trianglesFit && linesFit ? &change : nullptr;
    const bool sameTriangles = trianglesFit && copyDifferences(geometry.triangles, slot.firstTriangle, part.triangles,
                                                               3, change.triangles, movedPrimitives);
    const bool sameLines =
        linesFit && copyDifferences(geometry.lines, slot.firstLine, part.lines, 2, change.lines, movedPrimitives);
    const bool sameLabels = part.labels.size() == slot.labelCount &&
                            sameRange(geometry.labels.data() + slot.firstLabel, part.labels, sameLabel);
    const bool sameImages = part.images.size() == slot.images.size() &&
                            sameRange(slot.images.data(), part.images, sameImage);
    const bool sameBox = part.lo == slot.lo && part.hi == slot.hi;
    if (sameTriangles && sameLines && sameLabels && sameImages && sameBox)
        return;
    ++m_partsDrawn;

    // The pixels that may change where a part's vertices were laid out
    // anew: all of its chunks, where they were and where they are now.
    if (!movedPrimitives) {
        for (const std::vector<GeomChunk>* chunks : {&slot.chunks, &part.chunks}) {
            for (const GeomChunk& chunk : *chunks) {
                change.touch(chunk.lo);
                change.touch(chunk.hi);
            }
        }
    }
    if (!sameImages) {
        for (const std::vector<ImageDraw>* images : {&slot.images, &part.images}) {
            for (const ImageDraw& image : *images) {
                for (const Vec2& corner : image.corners)
                    change.touch(corner);
            }
        }
    }

    // An array whose count changed is written where it was when it fits,
    // else at the end.
    const auto place = [](std::vector<GeomVertex>& into, size_t& first, size_t& count, size_t& room,
                          const std::vector<GeomVertex>& from, std::vector<std::pair<size_t, size_t>>& written) {
        if (from.size() > room) {
            first = into.size();
            room = from.size();
            into.insert(into.end(), from.begin(), from.end());
        } else {
            std::copy(from.begin(), from.end(), into.begin() + long(first));
        }
        count = from.size();
        if (count > 0)
            written.emplace_back(first, count);
    };
    if (!trianglesFit)
        place(geometry.triangles, slot.firstTriangle, slot.triangleCount, slot.triangleRoom, part.triangles,
              change.triangles);
    if (!linesFit)
        place(geometry.lines, slot.firstLine, slot.lineCount, slot.lineRoom, part.lines, change.lines);

    if (part.labels.size() == slot.labelCount) {
        std::copy(part.labels.begin(), part.labels.end(), geometry.labels.begin() + long(slot.firstLabel));
    } else {
        // Laid out again once every part is drawn: they wait at the end.
        labelsMoved = true;
        slot.firstLabel = geometry.labels.size();
        geometry.labels.insert(geometry.labels.end(), part.labels.begin(), part.labels.end());
        slot.labelCount = part.labels.size();
    }
    slot.images = part.images;
    slot.lo = part.lo;
    slot.hi = part.hi;
    slot.chunks = part.chunks;
}

void SceneGeometryUpdater::finish(SceneGeometry& geometry)
{
    geometry.chunks.clear();
    geometry.images.clear();
    Vec2 lo{1, 1}, hi{-1, -1};
    for (const Slot& slot : m_slots) {
        for (GeomChunk chunk : slot.chunks) {
            chunk.firstTriangle += int(slot.firstTriangle);
            chunk.firstLine += int(slot.firstLine);
            geometry.chunks.push_back(chunk);
        }
        geometry.images.insert(geometry.images.end(), slot.images.begin(), slot.images.end());
        unite(lo, hi, slot.lo, slot.hi);
    }
    geometry.lo = lo;
    geometry.hi = hi;
    geometry.typicalFixtureSize = m_regions.typicalSize();
}
