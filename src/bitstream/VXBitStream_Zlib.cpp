#include <zlib.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

#include "bitstream/VXBitStream.h"
#include "bitstream/VXStreamTransfer_p.h"
#include "memory/VXPool.h"
#include "platform/VXAssert.h"

namespace {

constexpr int kBlockLevel = 6;
constexpr int kMovieLevel = 9;
constexpr unsigned int kChunkSize = 1048576;

// Deflate spends at least two bits on a match of at most 258 bytes, and zlib states the bound as 1032 to 1.
constexpr std::uint64_t kMostInflation = 1032;

/// A deflating zlib stream that ends on every way out.
class Deflater {
public:
    explicit Deflater(int level) : m_IsGood(deflateInit(&m_Stream, level) == Z_OK) {}
    ~Deflater() {
        if (m_IsGood) deflateEnd(&m_Stream);
    }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    bool IsGood() const { return m_IsGood; }
    void SetInput(unsigned char* data, unsigned int length) {
        m_Stream.next_in = data;
        m_Stream.avail_in = length;
    }
    /// Answers how much of the room is used; zlib's own code goes to `code`.
    unsigned int Run(unsigned char* room, unsigned int length, int flush, int& code) {
        m_Stream.next_out = room;
        m_Stream.avail_out = length;
        code = deflate(&m_Stream, flush);
        return length - m_Stream.avail_out;
    }

private:
    z_stream m_Stream{};
    bool m_IsGood;
};

/// A buffer of `VXPool` that is freed unless it is released.
class Block {
public:
    Block() = default;
    ~Block() { VXPool::FreeBuffer(m_Bytes, m_Size); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    bool Resize(std::size_t size) {
        void* bytes = VXPool::Resize(m_Bytes, m_Size, size);
        if (bytes == nullptr) return false;
        m_Bytes = static_cast<unsigned char*>(bytes);
        m_Size = size;
        return true;
    }
    unsigned char* Get() const { return m_Bytes; }
    unsigned char* Release() {
        m_Size = 0;
        return std::exchange(m_Bytes, nullptr);
    }

private:
    unsigned char* m_Bytes = nullptr;
    std::size_t m_Size = 0;
};

enum class Inflation { kDone, kBadData, kNoMemory };

/// Inflates to `offset` in `block`, at most `most` bytes, and stores how many came. A header may claim what
/// it likes, so beyond what movies have the block grows with what is there.
Inflation Inflate(const unsigned char* data, unsigned int length, std::uint64_t most, unsigned int offset,
                  Block& block, std::uint64_t& size) {
    constexpr std::uint64_t kUsual = 16;
    z_stream stream{};
    stream.next_in = const_cast<unsigned char*>(data);
    stream.avail_in = length;
    if (inflateInit(&stream) != Z_OK) return Inflation::kNoMemory;
    const std::unique_ptr<z_stream, int (*)(z_stream*)> end(&stream, &inflateEnd);
    size = 0;
    for (std::uint64_t room = std::min(most, std::max<std::uint64_t>(kUsual * length, 65536));;
         room = std::min(most, room * 2)) {
        if (!block.Resize(std::max<std::uint64_t>(offset + room, 1))) return Inflation::kNoMemory;
        stream.next_out = block.Get() + offset + size;
        stream.avail_out = static_cast<unsigned int>(room - size);
        const int code = inflate(&stream, Z_NO_FLUSH);
        size = room - stream.avail_out;
        if (code == Z_STREAM_END) return Inflation::kDone;
        if (code == Z_MEM_ERROR) return Inflation::kNoMemory;
        // More room helps only where there was too little.
        if ((code != Z_OK && code != Z_BUF_ERROR) || stream.avail_out != 0 || room == most) {
            return Inflation::kBadData;
        }
    }
}

std::unique_ptr<unsigned char[]> NewBytes(std::uint64_t size) {
    return std::unique_ptr<unsigned char[]>(new (std::nothrow) unsigned char[size]);
}

/// Switches a read-write destination to writing and goes to its start. False when it reads all the same, or
/// when the seek fails.
bool PrepareTarget(IVXStream& target) {
    if (auto* both = dynamic_cast<IVXReadWriteStream*>(&target)) {
        both->SetMode(IVXStream::kWrite);
        static_cast<void>(both->IsWriting());  // Kept: asked, whatever the answer.
    }
    return !target.IsReading() && VXSeekTo(target, 0);
}

/// The same for a source.
bool PrepareSource(IVXReadWriteStream& source) {
    source.SetMode(IVXStream::kRead);
    return VXSeekTo(source, 0);
}

}  // namespace

unsigned char* VXBitStream::CallCompress(const unsigned char* data, unsigned int length,
                                         unsigned int& outLength) {
    // Kept: the estimate wraps with 32 bits, so more than 400 MB may be refused.
    const unsigned int estimate = length + 12 + length * 10 / 100;
    outLength = 0;
    Deflater deflater(kBlockLevel);
    std::unique_ptr<unsigned char[]> room = NewBytes(estimate);
    if (!deflater.IsGood() || room == nullptr) return nullptr;
    unsigned char nothing = 0;
    deflater.SetInput(length == 0 ? &nothing : const_cast<unsigned char*>(data), length);
    int code = Z_OK;
    const unsigned int used = deflater.Run(room.get(), estimate, Z_FINISH, code);
    if (code != Z_STREAM_END) return nullptr;
    outLength = used;
    return room.release();
}

short VXBitStream::Compress(unsigned int offset, short returnBuffer, unsigned char** outData,
                            unsigned int* outLength) {
    if (m_Stream != nullptr) return CompressStream(offset);
    unsigned int length = 0;
    std::unique_ptr<unsigned char[]> deflated;
    if (m_Size >= offset) {
        deflated.reset(
            CallCompress(m_Buffer == nullptr ? nullptr : m_Buffer + offset, m_Size - offset, length));
    }
    if (deflated == nullptr) {
        VXAssertFail("compress2 returned failure");
        return 0;
    }
    if (returnBuffer != 0 && outData != nullptr && outLength != nullptr) {
        *outData = deflated.release();
        *outLength = length;
        return 1;
    }
    Clean();
    const std::uint64_t size = std::uint64_t{length} + offset;
    if (size > UINT_MAX || !Grow(static_cast<unsigned int>(size))) return 0;
    std::memset(m_Buffer, 0, offset);
    std::memcpy(m_Buffer + offset, deflated.get(), length);
    m_Size = static_cast<unsigned int>(size);
    return 1;
}

short VXBitStream::CompressStream(unsigned int offset) {
    auto* source = dynamic_cast<IVXReadWriteStream*>(m_Stream);
    if (source == nullptr || m_CompressionStream == nullptr) return 0;
    IVXStream& target = *m_CompressionStream;
    const unsigned int size = GetSize();
    if (size < offset) return 0;
    const unsigned int bodyLength = size - offset;
    const std::unique_ptr<unsigned char[]> bytes = NewBytes(std::max(offset, bodyLength));
    if (bytes == nullptr) return 0;
    if (!PrepareTarget(target) || !PrepareSource(*source)) return 0;
    // Kept: a transfer that comes up short does not stop the operation.
    const auto receive = [&](unsigned int count) {
        const unsigned int came = VXTransfer(*source, bytes.get(), count);
        if (came == count) return;
        std::memset(bytes.get() + came, 0, count - came);
        m_HasFailed = true;
    };
    const auto send = [&](const unsigned char* data, unsigned int count) {
        if (VXSend(target, data, count) != count) m_HasFailed = true;
    };
    receive(offset);
    send(bytes.get(), offset);
    receive(bodyLength);
    unsigned int length = 0;
    const std::unique_ptr<unsigned char[]> deflated(CallCompress(bytes.get(), bodyLength, length));
    if (deflated == nullptr) {
        VXAssertFail("compress2 returned failure");
        return 0;
    }
    send(deflated.get(), length);
    return 1;
}

short VXBitStream::UnCompress(unsigned int offset, unsigned int fullSize) {
    if (fullSize < offset || m_Size < offset || m_Buffer == nullptr) {
        VXAssertFail("compress2 returned failure");
        return 0;
    }
    const unsigned int compressedLength = m_Size - offset;
    const std::uint64_t most =
        std::min<std::uint64_t>(fullSize - offset, compressedLength * kMostInflation + 64);
    Block block;
    std::uint64_t inflated = 0;
    const Inflation result = Inflate(m_Buffer + offset, compressedLength, most, offset, block, inflated);
    if (result == Inflation::kBadData) VXAssertFail("compress2 returned failure");
    if (result != Inflation::kDone) return 0;
    // Kept: the size counts 8 bytes for the header, whatever the offset. The block holds that many too.
    constexpr unsigned int kHeader = 8;
    const std::uint64_t size = inflated + kHeader;
    const std::uint64_t used = inflated + offset;
    if (std::max(size, used) > UINT_MAX || !block.Resize(std::max(size, used))) return 0;
    if (used < size) std::memset(block.Get() + used, 0, size - used);
    std::memcpy(block.Get(), m_Buffer, offset);
    FreeBuffer();
    m_Buffer = block.Release();
    m_Position = offset;
    m_Size = m_Capacity = static_cast<unsigned int>(size);
    m_Reserved = static_cast<unsigned int>(std::max(size, used));
    return 1;
}

short VXBitStream::StreamedCompress(unsigned int offset) {
    if (m_Stream == nullptr) {
        VXAssertFail("StreamedCompress called with NULL m_Stream");
        return 1;
    }
    auto* source = dynamic_cast<IVXReadWriteStream*>(m_Stream);
    if (source == nullptr || m_CompressionStream == nullptr) return 0;
    IVXStream& target = *m_CompressionStream;
    const std::unique_ptr<unsigned char[]> input = NewBytes(kChunkSize);
    const std::unique_ptr<unsigned char[]> output = NewBytes(kChunkSize);
    if (input == nullptr || output == nullptr) return 0;
    if (!PrepareTarget(target) || !PrepareSource(*source)) return 0;
    for (unsigned int left = offset; left != 0;) {
        const unsigned int piece = std::min(left, kChunkSize);
        const unsigned int count = VXTransfer(*source, input.get(), piece);
        if (VXSend(target, input.get(), count) != count) return 0;
        if (count != piece) {
            VXAssertFail("Error reading input Stream for compression");
            return 0;
        }
        left -= piece;
    }
    Deflater deflater(kMovieLevel);
    if (!deflater.IsGood()) {
        VXAssertFail("deflateInit returned failure");
        return 0;
    }
    int flush = Z_NO_FLUSH;
    do {
        const unsigned int count = VXTransfer(*source, input.get(), kChunkSize);
        if (count == 0) {
            VXAssertFail("Error reading input Stream for compression");
            return 0;
        }
        flush = source->GetStreamState() == kVXStreamAtEnd ? Z_FINISH : Z_NO_FLUSH;
        deflater.SetInput(input.get(), count);
        unsigned int used = 0;
        do {
            int code = Z_OK;  // the end of the source decides, not what deflate answers
            used = deflater.Run(output.get(), kChunkSize, flush, code);
            if (VXSend(target, output.get(), used) != used) return 0;
        } while (used == kChunkSize);
    } while (flush != Z_FINISH);
    return 1;
}
