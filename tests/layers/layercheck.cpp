#include "layers/layercheck.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace LayerCheck
{
QStringList layerOrder(const QString& readme)
{
    static const QRegularExpression row(QStringLiteral(R"(^\|\s*`([A-Za-z0-9_]+)/`\s*\|)"),
                                        QRegularExpression::MultilineOption);
    QStringList order;
    for (auto it = row.globalMatch(readme); it.hasNext();) {
        const QString folder = it.next().captured(1);
        if (!order.contains(folder))
            order.append(folder);
    }
    return order;
}

std::vector<std::pair<int, QString>> folderIncludes(const QString& text)
{
    static const QRegularExpression include(QStringLiteral(R"(^\s*#\s*include\s*"([^"/]+/[^"]+)\")"));
    std::vector<std::pair<int, QString>> found;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        const QRegularExpressionMatch match = include.match(lines[i]);
        if (match.hasMatch())
            found.emplace_back(i + 1, match.captured(1));
    }
    return found;
}

std::vector<Violation> check(const QString& sourceRoot, const QStringList& order)
{
    std::vector<Violation> violations;
    const QDir root(sourceRoot);
    QStringList files;
    QDirIterator it(sourceRoot, {QStringLiteral("*.h"), QStringLiteral("*.cpp"), QStringLiteral("*.in")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(root.relativeFilePath(it.next()));
    files.sort();
    for (const QString& file : files) {
        const QString folder = file.section(QLatin1Char('/'), 0, 0);
        if (folder == file)
            continue; // the root's own files (none are sources of a layer)
        const qsizetype floor = order.indexOf(folder);
        if (floor < 0) {
            violations.push_back({file, 0,
                                  QStringLiteral("%1/ is not in the layer table of src/README.md").arg(folder)});
            continue;
        }
        QFile source(root.filePath(file));
        if (!source.open(QIODevice::ReadOnly)) {
            violations.push_back({file, 0, QStringLiteral("cannot be read")});
            continue;
        }
        for (const auto& [line, included] : folderIncludes(QString::fromUtf8(source.readAll()))) {
            const QString target = included.section(QLatin1Char('/'), 0, 0);
            const qsizetype targetFloor = order.indexOf(target);
            if (targetFloor < 0) {
                violations.push_back({file, line,
                                      QStringLiteral("includes \"%1\" from %2/, which is not in the layer table")
                                          .arg(included, target)});
            } else if (targetFloor > floor) {
                violations.push_back(
                    {file, line,
                     QStringLiteral("includes \"%1\": %2/ may not use %3/, which comes after it in the layer table")
                         .arg(included, folder, target)});
            }
        }
    }
    return violations;
}

QString describe(const std::vector<Violation>& violations)
{
    QStringList lines;
    for (const Violation& v : violations)
        lines.append(v.line > 0 ? QStringLiteral("src/%1:%2: %3").arg(v.file).arg(v.line).arg(v.message)
                                : QStringLiteral("src/%1: %2").arg(v.file, v.message));
    return lines.join(QLatin1Char('\n'));
}
} // namespace LayerCheck
