#include "memory/VXMemoryLimit_p.h"

#include <algorithm>
#include <new>

namespace {

constinit thread_local VXMemoryLimit* theLimit = nullptr;

}  // namespace

VXMemoryLimit::VXMemoryLimit(std::size_t bytes) noexcept
    : m_Bytes(bytes), m_BytesLeft(bytes), m_Outer(theLimit) {
    theLimit = this;
}

VXMemoryLimit::~VXMemoryLimit() { theLimit = m_Outer; }

void VXMemoryLimit::Charge(std::size_t bytes) {
    if (!Spend(bytes)) throw std::bad_alloc();
}

bool VXMemoryLimit::Spend(std::size_t bytes) noexcept {
    for (const VXMemoryLimit* limit = theLimit; limit != nullptr; limit = limit->m_Outer) {
        if (bytes > limit->m_BytesLeft) return false;
    }
    for (VXMemoryLimit* limit = theLimit; limit != nullptr; limit = limit->m_Outer)
        limit->m_BytesLeft -= bytes;
    return true;
}

void VXMemoryLimit::Regain(std::size_t bytes) noexcept {
    for (VXMemoryLimit* limit = theLimit; limit != nullptr; limit = limit->m_Outer) {
        limit->m_BytesLeft += std::min(bytes, limit->m_Bytes - limit->m_BytesLeft);
    }
}
