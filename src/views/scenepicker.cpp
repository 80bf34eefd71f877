#include "views/scenepicker.h"

#include "document/editordocument.h"
#include "editing/selection.h"
#include "io/imagequad.h"
#include "model/metaworld.h"
#include "physics/placement.h"
#include "sampling/sampleranalysis.h"
#include "sampling/samplerframe.h"
#include "views/hittest.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace
{
// Grid size limits: enough cells for big scenes, few enough to build quickly.
constexpr int kMaxGridSide = 1024;
// A fixture spanning more cells than this is checked on every query instead.
constexpr long kMaxCellsPerFixture = 64;

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
}

void ScenePicker::build(const MetaWorld& world, const QString& sceneFilePath)
{
    clear();
    m_world = &world;
    Vec2 sceneLo{INFINITY, INFINITY}, sceneHi{-INFINITY, -INFINITY};
    size_t order = 0;
    for (const auto& body : world.bodies()) {
        if (finite(body->position))
            m_bodyOrigins.emplace_back(body->id(), body->position);
        for (const auto& fixture : body->fixtures()) {
            FixtureEntry entry{fixture->id(), body->id(), order++, {INFINITY, INFINITY}, {-INFINITY, -INFINITY},
                               m_vertices.size(), fixture->vertices().size()};
            bool usable = true;
            for (const Vec2& v : fixture->vertices()) {
                const Vec2 p = bodyToWorld(body.get(), v);
                usable = usable && finite(p);
                m_vertices.push_back(p);
                grow(entry.lo, entry.hi, p);
            }
            float margin = 0;
            for (const MetaShape& shape : fixture->shapes())
                margin = std::max(margin, std::isfinite(shape.radius()) ? std::fabs(shape.radius()) : 0.f);
            if (!usable || entry.vertexCount == 0)
                continue;
            entry.lo = {entry.lo.x - margin, entry.lo.y - margin};
            entry.hi = {entry.hi.x + margin, entry.hi.y + margin};
            if (!finite(entry.lo) || !finite(entry.hi))
                continue;
            grow(sceneLo, sceneHi, entry.lo);
            grow(sceneLo, sceneHi, entry.hi);
            m_fixtureIndex[entry.id] = m_fixtures.size();
            m_fixtures.push_back(entry);
        }
    }

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
        for (uint32_t i = 0; i < m_fixtures.size(); ++i) {
            int x0, y0, x1, y1;
            cellRange(m_fixtures[i].lo, m_fixtures[i].hi, &x0, &y0, &x1, &y1);
            if (long(x1 - x0 + 1) * long(y1 - y0 + 1) > kMaxCellsPerFixture) {
                m_outside.push_back(i);
                continue;
            }
            for (int y = y0; y <= y1; ++y) {
                for (int x = x0; x <= x1; ++x)
                    m_cells[size_t(y) * size_t(m_columns) + size_t(x)].push_back(i);
            }
        }
    }
    m_built = true;
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
    if (m_cells.empty() || !cellRange(lo, hi, &x0, &y0, &x1, &y1))
        return found;
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
    // Topmost (drawn last) first.
    std::sort(found.begin(), found.end(), [](const FixtureEntry* a, const FixtureEntry* b) { return a->order > b->order; });
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
    switch (mode) {
    case EditMode::Bodies: {
        // A body is inside when all of its drawn fixtures are (or its
        // origin, when it has none).
        std::unordered_set<ItemId> outside, drawn;
        for (const FixtureEntry& f : m_fixtures) {
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
            if (inside(f.lo, f.hi))
                hits.push_back({ItemKind::Fixture, f.id});
        }
        break;
    case EditMode::Vertices: {
        const bool onlySelected = selection.count(ItemKind::Fixture) > 0;
        for (const FixtureEntry& f : m_fixtures) {
            if (onlySelected && !selection.contains(ItemKind::Fixture, f.id))
                continue;
            for (size_t i = 0; i < f.vertexCount; ++i) {
                if (within(m_vertices[f.firstVertex + i], lo, hi))
                    hits.push_back({ItemKind::Fixture, f.id, int(i)});
            }
        }
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
