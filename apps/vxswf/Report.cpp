#include "Report.h"

#include <cerrno>
#include <iostream>
#include <system_error>

#include "Progress.h"

void ReportNote(const std::string& file, const std::string& text) {
    EraseProgress();
    // One write, so that lines of several runs do not mix.
    std::cerr << "vxswf: " + Printable(file) + ": " + Printable(text) + '\n';
}

ExitCode ReportFailure(const std::string& file, const std::string& reason) {
    ReportNote(file, reason);
    return kFailed;
}

ExitCode ReportUnusable(const std::string& file, const std::string& reason) {
    ReportNote(file, reason);
    return kUnusable;
}

ExitCode ReportUnusable(const std::string& file) {
    return ReportUnusable(file, std::generic_category().message(errno));
}

std::string Printable(std::string_view text) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string printable;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F) {
            printable += c;
        } else {
            printable += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
        }
    }
    return printable;
}
