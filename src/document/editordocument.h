#pragma once

#include <QString>

#include <memory>

class DocumentScripting;
class MetaWorld;

/// One open scene: the scene model with its file, and (as the editor grows)
/// its script engine and undo stack. Batch mode and the interface both work
/// through documents.
class EditorDocument
{
public:
    /// A document holding a new, empty scene.
    EditorDocument();
    ~EditorDocument();
    EditorDocument(const EditorDocument&) = delete;
    EditorDocument& operator=(const EditorDocument&) = delete;

    /// The scene.
    MetaWorld& world() { return *m_world; }
    const MetaWorld& world() const { return *m_world; }

    /// Absolute path of the scene file, empty for a new scene.
    const QString& filePath() const { return m_filePath; }
    /// A number unique among the documents of this process.
    int identity() const { return m_identity; }

    /// Reads a scene file. On failure the document keeps its scene and path.
    bool load(const QString& path);
    /// Writes the scene to a file (atomically).
    bool save(const QString& path) const;

    /// The document's script engine, live script state and script log.
    DocumentScripting& scripting() { return *m_scripting; }

    /// The document whose script is building or executing now, null otherwise.
    /// Every script API function acts on this document.
    static EditorDocument* s_currentScriptContextDocument;

private:
    std::unique_ptr<MetaWorld> m_world;
    QString m_filePath;
    int m_identity;
    std::unique_ptr<DocumentScripting> m_scripting;
};
