#include "panels/scripteditorpanel.h"

#include "base/log.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"
#include "engine/scriptbackground.h"
#include "engine/scriptoutput.h"
#include "engine/scriptstate.h"
#include "panels/scripteditor.h"
#include "panels/scriptlibrary.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QRegularExpression>
#include <QSplitter>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

namespace
{
const QRegularExpression& positionPattern()
{
    static const QRegularExpression pattern(QStringLiteral("^Line (-?\\d+), col (\\d+): (.*)$"));
    return pattern;
}
} // namespace

ScriptEditorPanel::ScriptEditorPanel(QWidget* parent)
    : QWidget(parent), m_editor(new ScriptEditor(this)), m_toolBar(new QToolBar(this)),
      m_problems(new QListWidget(this)), m_busyBar(new QProgressBar(this)), m_busyLabel(new QLabel(this)),
      m_busyRow(new QWidget(this))
{
    setObjectName(QStringLiteral("ScriptEditorPanel"));
    setAccessibleName(tr("Script editor panel"));
    // Docked beside other panels: small minimum, the contents scroll or squeeze.
    setMinimumSize(220, 120);
    m_toolBar->setObjectName(QStringLiteral("ScriptEditorToolBar"));
    m_toolBar->setIconSize(QSize(16, 16));
    m_problems->setObjectName(QStringLiteral("ScriptProblemList"));
    m_problems->setAccessibleName(tr("Compile errors"));
    m_problems->setToolTip(tr("Compile errors and warnings: click one to go to its line"));
    m_busyBar->setObjectName(QStringLiteral("ScriptBusyIndicator"));
    m_busyBar->setAccessibleName(tr("Script running"));
    m_busyBar->setRange(0, 0);
    m_busyBar->setMaximumHeight(14);
    m_busyLabel->setObjectName(QStringLiteral("ScriptBusyText"));

    const auto add = [this](const char* name, const QString& text, QStyle::StandardPixmap icon,
                            const QKeySequence& key, const QString& tip) {
        QAction* action = m_toolBar->addAction(style()->standardIcon(icon), text);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        action->setToolTip(QStringLiteral("%1 (%2)").arg(tip, key.toString(QKeySequence::NativeText)));
        addAction(action);
        return action;
    };
    m_compile = add("actionCompileScript", tr("Compile"), QStyle::SP_DialogApplyButton, QKeySequence(Qt::Key_F7),
                    tr("Compile the script and list its errors"));
    m_run = add("actionRunScript", tr("Run"), QStyle::SP_MediaPlay, QKeySequence(Qt::Key_F5),
                tr("Run the whole script as one undo step"));
    m_runSelection = add("actionRunSelection", tr("Run selection"), QStyle::SP_MediaSeekForward,
                         QKeySequence(Qt::CTRL | Qt::Key_F5), tr("Run the selected lines as one undo step"));
    m_abort = add("actionAbortScript", tr("Abort"), QStyle::SP_MediaStop, QKeySequence(Qt::SHIFT | Qt::Key_F5),
                  tr("Stop the running script; its changes so far stay as one undo step"));
    m_toolBar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(m_compile, &QAction::triggered, this, [this] { compile(); });
    connect(m_run, &QAction::triggered, this, [this] { runWhole(); });
    connect(m_runSelection, &QAction::triggered, this, [this] { runSelection(); });
    connect(m_abort, &QAction::triggered, this, &ScriptEditorPanel::abort);

    auto* busyLayout = new QHBoxLayout(m_busyRow);
    busyLayout->setContentsMargins(0, 0, 0, 0);
    busyLayout->addWidget(m_busyLabel);
    busyLayout->addWidget(m_busyBar, 1);
    m_busyRow->setVisible(false);

    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setObjectName(QStringLiteral("ScriptEditorSplitter"));
    splitter->addWidget(m_editor);
    splitter->addWidget(m_problems);
    splitter->setStretchFactor(0, 4);
    splitter->setStretchFactor(1, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_busyRow);
    layout->addWidget(splitter, 1);

    connect(m_problems, &QListWidget::itemActivated, this, &ScriptEditorPanel::problemActivated);
    connect(m_problems, &QListWidget::itemClicked, this, &ScriptEditorPanel::problemActivated);
    connect(m_editor, &QsciScintilla::textChanged, this, [this] {
        if (!m_loadingText)
            emit textEdited();
    });
    updateActions();
}

ScriptEditorPanel::~ScriptEditorPanel() = default;

void ScriptEditorPanel::setDocument(EditorDocument* document)
{
    if (document == m_document)
        return;
    storeText();
    m_document = document;
    if (m_document && (!m_library || m_library->currentFile().isEmpty())) {
        m_loadingText = true;
        m_editor->setText(m_document->scripting().liveScript());
        m_loadingText = false;
    }
    updateActions();
}

void ScriptEditorPanel::setLibrary(ScriptLibrary* library)
{
    m_library = library;
    library->setTextSource([this] { return m_editor->text(); });
    connect(library, &ScriptLibrary::currentFileChanged, this, [this](const QString& path, const QString& text) {
        m_loadingText = true;
        // A new script starts from the document's live script only when
        // asked for: "New" means an empty text.
        m_editor->setText(text);
        m_loadingText = false;
        m_editor->clearErrorMarks();
        m_problems->clear();
        if (path.isEmpty())
            storeText();
    });
}

void ScriptEditorPanel::storeText()
{
    // Without a library file the editor's text is the document's live script.
    if (m_document && (!m_library || m_library->currentFile().isEmpty()))
        m_document->scripting().setLiveScript(m_editor->text());
}

void ScriptEditorPanel::noteLogMessage(int level, const QString& text)
{
    if (!m_collecting.load() || level < LOG_WARNING)
        return;
    QMutexLocker lock(&m_messagesMutex);
    m_messages.append({level, text});
}

void ScriptEditorPanel::beginRun()
{
    m_running = true;
    m_problems->clear();
    m_lastProblems.clear();
    m_editor->clearErrorMarks();
    {
        QMutexLocker lock(&m_messagesMutex);
        m_messages.clear();
    }
    m_collecting = true;
    setBusy(true, tr("Running script..."));
    updateActions();
}

void ScriptEditorPanel::endRun(int rowOffset, bool ok)
{
    m_collecting = false;
    QList<QPair<int, QString>> messages;
    {
        QMutexLocker lock(&m_messagesMutex);
        messages.swap(m_messages);
    }
    for (const auto& [level, text] : messages) {
        Problem problem;
        problem.error = level >= LOG_ERROR;
        const QRegularExpressionMatch match = positionPattern().match(text);
        // The engine names the function it compiles before its errors; that is no problem of its own.
        if (match.hasMatch() && match.captured(3).startsWith(QLatin1String("Compiling ")))
            continue;
        if (match.hasMatch()) {
            problem.row = match.captured(1).toInt() + rowOffset;
            problem.column = match.captured(2).toInt();
            problem.text = match.captured(3);
        } else {
            problem.text = text;
        }
        m_lastProblems.append(problem);
        auto* item = new QListWidgetItem(
            problem.row > 0 ? tr("Line %1, col %2: %3").arg(problem.row).arg(problem.column).arg(problem.text)
                            : problem.text,
            m_problems);
        item->setData(Qt::UserRole, problem.row);
        item->setData(Qt::UserRole + 1, problem.column);
        item->setIcon(style()->standardIcon(problem.error ? QStyle::SP_MessageBoxCritical : QStyle::SP_MessageBoxWarning));
        if (problem.error && problem.row > 0)
            m_editor->markErrorRow(problem.row);
    }
    m_running = false;
    setBusy(false);
    updateActions();
    emit runFinished(ok);
}

void ScriptEditorPanel::problemActivated(QListWidgetItem* item)
{
    const int row = item->data(Qt::UserRole).toInt();
    if (row > 0)
        m_editor->goTo(row, item->data(Qt::UserRole + 1).toInt());
}

void ScriptEditorPanel::setBusy(bool busy, const QString& text)
{
    m_busyLabel->setText(text);
    m_busyRow->setVisible(busy);
}

void ScriptEditorPanel::updateActions()
{
    const bool ready = m_document && !m_running;
    m_compile->setEnabled(ready);
    m_run->setEnabled(ready);
    m_runSelection->setEnabled(ready);
    m_abort->setEnabled(m_running);
}

bool ScriptEditorPanel::beginLiveRun()
{
    if (!m_document || m_running)
        return false;
    // The live script is the library's current file when there is one.
    if (m_library && !m_library->currentFile().isEmpty())
        m_library->saveCurrent();
    storeText();
    beginRun();
    return true;
}

bool ScriptEditorPanel::compile()
{
    if (!beginLiveRun())
        return false;
    setBusy(true, tr("Compiling script..."));
    const bool ok = ScriptBackground::compileLiveScript(*m_document);
    endRun(0, ok);
    return ok;
}

bool ScriptEditorPanel::runWhole()
{
    if (!beginLiveRun())
        return false;
    EditorDocument* document = m_document;
    bool ok = ScriptBackground::compileLiveScript(*document);
    if (ok)
        ok = ScriptBackground::runLiveScript(*document);
    endRun(0, ok);
    return ok;
}

bool ScriptEditorPanel::runSelection()
{
    if (!m_document || m_running)
        return false;
    int lineFrom = 0, indexFrom = 0, lineTo = 0, indexTo = 0;
    QString text;
    if (m_editor->hasSelectedText()) {
        m_editor->getSelection(&lineFrom, &indexFrom, &lineTo, &indexTo);
        // Whole lines: a selection inside a line still runs from its start.
        const int endLine = indexTo == 0 && lineTo > lineFrom ? lineTo - 1 : lineTo;
        for (int line = lineFrom; line <= endLine; ++line)
            text += m_editor->text(line);
    } else {
        m_editor->getCursorPosition(&lineFrom, &indexFrom);
        text = m_editor->text(lineFrom);
    }
    if (text.trimmed().isEmpty())
        return false;
    beginRun();
    const bool ok = ScriptBackground::runOneOffScript(*m_document, text, tr("run selection"), tr("Running script..."));
    endRun(lineFrom, ok);
    return ok;
}

void ScriptEditorPanel::abort()
{
    if (!m_running)
        return;
    plaxLog(LOG_INFO, "Aborting the running script on request");
    ScriptState::requestAbort();
}
