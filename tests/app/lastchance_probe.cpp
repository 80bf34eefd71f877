// plax's own start-up with a log listener that throws an exception once the
// batch tool reports its first error: the last-chance handler has to end the
// process. PLAX_PROBE_THROW picks how: "text" throws a std::runtime_error on
// the main thread, "nothing" throws an int (no text), "thread" throws from a
// worker thread, which no handler of the program catches.
#include "app/startup.h"
#include "base/log.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <thread>

int main(int argc, char* argv[])
{
    const char* how = std::getenv("PLAX_PROBE_THROW");
    static bool thrown = false; // once: the handler logs too
    Log::setListener([how](int level, const QString&) {
        if (level < LOG_ERROR || !how || thrown)
            return;
        thrown = true;
        if (std::strcmp(how, "nothing") == 0)
            throw 42;
        if (std::strcmp(how, "thread") == 0)
            std::thread([] { throw std::runtime_error("thrown on a worker thread"); }).join();
        throw std::runtime_error("thrown on the main thread");
    });
    return runPlax(argc, argv);
}
