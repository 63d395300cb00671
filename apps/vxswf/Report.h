#pragma once

#include <string>
#include <string_view>

#include "platform/VXTypes.h"

/// What the command answers to its caller.
enum ExitCode : int {
    kDone = 0,
    kFailed = 1,    ///< a movie is damaged, or the library reported a failure
    kUnusable = 2,  ///< wrong usage, or a file that cannot be opened, read or written
};

/// Writes the line `vxswf: FILE: TEXT`; the work goes on.
void ReportNote(const std::string& file, const std::string& text);
/// The same about a movie that does not do. Always `kFailed`.
ExitCode ReportFailure(const std::string& file, const std::string& reason);
/// The same about a file or its use. Always `kUnusable`.
ExitCode ReportUnusable(const std::string& file, const std::string& reason);
/// The same with the reason that the system gives in `errno`.
ExitCode ReportUnusable(const std::string& file);

/// `text` on one line, without anything that acts on a terminal: names in a movie may hold anything. Control
/// characters, line separators and marks that turn the direction of writing become `\xNN` or `\uNNNN`, and so
/// do bytes that are not UTF-8.
std::string Printable(std::string_view text);
