#include "app/actionicons.h"

#include <QAction>
#include <QFile>
#include <QToolBar>

namespace ActionIcons
{
QIcon own(const QString& ownName)
{
    QIcon icon;
    for (const QString& file : {QStringLiteral(":/icons/%1.png").arg(ownName),
                                QStringLiteral(":/icons/%1-24.png").arg(ownName)}) {
        if (QFile::exists(file))
            icon.addFile(file);
    }
    return icon;
}

QIcon themed(const QString& themeName, const QString& ownName)
{
    if (QIcon::hasThemeIcon(themeName))
        return QIcon::fromTheme(themeName);
    return own(ownName);
}

QString toolTipWithShortcut(const QAction& action)
{
    QString description = action.statusTip();
    if (description.isEmpty())
        description = QString(action.text()).remove(QLatin1Char('&')).section(QLatin1Char('\t'), 0, 0);
    const QKeySequence key = action.shortcut();
    if (key.isEmpty())
        return description;
    return QStringLiteral("%1 (%2)").arg(description, key.toString(QKeySequence::NativeText));
}

void nameShortcutsInToolTips(QToolBar& toolbar)
{
    for (QAction* action : toolbar.actions()) {
        if (action->isSeparator() || action->property("plaxToolTipFollows").toBool())
            continue;
        action->setProperty("plaxToolTipFollows", true);
        const auto update = [action] {
            const QString tip = toolTipWithShortcut(*action);
            if (action->toolTip() != tip)
                action->setToolTip(tip);
        };
        update();
        QObject::connect(action, &QAction::changed, action, update);
    }
}
} // namespace ActionIcons
