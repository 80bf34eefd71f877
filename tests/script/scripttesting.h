#pragma once

#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QThread>

class EditorDocument;

#include "support/logcapture.h"

/// Writes a UTF-8 text file, creating its folder; fails the test on error.
void writeTextFile(const QString& path, const QString& text);
/// Reads a UTF-8 text file (empty when missing).
QString readTextFile(const QString& path);

/// Runs a one-shot text on the document and returns what it printed.
QStringList runAndCollectPrints(EditorDocument& document, const QString& text, bool* ok = nullptr);

/// Sets the batch-mode flag for a scope.
class BatchModeScope
{
public:
    /// Sets the flag to `on`.
    explicit BatchModeScope(bool on);
    ~BatchModeScope();

private:
    bool m_previous;
};
