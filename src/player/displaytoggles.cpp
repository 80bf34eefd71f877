#include "player/displaytoggles.h"

#include <QSettings>

namespace
{
// Every toggle with its key, so reading and writing cannot drift apart.
template <class Toggles, class F>
void forEachToggle(Toggles& t, F f)
{
    f("player/showinfo", t.showInfo);
    f("player/showreferencegrid", t.showReferenceGrid);
    f("player/showbackingimages", t.showBackingImages);
    f("player/showbodyimages", t.showBodyImages);
    f("player/showfixtures", t.showFixtures);
    f("player/showjointnubs", t.showJointNubs);
    f("player/showbodynubs", t.showBodyNubs);
    f("player/showruler", t.showRuler);
}
} // namespace

PlayerDisplayToggles PlayerDisplayToggles::read(const QSettings& settings)
{
    PlayerDisplayToggles t;
    forEachToggle(t, [&](const char* key, bool& value) {
        value = settings.value(QLatin1String(key), value).toBool();
    });
    return t;
}

void PlayerDisplayToggles::write(QSettings& settings) const
{
    forEachToggle(*this, [&](const char* key, const bool& value) { settings.setValue(QLatin1String(key), value); });
}
