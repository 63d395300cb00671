#pragma once

#include <string>
#include <string_view>

#include "platform/VXTypes.h"

/// What the command answers to its caller.
enum ExitCode : int {
    kDone = 0,
    kFailed = 1,    ///< the library reported a failure
    kUnusable = 2,  ///< wrong usage, or a file that cannot be opened, read or written
};

/// Keeps the library's own messages off standard error from now on; the last one goes into the next line of
/// `ReportFailure`.
void KeepLibraryMessages();
/// To be called where a new piece of work begins, so that a message is told with the failure it belongs to.
void ForgetLibraryMessage();

/// Writes the line `vxswf: FILE: STEP failed with CODE`, the library's last message in parentheses behind it.
/// Always `kFailed`.
ExitCode ReportFailure(const std::string& file, const char* step, VXErrorCodeEnum code);
/// Writes the line `vxswf: FILE: REASON`. Always `kUnusable`.
ExitCode ReportUnusable(const std::string& file, const std::string& reason);
/// The same with the reason that the system gives in `errno`.
ExitCode ReportUnusable(const std::string& file);

/// `text` with control characters written out as `\xNN`: names in a movie may hold anything, and a line stays
/// one line.
std::string Printable(std::string_view text);
