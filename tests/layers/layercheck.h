#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// The layer rule of src/: each folder may include from itself and the
// folders listed before it in the table of src/README.md, never from those
// after it. The table is the one place the order is written.
namespace LayerCheck
{
/// One include (or file) that breaks the rule.
struct Violation
{
    /// The file, relative to the source root ("api/scriptfixture.cpp").
    QString file;
    /// Its line (1-based), 0 for a file that is wrong as a whole.
    int line = 0;
    /// What is wrong, as a sentence.
    QString message;
};

/// The folders of the layer table in `readme` (rows starting "| `name/` |"),
/// from the bottom layer up.
QStringList layerOrder(const QString& readme);

/// The quoted includes of `text` naming a folder ("folder/file.h"), with
/// their lines: #include lines only, not text in comments that looks alike.
std::vector<std::pair<int, QString>> folderIncludes(const QString& text);

/// Checks every source file (.h, .cpp, .in) below `sourceRoot` against
/// `order`: a file in a folder missing from the order, an include of a
/// folder missing from it and an include of a folder that comes later are
/// violations.
std::vector<Violation> check(const QString& sourceRoot, const QStringList& order);

/// The violations as lines "file:line: message", for a failure report.
QString describe(const std::vector<Violation>& violations);
} // namespace LayerCheck
