#include "panels/customactionmenus.h"

#include "base/log.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "engine/scriptbackground.h"
#include "engine/scriptpreprocessor.h"

#include <QActionGroup>
#include <QFile>
#include <QFileInfo>
#include <QMenu>

namespace
{
CustomActionMenus* s_instance = nullptr;
}

CustomActionMenus::CustomActionMenus(std::function<EditorDocument*()> activeDocument, const QString& baseFolder,
                                     QObject* parent)
    : QObject(parent), m_activeDocument(std::move(activeDocument)), m_loader(baseFolder)
{
    setObjectName(QStringLiteral("CustomActionMenus"));
    s_instance = this;
}

CustomActionMenus::~CustomActionMenus()
{
    if (s_instance == this)
        s_instance = nullptr;
}

CustomActionMenus* CustomActionMenus::instance()
{
    return s_instance;
}

bool CustomActionMenus::loadCustomMenuActions()
{
    if (!m_loader.load())
        return false;
    connectActions();
    return true;
}

void CustomActionMenus::clearCustomMenuActions()
{
    m_loader.clear();
}

void CustomActionMenus::connectActions()
{
    if (!m_loader.root())
        return;
    for (CustomAction* action : m_loader.root()->allActions())
        connect(action, &QAction::triggered, this, [this, action] { runAction(action); });
}

QString CustomActionMenus::currentLayout() const
{
    return openAppSettings()->value(QLatin1String(kLayoutKey)).toString();
}

void CustomActionMenus::setCurrentLayout(const QString& layout)
{
    openAppSettings()->setValue(QLatin1String(kLayoutKey), layout);
}

void CustomActionMenus::buildCustomMenu(QMenu* menu)
{
    plaxLog(LOG_DEBUG, "MainWindow::buildCustomMenu");
    loadCustomMenuActions();
    EditorDocument* document = m_activeDocument ? m_activeDocument() : nullptr;
    const qsizetype before = menu->actions().size();
    if (const CustomActionMenuItem* root = m_loader.root())
        addItems(menu, *root, document, true);
    if (menu->actions().size() == before) {
        QAction* none = menu->addAction(tr("No actions registered"));
        none->setObjectName(QStringLiteral("customActionNone"));
        none->setEnabled(false);
    }
}

void CustomActionMenus::addItems(QMenu* menu, const CustomActionMenuItem& item, EditorDocument* document,
                                 bool topLevel)
{
    const QString layout = currentLayout();
    for (const auto& child : item.children()) {
        if (topLevel && !layout.isEmpty() && child->layout() != layout)
            continue;
        if (child->kind() == CustomActionMenuItem::Kind::Submenu) {
            QMenu* submenu = menu->addMenu(child->title());
            submenu->setObjectName(QStringLiteral("customMenu_%1").arg(child->title()));
            submenu->setAccessibleName(child->title());
            addItems(submenu, *child, document, false);
        } else if (CustomAction* action = child->action()) {
            action->setEnabled(document && action->isAllowedBy(document->selection()));
            menu->addAction(action);
        }
    }
}

void CustomActionMenus::buildLayoutMenu(QMenu* menu)
{
    loadCustomMenuActions();
    menu->clear();
    auto* group = new QActionGroup(menu);
    const QString current = currentLayout();
    const auto add = [&](const QString& text, const QString& layout) {
        QAction* entry = menu->addAction(text);
        entry->setObjectName(QStringLiteral("actionMenuLayout_%1").arg(layout.isEmpty() ? QStringLiteral("all") : layout));
        entry->setCheckable(true);
        entry->setChecked(layout == current);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, [this, layout] { setCurrentLayout(layout); });
    };
    add(tr("All layouts"), QString());
    for (const QString& layout : m_loader.layouts())
        add(layout, layout);
}

bool CustomActionMenus::runAction(CustomAction* action)
{
    EditorDocument* document = m_activeDocument ? m_activeDocument() : nullptr;
    if (!action || !document) {
        plaxLog(LOG_WARNING, "No document to run the custom action on");
        return false;
    }
    // The selection may have changed since the menu was built (shortcuts).
    if (!action->isAllowedBy(document->selection())) {
        plaxLog(LOG_WARNING, QStringLiteral("The selection does not suit the action '%1'").arg(action->name()));
        return false;
    }
    const QString path = QFileInfo(action->scriptPath()).absoluteFilePath();
    QFile file(path);
    if (!file.exists()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not find file '%1'").arg(action->scriptPath()));
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not open file '%1' for reading").arg(action->scriptPath()));
        return false;
    }
    QString text = QString::fromUtf8(file.readAll());
    if (text.contains(QLatin1String("#include"))) {
        // The leading newline lets an include on the first line be found.
        text.insert(0, QLatin1Char('\n'));
        QStringList included;
        preprocessScriptIncludes(path, included, text);
    }
    plaxLog(LOG_DEBUG, QStringLiteral("Running custom action '%1' from '%2'").arg(action->name(), action->scriptPath()));
    document->editorState().actionMenuFolder = QFileInfo(action->folderPath()).absoluteFilePath();
    const QString busy = tr("Running script...");
    emit statusMessage(busy);
    const bool ok = ScriptBackground::runOneOffScript(*document, text, action->name(), busy);
    emit statusMessage(QString());
    emit actionFinished(action, ok);
    return ok;
}

void buildCustomMenu(QMenu* menu)
{
    if (CustomActionMenus* menus = CustomActionMenus::instance())
        menus->buildCustomMenu(menu);
}
