#include "panels/scripteditor.h"

#include "panels/scriptapicatalog.h"

#include <QFontDatabase>

namespace
{
QByteArray joined(const QStringList& words)
{
    return words.join(QLatin1Char(' ')).toUtf8();
}

QStringList withPrefix(const QStringList& words, const QString& prefix)
{
    QStringList found;
    for (const QString& word : words) {
        if (word.startsWith(prefix) && word != prefix)
            found.append(word);
    }
    return found;
}
} // namespace

PlaxScriptLexer::PlaxScriptLexer(const ScriptApiCatalog& catalog, QObject* parent) : QsciLexerCPP(parent)
{
    m_keywords = joined(angelScriptKeywords());
    QStringList functions = catalog.functions().keys();
    functions.append(catalog.allMethodNames());
    functions.removeDuplicates();
    m_functions = joined(functions);
    m_types = joined(catalog.typeNames());

    const QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    setDefaultFont(font);
    setFont(font);
    setColor(QColor(0, 0, 160), Keyword);
    setColor(QColor(0, 110, 110), KeywordSet2);
    setColor(QColor(140, 60, 160), GlobalClass);
    setColor(QColor(0, 128, 0), Comment);
    setColor(QColor(0, 128, 0), CommentLine);
    setColor(QColor(160, 80, 0), DoubleQuotedString);
    setColor(QColor(160, 80, 0), SingleQuotedString);
    setColor(QColor(190, 0, 0), Number);
    QFont bold = font;
    bold.setBold(true);
    setFont(bold, Keyword);
}

const char* PlaxScriptLexer::keywords(int set) const
{
    switch (set) {
    case 1: return m_keywords.constData();
    case 2: return m_functions.constData();
    case 4: return m_types.constData();
    default: return nullptr;
    }
}

PlaxScriptApis::PlaxScriptApis(const ScriptApiCatalog& catalog, QsciLexer* lexer)
    : QsciAbstractAPIs(lexer), m_catalog(catalog)
{
    m_globalWords = catalog.functions().keys();
    m_globalWords.append(catalog.typeNames());
    m_globalWords.append(angelScriptKeywords());
    m_globalWords.removeDuplicates();
    m_globalWords.sort();
    m_memberWords = catalog.allMethodNames();
}

QStringList PlaxScriptApis::completions(const QString& prefix, bool member) const
{
    return withPrefix(member ? m_memberWords : m_globalWords, prefix);
}

void PlaxScriptApis::updateAutoCompletionList(const QStringList& context, QStringList& list)
{
    if (context.isEmpty())
        return;
    list.append(completions(context.last(), context.size() > 1));
}

QStringList PlaxScriptApis::callTips(const QStringList& context, int /*commas*/, QsciScintilla::CallTipsStyle /*style*/,
                                     QList<int>& shifts)
{
    QStringList tips;
    if (context.isEmpty())
        return tips;
    // The context ends with an empty word after the opening parenthesis.
    QString name = context.last();
    if (name.isEmpty() && context.size() > 1)
        name = context.at(context.size() - 2);
    if (context.size() > 2 || (context.size() == 2 && !context.last().isEmpty())) {
        for (const QString& type : m_catalog.typesWithMembers()) {
            const auto methods = m_catalog.methods(type);
            if (auto it = methods.constFind(name); it != methods.constEnd())
                tips.append(it->declarations);
        }
    }
    if (auto it = m_catalog.functions().constFind(name); it != m_catalog.functions().constEnd())
        tips.append(it->declarations);
    tips.removeDuplicates();
    for (int i = 0; i < tips.size(); ++i)
        shifts.append(0);
    return tips;
}

ScriptEditor::ScriptEditor(QWidget* parent) : QsciScintilla(parent)
{
    setObjectName(QStringLiteral("ScriptEditor"));
    setAccessibleName(tr("Script editor"));
    const ScriptApiCatalog& catalog = ScriptApiCatalog::instance();
    m_lexer = new PlaxScriptLexer(catalog, this);
    m_apis = new PlaxScriptApis(catalog, m_lexer);
    setLexer(m_lexer);
    setUtf8(true);

    setMarginType(0, NumberMargin);
    setMarginLineNumbers(0, true);
    setMarginsForegroundColor(QColor(110, 110, 110));
    setMarginsBackgroundColor(QColor(236, 236, 236));
    updateMarginWidth();
    connect(this, &QsciScintilla::linesChanged, this, &ScriptEditor::updateMarginWidth);

    setBraceMatching(SloppyBraceMatch);
    setMatchedBraceBackgroundColor(QColor(180, 230, 180));
    setUnmatchedBraceForegroundColor(QColor(220, 0, 0));
    setAutoIndent(true);
    setIndentationsUseTabs(false);
    setTabWidth(4);
    setCaretLineVisible(true);
    setCaretLineBackgroundColor(QColor(245, 245, 255));
    setFolding(BoxedTreeFoldStyle, 2);

    setAutoCompletionSource(AcsAPIs);
    setAutoCompletionThreshold(3);
    setAutoCompletionCaseSensitivity(true);
    setAutoCompletionReplaceWord(true);
    setCallTipsStyle(CallTipsNoContext);
    setCallTipsVisible(0);

    m_errorMarker = markerDefine(Background, 1);
    setMarkerBackgroundColor(QColor(255, 205, 205), m_errorMarker);
}

void ScriptEditor::updateMarginWidth()
{
    setMarginWidth(0, QStringLiteral("0%1").arg(qMax(lines(), 99)));
}

void ScriptEditor::markErrorRow(int row)
{
    if (row >= 1 && row <= lines())
        markerAdd(row - 1, m_errorMarker);
}

void ScriptEditor::clearErrorMarks()
{
    markerDeleteAll(m_errorMarker);
}

QList<int> ScriptEditor::errorRows() const
{
    QList<int> rows;
    const unsigned mask = 1u << m_errorMarker;
    for (int line = markerFindNext(0, mask); line >= 0; line = markerFindNext(line + 1, mask))
        rows.append(line + 1);
    return rows;
}

void ScriptEditor::goTo(int row, int column)
{
    setCursorPosition(qMax(0, row - 1), qMax(0, column - 1));
    ensureLineVisible(qMax(0, row - 1));
    setFocus();
}
