#pragma once

#include <QStringList>

/// What the batch tool was asked to do, as collected from the arguments.
struct BatchRequest
{
    QString inputFile;
    QStringList scriptFiles;
    QString resaveFile;
    QString exportFile;
    QString sourceFile;
    bool verbose = false;
    bool quiet = false;
    bool help = false;
    bool version = false;
};

/// Collects the request from the arguments (index 0 is the program). Every
/// argument is also examined as an option in its own turn, values included.
BatchRequest parseBatchArguments(const QStringList& arguments);

/// Runs the command-line batch tool on the arguments and returns the exit code (0 or 1).
int runBatchTool(const QStringList& arguments);
