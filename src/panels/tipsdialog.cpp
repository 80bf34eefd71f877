#include "panels/tipsdialog.h"

#include "base/settings.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

QStringList TipsDialog::tips()
{
    return {
        tr("Every change is one step on the undo stack, even a whole script run: Ctrl+Z takes it back."),
        tr("The Actions menu runs scripts from config/actionMenu. Add your own: a folder with a layout.json "
           "and the scripts it names."),
        tr("An action can ask for a selection: \"minBodies\": 2 in its layout keeps it disabled until two "
           "bodies are selected."),
        tr("In the script editor, F5 runs the whole script, Ctrl+F5 the selected lines and Shift+F5 stops a "
           "script that runs too long."),
        tr("Type three letters of a script function in the script editor and pick it from the list; the help "
           "(F1) lists every function."),
        tr("sb() is short for getSelectedBodies(), sf() for getSelectedFixtures(), ab() for getAllBodies()."),
        tr("The script log beside the backups of a scene records every change as plaxscript: it can be run "
           "again."),
        tr("Preferences (Ctrl+,) hold the colours, the snapping steps, the autosave interval and the script "
           "time limit."),
    };
}

bool TipsDialog::showAtStartup()
{
    return openAppSettings()->value(QLatin1String(kShowAtStartupKey), true).toBool();
}

TipsDialog::TipsDialog(QWidget* parent)
    : QDialog(parent), m_text(new QLabel(this)), m_show(new QCheckBox(tr("Show tips at start-up"), this))
{
    setObjectName(QStringLiteral("TipsDialog"));
    setAccessibleName(tr("Tip of the day"));
    setWindowTitle(tr("Tip of the day"));
    m_text->setObjectName(QStringLiteral("TipText"));
    m_text->setAccessibleName(tr("Tip"));
    m_text->setWordWrap(true);
    m_text->setMinimumSize(360, 80);
    m_show->setObjectName(QStringLiteral("TipsAtStartup"));
    m_show->setAccessibleName(tr("Show tips at start-up"));
    m_show->setChecked(showAtStartup());
    connect(m_show, &QCheckBox::toggled, this,
            [](bool on) { openAppSettings()->setValue(QLatin1String(kShowAtStartupKey), on); });

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setObjectName(QStringLiteral("TipsButtons"));
    QPushButton* previous = buttons->addButton(tr("&Previous"), QDialogButtonBox::ActionRole);
    previous->setObjectName(QStringLiteral("TipPrevious"));
    QPushButton* next = buttons->addButton(tr("&Next"), QDialogButtonBox::ActionRole);
    next->setObjectName(QStringLiteral("TipNext"));
    connect(previous, &QPushButton::clicked, this, &TipsDialog::previousTip);
    connect(next, &QPushButton::clicked, this, &TipsDialog::nextTip);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_show);
    layout->addWidget(buttons);
    showTip(openAppSettings()->value(QLatin1String(kNextTipKey), 0).toInt());
}

void TipsDialog::showTip(int index)
{
    const QStringList all = tips();
    m_index = ((index % all.size()) + all.size()) % all.size();
    m_text->setText(all[m_index]);
    openAppSettings()->setValue(QLatin1String(kNextTipKey), (m_index + 1) % all.size());
}

void TipsDialog::nextTip()
{
    showTip(m_index + 1);
}

void TipsDialog::previousTip()
{
    showTip(m_index - 1);
}
