#include "scripttesting.h"

#include "base/flags.h"
#include "base/log.h"
#include "base/notify.h"
#include "base/settings.h"
#include "document/editordocument.h"
#include "engine/documentscripting.h"

#include <gtest/gtest.h>


QStringList runAndCollectPrints(EditorDocument& document, const QString& text, bool* ok)
{
    LogCapture capture;
    bool result = document.scripting().runOneShot(text, QString());
    if (ok)
        *ok = result;
    return capture.texts(LOG_SCRIPT);
}

BatchModeScope::BatchModeScope(bool on) : m_previous(AppFlags::isBatchMode())
{
    AppFlags::setBatchMode(on);
}

BatchModeScope::~BatchModeScope()
{
    AppFlags::setBatchMode(m_previous);
}

SettingScope::SettingScope(const char* key, const QVariant& value) : m_key(QLatin1String(key))
{
    openAppSettings()->setValue(m_key, value);
}

SettingScope::~SettingScope()
{
    openAppSettings()->remove(m_key);
}

EnvironmentScope::EnvironmentScope(const char* name, const QByteArray& value)
    : m_name(name), m_hadValue(qEnvironmentVariableIsSet(name)), m_previous(qgetenv(name))
{
    qputenv(name, value);
}

EnvironmentScope::~EnvironmentScope()
{
    if (m_hadValue)
        qputenv(m_name, m_previous);
    else
        qunsetenv(m_name);
}

NotifierScope::NotifierScope(bool answer) : m_answer(answer)
{
    UserNotifier::setHandlers(
        [this](UserNotifier::Kind, const QString& title, const QString& text) {
            m_boxTitles.append(title);
            m_boxes.append(text);
        },
        [this](const QString&, const QString& text) {
            m_questions.append(text);
            return m_answer;
        });
}

NotifierScope::~NotifierScope()
{
    UserNotifier::setHandlers({}, {});
}
