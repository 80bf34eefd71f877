#include "docscripts/scripttemplates.h"

#include "base/log.h"
#include "base/notify.h"

#include <QCoreApplication>
#include <QSaveFile>

namespace
{
const char* const kKinds[] = {"body", "fixture", "joint", "image", "sampler", "object"};

QString labelTemplate()
{
    QString text = QStringLiteral(
        "// You can use these functions to customize the appearance and content\n"
        "// of the labels shown for items in the editor view. Uncomment the ones\n"
        "// you need; for a kind without functions the label shows the item's\n"
        "// name in white on black. An empty text hides the label.\n"
        "// These functions are for looking at the scene: changes they make to\n"
        "// it are not recorded for undo.\n");
    for (const char* kind : kKinds) {
        const QString k = QLatin1String(kind);
        text += QStringLiteral("\n"
                               "//void setLabelColors(%1 item, color &out background, color &out foreground)\n"
                               "//{\n"
                               "//    background.set1(1,0,0,0.5);\n"
                               "//    foreground.set1(0,1,0,0.5);\n"
                               "//}\n"
                               "\n"
                               "//void setLabelText(%1 item, string &out text)\n"
                               "//{\n"
                               "//    text = \"Name: \" + item.getName();\n"
                               "//}\n")
                    .arg(k);
    }
    return text + QStringLiteral("\nvoid main(){}\n");
}

QString exportFilterTemplate()
{
    QString text = QStringLiteral(
        "// You can use these functions to customize which items and properties\n"
        "// are written to the raw info (JSON) export. Properties are named by\n"
        "// their path in the export, like \"/world/body/fixture/name\".\n"
        "// If functions are left commented out, the default is to export.\n");
    for (const char* kind : {"body", "fixture", "joint", "image", "object"}) {
        text += QStringLiteral("\n"
                               "//bool shouldExportItem(%1 item)\n"
                               "//{\n"
                               "//    return true;\n"
                               "//}\n")
                    .arg(QLatin1String(kind));
    }
    for (const char* kind : {"world", "body", "fixture", "joint", "image", "object"}) {
        text += QStringLiteral("\n"
                               "//bool shouldExportProperty(%1 item, const string& in propertyPath)\n"
                               "//{\n"
                               "//    return true;\n"
                               "//}\n")
                    .arg(QLatin1String(kind));
    }
    return text + QStringLiteral("\nvoid main(){}\n");
}

QString displayFilterTemplate()
{
    QString text = QStringLiteral(
        "// You can use these functions to customize which properties the\n"
        "// properties panel shows. Properties are named by their row in the\n"
        "// panel in lower camel case, without a unit in parentheses, like\n"
        "// \"name\", \"linearDamping\" or \"angle\"; custom properties as\n"
        "// \"customProperties/\" followed by their name.\n"
        "// If functions are left commented out, the default is to display.\n");
    for (const char* kind : {"world", "body", "fixture", "joint", "image", "sampler", "object"}) {
        text += QStringLiteral("\n"
                               "//bool shouldDisplayProperty(%1 item, const string& in propertyName)\n"
                               "//{\n"
                               "//    return true;\n"
                               "//}\n")
                    .arg(QLatin1String(kind));
    }
    return text + QStringLiteral("\nvoid main(){}\n");
}
} // namespace

namespace ScriptTemplates
{
QString text(DocumentScripts::Script script)
{
    switch (script) {
    case DocumentScripts::Script::CustomLabels: return labelTemplate();
    case DocumentScripts::Script::ExportFilter: return exportFilterTemplate();
    case DocumentScripts::Script::DisplayFilter: break;
    }
    return displayFilterTemplate();
}

bool write(DocumentScripts::Script script, const QString& path)
{
    QSaveFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::WriteOnly) || file.write(text(script).toUtf8()) < 0 ||
        !file.commit()) {
        const QString message =
            QCoreApplication::translate("ScriptTemplates", "Could not open file '%1' for writing.").arg(path);
        plaxLog(LOG_ERROR, message);
        UserNotifier::show(UserNotifier::Kind::Critical, QStringLiteral("P.L.A.X"), message);
        return false;
    }
    return true;
}
} // namespace ScriptTemplates
