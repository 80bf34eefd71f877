#pragma once

#include "editing/edithost.h"

#include <QString>

class DocumentScripting;
class ObjectInstanceHost;

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
