#pragma once

#include <QWidget>

class QLineEdit;
class QTextBrowser;
class ScriptApiCatalog;

/// The help browser: an introduction with examples and the script reference
/// generated from the registered API (every global function and every
/// type's properties and methods), searchable by a filter that keeps the
/// entries containing the words typed.
class HelpBrowser : public QWidget
{
    Q_OBJECT

public:
    /// Help over the running program's API.
    explicit HelpBrowser(QWidget* parent = nullptr);
    /// Help over a given catalogue (tests).
    HelpBrowser(const ScriptApiCatalog& catalog, QWidget* parent);

    /// The text view.
    QTextBrowser* browser() const { return m_browser; }
    /// The search field.
    QLineEdit* searchField() const { return m_search; }
    /// Shows only the entries matching `text` (all for an empty text).
    void search(const QString& text);
    /// Number of reference entries shown now.
    int shownEntries() const { return m_shown; }
    /// The page as HTML for a filter (all entries for an empty one).
    QString pageHtml(const QString& filter, int* entries = nullptr) const;
    /// Scrolls to the entry of a function or type name, if shown.
    void showTopic(const QString& name);

private:
    const ScriptApiCatalog& m_catalog;
    QLineEdit* m_search;
    QTextBrowser* m_browser;
    QString m_introduction;
    int m_shown = 0;
};
