#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <atomic>

class ScriptDocument;

/// One piece of script work for a worker thread: compiling the live script,
/// running its main, or running a one-off text. The document's script mutex
/// is held by whoever started the task until it has finished.
class ScriptCompileTask : public QObject
{
    Q_OBJECT

public:
    /// What the task does.
    enum Kind
    {
        CompileLive = 0,
        RunLive = 1,
        RunOneOff = 2,
    };

    /// A task on a document; `text` and `label` are used by RunOneOff only.
    ScriptCompileTask(Kind kind, ScriptDocument* document, const QString& text, const QString& label);

    /// The task kind.
    Kind kind() const { return m_kind; }
    /// True once start() has done the work.
    bool isFinished() const { return m_finished.load(std::memory_order_acquire); }
    /// Outcome of the work (valid once finished).
    bool result() const { return m_result; }
    /// Milliseconds since start() began.
    qint64 elapsedMs() const { return m_timer.isValid() ? m_timer.elapsed() : 0; }

public slots:
    /// Does the work on the calling (worker) thread and sets finished.
    void start();

private:
    Kind m_kind;
    ScriptDocument* m_document;
    QString m_text;
    QString m_label;
    std::atomic<bool> m_finished{false};
    bool m_result = false;
    QElapsedTimer m_timer;
};
