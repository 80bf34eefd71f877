#pragma once

#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QThread>
#include <QVariant>

class EditorDocument;

#include "support/logcapture.h"
#include "support/testfiles.h"

using TestFiles::readText;
using TestFiles::writeText;

/// Runs a one-shot text on the document and returns what it printed.
QStringList runAndCollectPrints(EditorDocument& document, const QString& text, bool* ok = nullptr);

/// Sets one application setting for a scope and removes it afterwards (the
/// tests run with a temporary settings folder of their own).
class SettingScope
{
public:
    /// Sets `key` to `value`.
    SettingScope(const char* key, const QVariant& value);
    ~SettingScope();
    SettingScope(const SettingScope&) = delete;
    SettingScope& operator=(const SettingScope&) = delete;

private:
    QString m_key;
};

/// Sets an environment variable for a scope and restores it afterwards.
class EnvironmentScope
{
public:
    /// Sets `name` to `value`.
    EnvironmentScope(const char* name, const QByteArray& value);
    ~EnvironmentScope();
    EnvironmentScope(const EnvironmentScope&) = delete;
    EnvironmentScope& operator=(const EnvironmentScope&) = delete;

private:
    const char* m_name;
    bool m_hadValue;
    QByteArray m_previous;
};

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

/// Stands in for the editor's message boxes for a scope: every question is
/// recorded and answered with `answer`, every box recorded. Restores the
/// non-interactive state afterwards.
class NotifierScope
{
public:
    /// Answers every question with `answer`.
    explicit NotifierScope(bool answer);
    ~NotifierScope();
    NotifierScope(const NotifierScope&) = delete;
    NotifierScope& operator=(const NotifierScope&) = delete;

    /// The answer given from now on.
    void setAnswer(bool answer) { m_answer = answer; }
    /// Texts of the questions asked so far.
    const QStringList& questions() const { return m_questions; }
    /// Texts of the boxes shown so far.
    const QStringList& boxes() const { return m_boxes; }
    /// Titles of the boxes shown so far.
    const QStringList& boxTitles() const { return m_boxTitles; }

private:
    bool m_answer;
    QStringList m_questions;
    QStringList m_boxes;
    QStringList m_boxTitles;
};
