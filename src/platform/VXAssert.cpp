#include "platform/VXAssert.h"

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

void WriteToStandardError(const char* message) {
    // One call, so that messages from several threads do not mix.
    std::fprintf(stderr, "%s\n", message);
}

std::atomic<VXAssertHandler> g_Handler = WriteToStandardError;

}  // namespace

void VXAssertFail(const char* format, ...) {
    char message[1024] = "";
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    std::replace(message, message + std::strlen(message), '\n', ' ');
    g_Handler.load()(message);
}

VXAssertHandler VXSetAssertHandler(VXAssertHandler handler) {
    return g_Handler.exchange(handler == nullptr ? WriteToStandardError : handler);
}
