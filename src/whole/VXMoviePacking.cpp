#include <zlib.h>

#include <algorithm>
#include <bit>
#include <new>

#include "whole/VXCarriedTag_p.h"
#include "whole/VXMoviePacking_p.h"

#ifdef VXSWF_LZMA
#include <lzma.h>
#endif

namespace {

constexpr unsigned int kChunk = 65536;

class PlainPacker : public VXPacker {
public:
    explicit PlainPacker(VXBitStream& out) : m_Out(out) {}
    bool Put(const unsigned char* data, unsigned int length, bool) override {
        return length == 0 || m_Out.Write(data, length) == kVXSuccess;
    }

private:
    VXBitStream& m_Out;
};

/// What zlib and liblzma have in common. `Run` has the stream code once.
template <typename Stream>
class ChunkPacker : public VXPacker {
public:
    bool Put(const unsigned char* data, unsigned int length, bool isLast) override {
        m_Stream.next_in = const_cast<unsigned char*>(data);
        m_Stream.avail_in = length;
        for (;;) {
            m_Stream.next_out = m_Room;
            m_Stream.avail_out = kChunk;
            const bool isGood = Run(isLast);
            const unsigned int used = kChunk - static_cast<unsigned int>(m_Stream.avail_out);
            if (!isGood || (used != 0 && m_Out.Write(m_Room, used) != kVXSuccess)) return false;
            if (m_Stream.avail_out != 0) return true;
        }
    }

protected:
    ChunkPacker(VXBitStream& out, const Stream& stream) : m_Stream(stream), m_Out(out) {}
    virtual bool Run(bool isLast) = 0;

    Stream m_Stream;

private:
    VXBitStream& m_Out;
    unsigned char m_Room[kChunk];
};

class DeflatePacker : public ChunkPacker<z_stream> {
public:
    DeflatePacker(VXBitStream& out, int level) : ChunkPacker(out, {}) {
        m_IsGood = deflateInit(&m_Stream, level) == Z_OK;
    }
    ~DeflatePacker() override {
        if (m_IsGood) deflateEnd(&m_Stream);
    }
    bool IsGood() const { return m_IsGood; }

private:
    bool Run(bool isLast) override {
        const int code = deflate(&m_Stream, isLast ? Z_FINISH : Z_NO_FLUSH);
        return code == Z_OK || code == Z_STREAM_END || code == Z_BUF_ERROR;
    }

    bool m_IsGood;
};

#ifdef VXSWF_LZMA

class LzmaPacker : public ChunkPacker<lzma_stream> {
public:
    LzmaPacker(VXBitStream& out, int level, std::uint64_t size) : ChunkPacker(out, LZMA_STREAM_INIT) {
        lzma_options_lzma options;
        if (lzma_lzma_preset(&options, static_cast<std::uint32_t>(level)) != 0) return;
        // The encoder takes ten times its dictionary, so that is no larger than what comes.
        const std::uint64_t enough = std::bit_ceil(std::max<std::uint64_t>(size, LZMA_DICT_SIZE_MIN));
        options.dict_size = static_cast<std::uint32_t>(std::min<std::uint64_t>(options.dict_size, enough));
        const lzma_filter filters[] = {{LZMA_FILTER_LZMA1, &options}, {LZMA_VLI_UNKNOWN, nullptr}};
        unsigned char properties[kVXLzmaProperties];
        m_IsGood = lzma_properties_encode(filters, properties) == LZMA_OK &&
                   lzma_raw_encoder(&m_Stream, filters) == LZMA_OK &&
                   out.Write(properties, kVXLzmaProperties) == kVXSuccess;
    }
    ~LzmaPacker() override { lzma_end(&m_Stream); }
    bool IsGood() const { return m_IsGood; }

private:
    bool Run(bool isLast) override {
        const lzma_ret code = lzma_code(&m_Stream, isLast ? LZMA_FINISH : LZMA_RUN);
        return code == LZMA_OK || code == LZMA_STREAM_END || code == LZMA_BUF_ERROR;
    }

    bool m_IsGood = false;
};

#endif

template <typename Packer, typename... Arguments>
std::unique_ptr<VXPacker> MakeGood(VXBitStream& out, Arguments... arguments) {
    std::unique_ptr<Packer> packer(new (std::nothrow) Packer(out, arguments...));
    if (packer == nullptr || !packer->IsGood()) return nullptr;
    return packer;
}

}  // namespace

std::unique_ptr<VXPacker> VXPacker::MakePlain(VXBitStream& out) {
    return std::unique_ptr<VXPacker>(new (std::nothrow) PlainPacker(out));
}

std::unique_ptr<VXPacker> VXPacker::MakeDeflate(VXBitStream& out, int level) {
    return MakeGood<DeflatePacker>(out, level);
}

#ifdef VXSWF_LZMA

bool VXHasLzma() { return true; }

std::unique_ptr<VXPacker> VXPacker::MakeLzma(VXBitStream& out, int level, std::uint64_t size) {
    return MakeGood<LzmaPacker>(out, level, size);
}

VXErrorCodeEnum VXUnpackLzma(const unsigned char* data, unsigned int length, std::uint64_t stated,
                             std::uint64_t most, VXBitStream& out) {
    if (length < kVXLzmaProperties) return kVXFailure;
    lzma_options_lzma options{};
    options.lc = data[0] % 9u;
    options.lp = data[0] / 9u % 5;
    options.pb = data[0] / 45u;
    // A dictionary that is larger than all that comes out of it is never used, and would be allocated.
    const std::uint64_t dictionary = VXDWordAt(data + 1);
    options.dict_size = static_cast<std::uint32_t>(std::clamp<std::uint64_t>(
        dictionary, LZMA_DICT_SIZE_MIN, std::max<std::uint64_t>(most, LZMA_DICT_SIZE_MIN)));
    const lzma_filter filters[] = {{LZMA_FILTER_LZMA1, &options}, {LZMA_VLI_UNKNOWN, nullptr}};
    lzma_stream stream = LZMA_STREAM_INIT;
    const std::unique_ptr<lzma_stream, void (*)(lzma_stream*)> end(&stream, &lzma_end);
    if (lzma_raw_decoder(&stream, filters) != LZMA_OK) return kVXFailure;
    const std::unique_ptr<unsigned char[]> room(new unsigned char[kChunk]);
    stream.next_in = data + kVXLzmaProperties;
    stream.avail_in = length - kVXLzmaProperties;
    // Behind the stated end of a stream without a mark lies noise, as far as the coder has it.
    VXBitStream behind;
    std::uint64_t size = 0;
    for (lzma_ret code = LZMA_OK; code != LZMA_STREAM_END;) {
        const std::uint64_t wanted = size < stated ? std::min<std::uint64_t>(kChunk, stated - size) : kChunk;
        stream.next_out = room.get();
        stream.avail_out = static_cast<std::size_t>(wanted);
        code = lzma_code(&stream, LZMA_RUN);
        if (code != LZMA_OK && code != LZMA_STREAM_END) return size >= stated ? kVXSuccess : kVXFailure;
        const auto count = static_cast<unsigned int>(wanted - stream.avail_out);
        VXBitStream& target = size < stated ? out : behind;
        size += count;
        if (size > most) return kVXFailure;
        if (count != 0) VX_RETURN_IF_FAILED(target.Write(room.get(), count));
    }
    return behind.GetSize() == 0 ? kVXSuccess : out.Write(behind.GetBuffer(), behind.GetSize());
}

#else

bool VXHasLzma() { return false; }

std::unique_ptr<VXPacker> VXPacker::MakeLzma(VXBitStream&, int, std::uint64_t) { return nullptr; }

VXErrorCodeEnum VXUnpackLzma(const unsigned char*, unsigned int, std::uint64_t, std::uint64_t, VXBitStream&) {
    return kVXFailure;
}

#endif
