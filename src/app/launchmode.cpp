#include "app/launchmode.h"

#include <QFile>
#include <QFileInfo>

#include <cstring>

namespace
{
// Qt's own command-line options that QApplication consumes; `*takesValue`
// tells whether the next argument is the option's value.
bool isQtGuiOption(const char* arg, bool* takesValue)
{
    static const char* const withValue[] = {"-platform", "-platformpluginpath", "-platformtheme", "-plugin",
                                            "-qwindowgeometry", "-qwindowtitle", "-qwindowicon", "-style",
                                            "-stylesheet", "-display", "-geometry", "-session"};
    static const char* const alone[] = {"-reverse", "-widgetcount", "-nograb", "-dograb", "-sync"};
    *takesValue = false;
    for (const char* option : withValue) {
        if (std::strcmp(arg, option) == 0) {
            *takesValue = true;
            return true;
        }
    }
    for (const char* option : alone) {
        if (std::strcmp(arg, option) == 0)
            return true;
    }
    return false;
}
} // namespace

bool isFileToOpen(const QString& argument)
{
    if (argument.isEmpty() || argument.startsWith(QLatin1Char('-')))
        return false;
    const QFileInfo info(argument);
    const QString suffix = info.suffix().toLower();
    return (suffix == QLatin1String("plax") || suffix == QLatin1String("json")) && info.isFile();
}

LaunchMode chooseLaunchMode(int argc, const char* const argv[])
{
    LaunchMode mode;
    for (int i = 1; i < argc; ++i) {
        bool takesValue = false;
        if (isQtGuiOption(argv[i], &takesValue)) {
            if (takesValue)
                ++i;
            continue;
        }
        const QString argument = QFile::decodeName(argv[i]);
        if (!isFileToOpen(argument)) {
            mode.kind = LaunchMode::Kind::Batch;
            mode.files.clear();
            return mode;
        }
        mode.files.append(QFileInfo(argument).absoluteFilePath());
    }
    return mode;
}
