#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ByteReader.h"

/// A rectangle in twips.
struct Rectangle {
    std::int32_t xMin = 0;
    std::int32_t xMax = 0;
    std::int32_t yMin = 0;
    std::int32_t yMax = 0;
};
Rectangle ReadRectangle(ByteReader& in);

/// A tag as it lies in a movie.
struct FramedTag {
    unsigned int type;
    std::size_t offset;  // of its header, in the inflated movie
    std::size_t bodyOffset;
    std::size_t statedLength;  // of the body
    ByteSpan body;             // as much of it as is there

    /// "DefineShape(2)".
    std::string Describe() const;
    /// Of a type that defines a character; 0 else.
    unsigned short GetCharacterId() const;
};
/// What the format calls a type; empty for one without a name.
const char* NameOfTagType(unsigned int type);

/// The tags that lie one behind the other, up to the end tag or the end of the bytes.
class TagFrames {
public:
    /// `offset` is where `bytes` begin in the movie.
    TagFrames(ByteSpan bytes, std::size_t offset) : m_In(bytes), m_Offset(offset) {}
    /// Nothing behind the last tag.
    std::optional<FramedTag> Next();

private:
    ByteReader m_In;
    std::size_t m_Offset;
};

/// A movie as inflated bytes, with its header read.
class MovieBytes {
public:
    /// What there is of the movie in `file`, the bytes of a whole file. Empty, or why there is nothing.
    std::string Open(std::vector<unsigned char> file);

    bool IsCompressed() const { return m_IsCompressed; }
    unsigned int GetVersion() const { return m_Bytes[3]; }
    std::size_t GetStatedLength() const { return m_StatedLength; }
    const Rectangle& GetFrame() const { return m_Frame; }
    double GetFrameRate() const { return m_FrameRate; }
    unsigned int GetFrameCount() const { return m_FrameCount; }
    /// Header and body, under the signature of a plain movie.
    const std::vector<unsigned char>& GetBytes() const { return m_Bytes; }
    TagFrames GetTags() const { return {ByteSpan(m_Bytes).subspan(m_TagsOffset), m_TagsOffset}; }
    /// How much of the movie is there when that is less than its header states, else empty.
    std::string DescribeShortness() const;
    /// Where tag `index` lies, for a message; the end where there is no such tag.
    std::string DescribePlace(std::size_t index) const;

private:
    std::string Inflate(ByteSpan deflated);

    bool m_IsCompressed = false;
    std::vector<unsigned char> m_Bytes;
    std::size_t m_StatedLength = 0;
    std::size_t m_TagsOffset = 0;
    Rectangle m_Frame;
    double m_FrameRate = 0;
    unsigned int m_FrameCount = 0;
};

/// What tells that only `size` bytes are there of the `stated` ones.
std::string DescribeEnd(std::size_t size, std::size_t stated);

/// Empty for what may be a movie, judged by its first bytes, or why it is none.
std::string RefuseSignature(ByteSpan bytes);

/// Inflates `deflated` and appends to `bytes` until they are `longest`. Whether the zlib stream came to its
/// end by then; `isDamaged` tells of data that are wrong, not only missing.
bool InflateTo(ByteSpan deflated, std::size_t longest, std::vector<unsigned char>& bytes, bool& isDamaged);
