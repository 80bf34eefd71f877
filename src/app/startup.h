#pragma once

/// The program: opens the log, then runs the batch tool (any argument) or the
/// interactive editor. Returns the process exit code.
int runPlax(int argc, char* argv[]);
