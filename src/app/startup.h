#pragma once

/// The program: opens the log, then runs the batch tool or the interactive
/// editor as the command line asks (see chooseLaunchMode). Returns the
/// process exit code.
int runPlax(int argc, char* argv[]);
