#pragma once

#include "docscripts/documentscriptshost.h"
#include "editing/editorstate.h"
#include "editing/selection.h"

#include <QString>
#include <QUndoStack>

#include <memory>

class DocumentScripting;
class DocumentScripts;
class MetaWorld;

/// One open scene: the scene model with its file, its script engine, its
/// undo stack, selection and editor state. Batch mode and the interface both
/// work through documents.
class EditorDocument : public DocumentScriptsHost
{
public:
    /// A document holding a new, empty scene.
    EditorDocument();
    ~EditorDocument() override;
    EditorDocument(const EditorDocument&) = delete;
    EditorDocument& operator=(const EditorDocument&) = delete;

    /// The scene.
    MetaWorld& world() override { return *m_world; }
    /// The scene (read only).
    const MetaWorld& world() const { return *m_world; }

    /// Absolute path of the scene file, empty for a new scene.
    const QString& filePath() const override { return m_filePath; }
    /// A number unique among the documents of this process.
    int identity() const override { return m_identity; }

    /// Reads a scene file. On success the undo stack is cleared and clean,
    /// the selection empty and the script log started; on failure the
    /// document keeps its scene, path and history.
    bool load(const QString& path);
    /// Writes the scene to a file (atomically). On success the undo stack is
    /// marked clean; the document takes the path when `adoptPath` is set (a
    /// save, as opposed to writing a copy), and its relative file references
    /// are rewritten to name the same files from the new folder.
    bool save(const QString& path, bool adoptPath = true);

    /// Reads an autosaved copy of a scene in place of its file: the document
    /// takes `originalPath` (empty for a scene never saved) as its file and
    /// counts as modified until it is saved. Relative file references are
    /// rewritten for the original's folder (full paths for a scene never
    /// saved). False when the copy cannot be read.
    bool loadRecovered(const QString& backupPath, const QString& originalPath);

    /// True when the scene has changes that are not saved (see isModified()).
    bool isModified() const;

    /// For a process that ends with this document: its scene's items are
    /// left to the system, which takes a big scene's memory back at once,
    /// instead of being freed one by one when the document goes (for ten
    /// thousand bodies that takes a quarter of what reading them took).
    /// Sanitizer builds free them as usual, so that their checks see every
    /// item go.
    void leaveSceneToProcessExit() { m_leaveSceneToExit = true; }
    /// True once leaveSceneToProcessExit() was called: what is made from the
    /// scene for the last time may be left to the process's end too.
    bool leavesSceneToProcessExit() const { return m_leaveSceneToExit; }

    /// The document's script engine, live script state and script log.
    DocumentScripting& scripting() override { return *m_scripting; }
    /// The scripts the scene names (labels, export and display filters).
    DocumentScripts& documentScripts() override { return *m_documentScripts; }
    /// The document's undo stack.
    QUndoStack& undoStack() override { return m_undoStack; }
    /// The selected items and vertices.
    Selection& selection() override { return m_selection; }
    /// Cursor, view and input state.
    EditorState& editorState() override { return m_editorState; }
    /// Runs a command's script through the one-off runner.
    bool runCommandScript(const QString& script, const QString& progressText) override;
    /// Appends to the script log.
    void appendToScriptLog(const QString& script) override;

private:
    std::unique_ptr<MetaWorld> m_world;
    bool m_leaveSceneToExit = false;
    QString m_filePath;
    int m_identity;
    QUndoStack m_undoStack;
    Selection m_selection;
    EditorState m_editorState;
    std::unique_ptr<DocumentScripting> m_scripting;
    std::unique_ptr<DocumentScripts> m_documentScripts;
    bool m_recovered = false;
};
