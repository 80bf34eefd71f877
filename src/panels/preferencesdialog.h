#pragma once

#include <QColor>
#include <QDialog>
#include <QMap>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTabWidget;

/// Settings keys of the preferences that no other file owns.
namespace PreferenceKeys
{
/// Snapping step of moves in world units (editor tools), default 0.5.
inline constexpr const char* kSnapTranslateStep = "editing/snaptranslatestep";
/// Snapping step of rotations in degrees, default 15.
inline constexpr const char* kSnapRotateStep = "editing/snaprotatestep";
/// Snapping step of scaling factors, default 0.1.
inline constexpr const char* kSnapScaleStep = "editing/snapscalestep";
/// Whether a new player view of a document replaces its open one, default false.
inline constexpr const char* kReusePlayerViews = "workspace/reuseexistingplayerviews";
/// Whether the update check runs at start-up, default false.
inline constexpr const char* kCheckForUpdates = "updates/checkatstartup";
/// Address of the version file the update check reads.
inline constexpr const char* kUpdateUrl = "updates/url";
/// Address of the project's issue page that "Send feedback" opens.
inline constexpr const char* kIssuePage = "help/issuepage";
/// Autosave interval in minutes (AutoSaver), default 5, 0 turns it off.
inline constexpr const char* kAutosaveMinutes = "workspace/autosaveminutes";

/// Defaults.
inline constexpr double kDefaultSnapTranslateStep = 0.5;
inline constexpr double kDefaultSnapRotateStep = 15;
inline constexpr double kDefaultSnapScaleStep = 0.1;
inline constexpr int kDefaultAutosaveMinutes = 5;

/// The issue page used when the setting is absent (set at build time).
QString defaultIssuePage();
} // namespace PreferenceKeys

/// The preferences: the editor's colours, snapping steps, autosave interval,
/// working directory, debug output, script time limit, mouse joint force of the player,
/// polygon decomposition method, reuse of player views, tips, update check
/// and issue page. Values are read from the application settings when the
/// dialog opens and written back on OK or Apply, so they persist across a
/// restart.
class PreferencesDialog : public QDialog
{
    Q_OBJECT

public:
    /// The dialog with the current settings.
    explicit PreferencesDialog(QWidget* parent = nullptr);

    /// Reads every value from the settings into the widgets.
    void load();
    /// Writes every value from the widgets into the settings.
    void save();

    /// The colour chosen for a key of the group "colors".
    QColor color(const QString& key) const { return m_colors.value(key); }
    /// Chooses a colour for a key of the group "colors" (as the colour button does).
    void setColor(const QString& key, const QColor& color);
    /// Keys of the colours, as in the group "colors".
    static QStringList colorKeys();

    /// Shows the Workspace page with the working-directory field focused, as
    /// start-up does when the default action menu is missing.
    void showWorkingDirectory();

signals:
    /// Written to the settings (colours may have changed: views repaint).
    void applied();

private:
    QWidget* colorsPage();
    QWidget* editingPage();
    QWidget* workspacePage();
    QWidget* scriptingPage();
    QWidget* helpPage();
    void updateColorButton(const QString& key);

    QMap<QString, QColor> m_colors;
    QMap<QString, QPushButton*> m_colorButtons;
    QSpinBox* m_fillAlpha = nullptr;
    QDoubleSpinBox* m_snapTranslate = nullptr;
    QDoubleSpinBox* m_snapRotate = nullptr;
    QDoubleSpinBox* m_snapScale = nullptr;
    QSpinBox* m_autosave = nullptr;
    QLineEdit* m_workingDirectory = nullptr;
    QCheckBox* m_reusePlayerViews = nullptr;
    QCheckBox* m_debugOutput = nullptr;
    QSpinBox* m_scriptTimeout = nullptr;
    QDoubleSpinBox* m_mouseJointForce = nullptr;
    QComboBox* m_decomposition = nullptr;
    QCheckBox* m_showTips = nullptr;
    QCheckBox* m_checkUpdates = nullptr;
    QLineEdit* m_updateUrl = nullptr;
    QLineEdit* m_issuePage = nullptr;
    QTabWidget* m_tabs = nullptr;
};
