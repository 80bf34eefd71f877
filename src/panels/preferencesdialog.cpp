#include "panels/preferencesdialog.h"

#include "base/settings.h"
#include "geometry/decompositionsettings.h"
#include "panels/tipsdialog.h"
#include "player/mousedrag.h"
#include "script/scriptlimits.h"
#include "views/viewcolors.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace
{
struct ColorEntry
{
    const char* key;
    const char* label;
    QColor ViewColors::*member;
};

const ColorEntry kColorEntries[] = {
    {"background", QT_TRANSLATE_NOOP("PreferencesDialog", "Background"), &ViewColors::background},
    {"grid", QT_TRANSLATE_NOOP("PreferencesDialog", "Grid"), &ViewColors::grid},
    {"axisX", QT_TRANSLATE_NOOP("PreferencesDialog", "X axis"), &ViewColors::axisX},
    {"axisY", QT_TRANSLATE_NOOP("PreferencesDialog", "Y axis"), &ViewColors::axisY},
    {"staticBody", QT_TRANSLATE_NOOP("PreferencesDialog", "Static body"), &ViewColors::staticBody},
    {"kinematicBody", QT_TRANSLATE_NOOP("PreferencesDialog", "Kinematic body"), &ViewColors::kinematicBody},
    {"dynamicBody", QT_TRANSLATE_NOOP("PreferencesDialog", "Dynamic body"), &ViewColors::dynamicBody},
    {"selection", QT_TRANSLATE_NOOP("PreferencesDialog", "Selection"), &ViewColors::selection},
    {"joint", QT_TRANSLATE_NOOP("PreferencesDialog", "Joint"), &ViewColors::joint},
    {"jointSelected", QT_TRANSLATE_NOOP("PreferencesDialog", "Selected joint"), &ViewColors::jointSelected},
    {"imageOutline", QT_TRANSLATE_NOOP("PreferencesDialog", "Image outline"), &ViewColors::imageOutline},
    {"object", QT_TRANSLATE_NOOP("PreferencesDialog", "Object instance"), &ViewColors::object},
    {"cursor", QT_TRANSLATE_NOOP("PreferencesDialog", "Cursor"), &ViewColors::cursor},
    {"label", QT_TRANSLATE_NOOP("PreferencesDialog", "Label"), &ViewColors::label},
};

QString settingName(const char* key)
{
    return QStringLiteral("pref_%1").arg(QString::fromLatin1(key).replace(QLatin1Char('/'), QLatin1Char('_')));
}

template <class Widget>
Widget* named(Widget* widget, const char* key, const QString& accessible, const QString& tip = QString())
{
    widget->setObjectName(settingName(key));
    widget->setAccessibleName(accessible);
    if (!tip.isEmpty())
        widget->setToolTip(tip);
    return widget;
}

QDoubleSpinBox* doubleBox(QWidget* parent, double min, double max, int decimals)
{
    auto* box = new QDoubleSpinBox(parent);
    box->setRange(min, max);
    box->setDecimals(decimals);
    return box;
}
} // namespace

QString PreferenceKeys::defaultIssuePage()
{
#ifdef PLAX_ISSUE_PAGE
    return QStringLiteral(PLAX_ISSUE_PAGE);
#else
    return QString();
#endif
}

QStringList PreferencesDialog::colorKeys()
{
    QStringList keys;
    for (const ColorEntry& entry : kColorEntries)
        keys.append(QLatin1String(entry.key));
    return keys;
}

PreferencesDialog::PreferencesDialog(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("PreferencesDialog"));
    setAccessibleName(tr("Preferences"));
    setWindowTitle(tr("Preferences"));
    auto* tabs = m_tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("PreferencesTabs"));
    tabs->addTab(colorsPage(), tr("&Colours"));
    tabs->addTab(editingPage(), tr("&Editing"));
    tabs->addTab(workspacePage(), tr("&Workspace"));
    tabs->addTab(scriptingPage(), tr("&Scripts and physics"));
    tabs->addTab(helpPage(), tr("&Help and updates"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Apply, this);
    buttons->setObjectName(QStringLiteral("PreferencesButtons"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        save();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, [this] { save(); });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(buttons);
    load();
}

QWidget* PreferencesDialog::colorsPage()
{
    auto* page = new QWidget(this);
    auto* grid = new QGridLayout(page);
    int row = 0;
    for (const ColorEntry& entry : kColorEntries) {
        const QString key = QLatin1String(entry.key);
        const QString label = tr(entry.label);
        auto* button = new QPushButton(page);
        button->setObjectName(QStringLiteral("pref_colors_%1").arg(key));
        button->setAccessibleName(tr("%1 colour").arg(label));
        button->setToolTip(tr("Choose the colour of: %1").arg(label));
        connect(button, &QPushButton::clicked, this, [this, key, label] {
            const QColor chosen = QColorDialog::getColor(m_colors.value(key), this, label, QColorDialog::ShowAlphaChannel);
            if (chosen.isValid())
                setColor(key, chosen);
        });
        m_colorButtons.insert(key, button);
        grid->addWidget(new QLabel(label, page), row / 2, (row % 2) * 2);
        grid->addWidget(button, row / 2, (row % 2) * 2 + 1);
        ++row;
    }
    m_fillAlpha = named(new QSpinBox(page), "colors/fillAlpha", tr("Fixture fill opacity"),
                        tr("Opacity of fixture fills, 0 to 255"));
    m_fillAlpha->setRange(0, 255);
    auto* reset = new QPushButton(tr("&Defaults"), page);
    reset->setObjectName(QStringLiteral("pref_colors_defaults"));
    reset->setAccessibleName(tr("Default colours"));
    connect(reset, &QPushButton::clicked, this, [this] {
        const ViewColors defaults;
        for (const ColorEntry& entry : kColorEntries)
            setColor(QLatin1String(entry.key), defaults.*(entry.member));
        m_fillAlpha->setValue(defaults.fillAlpha);
    });
    const int last = (row + 1) / 2;
    grid->addWidget(new QLabel(tr("Fill opacity"), page), last, 0);
    grid->addWidget(m_fillAlpha, last, 1);
    grid->addWidget(reset, last, 3);
    grid->setRowStretch(last + 1, 1);
    return page;
}

QWidget* PreferencesDialog::editingPage()
{
    auto* page = new QWidget(this);
    auto* form = new QFormLayout(page);
    m_snapTranslate = named(doubleBox(page, 0.001, 1000, 3), PreferenceKeys::kSnapTranslateStep, tr("Move snapping step"),
                            tr("Moves snap to multiples of this length when snapping is on"));
    m_snapRotate = named(doubleBox(page, 0.1, 180, 2), PreferenceKeys::kSnapRotateStep, tr("Rotation snapping step"),
                         tr("Rotations snap to multiples of this angle in degrees"));
    m_snapScale = named(doubleBox(page, 0.001, 100, 3), PreferenceKeys::kSnapScaleStep, tr("Scale snapping step"),
                        tr("Scale factors snap to multiples of this step"));
    m_decomposition = named(new QComboBox(page), DecompositionSettings::kMethodKey, tr("Polygon decomposition method"),
                            tr("How concave polygons are split into convex pieces"));
    m_decomposition->addItem(tr("Bayazit, triangulation where it fails"), 0);
    m_decomposition->addItem(tr("Triangulation only"), 1);
    form->addRow(tr("Move snapping step:"), m_snapTranslate);
    form->addRow(tr("Rotation snapping step (degrees):"), m_snapRotate);
    form->addRow(tr("Scale snapping step:"), m_snapScale);
    form->addRow(tr("Polygon decomposition:"), m_decomposition);
    return page;
}

QWidget* PreferencesDialog::workspacePage()
{
    auto* page = new QWidget(this);
    auto* form = new QFormLayout(page);
    m_autosave = named(new QSpinBox(page), PreferenceKeys::kAutosaveMinutes, tr("Autosave interval"),
                       tr("Minutes between autosaves of modified documents; 0 turns autosave off"));
    m_autosave->setRange(0, 24 * 60);
    m_autosave->setSpecialValueText(tr("off"));
    m_workingDirectory = named(new QLineEdit(page), SettingsKeys::kWorkingDirectory, tr("Working directory"),
                               tr("Folder made current at start-up; the config folder is looked for in it, and "
                                  "a folder without one gets a copy of the installed default configuration. "
                                  "Empty: the folder the program is started in when it holds "
                                  "config/actionMenu/default/layout.json, else %1.")
                                   .arg(userWorkingFolder()));
    m_workingDirectory->setPlaceholderText(userWorkingFolder());
    m_reusePlayerViews = named(new QCheckBox(tr("Reuse the open player view of a document"), page),
                               PreferenceKeys::kReusePlayerViews, tr("Reuse player views"));
    form->addRow(tr("Autosave every (minutes):"), m_autosave);
    form->addRow(tr("Environment - working directory:"), m_workingDirectory);
    m_debugOutput = named(new QCheckBox(tr("Show debug messages in the message log and the batch tool's output"), page),
                          SettingsKeys::kDebugOutput, tr("Debug output"),
                          tr("For developers: the message log starts at DEBUG instead of INFO; plax.log always "
                             "holds every message"));
    form->addRow(QString(), m_reusePlayerViews);
    form->addRow(QString(), m_debugOutput);
    return page;
}

QWidget* PreferencesDialog::scriptingPage()
{
    auto* page = new QWidget(this);
    auto* form = new QFormLayout(page);
    m_scriptTimeout = named(new QSpinBox(page), ScriptLimits::kTimeSettingsKey, tr("Script time limit"),
                            tr("Seconds a batch script may run; 0 means no limit"));
    m_scriptTimeout->setRange(0, 24 * 3600);
    m_mouseJointForce = named(doubleBox(page, 0, 1e7, 1), kMouseJointForceKey, tr("Mouse joint force"),
                              tr("Force per kilogram with which the player's mouse drags a body"));
    form->addRow(tr("Script time limit (seconds):"), m_scriptTimeout);
    form->addRow(tr("Player mouse joint force:"), m_mouseJointForce);
    return page;
}

QWidget* PreferencesDialog::helpPage()
{
    auto* page = new QWidget(this);
    auto* form = new QFormLayout(page);
    m_showTips = named(new QCheckBox(tr("Show tips at start-up"), page), TipsDialog::kShowAtStartupKey,
                       tr("Show tips at start-up"));
    m_checkUpdates = named(new QCheckBox(tr("Check for a new version at start-up"), page),
                           PreferenceKeys::kCheckForUpdates, tr("Check for updates"));
    m_updateUrl = named(new QLineEdit(page), PreferenceKeys::kUpdateUrl, tr("Update address"),
                        tr("Address of a text file holding the newest version number"));
    m_issuePage = named(new QLineEdit(page), PreferenceKeys::kIssuePage, tr("Issue page"),
                        tr("The page \"Send feedback\" opens"));
    form->addRow(QString(), m_showTips);
    form->addRow(QString(), m_checkUpdates);
    form->addRow(tr("Version file address:"), m_updateUrl);
    form->addRow(tr("Issue page:"), m_issuePage);
    return page;
}

void PreferencesDialog::showWorkingDirectory()
{
    m_tabs->setCurrentWidget(m_workingDirectory->parentWidget());
    m_workingDirectory->setFocus(Qt::OtherFocusReason);
    m_workingDirectory->selectAll();
}

void PreferencesDialog::setColor(const QString& key, const QColor& color)
{
    if (!m_colorButtons.contains(key) || !color.isValid())
        return;
    m_colors.insert(key, color);
    updateColorButton(key);
}

void PreferencesDialog::updateColorButton(const QString& key)
{
    QPushButton* button = m_colorButtons.value(key);
    const QColor color = m_colors.value(key);
    button->setText(color.name(color.alpha() < 255 ? QColor::HexArgb : QColor::HexRgb));
    const QColor text = color.lightnessF() > 0.5 ? Qt::black : Qt::white;
    button->setStyleSheet(QStringLiteral("background-color: %1; color: %2;").arg(color.name(), text.name()));
}

void PreferencesDialog::load()
{
    auto settings = openAppSettings();
    const ViewColors colors = ViewColors::fromSettings();
    for (const ColorEntry& entry : kColorEntries)
        setColor(QLatin1String(entry.key), colors.*(entry.member));
    m_fillAlpha->setValue(colors.fillAlpha);
    const auto real = [&settings](const char* key, double fallback) { return settings->value(QLatin1String(key), fallback).toDouble(); };
    m_snapTranslate->setValue(real(PreferenceKeys::kSnapTranslateStep, PreferenceKeys::kDefaultSnapTranslateStep));
    m_snapRotate->setValue(real(PreferenceKeys::kSnapRotateStep, PreferenceKeys::kDefaultSnapRotateStep));
    m_snapScale->setValue(real(PreferenceKeys::kSnapScaleStep, PreferenceKeys::kDefaultSnapScaleStep));
    const int method = settings->value(QLatin1String(DecompositionSettings::kMethodKey), 0).toInt() == 1 ? 1 : 0;
    m_decomposition->setCurrentIndex(method);
    m_autosave->setValue(settings->value(QLatin1String(PreferenceKeys::kAutosaveMinutes),
                                         PreferenceKeys::kDefaultAutosaveMinutes).toInt());
    m_workingDirectory->setText(settings->value(QLatin1String(SettingsKeys::kWorkingDirectory)).toString());
    m_reusePlayerViews->setChecked(settings->value(QLatin1String(PreferenceKeys::kReusePlayerViews), false).toBool());
    m_debugOutput->setChecked(settings->value(QLatin1String(SettingsKeys::kDebugOutput), false).toBool());
    m_scriptTimeout->setValue(settings->value(QLatin1String(ScriptLimits::kTimeSettingsKey),
                                              ScriptLimits::kDefaultTimeSeconds).toInt());
    m_mouseJointForce->setValue(real(kMouseJointForceKey, kDefaultMouseJointForce));
    m_showTips->setChecked(settings->value(QLatin1String(TipsDialog::kShowAtStartupKey), true).toBool());
    m_checkUpdates->setChecked(settings->value(QLatin1String(PreferenceKeys::kCheckForUpdates), false).toBool());
    m_updateUrl->setText(settings->value(QLatin1String(PreferenceKeys::kUpdateUrl)).toString());
    m_issuePage->setText(settings->value(QLatin1String(PreferenceKeys::kIssuePage), PreferenceKeys::defaultIssuePage()).toString());
}

void PreferencesDialog::save()
{
    auto settings = openAppSettings();
    settings->beginGroup(QStringLiteral("colors"));
    for (auto it = m_colors.constBegin(); it != m_colors.constEnd(); ++it)
        settings->setValue(it.key(), it.value().name(it.value().alpha() < 255 ? QColor::HexArgb : QColor::HexRgb));
    settings->setValue(QStringLiteral("fillAlpha"), m_fillAlpha->value());
    settings->endGroup();
    settings->setValue(QLatin1String(PreferenceKeys::kSnapTranslateStep), m_snapTranslate->value());
    settings->setValue(QLatin1String(PreferenceKeys::kSnapRotateStep), m_snapRotate->value());
    settings->setValue(QLatin1String(PreferenceKeys::kSnapScaleStep), m_snapScale->value());
    settings->setValue(QLatin1String(DecompositionSettings::kMethodKey), m_decomposition->currentData().toInt());
    settings->setValue(QLatin1String(PreferenceKeys::kAutosaveMinutes), m_autosave->value());
    settings->setValue(QLatin1String(SettingsKeys::kWorkingDirectory), m_workingDirectory->text().trimmed());
    settings->setValue(QLatin1String(PreferenceKeys::kReusePlayerViews), m_reusePlayerViews->isChecked());
    settings->setValue(QLatin1String(SettingsKeys::kDebugOutput), m_debugOutput->isChecked());
    settings->setValue(QLatin1String(ScriptLimits::kTimeSettingsKey), m_scriptTimeout->value());
    settings->setValue(QLatin1String(kMouseJointForceKey), m_mouseJointForce->value());
    settings->setValue(QLatin1String(TipsDialog::kShowAtStartupKey), m_showTips->isChecked());
    settings->setValue(QLatin1String(PreferenceKeys::kCheckForUpdates), m_checkUpdates->isChecked());
    settings->setValue(QLatin1String(PreferenceKeys::kUpdateUrl), m_updateUrl->text().trimmed());
    settings->setValue(QLatin1String(PreferenceKeys::kIssuePage), m_issuePage->text().trimmed());
    settings->sync();
    emit applied();
}
