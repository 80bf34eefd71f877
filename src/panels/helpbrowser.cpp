#include "panels/helpbrowser.h"

#include "panels/scriptapicatalog.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>

namespace
{
// The hand-written part of docs/scripting.md (introduction, examples and the
// choices of this implementation), built into the program.
QString introductionHtml()
{
    QFile file(QStringLiteral(":/help/scripting.head.md"));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    QString markdown = QString::fromUtf8(file.readAll());
    // The generated list of the file is this page's reference below.
    const int cut = markdown.indexOf(QLatin1String("## Every declaration"));
    if (cut >= 0)
        markdown.truncate(cut);
    QTextDocument document;
    document.setMarkdown(markdown);
    QString html = document.toHtml();
    const int body = html.indexOf(QLatin1String("<body"));
    const int bodyEnd = html.lastIndexOf(QLatin1String("</body>"));
    if (body >= 0 && bodyEnd > body)
        html = html.mid(html.indexOf(QLatin1Char('>'), body) + 1, bodyEnd - html.indexOf(QLatin1Char('>'), body) - 1);
    return html;
}

bool matches(const QString& text, const QStringList& words)
{
    for (const QString& word : words) {
        if (!text.contains(word, Qt::CaseInsensitive))
            return false;
    }
    return true;
}

QString code(const QString& text)
{
    return QStringLiteral("<code>%1</code>").arg(text.toHtmlEscaped());
}
} // namespace

HelpBrowser::HelpBrowser(QWidget* parent) : HelpBrowser(ScriptApiCatalog::instance(), parent) {}

HelpBrowser::HelpBrowser(const ScriptApiCatalog& catalog, QWidget* parent)
    : QWidget(parent), m_catalog(catalog), m_search(new QLineEdit(this)), m_browser(new QTextBrowser(this)),
      m_introduction(introductionHtml())
{
    setObjectName(QStringLiteral("HelpBrowser"));
    setAccessibleName(tr("P.L.A.X help"));
    setMinimumSize(200, 120);
    m_search->setObjectName(QStringLiteral("HelpSearch"));
    m_search->setAccessibleName(tr("Search the help"));
    m_search->setPlaceholderText(tr("Search functions, types and methods..."));
    m_search->setClearButtonEnabled(true);
    m_search->setToolTip(tr("Shows only the entries that contain every word typed"));
    m_browser->setObjectName(QStringLiteral("HelpText"));
    m_browser->setAccessibleName(tr("Help text"));
    m_browser->setOpenLinks(false);
    connect(m_browser, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) { showTopic(url.fragment()); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_search);
    layout->addWidget(m_browser, 1);
    connect(m_search, &QLineEdit::textChanged, this, &HelpBrowser::search);
    search(QString());
}

QString HelpBrowser::pageHtml(const QString& filter, int* entries) const
{
    const QStringList words = filter.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    int count = 0;
    QString html = QStringLiteral("<html><body>");
    if (words.isEmpty()) {
        html += m_introduction;
        QStringList types;
        for (const QString& type : m_catalog.typesWithMembers())
            types.append(QStringLiteral("<a href=\"#type-%1\">%1</a>").arg(type.toHtmlEscaped()));
        html += QStringLiteral("<h2>Script reference</h2><p>Types: %1. Then the <a href=\"#globals\">global "
                               "functions</a>.</p>")
                    .arg(types.join(QStringLiteral(", ")));
    } else {
        html += QStringLiteral("<h2>Search: %1</h2>").arg(filter.toHtmlEscaped());
    }

    for (const QString& type : m_catalog.typesWithMembers()) {
        QString section;
        for (const QString& property : m_catalog.properties(type)) {
            if (matches(type + QLatin1Char(' ') + property, words)) {
                section += QStringLiteral("<li>property %1</li>").arg(code(property));
                ++count;
            }
        }
        const auto methods = m_catalog.methods(type);
        for (const auto& entry : methods) {
            for (const QString& declaration : entry.declarations) {
                if (matches(declaration, words)) {
                    section += QStringLiteral("<li><a name=\"%1\"></a>%2</li>").arg(entry.name, code(declaration));
                    ++count;
                }
            }
        }
        if (!section.isEmpty())
            html += QStringLiteral("<h3><a name=\"type-%1\"></a>%1</h3><ul>%2</ul>").arg(type.toHtmlEscaped(), section);
    }
    QString globals;
    for (const auto& entry : m_catalog.functions()) {
        for (const QString& declaration : entry.declarations) {
            if (matches(declaration, words)) {
                globals += QStringLiteral("<li><a name=\"%1\"></a>%2</li>").arg(entry.name, code(declaration));
                ++count;
            }
        }
    }
    if (!globals.isEmpty())
        html += QStringLiteral("<h3><a name=\"globals\"></a>Global functions</h3><ul>%1</ul>").arg(globals);
    if (count == 0)
        html += QStringLiteral("<p>%1</p>").arg(tr("Nothing matches '%1'.").arg(filter.toHtmlEscaped()));
    html += QStringLiteral("</body></html>");
    if (entries)
        *entries = count;
    return html;
}

void HelpBrowser::search(const QString& text)
{
    m_browser->setHtml(pageHtml(text, &m_shown));
}

void HelpBrowser::showTopic(const QString& name)
{
    if (!name.isEmpty())
        m_browser->scrollToAnchor(name);
}
