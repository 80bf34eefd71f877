#include "player/playerworld.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "io/jsontext.h"
#include "io/rawinfoscene.h"
#include "model/metaworld.h"
#include "physics/worldbuild.h"

namespace
{
std::unique_ptr<PlayerWorld> fail(QString* error, const QString& reason)
{
    plaxLog(LOG_ERROR, QStringLiteral("Failed to load world for player view\n%1").arg(reason));
    if (error)
        *error = reason;
    return nullptr;
}
} // namespace

PlayerWorld::~PlayerWorld()
{
    m_build.reset();
    m_scene.reset();
}

std::unique_ptr<PlayerWorld> PlayerWorld::load(const EditorDocument* document, QString* error,
                                               const PlayerRawInfoWriter& writer)
{
    if (error)
        error->clear();
    if (!document) {
        const QString reason = QStringLiteral("Document is null while trying to load world");
        plaxLog(LOG_ERROR, reason);
        if (error)
            *error = reason;
        return nullptr;
    }

    PlayerRawInfo raw = writer(*document);
    if (raw.text.isEmpty())
        return fail(error, raw.error.isEmpty() ? QStringLiteral("The raw info is empty.") : raw.error);
    rapidjson::Document json;
    QString parseError;
    if (!parseJsonInPlace(raw.text, &json, &parseError))
        return fail(error, parseError);

    std::unique_ptr<PlayerWorld> result(new PlayerWorld);
    result->m_scene = createWorldFromRawInfo(json, QString());
    if (!result->m_scene)
        return fail(error, QStringLiteral("The raw info does not describe a world."));
    result->m_build = std::make_unique<WorldBuild>(*result->m_scene);
    result->m_build->addScene(*result->m_scene);

    // A refused body record would shift every later body; the trace is only
    // kept when each record became a body.
    if (raw.sceneBodyIds.size() == result->m_build->bodies().size()) {
        result->m_sceneBodyIds = std::move(raw.sceneBodyIds);
    } else {
        plaxLog(LOG_WARNING, QStringLiteral("Player world has %1 bodies for %2 body records; results cannot be kept")
                                 .arg(result->m_build->bodies().size())
                                 .arg(raw.sceneBodyIds.size()));
        result->m_sceneBodyIds.assign(result->m_build->bodies().size(), 0);
    }

    const b2BodyDef groundDef;
    result->m_ground = result->m_build->world().CreateBody(&groundDef);
    return result;
}

b2World& PlayerWorld::world()
{
    return m_build->world();
}

size_t PlayerWorld::bodyCount() const
{
    return m_build->bodies().size();
}

b2Body* PlayerWorld::body(size_t index) const
{
    return m_build->bodies()[index].body;
}

ItemId PlayerWorld::sceneBodyId(size_t index) const
{
    return m_sceneBodyIds[index];
}
