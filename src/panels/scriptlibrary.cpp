#include "panels/scriptlibrary.h"

#include "base/log.h"
#include "base/settings.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QInputDialog>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

ScriptLibraryContentsModel::ScriptLibraryContentsModel(QObject* parent) : QAbstractListModel(parent) {}

void ScriptLibraryContentsModel::setFolder(const QString& folder)
{
    beginResetModel();
    m_folder = folder;
    m_files.clear();
    const QDir dir(folder);
    for (const QString& name : dir.entryList({QStringLiteral("*.rs")}, QDir::Files, QDir::Name)) {
        const QString path = QStringLiteral("%1/%2").arg(dir.absolutePath(), name);
        plaxLog(LOG_DEBUG, QStringLiteral("Found script file in library: %1").arg(path));
        m_files.append(path);
    }
    endResetModel();
}

int ScriptLibraryContentsModel::rowOf(const QString& path) const
{
    return int(m_files.indexOf(QFileInfo(path).absoluteFilePath()));
}

int ScriptLibraryContentsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_files.size());
}

QVariant ScriptLibraryContentsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() < 0 || index.row() >= m_files.size()) {
        plaxLog(LOG_WARNING, "Error in ScriptLibraryContentsModel::data");
        return QVariant();
    }
    const QString& path = m_files[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return QFileInfo(path).fileName();
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
    case PathRole: return path;
    case Qt::DecorationRole: {
        QIcon icon(QStringLiteral(":/icons/script-text.png"));
        if (icon.isNull() || icon.availableSizes().isEmpty())
            icon = QApplication::style()->standardIcon(QStyle::SP_FileIcon);
        return icon;
    }
    default:
        // Views ask for many roles; each one not served is reported once.
        if (!m_reportedRoles.contains(role)) {
            m_reportedRoles.insert(role);
            plaxLog(LOG_DEBUG, QStringLiteral("ScriptLibraryContentsModel::data unhandled case: %1").arg(role));
        }
        return QVariant();
    }
}

ScriptLibrary::ScriptLibrary(QWidget* parent)
    : QWidget(parent), m_model(new ScriptLibraryContentsModel(this)), m_view(new QListView(this)),
      m_currentLabel(new QLabel(this))
{
    setObjectName(QStringLiteral("ScriptLibrary"));
    setAccessibleName(tr("Script library"));
    setMinimumSize(140, 100);
    m_view->setObjectName(QStringLiteral("ScriptLibraryList"));
    m_view->setAccessibleName(tr("Script files"));
    m_view->setModel(m_model);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_currentLabel->setObjectName(QStringLiteral("ScriptLibraryCurrent"));
    m_currentLabel->setAccessibleName(tr("Current script file"));

    auto* toolBar = new QToolBar(this);
    toolBar->setObjectName(QStringLiteral("ScriptLibraryToolBar"));
    toolBar->setIconSize(QSize(16, 16));
    const auto add = [&](const char* name, const QString& text, QStyle::StandardPixmap icon, const QKeySequence& key,
                         const QString& tip, void (ScriptLibrary::*slot)()) {
        QAction* action = toolBar->addAction(style()->standardIcon(icon), text);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        action->setToolTip(key.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, key.toString(QKeySequence::NativeText)));
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
        return action;
    };
    m_fileActions = {
        add("actionScriptNew", tr("New"), QStyle::SP_FileIcon, QKeySequence(), tr("Start a new script"),
            &ScriptLibrary::doNew),
        add("actionScriptOpen", tr("Open..."), QStyle::SP_DialogOpenButton, QKeySequence(), tr("Open a script file"),
            &ScriptLibrary::doOpen),
        add("actionScriptSave", tr("Save"), QStyle::SP_DialogSaveButton, QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_S),
            tr("Save the script"), &ScriptLibrary::doSave),
        add("actionScriptSaveAs", tr("Save as..."), QStyle::SP_DriveFDIcon, QKeySequence(),
            tr("Save the script under a new name"), &ScriptLibrary::doSaveAs)};
    add("actionScriptRename", tr("Rename..."), QStyle::SP_FileDialogDetailedView, QKeySequence(),
        tr("Rename the selected script file"), &ScriptLibrary::doRename);
    add("actionScriptDelete", tr("Delete"), QStyle::SP_TrashIcon, QKeySequence(QKeySequence::Delete),
        tr("Delete the selected script file"), &ScriptLibrary::doDelete);
    add("actionScriptFolder", tr("Choose folder..."), QStyle::SP_DirOpenIcon, QKeySequence(),
        tr("Choose the folder the library lists"), &ScriptLibrary::doChooseFolder);
    add("actionScriptRefresh", tr("Refresh"), QStyle::SP_BrowserReload, QKeySequence(), tr("List the folder again"),
        &ScriptLibrary::refresh);
    toolBar->setToolButtonStyle(Qt::ToolButtonIconOnly);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(toolBar);
    layout->addWidget(m_view);
    layout->addWidget(m_currentLabel);

    connect(m_view, &QListView::activated, this, [this](const QModelIndex& index) {
        openFile(index.data(ScriptLibraryContentsModel::PathRole).toString());
    });
    setFolder(openAppSettings()->value(QLatin1String(kFolderKey), QLatin1String(kDefaultFolder)).toString());
    setCurrent(QString(), QString());
}

void ScriptLibrary::setFolder(const QString& folder)
{
    m_model->setFolder(folder);
}

void ScriptLibrary::refresh()
{
    m_model->setFolder(m_model->folder());
}

QString ScriptLibrary::currentFile() const
{
    QMutexLocker lock(&m_currentMutex);
    return m_current;
}

void ScriptLibrary::setCurrent(const QString& path, const QString& text)
{
    {
        QMutexLocker lock(&m_currentMutex);
        m_current = path;
    }
    m_currentLabel->setText(path.isEmpty() ? tr("New script (not saved)") : QFileInfo(path).fileName());
    m_currentLabel->setToolTip(path);
    const int row = path.isEmpty() ? -1 : m_model->rowOf(path);
    if (row >= 0)
        m_view->setCurrentIndex(m_model->index(row));
    else
        m_view->clearSelection();
    emit currentFileChanged(path, text);
}

QString ScriptLibrary::currentText() const
{
    const QString path = currentFile();
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

bool ScriptLibrary::openFile(const QString& pathIn)
{
    const QString path = QFileInfo(pathIn).absoluteFilePath();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not open file '%1' for reading").arg(path));
        return false;
    }
    setCurrent(path, QString::fromUtf8(file.readAll()));
    return true;
}

bool ScriptLibrary::writeText(const QString& path, const QString& text)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit()) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not open file for writing: '%1'").arg(path));
        return false;
    }
    return true;
}

bool ScriptLibrary::saveCurrent()
{
    const QString path = currentFile();
    if (path.isEmpty()) {
        doSaveAs();
        return !currentFile().isEmpty();
    }
    return writeText(path, m_textSource ? m_textSource() : QString());
}

bool ScriptLibrary::saveAs(const QString& pathIn)
{
    const QString path = QFileInfo(pathIn).absoluteFilePath();
    if (path != currentFile() && m_model->rowOf(path) >= 0) {
        QMessageBox box(QMessageBox::Question, tr("File already exists"),
                        tr("That file is already open in the script library.\nDo you wish to overwrite it?"),
                        QMessageBox::NoButton, this);
        box.setObjectName(QStringLiteral("ScriptOverwriteBox"));
        QPushButton* cancel = box.addButton(tr("Cancel"), QMessageBox::RejectRole);
        QPushButton* overwrite = box.addButton(tr("Overwrite"), QMessageBox::AcceptRole);
        box.setDefaultButton(cancel);
        box.exec();
        if (box.clickedButton() != overwrite)
            return false;
    }
    const QString text = m_textSource ? m_textSource() : QString();
    if (!writeText(path, text))
        return false;
    if (QFileInfo(path).absolutePath() == QDir(m_model->folder()).absolutePath())
        refresh();
    setCurrent(path, text);
    return true;
}

bool ScriptLibrary::renameFile(const QString& pathIn, const QString& newNameIn)
{
    const QString path = QFileInfo(pathIn).absoluteFilePath();
    QString newName = newNameIn.trimmed();
    if (newName.isEmpty() || newName.contains(QLatin1Char('/')) || newName.contains(QLatin1Char('\\'))) {
        plaxLog(LOG_WARNING, QStringLiteral("Ignoring invalid script file name: '%1'").arg(newNameIn));
        return false;
    }
    if (QFileInfo(newName).suffix().isEmpty())
        newName += QStringLiteral(".rs");
    const QString target = QFileInfo(path).dir().filePath(newName);
    if (QFileInfo::exists(target)) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not rename '%1': '%2' exists already").arg(path, target));
        return false;
    }
    if (!QFile::rename(path, target)) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not rename '%1' to '%2'").arg(path, target));
        return false;
    }
    const bool wasCurrent = path == currentFile();
    refresh();
    if (wasCurrent)
        openFile(target);
    return true;
}

bool ScriptLibrary::deleteFile(const QString& pathIn)
{
    const QString path = QFileInfo(pathIn).absoluteFilePath();
    if (!QFile::remove(path)) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not delete '%1'").arg(path));
        return false;
    }
    const bool wasCurrent = path == currentFile();
    refresh();
    if (wasCurrent)
        setCurrent(QString(), m_textSource ? m_textSource() : QString());
    return true;
}

QString ScriptLibrary::selectedFile() const
{
    const QModelIndex index = m_view->currentIndex();
    return index.isValid() ? index.data(ScriptLibraryContentsModel::PathRole).toString() : currentFile();
}

void ScriptLibrary::doNew()
{
    setCurrent(QString(), QString());
}

void ScriptLibrary::doOpen()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open script file"), m_model->folder(),
                                                      QStringLiteral("Script files (*.rs *.inc);;All files (*.*)"));
    if (!path.isEmpty())
        openFile(path);
}

void ScriptLibrary::doSave()
{
    saveCurrent();
}

void ScriptLibrary::doSaveAs()
{
    QString path = QFileDialog::getSaveFileName(this, tr("Save script as"), m_model->folder(),
                                                QStringLiteral("Script files (*.rs);;All files(*)"), nullptr,
                                                QFileDialog::DontConfirmOverwrite);
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".rs");
    saveAs(path);
}

void ScriptLibrary::doChooseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Script library folder"), m_model->folder());
    if (folder.isEmpty())
        return;
    openAppSettings()->setValue(QLatin1String(kFolderKey), folder);
    setFolder(folder);
}

void ScriptLibrary::doRename()
{
    const QString path = selectedFile();
    if (path.isEmpty())
        return;
    bool ok = false;
    const QString name = QInputDialog::getText(this, tr("Rename script file"), tr("New name:"), QLineEdit::Normal,
                                               QFileInfo(path).fileName(), &ok);
    if (ok)
        renameFile(path, name);
}

void ScriptLibrary::doDelete()
{
    const QString path = selectedFile();
    if (path.isEmpty())
        return;
    if (QMessageBox::question(this, tr("Delete script file"),
                              tr("Delete the file '%1'?").arg(QFileInfo(path).fileName())) == QMessageBox::Yes)
        deleteFile(path);
}
