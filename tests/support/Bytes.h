#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "bitstream/VXBitStream.h"
#include "platform/CVXStreamReadWrite.h"

using Bytes = std::vector<unsigned char>;

/// Bytes from hexadecimal digits; spaces are free.
Bytes Hex(std::string_view digits);
/// Bytes from 0 and 1, the most significant bit first; spaces are free, and zeros fill the last byte.
Bytes Bits(std::string_view digits);
Bytes Repeat(std::size_t count, unsigned char value);
Bytes Repeat(std::size_t count, const Bytes& part);
Bytes Join(std::initializer_list<Bytes> parts);
/// The first `size` bytes.
Bytes Head(const Bytes& bytes, std::size_t size);
/// Bytes without a pattern, the same ones for a seed.
Bytes Noise(std::size_t size, unsigned int seed = 12345);
Bytes Deflated(const Bytes& bytes, int level);
/// The two bytes of a number.
Bytes Word(unsigned int value);
/// What stands in a memory stream.
Bytes BytesOf(VXBitStream& stream);
Bytes BytesOf(const CVXStreamReadWrite& stream);
/// A stream that borrows `bytes`.
VXBitStream StreamOver(const Bytes& bytes);
/// A tag as it stands in a movie: a short header where the length allows it, and the body.
Bytes TagBytes(unsigned int type, const Bytes& body);
Bytes LongTagBytes(unsigned int type, const Bytes& body);
/// A plain movie of version `version`, 100 × 50 pixels, 12 frames a second, with these tags and an end tag.
Bytes MovieBytes(unsigned char version, const Bytes& tags);
