#include "memory/VXByteBlock.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "memory/VXPool.h"

/// Stands in front of the bytes, or of the pointer to bytes that were taken over.
struct VXByteBlock::Head {
    static constexpr std::uint32_t kAdopted = 0x80000000u;
    static constexpr std::uint32_t kBuffer = 0x40000000u;
    static constexpr std::uint32_t kCount = kBuffer - 1;

    std::atomic<std::uint32_t> holders;  // of a buffer the pieces that have views; with the kind on top
    std::uint32_t size;

    bool Is(std::uint32_t kind) const { return (holders.load(std::memory_order_relaxed) & kind) != 0; }
    bool IsShared() const { return (holders.load(std::memory_order_acquire) & kCount) > 1; }
    /// True for the last one.
    bool Leave() {
        // The last holder needs no atomic write to know that it is the last.
        return !IsShared() || ((holders.fetch_sub(1, std::memory_order_acq_rel) - 1) & kCount) == 0;
    }
    unsigned char*& Pointer() { return *reinterpret_cast<unsigned char**>(this + 1); }
    unsigned char* Bytes() {
        return Is(kAdopted | kBuffer) ? Pointer() : reinterpret_cast<unsigned char*>(this + 1);
    }
    void Free() {
        const bool isAdopted = Is(kAdopted);
        if (isAdopted) delete[] Pointer();
        VXPool::Free(this, sizeof(Head) + (isAdopted ? sizeof(unsigned char*) : std::size_t{size}));
    }
};

/// A buffer of a stream or of the host. Behind it stands the number of views of each piece.
struct VXByteBlock::Buffer : Head {
    using Count = std::atomic<std::uint32_t>;
    static constexpr unsigned int kPieceBits = 18;
    static constexpr unsigned int kSmallest = 1u << 20;  // with pieces

    unsigned char* data;  // where `Pointer` looks for it
    std::size_t reserved = 0;
    std::shared_ptr<const unsigned char[]> host;
    unsigned int pieceBits;

    static unsigned int PieceBits(unsigned int size, bool isHost) {
        return isHost || size < kSmallest ? 31 : kPieceBits;
    }
    static std::size_t Footprint(unsigned int size, unsigned int bits) {
        return sizeof(Buffer) + (((size - 1) >> bits) + 1) * sizeof(Count);
    }
    static Buffer* Make(unsigned char* data, unsigned int size, bool isHost) {
        const unsigned int bits = PieceBits(size, isHost);
        return new (VXPool::Allocate(Footprint(size, bits))) Buffer(data, size, bits);
    }
    Buffer(unsigned char* bytes, unsigned int length, unsigned int bits)
        : Head{kBuffer | (((length - 1) >> bits) + 1), length}, data(bytes), pieceBits(bits) {
        for (unsigned int i = 0; i <= (length - 1) >> bits; ++i) new (&Views(i)) Count(1);
    }

    Count& Views(unsigned int piece) { return reinterpret_cast<Count*>(this + 1)[piece]; }

    void Hold(unsigned int offset, unsigned int length) {
        const unsigned int last = (offset + length - 1) >> pieceBits;
        for (unsigned int i = offset >> pieceBits; i <= last; ++i) {
            Views(i).fetch_add(1, std::memory_order_relaxed);
        }
    }
    void Drop(unsigned int offset, unsigned int length) {
        const unsigned int last = (offset + length - 1) >> pieceBits;
        for (unsigned int i = offset >> pieceBits; i <= last; ++i) {
            if (Views(i).fetch_sub(1, std::memory_order_acq_rel) == 1) DropPiece(i);
        }
    }
    void DropPiece(unsigned int piece) {
        // As long as other pieces have views; the last one goes with all the rest.
        if (IsShared() && host == nullptr) {
            const std::size_t start = std::size_t{piece} << pieceBits;
            const std::size_t end = std::min(start + (std::size_t{1} << pieceBits), std::size_t{size});
            VXPool::ReturnPages(data + start, end - start);
        }
        if (!Leave()) return;
        if (host == nullptr) VXPool::FreeBuffer(data, reserved);
        const std::size_t footprint = Footprint(size, pieceBits);
        this->~Buffer();
        VXPool::Free(this, footprint);
    }
};

VXByteBlock::VXByteBlock(const VXByteBlock& other) noexcept : m_Head(other.m_Head) {
    if (m_Head != nullptr) m_Head->holders.fetch_add(1, std::memory_order_relaxed);
}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the new holder is counted before the old one drops
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
        block.m_Head->Pointer() = owner.release();
    }
    return block;
}

unsigned char* VXByteBlock::GetBytes() const { return m_Head == nullptr ? nullptr : m_Head->Bytes(); }

unsigned int VXByteBlock::GetSize() const { return m_Head == nullptr ? 0 : m_Head->size; }

void VXByteBlock::Detach() {
    if (m_Head != nullptr && m_Head->IsShared()) *this = CopyOf(GetBytes(), GetSize());
}

void VXByteBlock::Drop() noexcept {
    if (m_Head != nullptr && m_Head->Leave()) m_Head->Free();
}

VXByteView::VXByteView(VXByteBlock block) noexcept : m_Size(block.GetSize()) {
    if (m_Size != 0) std::swap(m_Head, block.m_Head);
}

VXByteView::VXByteView(const VXByteView& other) noexcept
    : m_Head(other.m_Head), m_Offset(other.m_Offset), m_Size(other.m_Size) {
    Hold();
}

VXByteView VXByteView::TakeOver(unsigned char* buffer, unsigned int size, unsigned int reserved) {
    Buffer* made = Buffer::Make(buffer, size, false);
    made->reserved = reserved;
    VXByteView view;
    view.m_Head = made;
    view.m_Size = size;
    return view;
}

VXByteView VXByteView::Share(std::shared_ptr<const unsigned char[]> bytes, unsigned int size) {
    VXByteView view;
    if (bytes == nullptr || size == 0) return view;
    Buffer* made = Buffer::Make(const_cast<unsigned char*>(bytes.get()), size, true);
    made->host = std::move(bytes);
    view.m_Head = made;
    view.m_Size = size;
    return view;
}

VXByteView VXByteView::Part(unsigned int offset, unsigned int size) const noexcept {
    VXByteView part;
    if (offset >= m_Size || size == 0) return part;
    part.m_Head = m_Head;
    part.m_Offset = m_Offset + offset;
    part.m_Size = std::min(size, m_Size - offset);
    part.Hold();
    return part;
}

unsigned char* VXByteView::GetBytes() const {
    return m_Head == nullptr ? nullptr : m_Head->Bytes() + m_Offset;
}

void VXByteView::Detach() {
    if (m_Head == nullptr || (!m_Head->Is(Head::kBuffer) && !m_Head->IsShared())) return;
    *this = VXByteView(VXByteBlock::CopyOf(GetBytes(), m_Size));
}

void VXByteView::Hold() const noexcept {
    if (m_Head == nullptr) return;
    if (m_Head->Is(Head::kBuffer)) {
        static_cast<Buffer*>(m_Head)->Hold(m_Offset, m_Size);
    } else {
        m_Head->holders.fetch_add(1, std::memory_order_relaxed);
    }
}

void VXByteView::Drop() noexcept {
    if (m_Head->Is(Head::kBuffer)) {
        static_cast<Buffer*>(m_Head)->Drop(m_Offset, m_Size);
    } else if (m_Head->Leave()) {
        m_Head->Free();
    }
}
