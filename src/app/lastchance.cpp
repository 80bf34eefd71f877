#include "app/lastchance.h"

#include "base/log.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>

void lastChanceExit(const char* what)
{
    if (what && *what)
        plaxLog(LOG_FATAL, "Exiting due to exception - %s.", what);
    else
        plaxLog(LOG_FATAL, "Exiting due to exception.");

    std::time_t now = std::time(nullptr);
    std::tm t{};
    localtime_r(&now, &t);
    char fileName[96];
    std::snprintf(fileName, sizeof fileName, "plax-exception-trace-%02d%02d%02d-%02d%02d%02d.log", t.tm_year + 1900,
                  t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec);
    if (std::FILE* f = std::fopen(fileName, "w")) {
        std::fprintf(f, "Exiting due to exception - %s.\n\n", what ? what : "");
        std::fclose(f);
    }
    Log::finish();
    std::_Exit(EXIT_FAILURE);
}

void installLastChanceHandler()
{
    std::set_terminate([] {
        const char* what = nullptr;
        if (std::exception_ptr current = std::current_exception()) {
            try {
                std::rethrow_exception(current);
            } catch (const std::exception& e) {
                what = e.what();
                lastChanceExit(what);
            } catch (...) {
            }
        }
        lastChanceExit(what);
    });
}
