#pragma once

#include "platform/VXExport.h"

/// Takes one finished message without line ends, valid during the call only. It may be called from any thread
/// that uses the library.
using VXAssertHandler = void (*)(const char* message);

/// Reports a fault to the host; `format` is that of printf. It does not stop the operation that found the
/// fault. The message is cut to 1023 bytes, and line ends in it become spaces.
VXPLATFORM_API void VXAssertFail(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Sends messages to `handler` from now on, and returns the handler that was in force. Null restores the
/// default, which writes one line to standard error.
VXPLATFORM_API VXAssertHandler VXSetAssertHandler(VXAssertHandler handler);
