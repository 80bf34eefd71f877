#pragma once

/// Ends the process after an unhandled exception: writes "Exiting due to
/// exception - %s." to the log and a timestamped trace file, then aborts.
/// `what` may be null when the exception carries no text.
[[noreturn]] void lastChanceExit(const char* what);

/// Installs the handler for exceptions that escape every other handler.
void installLastChanceHandler();
