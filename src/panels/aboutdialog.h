#pragma once

#include <QDialog>

/// "About P.L.A.X": the program's version and build time and the versions
/// of the libraries in use (Qt at run time and at build time, Box2D,
/// AngelScript, QScintilla, RapidJSON).
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    /// The dialog.
    explicit AboutDialog(QWidget* parent = nullptr);
    /// The text shown (plain text, one fact a line).
    static QString versionText();
};
