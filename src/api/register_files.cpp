#include "api/scriptregistrar.h"
#include "api/scriptregistration.h"
#include "base/log.h"
#include "base/version.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QStringList>

#include <string>

using namespace AngelScript;

namespace
{
bool dirExists(const std::string& path)
{
    return QFileInfo(QString::fromStdString(path)).isDir();
}

bool fileExists(const std::string& path)
{
    return QFileInfo(QString::fromStdString(path)).isFile();
}

// The whole file as bytes (UTF-8 text passes through unchanged); empty on failure.
std::string readFile(const std::string& path)
{
    QString name = QString::fromStdString(path);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not open file '%1' for reading").arg(name));
        return {};
    }
    return file.readAll().toStdString();
}

// Replaces the file's content. Refused in the restricted edition.
bool writeFile(const std::string& path, const std::string& content)
{
    if (Version::kTrial) {
        plaxLog(LOG_ERROR, "Writing files in plaxscript is disabled in the trial version.");
        return false;
    }
    QString name = QString::fromStdString(path);
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not open file '%1' for writing").arg(name));
        return false;
    }
    qint64 written = file.write(content.data(), qint64(content.size()));
    if (written != qint64(content.size())) {
        plaxLog(LOG_WARNING, QStringLiteral("Could not write file '%1'").arg(name));
        return false;
    }
    return true;
}
// A file dialog filter of the image formats this build reads:
// "Image files (*.bmp *.gif *.jpg ...)".
std::string getSupportedImageFormatsFilter()
{
    QStringList patterns;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        patterns << QStringLiteral("*.%1").arg(QString::fromLatin1(format).toLower());
    patterns.removeDuplicates();
    return QStringLiteral("Image files (%1)").arg(patterns.join(QLatin1Char(' '))).toStdString();
}
} // namespace

void registerFileFunctions(ScriptRegistrar& reg)
{
    reg.global("bool dirExists(const string &in)", asFUNCTION(dirExists), asCALL_CDECL);
    reg.global("bool fileExists(const string &in)", asFUNCTION(fileExists), asCALL_CDECL);
    reg.global("string readFile(const string &in)", asFUNCTION(readFile), asCALL_CDECL);
    reg.global("bool writeFile(const string &in, const string &in)", asFUNCTION(writeFile), asCALL_CDECL);
    reg.global("string getSupportedImageFormatsFilter()", asFUNCTION(getSupportedImageFormatsFilter), asCALL_CDECL);
}
