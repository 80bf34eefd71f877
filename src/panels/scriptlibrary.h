#pragma once

#include <QAbstractListModel>
#include <QMutex>
#include <QSet>
#include <QStringList>
#include <QWidget>

#include <functional>

class QListView;
class QLabel;

/// The script files ("*.rs") of the library's folder, for a list view.
class ScriptLibraryContentsModel : public QAbstractListModel
{
    Q_OBJECT

public:
    /// Role holding a file's absolute path.
    static constexpr int PathRole = Qt::UserRole + 1;

    /// An empty model.
    explicit ScriptLibraryContentsModel(QObject* parent = nullptr);
    /// Lists the folder again ("Found script file in library: %1" for each).
    void setFolder(const QString& folder);
    /// The folder listed.
    const QString& folder() const { return m_folder; }
    /// Absolute paths of the files, in name order.
    const QStringList& files() const { return m_files; }
    /// The row of a file, or -1.
    int rowOf(const QString& path) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    QString m_folder;
    QStringList m_files;
    mutable QSet<int> m_reportedRoles;
};

/// The script library panel: the script files of a folder, one of which is
/// the current file, the text the script editor shows and the live script
/// that compiling builds. New, open, save, save as, rename and delete.
class ScriptLibrary : public QWidget
{
    Q_OBJECT

public:
    /// Settings key of the library folder.
    static constexpr const char* kFolderKey = "scriptlibrary/folder";
    /// The folder used when the setting is absent (relative to the working directory).
    static constexpr const char* kDefaultFolder = "config/scripts";

    /// The library over the folder of the settings.
    explicit ScriptLibrary(QWidget* parent = nullptr);

    /// The model of the list.
    ScriptLibraryContentsModel* model() const { return m_model; }
    /// The list view.
    QListView* view() const { return m_view; }
    /// New, open, save and save as, in that order (the Scripts menu offers them too).
    const QList<QAction*>& fileActions() const { return m_fileActions; }
    /// Lists another folder (created when a script is saved into it).
    void setFolder(const QString& folder);
    /// The current file (absolute path), empty for a new unsaved script.
    QString currentFile() const;
    /// Where the editor's text comes from when saving.
    void setTextSource(std::function<QString()> source) { m_textSource = std::move(source); }

    /// Makes a file the current one; false when it cannot be read.
    bool openFile(const QString& path);
    /// Writes the editor's text to the current file (asks for a name
    /// without one); false when nothing was written.
    bool saveCurrent();
    /// Writes the editor's text to `path` and makes it current. Over a file
    /// of the library other than the current one, asks first ("File already
    /// exists"). False when cancelled or not written ("Could not open file
    /// for writing: '%1'").
    bool saveAs(const QString& path);
    /// Renames a library file (a new name without suffix gets ".rs"); the
    /// current file follows. False when refused.
    bool renameFile(const QString& path, const QString& newName);
    /// Deletes a library file; the current file becomes none when it was it.
    bool deleteFile(const QString& path);
    /// Reads the current file's text (empty without one).
    QString currentText() const;

public slots:
    /// Starts a new script: no current file, an empty text.
    void doNew();
    /// Opens a file chosen in a dialog ("Open script file").
    void doOpen();
    /// Saves to the current file, or asks for one.
    void doSave();
    /// Saves under a name chosen in a dialog ("Save script as").
    void doSaveAs();
    /// Renames the selected file after asking for the new name.
    void doRename();
    /// Deletes the selected file after asking.
    void doDelete();
    /// Lists the folder again.
    void refresh();
    /// Lists a folder chosen in a dialog and remembers it in the settings.
    void doChooseFolder();

signals:
    /// The current file changed (empty: a new script); `text` is its content.
    void currentFileChanged(const QString& path, const QString& text);

private:
    void setCurrent(const QString& path, const QString& text);
    QString selectedFile() const;
    bool writeText(const QString& path, const QString& text);

    ScriptLibraryContentsModel* m_model;
    QListView* m_view;
    QLabel* m_currentLabel;
    QList<QAction*> m_fileActions;
    mutable QMutex m_currentMutex;
    QString m_current;
    std::function<QString()> m_textSource;
};
