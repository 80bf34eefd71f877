#pragma once

#include <QOpenGLWidget>

#include <functional>

class EditorDocument;

/// A window onto one document, shown in a sub-window of the workspace. Editor
/// views and player views derive from it. They ask OpenGL for multisampled
/// frames (smooth lines and edges) where it is cheap, which a driver without
/// multisampling quietly draws without. Closing it asks the close guard first (the
/// workspace prompts for unsaved changes there), then announces the closing
/// so that the workspace can drop the view.
class DocumentView : public QOpenGLWidget
{
    Q_OBJECT

public:
    /// Samples per pixel asked of OpenGL for antialiasing by default.
    static constexpr int kRequestedSamples = 4;
    /// Settings key of the samples per pixel of new views (0 turns
    /// multisampling off); without it, defaultSamples().
    static constexpr const char* kSamplesKey = "display/multisamples";
    /// kRequestedSamples on a graphics card; 0 on a software rasterizer
    /// (llvmpipe and the like), where multisampling costs several times the
    /// frame time. Found out once per process from the OpenGL renderer's name.
    static int defaultSamples();
    /// Whether an OpenGL renderer name is that of a software rasterizer.
    static bool isSoftwareRenderer(const QString& rendererName);

    /// Decides whether a view may close; false keeps it open.
    using CloseGuard = std::function<bool(DocumentView*)>;

    /// A view of `document` (not owned).
    explicit DocumentView(EditorDocument& document, QWidget* parent = nullptr);
    ~DocumentView() override;

    /// The document shown.
    EditorDocument& document() const { return m_document; }
    /// "editor" or "player", as log lines name the kind of view.
    virtual QString kindWord() const = 0;
    /// Installs the check run before the view closes.
    void setCloseGuard(CloseGuard guard) { m_closeGuard = std::move(guard); }

signals:
    /// Sent once when the view closes (its sub-window goes with it).
    void documentViewClosing(DocumentView* view);

protected:
    void closeEvent(QCloseEvent* event) override;
    /// Called once when the view closes, before the closing is announced
    /// (the document may go away right after): views drop what they hold of it.
    virtual void aboutToClose() {}
    /// True once the view has closed; its document may be gone.
    bool isClosed() const { return m_closed; }

private:
    EditorDocument& m_document;
    CloseGuard m_closeGuard;
    bool m_closed = false;
};
