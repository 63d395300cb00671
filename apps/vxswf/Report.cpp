#include "Report.h"

#include <cerrno>
#include <iostream>
#include <system_error>

#include "Progress.h"

namespace {

struct Character {
    char32_t code;
    std::size_t size;  // 0 where there is no character
};

/// The character of UTF-8 at the start of `text`, which is not empty.
Character DecodeFirst(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    if (first < 0x80) return {first, 1};
    const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < size) return {first, 0};
    char32_t code = first & (0x7Fu >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return {first, 0};
        code = code << 6 | (byte(i) & 0x3Fu);
    }
    // A longer form than need be, half of a pair, or beyond the last character.
    if ((size == 3 && code < 0x800) || (size == 4 && (code < 0x10000 || code > 0x10FFFF)) ||
        (code >= 0xD800 && code < 0xE000)) {
        return {first, 0};
    }
    return {code, size};
}

bool IsControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

std::string Escape(const char* prefix, char32_t code, int numDigits) {
    std::string text = prefix;
    for (int shift = 4 * numDigits - 4; shift >= 0; shift -= 4)
        text += "0123456789ABCDEF"[code >> shift & 15];
    return text;
}

}  // namespace

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
    std::string printable;
    while (!text.empty()) {
        const Character next = DecodeFirst(text);
        if (next.size == 0 || (next.size == 1 && IsControl(next.code))) {
            printable += Escape("\\x", next.code, 2);
        } else if (IsControl(next.code)) {
            printable += Escape("\\u", next.code, 4);
        } else {
            printable += text.substr(0, next.size);
        }
        text.remove_prefix(next.size == 0 ? 1 : next.size);
    }
    return printable;
}
