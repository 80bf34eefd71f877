#include "player/keepresult.h"

#include "api/scriptbody.h"
#include "base/log.h"
#include "document/editordocument.h"
#include "editing/scriptcommand.h"
#include "engine/scriptdocument.h"
#include "model/metabody.h"
#include "model/metaworld.h"
#include "player/playerworld.h"

#include <cmath>
#include <vector>

namespace
{
bool finite(const b2Vec2& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y);
}

bool same(Vec2 a, const b2Vec2& b)
{
    return a.x == b.x && a.y == b.y;
}
} // namespace

QString keepResultUndoText()
{
    return QStringLiteral("step bodies");
}

int keepPlayerResult(const PlayerWorld& world, EditorDocument& document)
{
    struct Change
    {
        ItemId id;
        b2Vec2 position;
        float angle;
        b2Vec2 velocity;
        float spin;
    };
    std::vector<Change> changes;
    int refused = 0;
    for (size_t i = 0; i < world.bodyCount(); ++i) {
        const ItemId id = world.sceneBodyId(i);
        const MetaBody* target = id ? document.world().findBody(id) : nullptr;
        if (!target)
            continue;
        const b2Body* body = world.body(i);
        const Change c{id, body->GetPosition(), body->GetAngle(), body->GetLinearVelocity(), body->GetAngularVelocity()};
        if (!finite(c.position) || !finite(c.velocity) || !std::isfinite(c.angle) || !std::isfinite(c.spin)) {
            ++refused;
            continue;
        }
        if (!same(target->position, c.position) || target->angle != c.angle ||
            !same(target->linearVelocity, c.velocity) || target->angularVelocity != c.spin)
            changes.push_back(c);
    }
    if (refused > 0)
        plaxLog(LOG_WARNING,
                QStringLiteral("Kept the player's result without %1 bodies whose state is not finite").arg(refused));
    if (changes.empty())
        return 0;

    ScriptDocumentScope scope(&document);
    UndoMacroScope macro(document.undoStack(), keepResultUndoText());
    for (const Change& c : changes) {
        ScriptBody handle = BodyApi::getBody(int(c.id));
        const MetaBody& target = *document.world().findBody(c.id);
        if (!same(target.position, c.position))
            BodyApi::setPosition(&handle, c.position.x, c.position.y);
        if (target.angle != c.angle)
            BodyApi::setAngle(&handle, c.angle);
        if (!same(target.linearVelocity, c.velocity))
            BodyApi::setLinearVelocity(&handle, c.velocity.x, c.velocity.y);
        if (target.angularVelocity != c.spin)
            BodyApi::setAngularVelocity(&handle, c.spin);
    }
    return int(changes.size());
}
