#include "bitstream/VXMemoryLimit_p.h"

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
    if (theLimit == nullptr) return true;
    if (bytes > theLimit->m_BytesLeft) return false;
    theLimit->m_BytesLeft -= bytes;
    return true;
}

void VXMemoryLimit::Regain(std::size_t bytes) noexcept {
    if (theLimit == nullptr) return;
    // What was there before the limit does not count.
    theLimit->m_BytesLeft += std::min(bytes, theLimit->m_Bytes - theLimit->m_BytesLeft);
}
