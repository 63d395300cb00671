#include "bitstream/VXByteBlock.h"

#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "bitstream/VXPool.h"

namespace {

// From here on the allocator maps memory that nobody has touched.
constexpr unsigned int kLarge = 131072;

}  // namespace

/// Stands in front of the bytes, or of the pointer to an array that was taken over.
struct VXByteBlock::Head {
    static constexpr std::uint32_t kAdopted = 0x80000000u;

    std::atomic<std::uint32_t> holders;  // with the top bit for an array that was taken over
    std::uint32_t size;

    bool IsAdopted() const { return (holders.load(std::memory_order_relaxed) & kAdopted) != 0; }
    bool IsShared() const { return (holders.load(std::memory_order_acquire) & ~kAdopted) > 1; }
    unsigned char* Inline() { return reinterpret_cast<unsigned char*>(this + 1); }
    unsigned char*& Array() { return *reinterpret_cast<unsigned char**>(this + 1); }
    std::size_t Footprint() const {
        return sizeof(Head) + (IsAdopted() ? sizeof(unsigned char*) : std::size_t{size});
    }
};

VXByteBlock::VXByteBlock(const VXByteBlock& other) noexcept : m_Head(other.m_Head) {
    if (m_Head != nullptr) m_Head->holders.fetch_add(1, std::memory_order_relaxed);
}

VXByteBlock& VXByteBlock::operator=(const VXByteBlock& other) noexcept {
    if (other.m_Head != nullptr) other.m_Head->holders.fetch_add(1, std::memory_order_relaxed);
    Drop();
    m_Head = other.m_Head;
    return *this;
}

VXByteBlock& VXByteBlock::operator=(VXByteBlock&& other) noexcept {
    if (this != &other) {
        Drop();
        m_Head = other.m_Head;
        other.m_Head = nullptr;
    }
    return *this;
}

VXByteBlock VXByteBlock::Allocate(unsigned int size) {
    VXByteBlock block;
    if (size != 0) {
        void* place = VXPool::Allocate(sizeof(Head) + std::size_t{size});
        if (size >= kLarge) VXPool::TouchPages(place, sizeof(Head) + std::size_t{size});
        block.m_Head = new (place) Head{1, size};
    }
    return block;
}

VXByteBlock VXByteBlock::CopyOf(const unsigned char* data, unsigned int size) {
    VXByteBlock block = Allocate(size);
    if (size != 0) std::memcpy(block.GetBytes(), data, size);
    return block;
}

VXByteBlock VXByteBlock::Adopt(unsigned char* array, unsigned int size) {
    VXByteBlock block;
    if (array != nullptr) {
        std::unique_ptr<unsigned char[]> owner(array);
        void* place = VXPool::Allocate(sizeof(Head) + sizeof(unsigned char*));
        block.m_Head = new (place) Head{1 | Head::kAdopted, size};
        block.m_Head->Array() = owner.release();
    }
    return block;
}

unsigned char* VXByteBlock::Release() {
    if (m_Head == nullptr) return nullptr;
    unsigned char* array;
    if (m_Head->IsAdopted() && !m_Head->IsShared()) {
        array = m_Head->Array();
        m_Head->Array() = nullptr;
    } else {
        array = new unsigned char[m_Head->size];
        std::memcpy(array, GetBytes(), m_Head->size);
    }
    Drop();
    m_Head = nullptr;
    return array;
}

unsigned char* VXByteBlock::GetBytes() const {
    if (m_Head == nullptr) return nullptr;
    return m_Head->IsAdopted() ? m_Head->Array() : m_Head->Inline();
}

unsigned int VXByteBlock::GetSize() const { return m_Head == nullptr ? 0 : m_Head->size; }

void VXByteBlock::Detach() {
    if (m_Head != nullptr && m_Head->IsShared()) *this = CopyOf(GetBytes(), GetSize());
}

void VXByteBlock::Drop() noexcept {
    if (m_Head == nullptr) return;
    // The last holder needs no atomic write to know that it is the last.
    if (m_Head->IsShared() &&
        ((m_Head->holders.fetch_sub(1, std::memory_order_acq_rel) - 1) & ~Head::kAdopted) != 0) {
        return;
    }
    if (m_Head->IsAdopted()) delete[] m_Head->Array();
    VXPool::Free(m_Head, m_Head->Footprint());
}
