#pragma once

#include <Qsci/qsciabstractapis.h>
#include <Qsci/qscilexercpp.h>
#include <Qsci/qsciscintilla.h>

#include <QByteArray>

class ScriptApiCatalog;

/// plaxscript highlighting: AngelScript's keywords, the registered types
/// (as global classes) and the registered functions and methods (as
/// secondary keywords), on the C++ lexer's comments, strings and numbers.
class PlaxScriptLexer : public QsciLexerCPP
{
    Q_OBJECT

public:
    /// A lexer with the words of `catalog`.
    explicit PlaxScriptLexer(const ScriptApiCatalog& catalog, QObject* parent = nullptr);
    /// "plaxscript".
    const char* language() const override { return "plaxscript"; }
    /// Set 1: keywords; set 2: functions and methods; set 4: types.
    const char* keywords(int set) const override;

private:
    QByteArray m_keywords;
    QByteArray m_functions;
    QByteArray m_types;
};

/// Completion of the registered API: global functions and keywords for a
/// plain word, the methods and properties of every type after a dot, and
/// the declarations as call tips.
class PlaxScriptApis : public QsciAbstractAPIs
{
    Q_OBJECT

public:
    /// Completion over `catalog` for `lexer`.
    PlaxScriptApis(const ScriptApiCatalog& catalog, QsciLexer* lexer);
    /// The words offered for the word being typed (context's last entry).
    void updateAutoCompletionList(const QStringList& context, QStringList& list) override;
    /// Declarations of the function being called.
    QStringList callTips(const QStringList& context, int commas, QsciScintilla::CallTipsStyle style,
                         QList<int>& shifts) override;
    /// The words offered for a prefix: after a dot (`member`) the members
    /// of every type, else globals, types and keywords.
    QStringList completions(const QString& prefix, bool member) const;

private:
    const ScriptApiCatalog& m_catalog;
    QStringList m_globalWords;
    QStringList m_memberWords;
};

/// The plaxscript text editor: highlighting, line numbers, brace matching,
/// completion of the registered API, and a marker on the rows of compile
/// errors.
class ScriptEditor : public QsciScintilla
{
    Q_OBJECT

public:
    /// An editor over the API of the running program.
    explicit ScriptEditor(QWidget* parent = nullptr);

    /// Marks a row (1-based) as holding an error.
    void markErrorRow(int row);
    /// Removes every error mark.
    void clearErrorMarks();
    /// Rows (1-based) marked as holding an error.
    QList<int> errorRows() const;
    /// Moves the cursor to a row and column (both 1-based) and shows it.
    void goTo(int row, int column);
    /// The completion provider.
    PlaxScriptApis* apis() const { return m_apis; }

private:
    void updateMarginWidth();

    PlaxScriptLexer* m_lexer;
    PlaxScriptApis* m_apis;
    int m_errorMarker = 0;
};
