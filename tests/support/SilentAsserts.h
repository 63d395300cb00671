#pragma once

#include "platform/VXAssert.h"

/// Drops what the library reports, for as long as it lives.
class SilentAsserts {
public:
    SilentAsserts() : m_Old(VXSetAssertHandler([](const char*) {})) {}
    ~SilentAsserts() { VXSetAssertHandler(m_Old); }

private:
    VXAssertHandler m_Old;
};
