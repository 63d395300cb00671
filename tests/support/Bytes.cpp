#include "support/Bytes.h"

#include <gtest/gtest.h>
#include <zlib.h>

Bytes Hex(std::string_view digits) {
    Bytes bytes;
    bool isLow = false;
    for (const char digit : digits) {
        const auto value = std::string_view("0123456789ABCDEFabcdef").find(digit);
        if (value == std::string_view::npos) continue;
        if (!isLow) bytes.push_back(0);
        bytes.back() = static_cast<unsigned char>(bytes.back() * 16u + (value < 16 ? value : value - 6));
        isLow = !isLow;
    }
    return bytes;
}

Bytes Bits(std::string_view digits) {
    Bytes bytes;
    unsigned int count = 0;
    for (const char digit : digits) {
        if (digit != '0' && digit != '1') continue;
        if (count % 8 == 0) bytes.push_back(0);
        if (digit == '1') bytes.back() = static_cast<unsigned char>(bytes.back() | 0x80u >> count % 8);
        ++count;
    }
    return bytes;
}

Bytes Repeat(std::size_t count, unsigned char value) { return Bytes(count, value); }

Bytes Repeat(std::size_t count, const Bytes& part) {
    Bytes bytes;
    bytes.reserve(count * part.size());
    for (; count != 0; --count) bytes.insert(bytes.end(), part.begin(), part.end());
    return bytes;
}

Bytes Join(std::initializer_list<Bytes> parts) {
    Bytes bytes;
    for (const Bytes& part : parts) bytes.insert(bytes.end(), part.begin(), part.end());
    return bytes;
}

Bytes Head(const Bytes& bytes, std::size_t size) { return Bytes(bytes.data(), bytes.data() + size); }

Bytes Noise(std::size_t size, unsigned int seed) {
    Bytes bytes(size);
    for (unsigned char& byte : bytes) {
        seed = seed * 1664525u + 1013904223u;
        byte = static_cast<unsigned char>(seed >> 24);
    }
    return bytes;
}

Bytes Deflated(const Bytes& bytes, int level) {
    uLongf size = compressBound(bytes.size());
    Bytes result(size);
    EXPECT_EQ(compress2(result.data(), &size, bytes.data(), bytes.size(), level), Z_OK);
    return Head(result, size);
}

Bytes Word(unsigned int value) {
    return {static_cast<unsigned char>(value), static_cast<unsigned char>(value >> 8)};
}

Bytes BytesOf(VXBitStream& stream) {
    return Bytes(stream.GetBuffer(), stream.GetBuffer() + stream.GetSize());
}

Bytes BytesOf(const CVXStreamReadWrite& stream) {
    return Bytes(stream.GetMemory(), stream.GetMemory() + stream.GetMemorySize());
}

VXBitStream StreamOver(const Bytes& bytes) {
    VXBitStream stream;
    stream.LoadFromAllocedMem(bytes.data(), static_cast<unsigned int>(bytes.size()));
    return stream;
}

Bytes TagBytes(unsigned int type, const Bytes& body) {
    if (body.size() >= 63) return LongTagBytes(type, body);
    return Join({Word(type << 6 | static_cast<unsigned int>(body.size())), body});
}

Bytes LongTagBytes(unsigned int type, const Bytes& body) {
    const auto length = static_cast<unsigned int>(body.size());
    return Join({Word(type << 6 | 63u), Word(length), Word(length >> 16), body});
}

Bytes MovieBytes(unsigned char version, const Bytes& tags) {
    Bytes movie = Join({Hex("46 57 53"), Bytes{version}, Bytes(4), Hex("60 00 3E 80 00 1F 40"),
                        Hex("00 0C 01 00"), tags, Hex("00 00")});
    const auto length = static_cast<unsigned int>(movie.size());
    for (unsigned int i = 0; i < 4; ++i) movie[4 + i] = static_cast<unsigned char>(length >> 8 * i);
    return movie;
}
