#pragma once

#include "editing/edithost.h"

#include <QString>

class DocumentScripting;
class ObjectInstanceHost;

/// The scripts a scene names to customise itself: the custom labels and
/// property display filter scripts of its display options and the property
/// export filter script of its export options.
enum class DocumentScript
{
    CustomLabels,
    ExportFilter,
    DisplayFilter,
};

/// A document as the script layer sees it: an edit host with a script
/// engine, an identity for module names and a file for the script log. The
/// editor's document implements it.
class ScriptDocument : public EditHost
{
public:
    /// The document's script engine and live script state.
    virtual DocumentScripting& scripting() = 0;
    /// A number unique among the documents of this process.
    virtual int identity() const = 0;
    /// Absolute path of the scene file, empty for a new scene.
    virtual const QString& filePath() const = 0;

    /// The script API changed the scene's setting that names `script`: the
    /// document loads it anew when it is next needed. Any thread.
    virtual void documentScriptSettingChanged(DocumentScript script) = 0;
    /// The script API changed the system command the scene runs after an
    /// export. Any thread.
    virtual void afterExportCommandChanged() = 0;

    /// What keeps the scene's object instances attached to their files, or
    /// null while nothing does (a document of its own, a test).
    ObjectInstanceHost* objectInstanceHost() const { return m_objectInstanceHost; }
    /// Registers (or clears with null) the host; the object layer calls it.
    void setObjectInstanceHost(ObjectInstanceHost* host) { m_objectInstanceHost = host; }

    /// The document whose script is building or executing now, null
    /// otherwise. Every script API function acts on this document.
    static ScriptDocument* s_currentScriptContextDocument;

private:
    ObjectInstanceHost* m_objectInstanceHost = nullptr;
};

/// Makes a document the current script document for a scope, so that code
/// outside a script (editor tools, panels) can call the same API functions a
/// script calls. Restores the previous document afterwards.
class ScriptDocumentScope
{
public:
    /// Makes `document` current.
    explicit ScriptDocumentScope(ScriptDocument* document)
        : m_previous(ScriptDocument::s_currentScriptContextDocument)
    {
        ScriptDocument::s_currentScriptContextDocument = document;
    }
    ~ScriptDocumentScope() { ScriptDocument::s_currentScriptContextDocument = m_previous; }
    ScriptDocumentScope(const ScriptDocumentScope&) = delete;
    ScriptDocumentScope& operator=(const ScriptDocumentScope&) = delete;

private:
    ScriptDocument* m_previous;
};
