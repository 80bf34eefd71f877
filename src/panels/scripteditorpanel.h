#pragma once

#include <QList>
#include <QMutex>
#include <QWidget>

#include <atomic>

class EditorDocument;
class QAction;
class QLabel;
class QListWidget;
class QListWidgetItem;
class QProgressBar;
class QToolBar;
class ScriptEditor;
class ScriptLibrary;

/// The script editor dock: the editor, a tool bar to compile and run the
/// whole script or the selected lines and to abort a running script, a busy
/// indicator, and the list of compile errors (clicking one moves the cursor
/// to its row). The text is the script library's current file or, without
/// one, the active document's live script. What scripts print goes to the
/// script output panel.
class ScriptEditorPanel : public QWidget
{
    Q_OBJECT

public:
    /// One message of a run: its row and column (0 when it has none) and text.
    struct Problem
    {
        int row = 0;
        int column = 0;
        bool error = true;
        QString text;
    };

    /// An empty panel.
    explicit ScriptEditorPanel(QWidget* parent = nullptr);
    ~ScriptEditorPanel() override;

    /// The editor.
    ScriptEditor* editor() const { return m_editor; }
    /// The list of compile errors and warnings.
    QListWidget* problemList() const { return m_problems; }
    /// The problems of the last run or compile.
    const QList<Problem>& problems() const { return m_lastProblems; }
    /// Actions: compile, run, run selection, abort.
    QAction* compileAction() const { return m_compile; }
    QAction* runAction() const { return m_run; }
    QAction* runSelectionAction() const { return m_runSelection; }
    QAction* abortAction() const { return m_abort; }

    /// Follows the active document (null: none).
    void setDocument(EditorDocument* document);
    /// Takes the text from the library's current file.
    void setLibrary(ScriptLibrary* library);
    /// True while a script started here runs.
    bool isRunning() const { return m_running; }

    /// Receives every log message (any thread); kept while a run of this
    /// panel goes on, to list its compile errors.
    void noteLogMessage(int level, const QString& text);

public slots:
    /// Compiles the whole text; true when it compiled.
    bool compile();
    /// Compiles and runs the whole text (one undo step); true when it ran to its end.
    bool runWhole();
    /// Runs the selected lines (the current line without a selection) as a
    /// one-off script (one undo step).
    bool runSelection();
    /// Asks the running script to stop; what it changed stays as one undo step.
    void abort();
    /// Shows or hides the busy indicator.
    void setBusy(bool busy, const QString& text = QString());

signals:
    /// The text was edited (the library marks its file modified).
    void textEdited();
    /// A compile or run started here ended (with its problems listed).
    void runFinished(bool ok);

private:
    void storeText();
    void beginRun();
    // Saves the current library file and the text and begins a run of the
    // live script; false when there is no document or a run is going on.
    bool beginLiveRun();
    void endRun(int rowOffset, bool ok);
    void problemActivated(QListWidgetItem* item);
    void updateActions();

    ScriptEditor* m_editor;
    QToolBar* m_toolBar;
    QListWidget* m_problems;
    QProgressBar* m_busyBar;
    QLabel* m_busyLabel;
    QWidget* m_busyRow;
    QAction* m_compile;
    QAction* m_run;
    QAction* m_runSelection;
    QAction* m_abort;
    EditorDocument* m_document = nullptr;
    ScriptLibrary* m_library = nullptr;
    bool m_running = false;
    bool m_loadingText = false;
    std::atomic<bool> m_collecting{false};
    QMutex m_messagesMutex;
    QList<QPair<int, QString>> m_messages;
    QList<Problem> m_lastProblems;
};
