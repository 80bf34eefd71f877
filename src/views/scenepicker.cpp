#include "views/scenepicker.h"

#include "document/editordocument.h"
#include "editing/selection.h"
#include "io/imagequad.h"
#include "model/metaworld.h"
#include "physics/placement.h"
#include "sampling/sampleranalysis.h"
#include "sampling/samplerframe.h"
#include "views/hittest.h"
#include "views/scenegeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_set>

namespace
{
// Grid size limits: enough cells for big scenes, few enough to build quickly.
constexpr int kMaxGridSide = 1024;
// A fixture spanning more cells than this is checked on every query instead.
constexpr long kMaxCellsPerFixture = 64;
// Keys of bodies one after another at a build (room for bodies inserted
// between them later).
constexpr std::uint64_t kKeySpacing = 1024;
// How many bodies ahead an update fetches into the caches.
constexpr size_t kPrefetchAhead = 8;

bool finite(Vec2 p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}

bool insideQuad(const std::array<Vec2, 4>& q, Vec2 p)
{
    bool inside = false;
    for (size_t i = 0, j = 3; i < 4; j = i++) {
        if ((q[i].y > p.y) != (q[j].y > p.y) &&
            p.x < (q[j].x - q[i].x) * (p.y - q[i].y) / (q[j].y - q[i].y) + q[i].x)
            inside = !inside;
    }
    return inside;
}

bool within(Vec2 p, Vec2 lo, Vec2 hi)
{
    return p.x >= lo.x && p.x <= hi.x && p.y >= lo.y && p.y <= hi.y;
}

void grow(Vec2& lo, Vec2& hi, Vec2 p)
{
    lo = {std::min(lo.x, p.x), std::min(lo.y, p.y)};
    hi = {std::max(hi.x, p.x), std::max(hi.y, p.y)};
}

// The box of everything an object instance shows, in the placing scene.
bool objectBounds(const MetaObject& object, Vec2* lo, Vec2* hi)
{
    *lo = {INFINITY, INFINITY};
    *hi = {-INFINITY, -INFINITY};
    grow(*lo, *hi, object.position);
    if (!object.objectDocument)
        return finite(object.position);
    Placement placement;
    placement.position = object.position;
    placement.angle = object.angle;
    placement.scale = object.scale;
    placement.flip = object.flip;
    for (const auto& body : object.objectDocument->world().bodies()) {
        for (const auto& fixture : body->fixtures()) {
            for (const Vec2& v : fixture->vertices()) {
                const Vec2 p = placement.applyToPoint(bodyToWorld(body.get(), v));
                if (finite(p))
                    grow(*lo, *hi, p);
            }
        }
    }
    return finite(*lo) && finite(*hi);
}
} // namespace

void ScenePicker::clear()
{
    m_built = false;
    m_world = nullptr;
    m_fixtures.clear();
    m_fixtureIndex.clear();
    m_vertices.clear();
    m_others.clear();
    m_bodyOrigins.clear();
    m_cells.clear();
    m_outside.clear();
    m_bodies.clear();
    m_maxStoredKey = 0;
    m_inOrder = true;
    m_liveEntries = m_builtEntries = m_builtOutside = m_staleVertices = 0;
}

void ScenePicker::readBody(const MetaBody& body, std::uint32_t key, std::vector<FixtureEntry>& entries,
                           std::vector<Vec2>& vertices)
{
    std::uint64_t index = 0;
    for (const auto& fixture : body.fixtures()) {
        FixtureEntry entry{fixture->id(), body.id(), (std::uint64_t(key) << 32) | index++,
                           {INFINITY, INFINITY}, {-INFINITY, -INFINITY}, vertices.size(), fixture->vertices().size()};
        bool usable = entry.vertexCount > 0;
        for (const Vec2& v : fixture->vertices()) {
            const Vec2 p = bodyToWorld(&body, v);
            usable = usable && finite(p);
            vertices.push_back(p);
            grow(entry.lo, entry.hi, p);
        }
        float margin = 0;
        for (const MetaShape& shape : fixture->shapes())
            margin = std::max(margin, std::isfinite(shape.radius()) ? std::fabs(shape.radius()) : 0.f);
        entry.lo = {entry.lo.x - margin, entry.lo.y - margin};
        entry.hi = {entry.hi.x + margin, entry.hi.y + margin};
        if (!usable || !finite(entry.lo) || !finite(entry.hi)) {
            vertices.resize(entry.firstVertex);
            continue;
        }
        entries.push_back(entry);
    }
}

void ScenePicker::build(const MetaWorld& world, const QString& sceneFilePath)
{
    clear();
    m_world = &world;
    const auto& bodies = world.bodies();
    // Keys with room between them for bodies inserted later.
    const std::uint64_t spacing =
        std::clamp<std::uint64_t>(std::uint64_t(UINT32_MAX) / (bodies.size() + 1), 1, kKeySpacing);
    m_bodies.reserve(bodies.size());
    m_bodyOrigins.reserve(bodies.size());
    for (size_t i = 0; i < bodies.size(); ++i) {
        const MetaBody& body = *bodies[i];
        if (finite(body.position))
            m_bodyOrigins.emplace_back(body.id(), body.position);
        BodyState state;
        state.body = &body;
        state.digest = SceneGeometry::bodyDigest(body, 0);
        state.key = std::uint32_t(std::min<std::uint64_t>(i * spacing, UINT32_MAX));
        state.firstEntry = m_fixtures.size();
        state.firstVertex = m_vertices.size();
        readBody(body, state.key, m_fixtures, m_vertices);
        state.entryCount = state.entryRoom = m_fixtures.size() - state.firstEntry;
        state.vertexRoom = m_vertices.size() - state.firstVertex;
        m_maxStoredKey = state.key;
        m_bodies.push_back(state);
    }
    Vec2 sceneLo{INFINITY, INFINITY}, sceneHi{-INFINITY, -INFINITY};
    m_fixtureIndex.reserve(m_fixtures.size());
    for (size_t i = 0; i < m_fixtures.size(); ++i) {
        m_fixtureIndex[m_fixtures[i].id] = i;
        grow(sceneLo, sceneHi, m_fixtures[i].lo);
        grow(sceneLo, sceneHi, m_fixtures[i].hi);
    }
    readLists(world, sceneFilePath);

    // The grid: cells about as big as a typical fixture.
    if (!m_fixtures.empty()) {
        m_gridLo = sceneLo;
        m_gridHi = sceneHi;
        const double width = std::max(double(sceneHi.x) - sceneLo.x, 1e-6);
        const double height = std::max(double(sceneHi.y) - sceneLo.y, 1e-6);
        double cell = std::sqrt(width * height / double(m_fixtures.size())) * 1.5;
        cell = std::max({cell, width / kMaxGridSide, height / kMaxGridSide, 1e-6});
        m_cell = float(cell);
        m_columns = std::clamp(int(std::ceil(width / cell)), 1, kMaxGridSide);
        m_rows = std::clamp(int(std::ceil(height / cell)), 1, kMaxGridSide);
        m_cells.assign(size_t(m_columns) * size_t(m_rows), {});
    }
    for (size_t i = 0; i < m_fixtures.size(); ++i)
        placeEntry(i);
    m_liveEntries = m_builtEntries = m_fixtures.size();
    m_builtOutside = m_outside.size();
    m_built = true;
    m_lastFull = true;
    m_lastBodiesRead = bodies.size();
}

void ScenePicker::readLists(const MetaWorld& world, const QString& sceneFilePath)
{
    m_others.clear();
    for (const auto& joint : world.joints()) {
        if (!joint->bodyA || !joint->bodyB)
            continue;
        BoxEntry e{ItemKind::Joint, joint->id(), {}, {}, {}, bodyToWorld(joint->bodyA, joint->anchorA),
                   bodyToWorld(joint->bodyB, joint->anchorB)};
        if (!finite(e.a) || !finite(e.b))
            continue;
        e.lo = {std::min(e.a.x, e.b.x), std::min(e.a.y, e.b.y)};
        e.hi = {std::max(e.a.x, e.b.x), std::max(e.a.y, e.b.y)};
        m_others.push_back(e);
    }
    for (const auto& image : world.images()) {
        const ImageQuad quad = computeImageQuad(*image);
        BoxEntry e{ItemKind::Image, image->id(), {INFINITY, INFINITY}, {-INFINITY, -INFINITY}, {}, {}, {}};
        for (size_t i = 0; i < 4; ++i) {
            e.quad[i] = bodyToWorld(image->body, quad.corners[i]);
            grow(e.lo, e.hi, e.quad[i]);
        }
        if (finite(e.lo) && finite(e.hi))
            m_others.push_back(e);
    }
    for (const auto& sampler : world.samplers()) {
        // The sampler's picture, as wide as its file's proportions make it.
        const std::shared_ptr<const SamplerAnalysis> analysis = analyseSampler(*sampler, sceneFilePath);
        const QSize size = analysis ? analysis->fileSize : QSize();
        const float h = sampler->height / 2;
        const float w = size.height() > 0 ? h * float(size.width()) / float(size.height()) : h;
        const SamplerFrame frame = SamplerFrame::of(*sampler);
        BoxEntry e{ItemKind::Sampler, sampler->id(), {INFINITY, INFINITY}, {-INFINITY, -INFINITY}, {}, {}, {}};
        const Vec2 corners[4] = {{-w, -h}, {w, -h}, {w, h}, {-w, h}};
        for (size_t i = 0; i < 4; ++i) {
            e.quad[i] = frame.toWorld(corners[i]);
            grow(e.lo, e.hi, e.quad[i]);
        }
        if (finite(e.lo) && finite(e.hi))
            m_others.push_back(e);
    }
    for (const auto& object : world.objects()) {
        BoxEntry e{ItemKind::Object, object->id(), {}, {}, {}, object->position, {}};
        if (objectBounds(*object, &e.lo, &e.hi))
            m_others.push_back(e);
    }
}

void ScenePicker::placeEntry(size_t index)
{
    FixtureEntry& f = m_fixtures[index];
    int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
    // A fixture reaching out of the grid (moved there since the build) is
    // checked on every query: a query out there finds no cells.
    const bool inGrid = !m_cells.empty() && within(f.lo, m_gridLo, m_gridHi) && within(f.hi, m_gridLo, m_gridHi);
    if (inGrid)
        cellRange(f.lo, f.hi, &x0, &y0, &x1, &y1);
    if (!inGrid || long(x1 - x0 + 1) * long(y1 - y0 + 1) > kMaxCellsPerFixture) {
        f.outside = true;
        m_outside.push_back(uint32_t(index));
        return;
    }
    f.outside = false;
    for (int y = y0; y <= y1; ++y) {
        for (int x = x0; x <= x1; ++x)
            m_cells[size_t(y) * size_t(m_columns) + size_t(x)].push_back(uint32_t(index));
    }
}

void ScenePicker::unplaceEntry(size_t index)
{
    // Order within a cell does not matter: queries sort what they find.
    const auto drop = [index](std::vector<uint32_t>& list) {
        const auto it = std::find(list.begin(), list.end(), uint32_t(index));
        if (it != list.end()) {
            *it = list.back();
            list.pop_back();
        }
    };
    const FixtureEntry& f = m_fixtures[index];
    if (f.outside) {
        drop(m_outside);
        return;
    }
    int x0, y0, x1, y1;
    cellRange(f.lo, f.hi, &x0, &y0, &x1, &y1);
    for (int y = y0; y <= y1; ++y) {
        for (int x = x0; x <= x1; ++x)
            drop(m_cells[size_t(y) * size_t(m_columns) + size_t(x)]);
    }
}

void ScenePicker::forgetEntries(const BodyState& state)
{
    for (size_t i = state.firstEntry; i < state.firstEntry + state.entryCount; ++i) {
        FixtureEntry& f = m_fixtures[i];
        unplaceEntry(i);
        // The fixture may have moved to a body read before this one.
        const auto it = m_fixtureIndex.find(f.id);
        if (it != m_fixtureIndex.end() && it->second == i)
            m_fixtureIndex.erase(it);
        f.live = false;
        --m_liveEntries;
    }
}

void ScenePicker::rereadBody(const MetaBody& body, BodyState& state)
{
    forgetEntries(state);
    state.entryCount = 0;
    m_scratchEntries.clear();
    m_scratchVertices.clear();
    readBody(body, state.key, m_scratchEntries, m_scratchVertices);

    // Vertices and entries where the body had them when they fit, else at
    // the end (the stretch left behind is dropped by the next build).
    const size_t vertexCount = m_scratchVertices.size();
    if (vertexCount > state.vertexRoom) {
        m_staleVertices += state.vertexRoom;
        state.firstVertex = m_vertices.size();
        state.vertexRoom = vertexCount;
        m_vertices.resize(m_vertices.size() + vertexCount);
    }
    std::copy(m_scratchVertices.begin(), m_scratchVertices.end(), m_vertices.begin() + long(state.firstVertex));
    const size_t entryCount = m_scratchEntries.size();
    if (entryCount > state.entryRoom) {
        state.firstEntry = m_fixtures.size();
        state.entryRoom = entryCount;
        m_fixtures.resize(m_fixtures.size() + entryCount);
        // Entries after those of a later body: box queries sort their hits.
        if (state.key < m_maxStoredKey)
            m_inOrder = false;
        m_maxStoredKey = std::max(m_maxStoredKey, state.key);
    }
    for (size_t k = 0; k < entryCount; ++k) {
        const size_t index = state.firstEntry + k;
        FixtureEntry& f = m_fixtures[index];
        f = m_scratchEntries[k];
        f.firstVertex += state.firstVertex;
        m_fixtureIndex[f.id] = index;
        placeEntry(index);
    }
    state.entryCount = entryCount;
    m_liveEntries += entryCount;
}

void ScenePicker::update(const MetaWorld& world, const QString& sceneFilePath)
{
    const auto& bodies = world.bodies();
    if (!m_built || m_world != &world) {
        build(world, sceneFilePath);
        return;
    }
    constexpr size_t kNone = SIZE_MAX;
    // Each body's state before, found at its place or by its address. The
    // bodies kept must keep their order (their keys order their fixtures).
    std::vector<size_t> before(bodies.size(), kNone);
    std::vector<std::uint64_t> digests(bodies.size());
    std::unordered_map<const MetaBody*, size_t> previousIndex;
    size_t lastBefore = kNone, kept = 0, changed = 0;
    m_bodyOrigins.clear();
    for (size_t i = 0; i < bodies.size(); ++i) {
        // Bodies lie apart in memory, most of them out of the caches after
        // a frame: those a few steps ahead are fetched while this one is read.
        if (i + kPrefetchAhead < bodies.size()) {
            const char* ahead = reinterpret_cast<const char*>(bodies[i + kPrefetchAhead].get());
            __builtin_prefetch(ahead);
            __builtin_prefetch(ahead + 64);
        }
        const MetaBody* body = bodies[i].get();
        if (finite(body->position))
            m_bodyOrigins.emplace_back(body->id(), body->position);
        size_t b = kNone;
        if (i < m_bodies.size() && m_bodies[i].body == body) {
            b = i;
        } else {
            if (previousIndex.empty()) {
                previousIndex.reserve(m_bodies.size());
                for (size_t k = 0; k < m_bodies.size(); ++k)
                    previousIndex.emplace(m_bodies[k].body, k);
            }
            const auto it = previousIndex.find(body);
            b = it == previousIndex.end() ? kNone : it->second;
        }
        digests[i] = SceneGeometry::bodyDigest(*body, 0);
        if (b != kNone) {
            if (lastBefore != kNone && b <= lastBefore) {
                build(world, sceneFilePath); // reordered
                return;
            }
            lastBefore = b;
            ++kept;
        }
        before[i] = b;
        changed += b == kNone || m_bodies[b].digest != digests[i] ? 1 : 0;
    }
    changed += m_bodies.size() - kept; // removed
    if (changed > std::max<size_t>(16, bodies.size() / 4)) {
        build(world, sceneFilePath);
        return;
    }

    // Keys for the bodies that came, between those of their neighbours.
    std::vector<BodyState> states(bodies.size());
    for (size_t i = 0; i < bodies.size();) {
        if (before[i] != kNone) {
            states[i] = m_bodies[before[i]];
            ++i;
            continue;
        }
        size_t end = i;
        while (end < bodies.size() && before[end] == kNone)
            ++end;
        const std::uint64_t lo = i > 0 ? std::uint64_t(states[i - 1].key) + 1 : 0;
        const bool atEnd = end == bodies.size();
        const std::uint64_t hi = atEnd ? std::uint64_t(UINT32_MAX) + 1 : std::uint64_t(m_bodies[before[end]].key);
        const std::uint64_t count = end - i;
        // Bodies added at the end are spaced as a build spaces them.
        const std::uint64_t step =
            std::min<std::uint64_t>(hi > lo ? (hi - lo) / (count + 1) : 0, atEnd ? kKeySpacing : UINT64_MAX);
        if (step == 0) {
            build(world, sceneFilePath); // no room left between the keys
            return;
        }
        for (size_t k = i; k < end; ++k) {
            states[k].key = std::uint32_t(lo + step * (k - i + 1) - 1);
            states[k].firstEntry = m_fixtures.size();
            states[k].firstVertex = m_vertices.size();
        }
        i = end;
    }

    // Bodies gone, then bodies changed or new.
    std::vector<unsigned char> stays(m_bodies.size(), 0);
    for (size_t b : before) {
        if (b != kNone)
            stays[b] = 1;
    }
    for (size_t k = 0; k < m_bodies.size(); ++k) {
        if (!stays[k]) {
            forgetEntries(m_bodies[k]);
            m_staleVertices += m_bodies[k].vertexRoom;
        }
    }
    size_t read = 0;
    for (size_t i = 0; i < bodies.size(); ++i) {
        BodyState& state = states[i];
        state.body = bodies[i].get();
        if (before[i] == kNone || state.digest != digests[i]) {
            rereadBody(*bodies[i], state);
            ++read;
        }
        state.digest = digests[i];
    }
    m_bodies = std::move(states);
    readLists(world, sceneFilePath);

    // Once the storage left behind or the fixtures kept out of the grid
    // grow large, everything is laid out afresh.
    const size_t deadEntries = m_fixtures.size() - m_liveEntries;
    if (deadEntries > std::max<size_t>(1024, m_fixtures.size() / 4) ||
        m_staleVertices > std::max<size_t>(4096, m_vertices.size() / 4) || m_outside.size() > m_builtOutside + 256 ||
        m_liveEntries > m_builtEntries + std::max<size_t>(256, m_builtEntries / 4)) {
        build(world, sceneFilePath);
        return;
    }
    m_lastFull = false;
    m_lastBodiesRead = read;
}

bool ScenePicker::cellRange(Vec2 lo, Vec2 hi, int* x0, int* y0, int* x1, int* y1) const
{
    const auto column = [this](float x) {
        return std::clamp(int(std::floor((double(x) - m_gridLo.x) / m_cell)), 0, m_columns - 1);
    };
    const auto row = [this](float y) {
        return std::clamp(int(std::floor((double(y) - m_gridLo.y) / m_cell)), 0, m_rows - 1);
    };
    *x0 = column(lo.x);
    *x1 = column(hi.x);
    *y0 = row(lo.y);
    *y1 = row(hi.y);
    return hi.x >= m_gridLo.x && lo.x <= m_gridHi.x && hi.y >= m_gridLo.y && lo.y <= m_gridHi.y;
}

std::vector<const ScenePicker::FixtureEntry*> ScenePicker::fixturesNear(Vec2 lo, Vec2 hi) const
{
    std::vector<const FixtureEntry*> found;
    for (uint32_t i : m_outside) {
        const FixtureEntry& f = m_fixtures[i];
        if (f.hi.x >= lo.x && f.lo.x <= hi.x && f.hi.y >= lo.y && f.lo.y <= hi.y)
            found.push_back(&f);
    }
    int x0, y0, x1, y1;
    if (!m_cells.empty() && cellRange(lo, hi, &x0, &y0, &x1, &y1)) {
        std::unordered_set<uint32_t> seen;
        for (int y = y0; y <= y1; ++y) {
            for (int x = x0; x <= x1; ++x) {
                for (uint32_t i : m_cells[size_t(y) * size_t(m_columns) + size_t(x)]) {
                    const FixtureEntry& f = m_fixtures[i];
                    if (f.hi.x >= lo.x && f.lo.x <= hi.x && f.hi.y >= lo.y && f.lo.y <= hi.y && seen.insert(i).second)
                        found.push_back(&f);
                }
            }
        }
    }
    // Topmost (drawn last) first.
    std::sort(found.begin(), found.end(),
              [](const FixtureEntry* a, const FixtureEntry* b) { return a->order > b->order; });
    return found;
}

std::vector<PickHit> ScenePicker::pick(EditMode mode, Vec2 point, float tolerance, const Selection& selection) const
{
    std::vector<PickHit> hits;
    if (!m_built || !m_world || !finite(point))
        return hits;
    const auto add = [&hits](PickHit hit) {
        if (std::find(hits.begin(), hits.end(), hit) == hits.end())
            hits.push_back(hit);
    };
    const Vec2 lo{point.x - tolerance, point.y - tolerance}, hi{point.x + tolerance, point.y + tolerance};

    switch (mode) {
    case EditMode::Bodies:
    case EditMode::Fixtures: {
        for (const FixtureEntry* f : fixturesNear(lo, hi)) {
            const MetaFixture* fixture = m_world->findFixture(f->id);
            if (fixture && HitTest::fixtureContains(*fixture, point, tolerance))
                add(mode == EditMode::Bodies ? PickHit{ItemKind::Body, f->body} : PickHit{ItemKind::Fixture, f->id});
        }
        if (mode == EditMode::Bodies) {
            for (auto it = m_bodyOrigins.rbegin(); it != m_bodyOrigins.rend(); ++it) {
                if ((it->second - point).length() <= tolerance * 1.5f)
                    add({ItemKind::Body, it->first});
            }
        }
        break;
    }
    case EditMode::Vertices: {
        const bool onlySelected = selection.count(ItemKind::Fixture) > 0;
        std::vector<std::pair<float, PickHit>> near;
        for (const FixtureEntry* f : fixturesNear(lo, hi)) {
            if (onlySelected && !selection.contains(ItemKind::Fixture, f->id))
                continue;
            for (size_t i = 0; i < f->vertexCount; ++i) {
                const float d = (m_vertices[f->firstVertex + i] - point).length();
                if (d <= tolerance)
                    near.push_back({d, PickHit{ItemKind::Fixture, f->id, int(i)}});
            }
        }
        std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        for (const auto& [d, hit] : near)
            add(hit);
        break;
    }
    case EditMode::Joints:
    case EditMode::Images:
    case EditMode::Samplers:
    case EditMode::Objects: {
        const ItemKind kind = editModeItemKind(mode);
        for (auto it = m_others.rbegin(); it != m_others.rend(); ++it) {
            const BoxEntry& e = *it;
            if (e.kind != kind)
                continue;
            bool hit = false;
            if (kind == ItemKind::Joint)
                hit = (e.a - point).length() <= tolerance * 2 || (e.b - point).length() <= tolerance * 2 ||
                      HitTest::segmentDistance(point, e.a, e.b) <= tolerance;
            else if (kind == ItemKind::Object)
                hit = within(point, e.lo, e.hi) || (e.a - point).length() <= tolerance * 2;
            else
                hit = insideQuad(e.quad, point);
            if (hit)
                add({kind, e.id});
        }
        break;
    }
    }
    return hits;
}

std::vector<PickHit> ScenePicker::pickInBox(EditMode mode, Vec2 lo, Vec2 hi, const Selection& selection) const
{
    std::vector<PickHit> hits;
    if (!m_built || !m_world || !finite(lo) || !finite(hi))
        return hits;
    const auto inside = [&](Vec2 a, Vec2 b) { return within(a, lo, hi) && within(b, lo, hi); };
    // Fixtures' hits in drawing order (entries moved by updates may lie
    // out of it).
    std::vector<std::pair<std::uint64_t, PickHit>> ordered;
    const auto inOrder = [this, &ordered, &hits] {
        if (!m_inOrder)
            std::stable_sort(ordered.begin(), ordered.end(),
                             [](const auto& a, const auto& b) { return a.first < b.first; });
        hits.reserve(ordered.size());
        for (const auto& [order, hit] : ordered)
            hits.push_back(hit);
    };
    switch (mode) {
    case EditMode::Bodies: {
        // A body is inside when all of its drawn fixtures are (or its
        // origin, when it has none).
        std::unordered_set<ItemId> outside, drawn;
        for (const FixtureEntry& f : m_fixtures) {
            if (!f.live)
                continue;
            drawn.insert(f.body);
            if (!inside(f.lo, f.hi))
                outside.insert(f.body);
        }
        for (const auto& [id, origin] : m_bodyOrigins) {
            const bool hasFixtures = drawn.count(id) != 0;
            if (outside.count(id) == 0 && (hasFixtures || within(origin, lo, hi)))
                hits.push_back({ItemKind::Body, id});
        }
        break;
    }
    case EditMode::Fixtures:
        for (const FixtureEntry& f : m_fixtures) {
            if (f.live && inside(f.lo, f.hi))
                ordered.push_back({f.order, {ItemKind::Fixture, f.id}});
        }
        inOrder();
        break;
    case EditMode::Vertices: {
        const bool onlySelected = selection.count(ItemKind::Fixture) > 0;
        for (const FixtureEntry& f : m_fixtures) {
            if (!f.live || (onlySelected && !selection.contains(ItemKind::Fixture, f.id)))
                continue;
            for (size_t i = 0; i < f.vertexCount; ++i) {
                if (within(m_vertices[f.firstVertex + i], lo, hi))
                    ordered.push_back({f.order, {ItemKind::Fixture, f.id, int(i)}});
            }
        }
        inOrder();
        break;
    }
    default: {
        const ItemKind kind = editModeItemKind(mode);
        for (const BoxEntry& e : m_others) {
            if (e.kind == kind && inside(e.lo, e.hi))
                hits.push_back({kind, e.id});
        }
        break;
    }
    }
    return hits;
}

Vec2 ScenePicker::vertexPosition(ItemId fixture, int index) const
{
    const auto it = m_fixtureIndex.find(fixture);
    if (it == m_fixtureIndex.end())
        return {};
    const FixtureEntry& f = m_fixtures[it->second];
    return index >= 0 && size_t(index) < f.vertexCount ? m_vertices[f.firstVertex + size_t(index)] : Vec2{};
}

std::vector<Vec2> ScenePicker::verticesNear(Vec2 point, float radius, const std::vector<ItemId>& skipFixtures) const
{
    std::vector<std::pair<float, Vec2>> near;
    const Vec2 lo{point.x - radius, point.y - radius}, hi{point.x + radius, point.y + radius};
    for (const FixtureEntry* f : fixturesNear(lo, hi)) {
        if (std::find(skipFixtures.begin(), skipFixtures.end(), f->id) != skipFixtures.end())
            continue;
        for (size_t i = 0; i < f->vertexCount; ++i) {
            const Vec2 v = m_vertices[f->firstVertex + i];
            const float d = (v - point).length();
            if (d <= radius)
                near.emplace_back(d, v);
        }
    }
    std::sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<Vec2> result;
    for (const auto& [d, v] : near)
        result.push_back(v);
    return result;
}
