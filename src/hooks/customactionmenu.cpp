#include "hooks/customactionmenu.h"

#include "base/log.h"
#include "editing/selection.h"
#include "io/jsontext.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <rapidjson/document.h>

namespace
{
// The limit keys in the order their constraints are appended, with the edit mode
// and bound each one stands for.
struct LimitKey
{
    const char* key;
    EditMode mode;
    LimitBound bound;
};

const LimitKey kLimitKeys[] = {
    {"minBodies", EditMode::Bodies, LimitBound::Minimum},       {"maxBodies", EditMode::Bodies, LimitBound::Maximum},
    {"minFixtures", EditMode::Fixtures, LimitBound::Minimum},   {"maxFixtures", EditMode::Fixtures, LimitBound::Maximum},
    {"minVertices", EditMode::Vertices, LimitBound::Minimum},   {"maxVertices", EditMode::Vertices, LimitBound::Maximum},
    {"minJoints", EditMode::Joints, LimitBound::Minimum},       {"maxJoints", EditMode::Joints, LimitBound::Maximum},
    {"minImages", EditMode::Images, LimitBound::Minimum},       {"maxImages", EditMode::Images, LimitBound::Maximum},
    {"minSamplers", EditMode::Samplers, LimitBound::Minimum},   {"maxSamplers", EditMode::Samplers, LimitBound::Maximum},
};

QString stringMember(const rapidjson::Value& node, const char* key, bool* present = nullptr)
{
    auto it = node.FindMember(key);
    const bool ok = it != node.MemberEnd() && it->value.IsString();
    if (present)
        *present = ok;
    return ok ? QString::fromUtf8(it->value.GetString(), int(it->value.GetStringLength())) : QString();
}

size_t selectedCount(const Selection& selection, EditMode mode)
{
    if (mode == EditMode::Vertices)
        return selection.vertices().size();
    return selection.count(editModeItemKind(mode));
}

std::unique_ptr<CustomActionMenuItem> readAction(const rapidjson::Value& node, const QString& layoutFile,
                                                 const QString& layout)
{
    bool hasName = false;
    bool hasFile = false;
    const QString name = stringMember(node, "name", &hasName);
    const QString file = stringMember(node, "file", &hasFile);
    if (!hasName || !hasFile) {
        plaxLog(LOG_WARNING, QStringLiteral("Skipping action without \"name\" or \"file\" in '%1'").arg(layoutFile));
        return nullptr;
    }
    const QString folder = QFileInfo(layoutFile).path();
    auto action = std::make_unique<CustomAction>(name, QStringLiteral("%1/%2").arg(folder, file), folder,
                                                 stringMember(node, "desc"));
    for (const LimitKey& limit : kLimitKeys) {
        auto it = node.FindMember(limit.key);
        if (it == node.MemberEnd())
            continue;
        if (!it->value.IsInt()) {
            plaxLog(LOG_WARNING, QStringLiteral("Ignoring \"%1\" of action '%2' in '%3': not an integer")
                                     .arg(QLatin1String(limit.key), name, layoutFile));
            continue;
        }
        action->addConstraint({limit.mode, limit.bound, it->value.GetInt()});
    }
    if (!QFileInfo::exists(action->scriptPath()))
        plaxLog(LOG_WARNING, QStringLiteral("Script file of action '%1' not found: '%2'").arg(name, action->scriptPath()));
    auto item = std::make_unique<CustomActionMenuItem>(CustomActionMenuItem::Kind::Action, name, layout);
    item->setAction(std::move(action));
    return item;
}

void readChildren(const rapidjson::Value& node, const QString& layoutFile, const QString& layout,
                  CustomActionMenuItem& parent)
{
    auto children = node.FindMember("children");
    if (children == node.MemberEnd() || !children->value.IsArray())
        return;
    for (const rapidjson::Value& child : children->value.GetArray()) {
        const QString type = child.IsObject() ? stringMember(child, "type") : QString();
        if (type == QLatin1String("menu")) {
            auto submenu = std::make_unique<CustomActionMenuItem>(CustomActionMenuItem::Kind::Submenu,
                                                                  stringMember(child, "name"), layout);
            readChildren(child, layoutFile, layout, *submenu);
            parent.addChild(std::move(submenu));
        } else if (type == QLatin1String("action")) {
            if (auto action = readAction(child, layoutFile, layout))
                parent.addChild(std::move(action));
        } else {
            plaxLog(LOG_WARNING, QStringLiteral("Skipping node of unknown type '%1' in '%2'").arg(type, layoutFile));
        }
    }
}
} // namespace

CustomAction::CustomAction(const QString& name, const QString& scriptPath, const QString& folderPath,
                           const QString& description, QObject* parent)
    : QAction(name, parent), m_name(name), m_scriptPath(scriptPath), m_folderPath(folderPath),
      m_description(description)
{
    setObjectName(QStringLiteral("customAction_%1").arg(name));
    setToolTip(description.isEmpty() ? name : description);
    setStatusTip(description);
}

bool CustomAction::isAllowedBy(const Selection& selection) const
{
    for (const CustomActionConstraint& c : m_constraints) {
        const size_t count = selectedCount(selection, c.mode);
        if (c.bound == LimitBound::Minimum && qint64(count) < c.value)
            return false;
        if (c.bound == LimitBound::Maximum && qint64(count) > c.value)
            return false;
    }
    return true;
}

CustomActionMenuItem::CustomActionMenuItem(Kind kind, const QString& title, const QString& layout)
    : m_kind(kind), m_title(title), m_layout(layout)
{
}

CustomActionMenuItem::~CustomActionMenuItem() = default;

CustomActionMenuItem* CustomActionMenuItem::addChild(std::unique_ptr<CustomActionMenuItem> child)
{
    m_children.push_back(std::move(child));
    return m_children.back().get();
}

QList<CustomAction*> CustomActionMenuItem::allActions() const
{
    QList<CustomAction*> actions;
    if (m_action)
        actions.append(m_action.get());
    for (const auto& child : m_children)
        actions.append(child->allActions());
    return actions;
}

CustomActionMenuLoader::CustomActionMenuLoader(const QString& baseFolder) : m_baseFolder(baseFolder) {}

CustomActionMenuLoader::~CustomActionMenuLoader() = default;

QStringList CustomActionMenuLoader::listFolders() const
{
    return QDir(m_baseFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QString CustomActionMenuLoader::layoutFileOf(const QString& folder) const
{
    return QStringLiteral("%1/%2/layout.json").arg(m_baseFolder, folder);
}

bool CustomActionMenuLoader::somethingChanged(const QStringList& folders) const
{
    bool changed = false;
    QSet<QString> present;
    for (const QString& folder : folders) {
        if (folder.endsWith(QLatin1Char('-'))) {
            plaxLog(LOG_DEBUG, QStringLiteral("First pass ignoring action menu: %1").arg(folder));
            continue;
        }
        const QString file = layoutFileOf(folder);
        const QFileInfo info(file);
        if (!info.exists()) {
            plaxLog(LOG_DEBUG, QStringLiteral("This file was in the entries but then exists() returned false: %1").arg(file));
            continue;
        }
        present.insert(file);
        auto it = m_fileTimes.constFind(file);
        if (it == m_fileTimes.constEnd()) {
            plaxLog(LOG_DEBUG, QStringLiteral("somethingChanged because no previous file time found for %1").arg(file));
            changed = true;
        } else if (info.lastModified() > it.value()) {
            plaxLog(LOG_DEBUG, QStringLiteral("somethingChanged because file time is newer on %1").arg(file));
            changed = true;
        }
    }
    for (auto it = m_fileTimes.constBegin(); it != m_fileTimes.constEnd(); ++it) {
        if (!present.contains(it.key())) {
            plaxLog(LOG_DEBUG,
                    QStringLiteral("somethingChanged because this file was here before and now it's not: %1").arg(it.key()));
            changed = true;
        }
    }
    return changed;
}

bool CustomActionMenuLoader::load()
{
    plaxLog(LOG_DEBUG, "MainWindow::loadCustomMenuActions");
    const QStringList folders = listFolders();
    plaxLog(LOG_DEBUG, QStringLiteral("Found %1 entries").arg(folders.size()));
    if (!somethingChanged(folders)) {
        plaxLog(LOG_DEBUG, "Returning from loadCustomMenuActions because nothing has changed.");
        return false;
    }

    plaxLog(LOG_DEBUG, "Rebuilding action menu because somethingChanged");
    clear();
    m_root = std::make_unique<CustomActionMenuItem>(CustomActionMenuItem::Kind::Root, QStringLiteral("root"));
    plaxLog(LOG_DEBUG, QStringLiteral("Processing %1 entries").arg(folders.size()));
    for (const QString& folder : folders) {
        if (folder.endsWith(QLatin1Char('-'))) {
            plaxLog(LOG_DEBUG, QStringLiteral("Ignoring action menu: %1").arg(folder));
            continue;
        }
        plaxLog(LOG_DEBUG, QStringLiteral("Loading action menu: %1").arg(folder));
        const QString file = layoutFileOf(folder);
        if (readLayout(file, folder, *m_root))
            m_layouts.append(folder);
        const QFileInfo info(file);
        if (info.exists())
            m_fileTimes.insert(file, info.lastModified());
    }
    plaxLog(LOG_DEBUG, "After loading custom menu, m_rootCustomMenuActionItem = 0x%08X",
            unsigned(quintptr(m_root.get())));
    plaxLog(LOG_DEBUG, QStringLiteral("After loading custom menu, m_rootCustomMenuActionItem has %1 children")
                           .arg(m_root->children().size()));
    return true;
}

void CustomActionMenuLoader::clear()
{
    m_root.reset();
    m_fileTimes.clear();
    m_layouts.clear();
}

bool CustomActionMenuLoader::readLayout(const QString& layoutFile, const QString& layout, CustomActionMenuItem& parent)
{
    QFile file(layoutFile);
    if (!file.exists()) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not find file '%1'").arg(layoutFile));
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        plaxLog(LOG_ERROR, QStringLiteral("Failed to parse file '%1' : %2").arg(layoutFile, file.errorString()));
        return false;
    }
    rapidjson::Document json;
    QString error;
    if (!parseJson(file.readAll(), &json, &error)) {
        plaxLog(LOG_ERROR, QStringLiteral("Failed to parse file '%1' : %2").arg(layoutFile, error));
        return false;
    }
    if (!json.IsObject()) {
        plaxLog(LOG_ERROR, QStringLiteral("Failed to parse file '%1' : %2").arg(layoutFile, QStringLiteral("the layout is not a JSON object")));
        return false;
    }
    readChildren(json, layoutFile, layout, parent);
    return true;
}
