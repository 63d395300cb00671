#include "bitstream/VXBitStream.h"

#include <algorithm>
#include <bit>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

#include "bitstream/VXStreamTransfer_p.h"
#include "memory/VXMemoryLimit_p.h"
#include "memory/VXPool.h"

static_assert(std::endian::native == std::endian::little, "fields are copied as they lie on the wire");

namespace {

constexpr unsigned int kGrowthStep = 512;
constexpr unsigned int kRunAhead = 65536;
constexpr std::size_t kHeadOfText = 24;  // what a string of few letters takes beside them
constexpr unsigned int kLargestSpare = 65536;

}  // namespace

VXBitStream::VXBitStream(const VXBitStream& other) { *this = other; }

VXBitStream& VXBitStream::operator=(const VXBitStream& other) {
    if (this == &other) return *this;
    if (const unsigned int own = GetOwnBytesFrom(other.m_Buffer); own != 0) {
        ShrinkTo(other.m_Buffer, std::min(other.m_Size, own));
    } else {
        FreeBuffer();
        m_Buffer = other.m_Buffer;
        m_Size = other.m_Size;
        m_Capacity = other.m_Capacity;
        m_Attached = other.m_Buffer != nullptr ? short{1} : other.m_Attached;
    }
    m_Position = other.m_Position;
    m_BitBuffer = other.m_BitBuffer;
    m_BitCount = other.m_BitCount;
    m_HasFailed = other.m_HasFailed;
    m_IsOutOfMemory = other.m_IsOutOfMemory;
    m_Stream = other.m_Stream;
    m_CompressionStream = other.m_CompressionStream;
    return *this;
}

VXBitStream::~VXBitStream() {
    FreeBuffer();
    VXPool::FreeBuffer(m_Spare, m_SpareSize);
}

VXNestedStream::VXNestedStream(VXBitStream& outer) : m_Outer(outer) {
    m_Buffer = std::exchange(outer.m_Spare, nullptr);
    m_Capacity = m_Reserved = std::exchange(outer.m_SpareSize, 0);
}

VXNestedStream::~VXNestedStream() {
    if (m_IsOutOfMemory) m_Outer.m_HasFailed = m_Outer.m_IsOutOfMemory = true;
    if (m_Attached != 0 || m_Shared || m_Reserved > kLargestSpare || m_Outer.m_Spare != nullptr) return;
    m_Outer.m_Spare = std::exchange(m_Buffer, nullptr);
    m_Outer.m_SpareSize = std::exchange(m_Reserved, 0);
}

void VXBitStream::FreeBuffer() {
    if (m_Attached == 0 && !m_Shared) VXPool::FreeBuffer(m_Buffer, m_Reserved);
    m_Shared = VXByteView();
    m_Source = nullptr;
    m_Buffer = nullptr;
    m_Size = m_Capacity = m_Reserved = 0;
    m_Attached = 0;
}

/// Lets what is loaded from here have views of the buffer, if the stream owns it.
void VXBitStream::ShareBuffer() {
    if (m_Attached != 0 || m_Size == 0) return;
    if (!m_Shared) {
        m_Shared = VXByteView::TakeOver(m_Buffer, m_Size, m_Reserved);
        m_Capacity = m_Reserved = 0;
    }
    m_Source = &m_Shared;
}

/// Goes over to a buffer of its own, before a write.
bool VXBitStream::Unshare() {
    const unsigned int reserve = std::max(m_Size, 1u);
    void* block = VXPool::Resize(nullptr, 0, reserve);
    if (block == nullptr) return false;
    std::memcpy(block, m_Buffer, m_Size);
    m_Shared = VXByteView();
    m_Source = nullptr;
    m_Buffer = static_cast<unsigned char*>(block);
    m_Capacity = m_Reserved = reserve;
    return true;
}

/// How many bytes the buffer that the stream owns has from `bytes` on; 0 when they lie elsewhere.
unsigned int VXBitStream::GetOwnBytesFrom(const unsigned char* bytes) const {
    if (m_Attached != 0 || m_Buffer == nullptr) return 0;
    const unsigned char* start = m_Shared ? m_Shared.GetBytes() : m_Buffer;
    const unsigned int size = m_Shared ? m_Shared.GetSize() : m_Capacity;
    const auto skipped = reinterpret_cast<std::uintptr_t>(bytes) - reinterpret_cast<std::uintptr_t>(start);
    return skipped < size ? size - static_cast<unsigned int>(skipped) : 0;
}

/// Takes a part of the buffer that the stream owns for the whole, and owns it still.
void VXBitStream::ShrinkTo(unsigned char* bytes, unsigned int size) {
    if (bytes != m_Buffer) {
        ZeroUpTo(m_Capacity);
        ShareBuffer();  // which holds bytes at any place
    }
    m_Buffer = bytes;
    m_Size = size;
}

void VXBitStream::Clean() {
    FreeBuffer();
    m_Position = 0;
    ForgetFailure();
}

short VXBitStream::EnsureSize(unsigned int size) {
    if (size > std::max(m_Capacity, m_Size) && !Grow(size)) return 0;
    ZeroUpTo(size);
    return m_Buffer != nullptr || size == 0 ? 1 : 0;
}

/// Makes the capacity reach `size`, by the rule that `EnsureSize` states, and leaves the size alone.
bool VXBitStream::Grow(unsigned int size) {
    if (m_Attached != 0) return false;
    if (m_Shared && !Unshare()) return FailWithoutMemory();
    if (size <= m_Capacity) return true;
    std::uint64_t capacity = size;
    if (size - m_Capacity < kGrowthStep) capacity = std::uint64_t{m_Capacity} + kGrowthStep;
    if (capacity > UINT_MAX) return false;
    return Allocate(static_cast<unsigned int>(capacity));
}

bool VXBitStream::FailWithoutMemory() {
    FreeBuffer();
    m_HasFailed = m_IsOutOfMemory = true;
    return false;
}

bool VXBitStream::Allocate(unsigned int capacity) {
    if (capacity > m_Reserved) {
        const std::uint64_t ahead = m_Reserved >= kRunAhead ? std::uint64_t{m_Reserved} * 3 / 2 : 0;
        unsigned int reserve =
            std::max(capacity, static_cast<unsigned int>(std::min<std::uint64_t>(ahead, UINT_MAX)));
        void* block = VXPool::Resize(m_Buffer, m_Reserved, reserve);
        if (block == nullptr && reserve > capacity) {
            reserve = capacity;
            block = VXPool::Resize(m_Buffer, m_Reserved, reserve);
        }
        if (block == nullptr) return FailWithoutMemory();
        m_Buffer = static_cast<unsigned char*>(block);
        m_Reserved = reserve;
    }
    m_Capacity = capacity;
    // A position that an inflate or a failed allocation left behind the size must not uncover what lies
    // between.
    if (m_Position > m_Size) std::memset(m_Buffer + m_Size, 0, std::min(m_Position, m_Capacity) - m_Size);
    return true;
}

/// Raises the size; what that uncovers is zero.
void VXBitStream::ZeroUpTo(unsigned int size) {
    if (size <= m_Size) return;
    std::memset(m_Buffer + m_Size, 0, size - m_Size);
    m_Size = size;
}

/// Lets `count` bytes be stored at the position.
bool VXBitStream::MakeRoom(unsigned int count) {
    const std::uint64_t end = std::uint64_t{m_Position} + count;
    if (end > UINT_MAX) return false;
    if (end <= m_Capacity) return true;
    return Grow(static_cast<unsigned int>(end));
}

unsigned int VXBitStream::GetSize() const {
    if (m_Stream == nullptr) return m_Size;
    const unsigned int here = m_Stream->Tell();
    const unsigned int size = VXSeekToEnd(*m_Stream);
    if (!VXSeekTo(*m_Stream, here)) m_HasFailed = true;
    return size;
}

short VXBitStream::LoadFromStream(IVXStream* stream) {
    Clean();
    if (stream == nullptr) return 0;
    const unsigned int length = VXSeekToEnd(*stream);
    if (!VXSeekTo(*stream, 0)) return 0;
    if (length > 0 && !Grow(length)) return 0;
    if (length > 0 && VXTransfer(*stream, m_Buffer, length) != length) return 0;
    m_Size = length;
    return 1;
}

void VXBitStream::LoadFromAllocedMem(const unsigned char* data, unsigned int length) {
    // Borrowed bytes are written only where the borrower writes to the stream.
    auto* bytes = const_cast<unsigned char*>(data);
    if (const unsigned int own = GetOwnBytesFrom(bytes); own != 0) {
        const unsigned int unused = m_Shared ? 0 : m_Capacity - m_Size;
        ShrinkTo(bytes, own > unused ? std::min(length, own - unused) : 0);
    } else {
        FreeBuffer();
        m_Buffer = bytes;
        m_Size = m_Capacity = data == nullptr ? 0 : length;
        m_Attached = 1;
    }
    m_Position = 0;
    ForgetFailure();
}

void VXBitStream::LoadFromSharedMem(std::shared_ptr<const unsigned char[]> data, unsigned int length) {
    VXByteView shared = VXByteView::Share(std::move(data), length);
    Clean();
    m_Shared = std::move(shared);
    m_Buffer = m_Shared.GetBytes();
    m_Size = m_Shared.GetSize();
}

short VXBitStream::DumpToStream(IVXStream* stream) {
    VXIgnore(FlushBits());  // bits that find no room are lost, as everywhere
    if (stream == nullptr || stream->IsReading() || m_Size > INT_MAX) return 0;
    return stream->XferByte(m_Buffer, static_cast<int>(m_Size)) == static_cast<int>(m_Size) ? 1 : 0;
}

unsigned int VXBitStream::GetPosition() const { return m_Stream != nullptr ? m_Stream->Tell() : m_Position; }

/// A position in the output stream, or one that extends the data.
short VXBitStream::SetFarPosition(unsigned int position) {
    if (m_Stream != nullptr) {
        if (!VXSeekTo(*m_Stream, position)) m_HasFailed = true;
        return 1;
    }
    if (position > m_Capacity && EnsureSize(position) == 0) return 0;
    ZeroUpTo(position);
    m_Position = position;
    return 1;
}

short VXBitStream::MovePosition(int delta) {
    const std::int64_t target = std::int64_t{GetPosition()} + delta;
    // No stream goes there; the answer of one is not asked for.
    if (target < 0 || target > UINT_MAX) return m_Stream != nullptr ? 1 : 0;
    return SetPosition(static_cast<unsigned int>(target));
}

VXErrorCodeEnum VXBitStream::Read(void* target, unsigned int& length) {
    const bool nothing = IsAtEnd();
    length = ReadUpTo(target, length);
    return nothing ? kVXFailure : kVXSuccess;
}

unsigned int VXBitStream::ReadUpTo(void* target, unsigned int length) {
    const unsigned int count = std::min(length, GetRemaining());
    if (count != 0) std::memcpy(target, m_Buffer + m_Position, count);
    m_Position += count;
    return count;
}

VXByteView VXBitStream::ReadView(unsigned int length) {
    length = std::min(length, GetRemaining());
    if (length == 0) return VXByteView();
    unsigned char* bytes = m_Buffer + m_Position;
    VXByteView view;
    if (m_Source != nullptr) {
        // A stream over bytes that a host's class put in the place of a body lies elsewhere.
        const auto offset =
            reinterpret_cast<std::uintptr_t>(bytes) - reinterpret_cast<std::uintptr_t>(m_Source->GetBytes());
        if (offset < m_Source->GetSize()) view = m_Source->Part(static_cast<unsigned int>(offset), length);
    }
    if (!view) view = VXByteView(VXByteBlock::CopyOf(bytes, length));
    m_Position += length;
    return view;
}

VXErrorCodeEnum VXBitStream::ReadVXInt32(int& value) {
    unsigned int bits = 0;
    VXIgnore(ReadDWord(bits));  // what is missing counts as zero here
    value = static_cast<int>(bits);
    return kVXSuccess;
}

VXErrorCodeEnum VXBitStream::Write(const void* data, const unsigned int& length) {
    const unsigned int count = length;
    return WriteAway(data, count);
}

VXErrorCodeEnum VXBitStream::WriteAway(const void* data, unsigned int length) {
    const auto* bytes = static_cast<const unsigned char*>(data);
    if (m_Stream != nullptr) {
        // What the stream could not take shows at the end of a dump, and in the stream's own state.
        if (VXSend(*m_Stream, bytes, length) != length) m_HasFailed = true;
        return m_Stream->IsReading() ? kVXFailure : kVXSuccess;
    }
    const auto start = reinterpret_cast<std::uintptr_t>(m_Buffer);
    const auto from = reinterpret_cast<std::uintptr_t>(bytes);
    const bool isOwn = m_Buffer != nullptr && from - start < std::max(m_Capacity, m_Size);
    if (!MakeRoom(length)) {
        m_HasFailed = true;
        return kVXFailure;
    }
    if (isOwn) bytes = m_Buffer + (from - start);
    if (length != 0) std::memmove(m_Buffer + m_Position, bytes, length);
    m_Position += length;
    m_Size = std::max(m_Size, m_Position);
    return kVXSuccess;
}

/// The end of the data, and fields of more than 32 bits; `count` is above the bits at hand.
VXErrorCodeEnum VXBitStream::ReadBitsSlowly(unsigned int count, unsigned int& value) {
    const unsigned int bits = count - m_BitCount;
    if (m_Size >= 8 && count <= 32 && std::uint64_t{m_Position} + (bits + 7) / 8 <= m_Size) {
        // The last eight bytes of the data, without those in front of the position.
        std::uint64_t window;
        std::memcpy(&window, m_Buffer + m_Size - 8, sizeof window);
        TakeBits(__builtin_bswap64(window) << 8 * (m_Position + 8 - m_Size), bits, value);
        return kVXSuccess;
    }
    value = m_BitBuffer;
    for (unsigned int need = count - m_BitCount; need != 0;) {
        DropBits();
        if (IsAtEnd()) return kVXFailure;
        const unsigned int byte = m_Buffer[m_Position++];
        const unsigned int take = std::min(need, 8u);
        need -= take;
        value = (value << take) | (byte >> (8 - take));
        m_BitCount = 8 - take;
        m_BitBuffer = byte & ((1u << m_BitCount) - 1);
    }
    return kVXSuccess;
}

/// Writes up to `kLongestRun` bits, of which `bits` has no more.
void VXBitStream::WriteRun(std::uint64_t bits, unsigned int count) {
    if (!HasRoomBehindEnd()) {
        const unsigned int lower = std::min(count, 32u);
        VXIgnore(WriteBits(static_cast<unsigned int>(bits >> lower), count - lower));
        VXIgnore(WriteBits(static_cast<unsigned int>(bits & ((std::uint64_t{1} << lower) - 1)), lower));
        return;
    }
    if (count == 0) return;
    const unsigned int total = m_BitCount + count;
    const std::uint64_t pending = m_BitCount == 0 ? 0 : m_BitBuffer;
    const std::uint64_t window = pending << 56 | bits << (64 - total);
    m_BitCount = total % 8;
    m_BitBuffer = static_cast<unsigned int>(window << (total - m_BitCount) >> 56);
    if (total < 8) return;
    const std::uint64_t bytes = __builtin_bswap64(window);
    std::memcpy(m_Buffer + m_Position, &bytes, sizeof bytes);
    m_Position += total / 8;
    m_Size = m_Position;
}

/// Puts out the whole bytes of `bits`, the first at bit `left` and above, where they cannot be stored at
/// once. A byte that finds no room is lost.
void VXBitStream::WriteBytesOf(std::uint64_t bits, unsigned int left) {
    for (; left >= 8; left -= 8) {
        const auto byte = static_cast<unsigned char>(bits >> left);
        VXIgnore(WriteAway(&byte, 1));
    }
}

void VXBitStream::RepeatBits(unsigned int bit, unsigned int count) {
    while (count != 0) {
        const unsigned int chunk = std::min(count, 16u);
        VXIgnore(WriteBits(bit != 0 ? (1u << chunk) - 1 : 0u, chunk));  // no write of bits reports a failure
        count -= chunk;
    }
}

VXErrorCodeEnum VXBitStream::WriteSBitsSlowly(int value, unsigned int count) {
    if (count == 0) return kVXSuccess;
    const unsigned int sign = value < 0 ? 1 : 0;
    VX_RETURN_IF_FAILED(WriteBits(sign, 1));
    auto rest = static_cast<unsigned int>(value);
    if (count <= 32 && sign != 0) rest += 1u << (count - 1);
    if (count > 33) RepeatBits(sign, count - 33);
    return WriteBits(rest, std::min(count - 1, 32u));
}

VXErrorCodeEnum VXBitStream::WriteFixed(float value) {
    // What a 32-bit conversion of the processor gives for a value that it cannot hold.
    const bool fits = value >= -2147483648.0f && value < 2147483648.0f;
    const int whole = fits ? static_cast<int>(value) : INT_MIN;
    float rest = value - static_cast<float>(whole);
    unsigned int fraction = 0;
    for (int bit = 15; bit >= 0; --bit) {
        rest *= 2.0f;
        if (rest >= 1.0f) {
            fraction |= 1u << bit;
            rest -= 1.0f;
        }
    }
    VXIgnore(WriteWord(static_cast<unsigned short>(fraction)));  // bytes that find no room are lost
    VXIgnore(WriteWord(static_cast<unsigned short>(static_cast<unsigned int>(whole))));
    return kVXSuccess;
}

VXErrorCodeEnum VXBitStream::ReadVXString(VXString& text, unsigned int length) {
    DropBits();
    const unsigned int remaining = GetRemaining();
    if (remaining < length) {
        m_Position += remaining;
        return kVXFailure;
    }
    if (length == 0) {
        text.clear();
        return kVXSuccess;
    }
    VXMemoryLimit::Charge(kHeadOfText + std::size_t{length} * sizeof(char16_t));
    text = VXString(reinterpret_cast<const char*>(m_Buffer + m_Position), length);
    m_Position += length;
    return kVXSuccess;
}

VXErrorCodeEnum VXBitStream::ReadVXString(VXString& text) {
    text.clear();
    DropBits();
    const unsigned int streamStart = m_Stream != nullptr ? m_Stream->Tell() : 0;
    const unsigned int remaining = GetRemaining();
    const unsigned char* start = remaining == 0 ? nullptr : m_Buffer + m_Position;
    const void* nul = remaining == 0 ? nullptr : std::memchr(start, 0, remaining);
    if (nul == nullptr) {
        m_Position += remaining;
        if (m_Stream != nullptr) VXSeekTo(*m_Stream, streamStart);
        return kVXFailure;
    }
    const auto count = static_cast<unsigned int>(static_cast<const unsigned char*>(nul) - start);
    if (m_Stream != nullptr) {
        // Kept: the way back to the start goes to the output stream. The buffer stays behind the NUL, and the
        // bytes that follow it are taken for the text.
        m_Position += count + 1;
        VXSeekTo(*m_Stream, streamStart);
    }
    return ReadVXString(text, count + 1);
}

VXErrorCodeEnum VXBitStream::WriteVXString(const VXString& text) {
    if (!text.empty()) {
        const std::string bytes = text.GetUTF8String();
        const auto count = static_cast<unsigned int>(std::min(text.length(), bytes.size()));
        VXIgnore(WriteAway(bytes.data(), count));  // bytes that find no room are lost
    }
    VXIgnore(WriteByte(0));
    return kVXSuccess;
}

unsigned int VXBitStream::FindNBitsUnsigned(unsigned int value) {
    return static_cast<unsigned int>(std::bit_width(value & 0x7FFFFFFFu));
}

unsigned int VXBitStream::FindNBitsSigned(int value) {
    return value == 0 ? 0 : FindNBitsUnsigned(Magnitude(value)) + 1;
}

unsigned int VXBitStream::FindMaxNBitsUnsigned(unsigned int current, unsigned int value) {
    return std::max(current, FindNBitsUnsigned(value));
}

int VXBitStream::FindMaxNBitsSigned(int current, int value) {
    return std::max(current, static_cast<int>(FindNBitsSigned(value)));
}

unsigned int VXBitStream::MaxSNum4(int a, int b, int c, int d) {
    return std::max({Magnitude(a), Magnitude(b), Magnitude(c), Magnitude(d)});
}
