#include "app/startup.h"

#include "base/log.h"

#include <QApplication>

int runPlax(int argc, char* argv[])
{
    Log::start();
    QApplication app(argc, argv);
    Log::finish();
    return 0;
}
