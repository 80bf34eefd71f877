#include "api/scriptworld.h"

#include "api/scriptapisupport.h"
#include "base/log.h"
#include "editing/custompropertycommands.h"
#include "editing/editorstate.h"
#include "editing/propertycommands.h"
#include "model/metaworld.h"

#include <angelscript/scriptarray.h>

#include <algorithm>

using namespace AngelScript;

namespace WorldApi
{
namespace
{
constexpr int kBitplaneCount = 32;

EditorState* editorState()
{
    ScriptDocument* doc = ScriptApi::document();
    return doc ? &doc->editorState() : nullptr;
}

bool knownClass(const QString& word)
{
    static const QStringList kClasses = {QStringLiteral("body"),  QStringLiteral("fixture"), QStringLiteral("joint"),
                                         QStringLiteral("image"), QStringLiteral("sampler"), QStringLiteral("object"),
                                         QStringLiteral("world")};
    if (kClasses.contains(word))
        return true;
    plaxLog(LOG_WARNING, QStringLiteral("Unknown custom property class: '%1'").arg(word));
    return false;
}

std::vector<CustomPropertyDef>::iterator findDef(MetaWorld& world, const QString& itemClass, const QString& name)
{
    return std::find_if(world.customPropertyDefs.begin(), world.customPropertyDefs.end(),
                        [&](const CustomPropertyDef& d) { return d.itemClass == itemClass && d.name == name; });
}
} // namespace

ScriptWorld getWorld()
{
    ScriptWorld w;
    w.valid = ScriptApi::world() != nullptr;
    return w;
}

ScriptVec2 getGravity()
{
    MetaWorld* world = ScriptApi::world();
    return world ? ScriptVec2{world->settings.gravity.x, world->settings.gravity.y} : ScriptVec2();
}

void setGravity(float x, float y)
{
    MetaWorld* world = ScriptApi::world();
    const Vec2 g{x, y};
    if (!world || !ScriptApi::isUsable(g, "world", "setGravity") || world->settings.gravity == g)
        return;
    const Vec2 old = world->settings.gravity;
    world->settings.gravity = g;
    ScriptApi::record<SetWorldGravityCommand>(old, g);
}
void setGravityV(ScriptVec2 g) { setGravity(g.x, g.y); }

void setSimulationStepsPerSecond(float hz)
{
    MetaWorld* world = ScriptApi::world();
    if (!world || !ScriptApi::isUsable(hz, "world", "setSimulationStepsPerSecond"))
        return;
    if (!(hz > 0)) {
        plaxLog(LOG_WARNING, QStringLiteral("Ignoring non-positive value for world::setSimulationStepsPerSecond: %1")
                                 .arg(double(hz)));
        return;
    }
    const float old = world->settings.stepsPerSecond;
    if (old == hz)
        return;
    world->settings.stepsPerSecond = hz;
    ScriptApi::record<SetWorldPropertyFloatCommand>(QStringLiteral("setSimulationStepsPerSecond"), old, hz);
}

namespace
{
void setIterations(int& field, const char* setter, int value)
{
    if (value < 0) {
        plaxLog(LOG_WARNING, "Ignoring negative value for world::%s: %d", setter, value);
        return;
    }
    if (field == value)
        return;
    const int old = field;
    field = value;
    ScriptApi::record<SetWorldPropertyIntCommand>(QLatin1String(setter), qint64(old), qint64(value));
}
} // namespace

void setSimulationPositionIterations(int iterations)
{
    if (MetaWorld* world = ScriptApi::world())
        setIterations(world->settings.positionIterations, "setSimulationPositionIterations", iterations);
}

void setSimulationVelocityIterations(int iterations)
{
    if (MetaWorld* world = ScriptApi::world())
        setIterations(world->settings.velocityIterations, "setSimulationVelocityIterations", iterations);
}

void setCollisionBitplaneName(int bit, const std::string& name)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return;
    if (bit < 0 || bit >= kBitplaneCount) {
        plaxLog(LOG_WARNING, "Ignoring attempt to name collision bit %d", bit);
        return;
    }
    QStringList& names = world->collisionBitplaneNames;
    const QString newName = QString::fromStdString(name);
    const QString old = bit < names.size() ? names[bit] : QString();
    if (old == newName)
        return;
    while (names.size() <= bit)
        names.append(QString());
    names[bit] = newName;
    // Unnamed bits past the last named one are not kept.
    while (!names.isEmpty() && names.last().isEmpty())
        names.removeLast();
    ScriptApi::record<SetCollisionBitPlaneNameCommand>(bit, old, newName);
}

std::string getCollisionBitplaneName(int bit)
{
    MetaWorld* world = ScriptApi::world();
    if (!world || bit < 0 || bit >= world->collisionBitplaneNames.size())
        return std::string();
    return world->collisionBitplaneNames[bit].toStdString();
}

bool addCustomProperty(const std::string& itemClassText, const std::string& nameText,
                       const std::string& displayNameText, const std::string& typeText)
{
    MetaWorld* world = ScriptApi::world();
    const QString itemClass = QString::fromStdString(itemClassText);
    const QString name = QString::fromStdString(nameText);
    const QString type = QString::fromStdString(typeText);
    CustomPropertyType parsed;
    if (!world || !knownClass(itemClass))
        return false;
    if (!customPropertyTypeFromWord(type, &parsed)) {
        plaxLog(LOG_WARNING, QStringLiteral("Unknown custom property type: '%1'").arg(type));
        return false;
    }
    if (name.isEmpty() || findDef(*world, itemClass, name) != world->customPropertyDefs.end()) {
        plaxLog(LOG_WARNING, QStringLiteral("Custom property '%1' of %2 already exists").arg(name, itemClass));
        return false;
    }
    CustomPropertyDef def{itemClass, name, QString::fromStdString(displayNameText), type, {}};
    world->restoreCustomPropertyDef(std::move(def));
    ScriptApi::record<AddCustomPropertyCommand>(itemClass, name, QString::fromStdString(displayNameText), type);
    return true;
}

bool removeCustomProperty(const std::string& itemClassText, const std::string& nameText)
{
    MetaWorld* world = ScriptApi::world();
    const QString itemClass = QString::fromStdString(itemClassText);
    const QString name = QString::fromStdString(nameText);
    if (!world)
        return false;
    auto it = findDef(*world, itemClass, name);
    if (it == world->customPropertyDefs.end()) {
        plaxLog(LOG_WARNING, QStringLiteral("No custom property '%1' of %2 to remove").arg(name, itemClass));
        return false;
    }
    const CustomPropertyDef def = *it;
    world->removeCustomPropertyDef(size_t(it - world->customPropertyDefs.begin()));
    ScriptApi::record<RemoveCustomPropertyCommand>(itemClass, name, def.displayName, def.type);
    return true;
}

bool setCustomPropertyNames(const std::string& itemClassText, const std::string& nameText,
                            const std::string& newNameText, const std::string& newDisplayNameText)
{
    MetaWorld* world = ScriptApi::world();
    const QString itemClass = QString::fromStdString(itemClassText);
    const QString name = QString::fromStdString(nameText);
    const QString newName = QString::fromStdString(newNameText);
    const QString newDisplay = QString::fromStdString(newDisplayNameText);
    if (!world)
        return false;
    auto it = findDef(*world, itemClass, name);
    if (it == world->customPropertyDefs.end() || newName.isEmpty()
        || (newName != name && findDef(*world, itemClass, newName) != world->customPropertyDefs.end())) {
        plaxLog(LOG_WARNING, QStringLiteral("Cannot rename custom property '%1' of %2 to '%3'").arg(name, itemClass, newName));
        return false;
    }
    const QString oldDisplay = it->displayName;
    if (newName == name && newDisplay == oldDisplay)
        return true;
    it->name = newName;
    it->displayName = newDisplay;
    ScriptApi::record<SetCustomPropertyNamesCommand>(itemClass, name, oldDisplay, newName, newDisplay);
    return true;
}

CScriptArray* getCustomProperties(const std::string& itemClassText)
{
    CScriptArray* array = ScriptApi::newArray("array<string>");
    const QString itemClass = QString::fromStdString(itemClassText);
    if (MetaWorld* world = ScriptApi::world())
        for (const CustomPropertyDef& d : world->customPropertyDefs)
            if (array && d.itemClass == itemClass) {
                std::string name = d.name.toStdString();
                ScriptApi::appendToArray(*array, &name);
            }
    return array;
}

bool insertCustomPropertyComboboxEntry(const std::string& itemClass, const std::string& name,
                                       const std::string& entry, int index)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return false;
    auto it = findDef(*world, QString::fromStdString(itemClass), QString::fromStdString(name));
    if (it == world->customPropertyDefs.end())
        return false;
    QStringList& entries = it->comboboxEntries;
    const int at = index < 0 || index > entries.size() ? int(entries.size()) : index;
    const QString text = QString::fromStdString(entry);
    entries.insert(at, text);
    ScriptApi::record<InsertComboboxEntryCommand>(it->itemClass, it->name, text, at);
    return true;
}

bool removeCustomPropertyComboboxEntry(const std::string& itemClass, const std::string& name, int index)
{
    MetaWorld* world = ScriptApi::world();
    if (!world)
        return false;
    auto it = findDef(*world, QString::fromStdString(itemClass), QString::fromStdString(name));
    if (it == world->customPropertyDefs.end() || index < 0 || index >= it->comboboxEntries.size()) {
        plaxLog(LOG_WARNING, QStringLiteral("No combo box entry %1 of custom property '%2' of %3 to remove")
                                 .arg(index)
                                 .arg(QString::fromStdString(name), QString::fromStdString(itemClass)));
        return false;
    }
    const QString entry = it->comboboxEntries.takeAt(index);
    ScriptApi::record<RemoveComboboxEntryCommand>(it->itemClass, it->name, entry, index);
    return true;
}

bool appendCustomPropertyComboboxEntry(const std::string& itemClass, const std::string& name,
                                       const std::string& entry)
{
    return insertCustomPropertyComboboxEntry(itemClass, name, entry, -1);
}

ScriptVec2 getCursor()
{
    EditorState* s = editorState();
    return s ? ScriptVec2{s->cursor.x, s->cursor.y} : ScriptVec2();
}

void setCursor(float x, float y)
{
    EditorState* s = editorState();
    const Vec2 p{x, y};
    if (!s || !ScriptApi::isUsable(p, "editor", "setCursor") || s->cursor == p)
        return;
    const Vec2 old = s->cursor;
    s->cursor = p;
    ScriptApi::record<SetCursorPositionCommand>(old, p);
}
void setCursorV(ScriptVec2 p) { setCursor(p.x, p.y); }

ScriptVec2 getMousePos()
{
    EditorState* s = editorState();
    return s ? ScriptVec2{s->mousePos.x, s->mousePos.y} : ScriptVec2();
}

void setViewCenter(float x, float y)
{
    EditorState* s = editorState();
    if (s && ScriptApi::isUsable(Vec2{x, y}, "editor", "setViewCenter"))
        s->viewCenter = {x, y};
}
void setViewCenterV(ScriptVec2 p) { setViewCenter(p.x, p.y); }

void setViewHeight(float height)
{
    EditorState* s = editorState();
    if (s && ScriptApi::isUsable(height, "editor", "setViewHeight") && height > 0)
        s->viewHeight = height;
}

ScriptVec2 getViewCenter()
{
    EditorState* s = editorState();
    return s ? ScriptVec2{s->viewCenter.x, s->viewCenter.y} : ScriptVec2();
}
float getViewHeight() { EditorState* s = editorState(); return s ? s->viewHeight : 0; }
float getViewPixelHeight() { EditorState* s = editorState(); return s ? s->viewPixelHeight : 0; }
std::string getCurrentEditMode() { EditorState* s = editorState(); return s ? editModeWord(s->editMode).toStdString() : std::string(); }
bool isCtrlKeyDown() { EditorState* s = editorState(); return s && s->ctrlDown; }
bool isAltKeyDown() { EditorState* s = editorState(); return s && s->altDown; }
std::string getCurrentActionMenuFolder()
{
    EditorState* s = editorState();
    return s ? s->actionMenuFolder.toStdString() : std::string();
}
} // namespace WorldApi
