#include "api/scriptmass.h"

#include "geometry/fixturebuilder.h"
#include "geometry/massguard.h"
#include "model/metabody.h"

#include <box2d/box2d.h>

namespace
{
// Builds fixtures on a dynamic body of a private world, reads what Box2D
// computed and forgets the created fixtures again.
template <class Build>
b2MassData measure(Build build)
{
    b2World world(b2Vec2(0, 0));
    b2BodyDef def;
    def.type = b2_dynamicBody;
    b2Body* body = world.CreateBody(&def);
    build(body);
    settleBodyMass(body, QString());
    b2MassData data;
    body->GetMassData(&data);
    // Box2D gives a body without mass a unit mass; that is not the fixtures'.
    if (!body->GetFixtureList())
        data = b2MassData{0, b2Vec2(0, 0), 0};
    return data;
}

void forgetCreated(MetaFixture& fixture)
{
    for (size_t i = 0; i < fixture.shapes().size(); ++i)
        fixture.shape(i).clearCreatedFixtures();
}
} // namespace

ScriptMassData fixturesMassData(MetaBody& body)
{
    const b2MassData data = measure([&](b2Body* b) {
        for (const auto& fixture : body.fixtures())
            createFixtures(*fixture, b);
    });
    for (const auto& fixture : body.fixtures())
        forgetCreated(*fixture);
    return {data.mass, {data.center.x, data.center.y}, data.I};
}

float fixtureMass(MetaFixture& fixture)
{
    const b2MassData data = measure([&](b2Body* b) { createFixtures(fixture, b); });
    forgetCreated(fixture);
    return data.mass;
}
