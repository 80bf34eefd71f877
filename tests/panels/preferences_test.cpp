// Every preference is written to the settings and read back by a new dialog
// (a restart) and by the code that uses it.
#include "app/autosave.h"
#include "base/log.h"
#include "base/settings.h"
#include "geometry/decompositionsettings.h"
#include "panels/messagelogpanel.h"
#include "panels/preferencesdialog.h"
#include "panels/tipsdialog.h"
#include "player/mousedrag.h"
#include "script/scriptlimits.h"
#include "views/viewcolors.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest/QTest>

namespace
{
template <class Widget>
Widget* field(QDialog& dialog, const char* key)
{
    const QString name = QStringLiteral("pref_%1").arg(QString::fromLatin1(key).replace('/', '_'));
    auto* widget = dialog.findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name.toStdString();
    if (widget) {
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << name.toStdString();
    }
    return widget;
}
} // namespace

TEST(Preferences, EveryValuePersistsAcrossARestart)
{
    openAppSettings()->clear();
    {
        PreferencesDialog dialog;
        dialog.setColor("background", QColor(10, 20, 30));
        dialog.setColor("dynamicBody", QColor(200, 100, 50, 128));
        field<QSpinBox>(dialog, "colors/fillAlpha")->setValue(42);
        field<QDoubleSpinBox>(dialog, PreferenceKeys::kSnapTranslateStep)->setValue(0.25);
        field<QDoubleSpinBox>(dialog, PreferenceKeys::kSnapRotateStep)->setValue(7.5);
        field<QDoubleSpinBox>(dialog, PreferenceKeys::kSnapScaleStep)->setValue(0.05);
        field<QComboBox>(dialog, DecompositionSettings::kMethodKey)->setCurrentIndex(1);
        field<QSpinBox>(dialog, PreferenceKeys::kAutosaveMinutes)->setValue(17);
        field<QLineEdit>(dialog, SettingsKeys::kWorkingDirectory)->setText("/tmp");
        field<QCheckBox>(dialog, PreferenceKeys::kReusePlayerViews)->setChecked(true);
        field<QCheckBox>(dialog, SettingsKeys::kDebugOutput)->setChecked(true);
        field<QSpinBox>(dialog, ScriptLimits::kTimeSettingsKey)->setValue(33);
        field<QDoubleSpinBox>(dialog, kMouseJointForceKey)->setValue(2500);
        field<QCheckBox>(dialog, TipsDialog::kShowAtStartupKey)->setChecked(false);
        field<QCheckBox>(dialog, PreferenceKeys::kCheckForUpdates)->setChecked(true);
        field<QLineEdit>(dialog, PreferenceKeys::kUpdateUrl)->setText("http://127.0.0.1:1/version.txt");
        field<QLineEdit>(dialog, PreferenceKeys::kIssuePage)->setText("https://issues.invalid/plax");
        // OK writes everything.
        auto* buttons = dialog.findChild<QDialogButtonBox*>("PreferencesButtons");
        ASSERT_NE(buttons, nullptr);
        QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
    }

    // The users of the settings read the new values.
    const ViewColors colors = ViewColors::fromSettings();
    EXPECT_EQ(colors.background, QColor(10, 20, 30));
    EXPECT_EQ(colors.dynamicBody, QColor(200, 100, 50, 128));
    EXPECT_EQ(colors.fillAlpha, 42);
    EXPECT_EQ(DecompositionSettings::method(), DecompositionMethod::Triangulation);
    EXPECT_EQ(AutoSaver::intervalMinutes(), 17);
    EXPECT_EQ(ScriptLimits::current().timeSeconds, 33);
    auto settings = openAppSettings();
    EXPECT_DOUBLE_EQ(settings->value(kMouseJointForceKey).toDouble(), 2500);
    EXPECT_DOUBLE_EQ(settings->value("editing/snaptranslatestep").toDouble(), 0.25);
    EXPECT_TRUE(settings->value("workspace/reuseexistingplayerviews").toBool());
    EXPECT_TRUE(settings->value("workspace/debugoutput").toBool());
    EXPECT_EQ(MessageLogPanel::startLevel(), LOG_DEBUG) << "the message log starts at DEBUG";
    EXPECT_EQ(settings->value("workspace/workingdirectory").toString(), "/tmp");
    EXPECT_FALSE(TipsDialog::showAtStartup());

    // A new dialog (as after a restart) shows every value again.
    PreferencesDialog again;
    EXPECT_EQ(again.color("background"), QColor(10, 20, 30));
    EXPECT_EQ(again.color("dynamicBody"), QColor(200, 100, 50, 128));
    EXPECT_EQ(again.color("grid"), ViewColors().grid) << "untouched colours keep their defaults";
    EXPECT_EQ(field<QSpinBox>(again, "colors/fillAlpha")->value(), 42);
    EXPECT_DOUBLE_EQ(field<QDoubleSpinBox>(again, PreferenceKeys::kSnapTranslateStep)->value(), 0.25);
    EXPECT_DOUBLE_EQ(field<QDoubleSpinBox>(again, PreferenceKeys::kSnapRotateStep)->value(), 7.5);
    EXPECT_DOUBLE_EQ(field<QDoubleSpinBox>(again, PreferenceKeys::kSnapScaleStep)->value(), 0.05);
    EXPECT_EQ(field<QComboBox>(again, DecompositionSettings::kMethodKey)->currentIndex(), 1);
    EXPECT_EQ(field<QSpinBox>(again, PreferenceKeys::kAutosaveMinutes)->value(), 17);
    EXPECT_EQ(field<QLineEdit>(again, SettingsKeys::kWorkingDirectory)->text(), "/tmp");
    EXPECT_TRUE(field<QCheckBox>(again, PreferenceKeys::kReusePlayerViews)->isChecked());
    EXPECT_TRUE(field<QCheckBox>(again, SettingsKeys::kDebugOutput)->isChecked());
    EXPECT_EQ(field<QSpinBox>(again, ScriptLimits::kTimeSettingsKey)->value(), 33);
    EXPECT_DOUBLE_EQ(field<QDoubleSpinBox>(again, kMouseJointForceKey)->value(), 2500);
    EXPECT_FALSE(field<QCheckBox>(again, TipsDialog::kShowAtStartupKey)->isChecked());
    EXPECT_TRUE(field<QCheckBox>(again, PreferenceKeys::kCheckForUpdates)->isChecked());
    EXPECT_EQ(field<QLineEdit>(again, PreferenceKeys::kUpdateUrl)->text(), "http://127.0.0.1:1/version.txt");
    EXPECT_EQ(field<QLineEdit>(again, PreferenceKeys::kIssuePage)->text(), "https://issues.invalid/plax");
    openAppSettings()->clear();
}

TEST(Preferences, CancelWritesNothingAndDefaultsAreSensible)
{
    openAppSettings()->clear();
    {
        PreferencesDialog dialog;
        EXPECT_FALSE(field<QCheckBox>(dialog, PreferenceKeys::kCheckForUpdates)->isChecked()) << "off by default";
        EXPECT_EQ(field<QSpinBox>(dialog, PreferenceKeys::kAutosaveMinutes)->value(), 5);
        EXPECT_EQ(field<QSpinBox>(dialog, ScriptLimits::kTimeSettingsKey)->value(), ScriptLimits::kDefaultTimeSeconds);
        EXPECT_DOUBLE_EQ(field<QDoubleSpinBox>(dialog, kMouseJointForceKey)->value(), kDefaultMouseJointForce);
        field<QSpinBox>(dialog, PreferenceKeys::kAutosaveMinutes)->setValue(99);
        dialog.reject();
    }
    EXPECT_FALSE(openAppSettings()->contains(PreferenceKeys::kAutosaveMinutes));
}
