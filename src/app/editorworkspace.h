#pragma once

#include <QList>
#include <QObject>
#include <QStringList>

#include <map>
#include <memory>

class DocumentView;
class EditorDocument;
class EditorView;
class PlayerView;
class QMdiArea;
class QMdiSubWindow;
class QUndoGroup;
class SceneObjectsAttachment;
class TextureCache;

/// The open documents and their views. Owns every document, maps each to its
/// views in the order they opened, puts the views into the multiple-document
/// area and keeps the undo group, window titles and recent files in step.
/// A document lives from a successful load (or a new scene) until its last
/// view closes.
class EditorWorkspace : public QObject
{
    Q_OBJECT

public:
    /// A workspace showing its views in `area`; questions and errors are
    /// shown over `dialogParent`.
    EditorWorkspace(QMdiArea* area, QWidget* dialogParent);
    ~EditorWorkspace() override;

    /// The application's undo group; its active stack is the active document's.
    QUndoGroup* undoGroup() const { return m_undoGroup; }
    /// The documents, in the order they were opened.
    QList<EditorDocument*> documents() const;
    /// Views of a document, in the order they opened.
    QList<DocumentView*> views(EditorDocument* document) const;
    /// The document of a file (absolute path compared), or null.
    EditorDocument* documentForFile(const QString& path) const;
    /// The view of the active sub-window, or null.
    DocumentView* activeView() const;
    /// The active view's document, or null.
    EditorDocument* activeDocument() const;
    /// The file name a document is shown under ("untitled" before its first save).
    static QString displayName(const EditorDocument& document);

    /// Opens a file: another view when it is open already (after asking),
    /// else a new document; failures show their reason and leave nothing.
    /// Returns the view opened, or null.
    EditorView* openFile(const QString& path);
    /// Opens an autosaved copy as the document of `originalPath` (empty: a new scene), modified.
    EditorView* openRecovered(const QString& backupPath, const QString& originalPath);
    /// Opens a new empty scene in a view.
    EditorView* newScene();
    /// Opens an editor view of an open document, copying the camera of `viewToCopy` when given.
    EditorView* openEditorView(EditorDocument* document, EditorView* viewToCopy = nullptr);
    /// Opens a player view of the document of an editor view, showing what
    /// the editor view shows. With the setting "workspace/reuseexistingplayerviews"
    /// an open player view of the document is reloaded and shown instead.
    PlayerView* openPlayerView(EditorView* from);
    /// Saves a document to `path` (its own file when empty); shows failures. True on success.
    bool saveDocument(EditorDocument* document, const QString& path = QString());
    /// Reloads the active document from its file; with `confirm`, a document
    /// holding changes its file lacks (isModified()) asks first.
    bool reopenActive(bool confirm = true);
    /// Closes every view (asking about unsaved changes); false when the user cancelled.
    bool closeAll();
    /// Asks whether to save a modified document before its last view closes;
    /// false when the user cancels (or a save fails).
    bool confirmClose(DocumentView* view);

    /// While a file loads, error messages (log errors and error boxes) are
    /// collected here to be shown in one box when the load fails.
    bool isCollectingErrors() const { return m_collecting; }
    /// Adds a message to the collection (see isCollectingErrors()).
    void collectError(const QString& text);

public slots:
    /// Re-titles every sub-window: the file name, with "*" when modified.
    void updateWindowTitles();
    /// Opens the recent file named by the sending action's data.
    void openRecentFile();
    /// Drops a closing view; the last view of a document takes the document with it.
    void documentViewClosing(DocumentView* view);
    /// Follows the active view: the undo group's active stack and the panels.
    void onSubWindowActivated(QMdiSubWindow* window);

signals:
    /// The active document changed (null when none is active).
    void activeDocumentChanged(EditorDocument* document);
    /// The recent-files list changed.
    void recentFilesChanged(const QStringList& files);
    /// A document's scene was replaced (reload); views and panels rebuild.
    void documentReloaded(EditorDocument* document);
    /// A document was saved to its file.
    void documentSaved(EditorDocument* document);
    /// A document is about to be destroyed.
    void documentClosing(EditorDocument* document);
    /// An editor view was opened (the main window connects its requests).
    void editorViewOpened(EditorView* view);
    /// A player view was opened.
    void playerViewOpened(PlayerView* view);

private:
    struct OpenDocument
    {
        std::unique_ptr<EditorDocument> document;
        std::shared_ptr<TextureCache> textures;
        std::unique_ptr<SceneObjectsAttachment> objects;
        QList<DocumentView*> views;
    };

    EditorDocument* addDocument(std::unique_ptr<EditorDocument> document);
    void attachObjects(OpenDocument& entry);
    void showError(const QString& text) const;
    void destroyDocument(EditorDocument* document);

    QMdiArea* m_area;
    QWidget* m_dialogParent;
    QUndoGroup* m_undoGroup;
    /// Each open document with its views, in opening order of the views.
    std::map<EditorDocument*, OpenDocument> m_documentToViewMap;
    QList<EditorDocument*> m_order;
    EditorDocument* m_active = nullptr;
    bool m_collecting = false;
    QStringList m_collected;
};
