#pragma once

#include "docscripts/customlabelscript.h"
#include "docscripts/displayfilterscript.h"
#include "docscripts/exportfilterscript.h"
#include "docscripts/scripttrust.h"
#include "engine/scriptdocument.h"

#include <QObject>
#include <QString>

#include <array>
#include <atomic>

/// The three scripts a document names to customise itself: the custom
/// labels script and the property display filter script (the scene's
/// display options "customLabelsScriptFile" and
/// "propertyDisplayFilterScriptFile") and the property export filter script
/// (export option "propertyExportFilterScriptFile"). A relative file name
/// starts from the scene file's folder (the working directory for a scene
/// never saved).
///
/// Scene files come from other people. In the editor nothing the scene names
/// runs (these scripts, nor the command it runs after an export) until
/// prepare() has had the user agree once for that scene file (ScriptTrust).
/// Once agreed, settings the user changes stay agreed and saving remembers
/// the agreement for the saved content; after a refusal a changed setting
/// leaves the decision open again, so the next prepare() asks about the
/// whole list. In command-line mode what the
/// command line asks for runs.
///
/// Each script is (re)loaded when it is first needed after a change of its
/// setting: the editor view's labels and the properties panel load without
/// waiting for a script running elsewhere (and try again later), an export
/// waits.
class DocumentScripts : public QObject
{
    Q_OBJECT

public:
    /// The three scripts.
    using Script = DocumentScript;

    /// The scripts of `document` (none loaded yet).
    explicit DocumentScripts(ScriptDocument& document);
    ~DocumentScripts() override;

    /// The file setting of a script as the scene stores it.
    QString setting(Script script) const;
    /// The file of a script: the setting resolved (empty when not set).
    QString resolvedPath(Script script) const;
    /// `setting` resolved against a scene file (see the class comment).
    static QString resolvePath(const QString& setting, const QString& sceneFile);

    /// What the scene would run: its scripts and its after-export command.
    TrustRequest trustRequest() const;
    /// Decides, once per scene, whether what the scene names may run (in
    /// the editor this may ask the user), then loads the scripts. Emits
    /// changed(). Returns whether they may run.
    bool prepare();
    /// Decides, once per scene, whether what the scene names may run (in the
    /// editor this may ask the user), without loading anything.
    bool decide();
    /// True when the scene's scripts and command may run now (without asking).
    bool isAllowed() const;

    /// A script's setting changed (through the script API). Any thread;
    /// changed() follows on the document's thread.
    void settingChanged(Script script);
    /// The after-export command changed (through the script API). Any thread.
    void afterExportCommandChanged();
    /// The document read another scene: every decision and script is dropped.
    void sceneReplaced();
    /// The document was saved: while allowed, what the saved file names is
    /// remembered as agreed.
    void sceneSaved();

    /// The labels script when it defines something and may run, else null.
    CustomLabelScript* labels();
    /// The display filter when it defines something and may run, else null.
    DisplayFilterScript* displayFilter();
    /// For an export: decides (may ask in the editor) and loads, waiting
    /// for the engine. The filter when it defines something, else null.
    ExportFilterScript* exportFilterForExport();

signals:
    /// The scripts or the decision changed: labels and panels show anew.
    void changed();

private:
    enum class Trust
    {
        Undecided,
        Allowed,
        Refused,
    };

    void userChanged();
    void reloadIfNeeded(Script script, bool wait);
    DocumentScriptModule& moduleOf(Script script);

    ScriptDocument& m_document;
    CustomLabelScript m_labels;
    ExportFilterScript m_exportFilter;
    DisplayFilterScript m_displayFilter;
    std::atomic<Trust> m_trust{Trust::Undecided};
    std::array<std::atomic<bool>, 3> m_dirty{true, true, true};
};
