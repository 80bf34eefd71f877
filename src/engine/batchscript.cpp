#include "engine/batchscript.h"

#include "base/log.h"
#include "engine/documentscripting.h"
#include "engine/scriptdocument.h"
#include "engine/scriptpreprocessor.h"

#include <QFile>

bool compileAndRunBatchScript(ScriptDocument& document, const QString& absolutePath, bool* compiled)
{
    if (compiled)
        *compiled = false;
    QFile file(absolutePath);
    if (!file.open(QIODevice::ReadOnly)) {
        plaxLog(LOG_ERROR, QStringLiteral("Could not open file '%1' for reading").arg(absolutePath));
        return false;
    }
    QString text = QLatin1Char('\n') + QString::fromUtf8(file.readAll());
    QStringList included;
    preprocessScriptIncludes(absolutePath, included, text);
    // Compiling puts the newline in front again; keeping it here would move
    // every reported row down by one.
    if (text.startsWith(QLatin1Char('\n')))
        text.remove(0, 1);

    DocumentScripting& scripting = document.scripting();
    scripting.setLiveScript(text);
    if (!scripting.compileLive())
        return false;
    if (compiled)
        *compiled = true;
    return scripting.runLive();
}
