#include "base/notify.h"

namespace
{
UserNotifier::Handler s_show;
UserNotifier::QuestionHandler s_ask;
} // namespace

namespace UserNotifier
{
void setHandlers(Handler show, QuestionHandler ask)
{
    s_show = std::move(show);
    s_ask = std::move(ask);
}

bool isInteractive() { return static_cast<bool>(s_show); }

bool show(Kind kind, const QString& title, const QString& text)
{
    if (!s_show)
        return false;
    s_show(kind, title, text);
    return true;
}

bool ask(const QString& title, const QString& text, bool defaultAnswer)
{
    if (!s_ask)
        return defaultAnswer;
    return s_ask(title, text);
}
} // namespace UserNotifier
