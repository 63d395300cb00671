#pragma once

#include <cstddef>
#include <optional>

#include "memory/VXMemoryLimit_p.h"

/// Limits the memory of an operation that copies tags to 512 MiB and 16 times the bytes that it copies: a copy
/// is parsed, and what is parsed can take hundreds of times its bytes. Beyond the limit there is no memory. Of
/// several in a thread the outermost one is in force, so that all copies of a merge are limited together.
class VXCopyLimit {
public:
    VXCopyLimit() {
        if (s_InForce == nullptr) s_InForce = &m_Own.emplace(VXMemoryLimit::kRoom);
    }
    ~VXCopyLimit() {
        if (m_Own.has_value()) s_InForce = nullptr;
    }
    VXCopyLimit(const VXCopyLimit&) = delete;
    VXCopyLimit& operator=(const VXCopyLimit&) = delete;

    /// Gives room for the copy of so many bytes.
    static void Admit(std::size_t bytes) { s_InForce->Raise(kRoomPerByte * bytes); }

private:
    static constexpr std::size_t kRoomPerByte = 16;
    static inline constinit thread_local VXMemoryLimit* s_InForce = nullptr;

    std::optional<VXMemoryLimit> m_Own;
};
