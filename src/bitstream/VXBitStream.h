#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "memory/VXByteBlock.h"
#include "platform/IVXStream.h"
#include "platform/VXExport.h"
#include "platform/VXString.h"
#include "platform/VXTypes.h"

/// The one reader and writer of every field of a movie. It has two faces: a memory buffer, owned and growing
/// or borrowed and fixed, and an output stream to which writes go straight through. Reads always come from
/// the memory buffer.
///
/// A movie that is loaded from a stream that owns its buffer has its bodies there, and so the two share the
/// buffer from then on. The stream can be read and written as before; its first write moves it to a buffer of
/// its own. The bytes behind `GetBuffer()`, and behind copies of the stream, are then not to be changed.
///
/// Notation of wire layouts, here and in every class that has one:
///
///     u8 u16 u32    integers, little-endian
///     ub[n] sb[n]   bit fields of n bits, unsigned and two's complement, from the most significant bit on
///     str           UTF-8 text up to a NUL
///     Record        a record by the name of its class
///
/// Bits that have not filled a byte are pending. Byte-level reads drop them; `WriteByte`, `WriteWord` and
/// `WriteDWord` put them out first, as one byte with zeros behind them; `Read` and `Write` leave them alone.
/// Where a buffer has no room for that byte they stay pending. Pending bits that nothing puts out are lost.
///
/// Operations typed `VXErrorCodeEnum` answer 0 for good and 1 for failure, operations typed `short` answer
/// non-zero for good and 0 for failure.
class VXSWF_API VXBitStream {
public:
    VXBitStream() = default;
    /// A copy has every field as it stands, the buffer's address included, but `m_Attached` is set where there
    /// is a buffer: the copy frees nothing and cannot grow. It must not outlive the bytes.
    VXBitStream(const VXBitStream& other);
    VXBitStream& operator=(const VXBitStream& other);
    virtual ~VXBitStream();

    // The buffer.

    /// Frees an owned buffer and forgets a borrowed one. Pending bits and streams stay.
    void Clean();
    /// Makes the logical size at least `size`; bytes that it adds are zero. Non-zero for good. Fails on a
    /// borrowed buffer that is shorter, and for want of memory; the latter destroys the contents.
    ///
    /// Kept: the capacity grows by 512, or exactly to `size` where that is further, and never by doubling.
    /// What is asked of the allocator beyond 64 KiB runs ahead of that, untouched, so that many small steps
    /// stay linear.
    short EnsureSize(unsigned int size);
    unsigned char* GetBuffer() { return m_Buffer; }
    /// Bytes in the buffer, or the length of the output stream when there is one.
    unsigned int GetSize() const;
    /// 1 when nothing is left to read, else 0.
    short IsEOF() const { return IsAtEnd() ? short{1} : short{0}; }
    /// Bytes of the buffer that are left to read, whatever the output stream says.
    unsigned int GetRemaining() const { return IsAtEnd() ? 0 : m_Size - m_Position; }
    /// Reads a whole stream into an owned buffer. Non-zero for good; a stream that delivers less than its
    /// length leaves the buffer empty.
    short LoadFromStream(IVXStream* stream);
    /// Borrows `length` bytes, which must outlive their use here. Bytes of the buffer that the stream owns stay
    /// its own, and the rest of that buffer goes.
    void LoadFromAllocedMem(const unsigned char* data, unsigned int length);
    /// Reads `length` bytes in place and shares them with what is loaded from here: a movie copies none of
    /// them. They are let go by the last that uses them, which may be a tag in another thread, and are never
    /// changed. With a deleter of its own the pointer hands a host's memory over or, with an empty one, lends
    /// what outlives every tag.
    void LoadFromSharedMem(std::shared_ptr<const unsigned char[]> data, unsigned int length);
    /// Puts pending bits into the buffer, then writes the whole buffer in one transfer. Non-zero when all was
    /// taken; 0 also for null, for a stream in read mode and for more than 2^31 − 1 bytes.
    short DumpToStream(IVXStream* stream);

    /// Sends writes and positions to `stream`, which is not owned; null brings them back to the buffer. A
    /// stream in read mode takes no write: those of bytes answer 1, those of bits and text are lost.
    void SetOutputStream(IVXStream* stream) { m_Stream = stream; }
    /// Whether bytes were lost since the start, the last `Clean` or the last `ForgetFailure`: a write found
    /// no room, the output stream took only a part, or it did not reach a position. Most writes of bits and
    /// text do not report that themselves.
    bool HasFailed() const { return m_HasFailed; }
    /// Whether bytes were lost for want of memory, here or in a `VXNestedStream`; then `HasFailed` too.
    bool IsOutOfMemory() const { return m_IsOutOfMemory; }
    void ForgetFailure() { m_HasFailed = m_IsOutOfMemory = false; }
    /// For who runs out of memory over what is read from here or written to it, as a movie does.
    void NoteLackOfMemory() { m_HasFailed = m_IsOutOfMemory = true; }
    /// Where `StreamedCompress` and the stream form of `Compress` put their result. Not owned.
    void SetCompressionStream(IVXStream* stream) { m_CompressionStream = stream; }

    // Positions, in bytes. Pending bits stay as they are.

    unsigned int GetPosition() const;
    /// Non-zero for good. In memory a position behind the end extends the data with zeros.
    short SetPosition(unsigned int position);
    /// The same relative to the present position; a target below 0 fails and changes nothing.
    short MovePosition(int delta);

    // Bytes.

    /// Copies what there is, up to `length` bytes, and stores the count. 1 when nothing was left.
    VXErrorCodeEnum Read(void* target, unsigned int& length);
    VXErrorCodeEnum ReadByte(unsigned char& value);
    /// 1 when fewer than two bytes are left; a single byte is consumed, into the low half.
    VXErrorCodeEnum ReadWord(unsigned short& value);
    /// 1 when fewer than four bytes are left; those that were there are consumed, the rest of the value is
    /// zero.
    VXErrorCodeEnum ReadDWord(unsigned int& value);
    /// Kept: never fails. Missing bytes count as zero.
    VXErrorCodeEnum ReadVXInt32(int& value);

    /// Up to `length` bytes as a view: of the buffer where it is shared with what is loaded from here, else of a
    /// copy.
    VXByteView ReadView(unsigned int length);

    /// `data` may lie in this stream's own buffer.
    VXErrorCodeEnum Write(const void* data, const unsigned int& length);
    VXErrorCodeEnum WriteByte(unsigned char value);
    VXErrorCodeEnum WriteWord(unsigned short value);
    VXErrorCodeEnum WriteDWord(unsigned int value);

    // Bits.

    /// The low 32 bits of a field of up to 255. On failure the target holds the bits that were there.
    VXErrorCodeEnum ReadBits(unsigned int count, unsigned int& value);
    /// Always 0. A value wider than `count` is not cut: its upper bits are added to those that are pending.
    VXErrorCodeEnum WriteBits(unsigned int value, unsigned int count);
    /// Failure leaves the target as it was.
    VXErrorCodeEnum ReadSBits(unsigned int count, int& value);
    VXErrorCodeEnum WriteSBits(int value, unsigned int count);
    /// 1 or 0.
    VXErrorCodeEnum ReadVXBool16(short& value);
    /// One bit, set when the argument is non-zero.
    VXErrorCodeEnum WriteVXBool16(short value) { return WriteBits(value != 0 ? 1u : 0u, 1); }
    /// Puts pending bits out, with zeros behind them.
    VXErrorCodeEnum FlushBits();
    /// Drops the rest of a byte that was read in part.
    void ByteAlignSBits() {
        if (m_BitCount > 0) DropBits();
    }
    /// A 16.16 number as fraction u16, integer part u16. Always 0.
    ///
    /// Kept: the fraction of a negative number is lost; −1.5 goes out as 0x0000 0xFFFF.
    VXErrorCodeEnum WriteFixed(float value);

    // Text.

    /// Reads exactly `length` bytes; the string ends at the first NUL among them. 1 when there are fewer:
    /// they are consumed, and the string stays as it was.
    VXErrorCodeEnum ReadVXString(VXString& text, unsigned int length);
    /// Reads up to a NUL and consumes it. 1 without one: the string is then empty and the position at the
    /// end.
    ///
    /// Kept: with an output stream set, the string is measured here and read behind its own NUL.
    VXErrorCodeEnum ReadVXString(VXString& text);
    /// Always 0.
    ///
    /// Kept: as many UTF-8 bytes go out as the text has 16-bit units, so text outside ASCII is cut short. The
    /// NUL follows in every case. Pending bits land between the two.
    VXErrorCodeEnum WriteVXString(const VXString& text);

    // Widths of fields.

    /// Kept: bit 31 is never tested, so 0x80000000 takes 0 bits.
    static unsigned int FindNBitsUnsigned(unsigned int value);
    static unsigned int FindNBitsSigned(int value);
    static unsigned int FindMaxNBitsUnsigned(unsigned int current, unsigned int value);
    static int FindMaxNBitsSigned(int current, int value);
    /// Bits of `value`, and one more for the sign; 0 for 0 in both cases.
    ///
    /// Kept: 0x80000000 and above take 33, since the power that is compared wraps.
    static unsigned int MinBits(unsigned int value, short isSigned);
    /// That of −2^31 is 0x80000000.
    static unsigned int Magnitude(int value) {
        const auto bits = static_cast<unsigned int>(value);
        return value < 0 ? 0u - bits : bits;
    }
    /// The greatest magnitude of the four.
    static unsigned int MaxSNum4(int a, int b, int c, int d);

    // Compression, with zlib streams (RFC 1950). The first `offset` bytes are a header that stays as it is.

    /// In memory: deflates what lies behind `offset` at level 6. With `returnBuffer` and both pointers given,
    /// the result is a new array, to be released with `delete[]`, and the stream stays as it was. Otherwise
    /// the result replaces the data behind `offset`; the header bytes are then the caller's to write again,
    /// and the position is 0.
    ///
    /// With an output stream: copies header and deflated rest from there to the compression stream. Both must
    /// be there and reach their start, and the latter must not be in read mode, else nothing is written.
    ///
    /// Kept: transfers are not examined there. What was lost shows in `HasFailed`.
    ///
    /// Non-zero for good. Deflating that fails is reported as "compress2 returned failure".
    short Compress(unsigned int offset, short returnBuffer, unsigned char** outData, unsigned int* outLength);
    /// Inflates what lies behind `offset`; `fullSize` is the length of header and inflated rest together.
    /// Non-zero for good; on failure, reported as "compress2 returned failure", the stream stays as it was.
    /// The position is then `offset`.
    ///
    /// Kept: the size becomes that of the inflated rest plus 8, whatever the offset.
    short UnCompress(unsigned int offset, unsigned int fullSize);
    /// Deflates the output stream to the compression stream at level 9, in pieces of 1 MiB. Non-zero for
    /// good.
    ///
    /// Kept: without an output stream it reports that, compresses nothing and answers 1.
    short StreamedCompress(unsigned int offset);

private:
    friend class VXBitRun;
    friend class VXFlintFile;
    friend class VXNestedStream;
    friend class VXSwfTag;
    friend class VXWholeMovie;
    friend class VXMovieCombiner;
    static constexpr unsigned int kLongestRun = 56;  // with 7 pending bits less than 8 bytes

    bool IsAtEnd() const { return m_Buffer == nullptr || m_Position >= m_Size; }
    void DropBits() {
        m_BitBuffer = 0;
        m_BitCount = 0;
    }
    short SetFarPosition(unsigned int position);
    void FreeBuffer();
    void ShareBuffer();
    void ShareWith(const VXBitStream& outer) { m_Source = outer.m_Source; }
    bool HasOnlyViews() const { return m_Source == nullptr || m_HasOnlyViews; }
    bool IsBorrowed() const { return m_Attached != 0 && m_Stream == nullptr; }
    bool Unshare();
    unsigned int GetOwnBytesFrom(const unsigned char* bytes) const;
    void ShrinkTo(unsigned char* bytes, unsigned int size);
    bool Grow(unsigned int size);
    bool FailWithoutMemory();
    bool Allocate(unsigned int capacity);
    void ZeroUpTo(unsigned int size);
    bool MakeRoom(unsigned int count);
    unsigned int ReadUpTo(void* target, unsigned int length);
    void TakeBits(std::uint64_t window, unsigned int need, unsigned int& value);
    VXErrorCodeEnum ReadBitsSlowly(unsigned int count, unsigned int& value);
    VXErrorCodeEnum WriteSBitsSlowly(int value, unsigned int count);
    void WriteRun(std::uint64_t bits, unsigned int count);
    bool HasRoomBehindEnd() const {
        return m_Position >= m_Size && std::uint64_t{m_Position} + 8 <= std::uint64_t{m_Capacity} &&
               m_Attached == 0 && m_Stream == nullptr;
    }
    void WriteBytesOf(std::uint64_t bits, unsigned int left);
    void RepeatBits(unsigned int bit, unsigned int count);
    VXErrorCodeEnum WriteAway(const void* data, unsigned int length);
    VXErrorCodeEnum WriteSmall(const unsigned char* data, unsigned int length);
    unsigned char* CallCompress(const unsigned char* data, unsigned int length, unsigned int& outLength);
    short CompressStream(unsigned int offset);

    unsigned char* m_Buffer = nullptr;
    unsigned int m_Size = 0;
    unsigned int m_Capacity = 0;
    unsigned int m_Position = 0;
    // Writing: pending bits at the top of the low byte. Reading: unread ones at its bottom.
    unsigned int m_BitBuffer = 0;
    unsigned int m_BitCount = 0;  // 0 to 7
    short m_Attached = 0;
    mutable bool m_HasFailed = false;
    bool m_IsOutOfMemory = false;
    bool m_HasOnlyViews = false;  // nobody sees the buffer but what is loaded from here
    unsigned int m_Reserved = 0;  // what the allocator was asked for, at least the capacity
    IVXStream* m_Stream = nullptr;
    IVXStream* m_CompressionStream = nullptr;
    VXByteView m_Shared;                   // holds the buffer instead, and the capacity is 0
    const VXByteView* m_Source = nullptr;  // what views are parts of while something is loaded
    unsigned char* m_Spare = nullptr;      // for the next nested stream
    unsigned int m_SpareSize = 0;
};

/// A stream in memory for bytes that go to `outer` when they are complete, such as the body of a tag behind
/// its header. One after the other, the nested streams of a stream use the same buffer.
class VXSWF_API VXNestedStream : public VXBitStream {
public:
    explicit VXNestedStream(VXBitStream& outer);
    /// Tells `outer` of a lack of memory.
    ~VXNestedStream() override;

private:
    VXBitStream& m_Outer;
};

inline short VXBitStream::SetPosition(unsigned int position) {
    if (m_Stream != nullptr || position > m_Size) return SetFarPosition(position);
    m_Position = position;
    return 1;
}

inline VXErrorCodeEnum VXBitStream::ReadByte(unsigned char& value) {
    DropBits();
    if (IsAtEnd()) return kVXFailure;
    value = m_Buffer[m_Position++];
    return kVXSuccess;
}

inline VXErrorCodeEnum VXBitStream::ReadWord(unsigned short& value) {
    DropBits();
    if (GetRemaining() < 2) return ReadUpTo(&value, 2) == 2 ? kVXSuccess : kVXFailure;
    value = static_cast<unsigned short>(m_Buffer[m_Position] | (m_Buffer[m_Position + 1] << 8));
    m_Position += 2;
    return kVXSuccess;
}

inline VXErrorCodeEnum VXBitStream::ReadDWord(unsigned int& value) {
    DropBits();
    value = 0;
    if (GetRemaining() < 4) return ReadUpTo(&value, 4) == 4 ? kVXSuccess : kVXFailure;
    std::memcpy(&value, m_Buffer + m_Position, sizeof value);
    m_Position += 4;
    return kVXSuccess;
}

inline VXErrorCodeEnum VXBitStream::ReadBits(unsigned int count, unsigned int& value) {
    if (count <= m_BitCount) {
        m_BitCount -= count;
        value = m_BitBuffer >> m_BitCount;
        m_BitBuffer &= (1u << m_BitCount) - 1;
        return kVXSuccess;
    }
    // Eight bytes at the position hold all that a field of up to 32 bits can need. The end of the data and
    // wider fields take the plain path.
    if (count > 32 || std::uint64_t{m_Position} + 8 > std::uint64_t{m_Size} || m_Buffer == nullptr) {
        return ReadBitsSlowly(count, value);
    }
    std::uint64_t window;
    std::memcpy(&window, m_Buffer + m_Position, sizeof window);
    TakeBits(__builtin_bswap64(window), count - m_BitCount, value);
    return kVXSuccess;
}

/// Reads a field of the bits at hand and `need` more, which stand at the top of `window`.
inline void VXBitStream::TakeBits(std::uint64_t window, unsigned int need, unsigned int& value) {
    const unsigned int bytes = (need + 7) / 8;
    value = static_cast<unsigned int>((std::uint64_t{m_BitBuffer} << need) | (window >> (64 - need)));
    m_Position += bytes;
    m_BitCount = bytes * 8 - need;
    m_BitBuffer = m_Buffer[m_Position - 1] & ((1u << m_BitCount) - 1);
}

inline VXErrorCodeEnum VXBitStream::ReadSBits(unsigned int count, int& value) {
    if (count == 0) {
        value = 0;
        return kVXSuccess;
    }
    unsigned int bits = 0;
    VX_RETURN_IF_FAILED(ReadBits(count, bits));
    // Of a field that is wider, the sign lies above the 32 bits that are kept.
    if (count < 32) {
        const unsigned int sign = 1u << (count - 1);
        bits = (bits ^ sign) - sign;
    }
    value = static_cast<int>(bits);
    return kVXSuccess;
}

inline VXErrorCodeEnum VXBitStream::ReadVXBool16(short& value) {
    unsigned int bit = 0;
    VX_RETURN_IF_FAILED(ReadBits(1, bit));
    value = static_cast<short>(bit);
    return kVXSuccess;
}

inline VXErrorCodeEnum VXBitStream::WriteBits(unsigned int value, unsigned int count) {
    if (count == 0) return kVXSuccess;
    if (m_BitCount == 0) m_BitBuffer = 0;
    if (count > 32) {
        RepeatBits(0, count - 32);
        count = 32;
    }
    // The next byte to go out stands at bit `left` and above. The field is added, not or-ed: what
    // does not fit it spoils the bits in front.
    unsigned int left = m_BitCount + count;
    const std::uint64_t bits = (std::uint64_t{m_BitBuffer} << left) + (std::uint64_t{value} << 8);
    m_BitCount = left % 8;
    m_BitBuffer = static_cast<unsigned int>(bits >> m_BitCount) & 0xFFu;
    if (left < 8) return kVXSuccess;
    if (HasRoomBehindEnd()) {
        // A store of eight bytes takes no loop; those that are too many lie behind the end.
        const std::uint64_t window = __builtin_bswap64(bits << (56 - left));
        std::memcpy(m_Buffer + m_Position, &window, sizeof window);
        m_Position += left / 8;
        m_Size = m_Position;
        return kVXSuccess;
    }
    WriteBytesOf(bits, left);
    return kVXSuccess;
}

inline unsigned int VXBitStream::MinBits(unsigned int value, short isSigned) {
    if (value == 0) return 0;
    const unsigned int bits = value >= 0x80000000u ? 33 : static_cast<unsigned int>(std::bit_width(value));
    return bits + (isSigned != 0 ? 1 : 0);
}

inline VXErrorCodeEnum VXBitStream::WriteSBits(int value, unsigned int count) {
    if (count - 1 < 32) {
        // A value that comes back whole from its field is that field; any other spoils the bits in front.
        const unsigned int bits = static_cast<unsigned int>(value) << (32 - count);
        if (static_cast<int>(bits) >> (32 - count) == value) return WriteBits(bits >> (32 - count), count);
    }
    return WriteSBitsSlowly(value, count);
}

inline VXErrorCodeEnum VXBitStream::FlushBits() {
    if (m_BitCount == 0) return kVXSuccess;
    const auto last = static_cast<unsigned char>(m_BitBuffer);
    VX_RETURN_IF_FAILED(Write(&last, 1u));
    DropBits();
    return kVXSuccess;
}

inline VXErrorCodeEnum VXBitStream::WriteSmall(const unsigned char* data, unsigned int length) {
    if (m_BitCount > 0 || m_Stream != nullptr ||
        std::uint64_t{m_Position} + length > std::uint64_t{m_Capacity}) {
        // A failed flush keeps the pending bits and does not hold up the bytes.
        VXIgnore(FlushBits());
        return WriteAway(data, length);
    }
    std::memcpy(m_Buffer + m_Position, data, length);
    m_Position += length;
    if (m_Position > m_Size) m_Size = m_Position;
    return kVXSuccess;
}

inline VXErrorCodeEnum VXBitStream::WriteByte(unsigned char value) { return WriteSmall(&value, 1); }

inline VXErrorCodeEnum VXBitStream::WriteWord(unsigned short value) {
    const unsigned char bytes[] = {static_cast<unsigned char>(value), static_cast<unsigned char>(value >> 8)};
    return WriteSmall(bytes, 2);
}

inline VXErrorCodeEnum VXBitStream::WriteDWord(unsigned int value) {
    const unsigned char bytes[] = {static_cast<unsigned char>(value), static_cast<unsigned char>(value >> 8),
                                   static_cast<unsigned char>(value >> 16),
                                   static_cast<unsigned char>(value >> 24)};
    return WriteSmall(bytes, 4);
}
