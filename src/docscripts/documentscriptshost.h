#pragma once

#include "engine/scriptdocument.h"

class DocumentScripts;

/// A script document that also runs the scripts its scene names (labels,
/// filters, the command after an export): what the document implements for
/// this floor. It passes the script API's setting changes on to them.
class DocumentScriptsHost : public ScriptDocument
{
public:
    /// The scripts the scene names to customise labels, exports and the
    /// properties panel.
    virtual DocumentScripts& documentScripts() = 0;

    /// Tells documentScripts() (see DocumentScripts::settingChanged).
    void documentScriptSettingChanged(DocumentScript script) override;
    /// Tells documentScripts() (see DocumentScripts::afterExportCommandChanged).
    void afterExportCommandChanged() override;
};
