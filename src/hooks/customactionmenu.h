#pragma once

#include "editing/editmode.h"

#include <QAction>
#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class Selection;

/// Which end of a custom action's selection limit a value gives.
enum class LimitBound
{
    Minimum,
    Maximum,
};

/// One selection limit of a custom action: the number of selected items of
/// an edit mode (bodies, fixtures, vertices, joints, images or samplers)
/// must be at least or at most the value.
struct CustomActionConstraint
{
    /// What is counted: the items of this mode.
    EditMode mode = EditMode::Bodies;
    /// Whether the value is a minimum or a maximum.
    LimitBound bound = LimitBound::Minimum;
    /// The limit.
    int value = 0;
};

/// A user's script action from a layout file: its menu text, the script
/// file it runs, a description shown as tip and the selection it needs.
class CustomAction : public QAction
{
    Q_OBJECT

public:
    /// An action named `name` running `scriptPath` ("%1/%2": the layout's
    /// folder and its "file"), from the layout folder `folderPath`.
    CustomAction(const QString& name, const QString& scriptPath, const QString& folderPath,
                 const QString& description, QObject* parent = nullptr);

    /// The menu text.
    const QString& name() const { return m_name; }
    /// The script file to run.
    const QString& scriptPath() const { return m_scriptPath; }
    /// The folder of the layout the action comes from.
    const QString& folderPath() const { return m_folderPath; }
    /// The description (the tip), possibly empty.
    const QString& description() const { return m_description; }
    /// The selection limits in file order.
    const std::vector<CustomActionConstraint>& constraints() const { return m_constraints; }
    /// Appends a limit.
    void addConstraint(const CustomActionConstraint& constraint) { m_constraints.push_back(constraint); }

    /// True when every limit holds for the selection.
    bool isAllowedBy(const Selection& selection) const;

private:
    QString m_name;
    QString m_scriptPath;
    QString m_folderPath;
    QString m_description;
    std::vector<CustomActionConstraint> m_constraints;
};

/// A node of the loaded custom menu tree: the root, a submenu or an action.
class CustomActionMenuItem
{
public:
    /// What the node is.
    enum class Kind
    {
        Root,
        Submenu,
        Action,
    };

    /// A node of a kind with its title; `layout` names the layout folder it
    /// came from (empty for the root).
    CustomActionMenuItem(Kind kind, const QString& title, const QString& layout = QString());
    ~CustomActionMenuItem();
    CustomActionMenuItem(const CustomActionMenuItem&) = delete;
    CustomActionMenuItem& operator=(const CustomActionMenuItem&) = delete;

    /// The node's kind.
    Kind kind() const { return m_kind; }
    /// Menu title ("root" for the root).
    const QString& title() const { return m_title; }
    /// The layout folder's name the node came from.
    const QString& layout() const { return m_layout; }
    /// Child nodes in file order.
    const std::vector<std::unique_ptr<CustomActionMenuItem>>& children() const { return m_children; }
    /// Appends a child and returns it.
    CustomActionMenuItem* addChild(std::unique_ptr<CustomActionMenuItem> child);
    /// The action of an action node, else null. The node owns it.
    CustomAction* action() const { return m_action.get(); }
    /// Gives an action node its action.
    void setAction(std::unique_ptr<CustomAction> action) { m_action = std::move(action); }

    /// Every action below this node, depth first in file order.
    QList<CustomAction*> allActions() const;

private:
    Kind m_kind;
    QString m_title;
    QString m_layout;
    std::vector<std::unique_ptr<CustomActionMenuItem>> m_children;
    std::unique_ptr<CustomAction> m_action;
};

/// Reads the custom action menu layouts: every sub-folder of the base folder
/// ("config/actionMenu", relative to the working directory) with a
/// "layout.json", folders whose names end with "-" left out. The tree is
/// rebuilt only when a layout file appeared, vanished or was modified since
/// the last load. Every step is logged as the custom menu's users know it.
class CustomActionMenuLoader
{
public:
    /// The default base folder.
    static constexpr const char* kDefaultBaseFolder = "config/actionMenu";

    /// A loader for the layouts under `baseFolder`.
    explicit CustomActionMenuLoader(const QString& baseFolder = QLatin1String(kDefaultBaseFolder));
    ~CustomActionMenuLoader();

    /// (Re)loads all layouts when something changed; true when the tree was
    /// rebuilt.
    bool load();
    /// Deletes the tree and its actions and forgets the file times, so the
    /// next load rebuilds.
    void clear();
    /// The root of the tree, null before the first load.
    CustomActionMenuItem* root() const { return m_root.get(); }
    /// Names of the layout folders loaded, in listing order.
    const QStringList& layouts() const { return m_layouts; }
    /// The base folder.
    const QString& baseFolder() const { return m_baseFolder; }

    /// Reads one layout file and adds its nodes under `parent`, tagged with
    /// `layout`. Logs "Could not find file '%1'" or "Failed to parse file
    /// '%1' : %2" and adds nothing for a missing or malformed file; skips
    /// (and logs) nodes of unknown type and actions without name or file.
    static bool readLayout(const QString& layoutFile, const QString& layout, CustomActionMenuItem& parent);

private:
    QStringList listFolders() const;
    QString layoutFileOf(const QString& folder) const;
    bool somethingChanged(const QStringList& folders) const;

    QString m_baseFolder;
    std::unique_ptr<CustomActionMenuItem> m_root;
    QHash<QString, QDateTime> m_fileTimes;
    QStringList m_layouts;
};
