#include "Report.h"

#include <cerrno>
#include <iostream>
#include <system_error>

#include "Progress.h"

namespace {

std::string g_LibraryMessage;

void WriteLine(const std::string& file, const std::string& text) {
    EraseProgress();
    // One write, so that lines of several runs do not mix.
    std::cerr << "vxswf: " + Printable(file) + ": " + Printable(text) + '\n';
}

}  // namespace

void KeepLibraryMessages() {
    VXSetAssertHandler([](const char* message) { g_LibraryMessage = message; });
}

void ForgetLibraryMessage() { g_LibraryMessage.clear(); }

ExitCode ReportFailure(const std::string& file, const char* step, VXErrorCodeEnum code) {
    std::string text = std::string(step) + " failed with " + std::to_string(static_cast<int>(code));
    if (!g_LibraryMessage.empty()) text += " (" + g_LibraryMessage + ")";
    ForgetLibraryMessage();
    WriteLine(file, text);
    return kFailed;
}

ExitCode ReportUnusable(const std::string& file, const std::string& reason) {
    WriteLine(file, reason);
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
