#include "edits/itemsnapshot.h"

#include "editing/selection.h"
#include "model/metaworld.h"

#include <algorithm>

ItemSnapshot::ItemSnapshot(MetaWorld& world, const Selection& selection, EditMode mode) : m_world(world), m_mode(mode)
{
    switch (mode) {
    case EditMode::Bodies:
        for (ItemId id : selection.items(ItemKind::Body)) {
            if (MetaBody* body = world.findBody(id)) {
                m_placed.push_back({id, body->position, body->angle, 1, 1, false});
                for (const auto& fixture : body->fixtures())
                    takeFixture(fixture->id());
            }
        }
        m_count = int(m_placed.size());
        break;
    case EditMode::Fixtures:
        for (ItemId id : selection.items(ItemKind::Fixture))
            takeFixture(id);
        m_count = int(m_fixtures.size());
        break;
    case EditMode::Vertices:
        for (const Selection::VertexRef& v : selection.vertices()) {
            const bool taken = std::any_of(m_fixtures.begin(), m_fixtures.end(),
                                           [&](const FixtureState& f) { return f.id == v.fixture; });
            if (!taken)
                takeFixture(v.fixture);
        }
        m_count = int(selection.vertices().size());
        break;
    case EditMode::Joints:
        for (ItemId id : selection.items(ItemKind::Joint)) {
            if (MetaJoint* joint = world.findJoint(id)) {
                // Two records per joint: anchor A, then anchor B (marked by the flip field).
                m_placed.push_back({id, joint->anchorA, 0, 1, 1, false});
                m_placed.push_back({id, joint->anchorB, 0, 1, 1, true});
            }
        }
        m_count = int(selection.count(ItemKind::Joint));
        break;
    case EditMode::Images:
        for (ItemId id : selection.items(ItemKind::Image)) {
            if (MetaImage* image = world.findImage(id))
                m_placed.push_back({id, image->center, image->angle, image->scale, image->aspectScale, image->flip});
        }
        m_count = int(m_placed.size());
        break;
    case EditMode::Samplers:
        for (ItemId id : selection.items(ItemKind::Sampler)) {
            if (MetaSampler* sampler = world.findSampler(id))
                m_placed.push_back({id, sampler->center, sampler->angle, sampler->height, 1, sampler->flip});
        }
        m_count = int(m_placed.size());
        break;
    case EditMode::Objects:
        for (ItemId id : selection.items(ItemKind::Object)) {
            if (MetaObject* object = world.findObject(id))
                m_placed.push_back({id, object->position, object->angle, object->scale, 1, object->flip});
        }
        m_count = int(m_placed.size());
        break;
    default: break;
    }
}

void ItemSnapshot::takeFixture(ItemId id)
{
    MetaFixture* fixture = m_world.findFixture(id);
    if (!fixture)
        return;
    FixtureState state{id, fixture->vertices(), {}};
    for (const MetaShape& shape : fixture->shapes())
        state.radii.push_back(shape.radius());
    m_fixtures.push_back(std::move(state));
}

void ItemSnapshot::restore() const
{
    for (const FixtureState& state : m_fixtures) {
        MetaFixture* fixture = m_world.findFixture(state.id);
        if (!fixture)
            continue;
        if (fixture->vertices() != state.vertices)
            fixture->setVertices(state.vertices);
        for (size_t i = 0; i < state.radii.size() && i < fixture->shapes().size(); ++i)
            fixture->shape(i).assign(fixture->shape(i).type(), state.radii[i]);
    }
    for (const PlacedState& state : m_placed) {
        switch (m_mode) {
        case EditMode::Bodies:
            if (MetaBody* body = m_world.findBody(state.id)) {
                body->position = state.position;
                body->angle = state.angle;
            }
            break;
        case EditMode::Joints:
            if (MetaJoint* joint = m_world.findJoint(state.id))
                (state.flip ? joint->anchorB : joint->anchorA) = state.position;
            break;
        case EditMode::Images:
            if (MetaImage* image = m_world.findImage(state.id)) {
                image->center = state.position;
                image->angle = state.angle;
                image->scale = state.scale;
                image->aspectScale = state.aspectScale;
                image->flip = state.flip;
            }
            break;
        case EditMode::Samplers:
            if (MetaSampler* sampler = m_world.findSampler(state.id)) {
                sampler->center = state.position;
                sampler->angle = state.angle;
                sampler->height = state.scale;
                sampler->flip = state.flip;
            }
            break;
        case EditMode::Objects:
            if (MetaObject* object = m_world.findObject(state.id)) {
                object->position = state.position;
                object->angle = state.angle;
                object->scale = state.scale;
                object->flip = state.flip;
            }
            break;
        default: break;
        }
    }
}
