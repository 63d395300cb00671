#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "vxswf.h"

inline void Require(bool holds) {
    if (!holds) std::abort();
}

inline bool AreEqual(VXBitStream& left, VXBitStream& right) {
    return left.GetSize() == right.GetSize() &&
           (left.GetSize() == 0 || std::memcmp(left.GetBuffer(), right.GetBuffer(), left.GetSize()) == 0);
}

using TagPtr = std::unique_ptr<VXSwfTag, void (*)(VXSwfTag*)>;

inline TagPtr Own(VXSwfTag* tag) { return {tag, &VXSwfTagFactory::DeleteTag}; }

/// A tag of the factory; see there for the last two.
inline TagPtr MakeTag(unsigned int type, short limitedClasses, unsigned int parsingMode = 0) {
    return Own(VXSwfTagFactory::CreateTagOfType(static_cast<VXSwfTagFactory::enuTagType>(type),
                                                limitedClasses, parsingMode));
}

/// Dumps from the start of a new stream, twice to the same bytes, and goes back to the start.
template <typename Dumped>
VXErrorCodeEnum DumpTwice(Dumped& dumped, VXBitStream& out) {
    const VXErrorCodeEnum result = dumped.DumpToStream(out);
    VXIgnore(out.FlushBits());  // has failed before where it fails
    VXBitStream again;
    Require(dumped.DumpToStream(again) == result);
    VXIgnore(again.FlushBits());
    Require(AreEqual(out, again));
    out.SetPosition(0);
    return result;
}

/// Loads a tag from a body alone and takes what it is then, complete or not, through all that a host does
/// with one.
inline void ExerciseTag(VXSwfTag& tag, VXBitStream& body, unsigned char version) {
    VXBitStream in;
    VXIgnore(in.WriteWord(static_cast<unsigned short>(tag.GetTagType() << 6 | 63)));
    VXIgnore(in.WriteDWord(body.GetSize()));
    if (body.GetSize() != 0) VXIgnore(in.Write(body.GetBuffer(), body.GetSize()));
    in.SetPosition(0);
    tag.SetFLVersion(version);
    VXIgnore(tag.LoadFromStream(in));  // what was read before a failure is a tag too
    VXString text;
    tag.GetTextInfo(text);
    Require(!text.empty() && tag.GetFLVersion() == version);
    VXBitStream out;
    VXIgnore(DumpTwice(tag, out));
    const TagPtr copy = Own(tag.Copy());
    if (copy != nullptr) {
        VXBitStream copied;
        VXIgnore(copy->DumpToStream(copied));  // a field that is too narrow spoils what follows
    }
    const auto map = std::make_unique<VXFlintIDMap>();
    map->Set(1, 2);
    tag.UpdateReferenceIDs(map.get());
    tag.SetReferencedID(static_cast<unsigned short>(tag.GetReferencedID() + 1));
    tag.SetCharacterId(static_cast<unsigned short>(tag.GetCharacterId() + 1));
    VXBitStream changed;
    VXIgnore(tag.DumpToStream(changed));
}

/// Replaces in short payloads only, and lets them grow by no more than some hundred bytes: a pair whose
/// replacements make room for others goes on to the greatest length, which takes seconds.
inline short ReplaceString(VXFlintActionRecord& record, const VXString& from, const VXString& to,
                           int& delta) {
    constexpr unsigned short kMost = 1024;
    constexpr unsigned short kLacking = 0xFFFF - kMost;
    delta = 0;
    if (record.m_Length > kMost) return 0;
    record.m_Length = static_cast<unsigned short>(record.m_Length + kLacking);
    const short isReplaced = record.ReplaceString(from, to, delta);
    record.m_Length = static_cast<unsigned short>(record.m_Length - kLacking);
    return isReplaced;
}

/// Takes the input of a fuzzer apart. What is missing at its end counts as zero.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_Data(data), m_Left(size) {}

    bool IsEmpty() const { return m_Left == 0; }
    std::uint8_t Byte() {
        if (IsEmpty()) return 0;
        --m_Left;
        return *m_Data++;
    }
    std::uint16_t Word() {
        const unsigned int low = Byte();
        return static_cast<std::uint16_t>(low | static_cast<unsigned int>(Byte()) << 8);
    }
    std::uint32_t DWord() {
        const std::uint32_t low = Word();
        return low | static_cast<std::uint32_t>(Word()) << 16;
    }
    /// Any float at all.
    float Real() {
        const std::uint32_t bits = DWord();
        float value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    /// A length byte and so much text.
    VXString Text() {
        std::string text;
        for (std::size_t left = Byte(); left != 0 && !IsEmpty(); --left) text += static_cast<char>(Byte());
        return VXString(text.c_str());
    }
    /// A stream over the next `size` bytes, or as many as are left.
    VXBitStream Stream(std::size_t size) {
        if (size > m_Left) size = m_Left;
        VXBitStream stream;
        stream.LoadFromAllocedMem(m_Data, static_cast<unsigned int>(size));
        m_Data += size;
        m_Left -= size;
        return stream;
    }
    VXBitStream Rest() { return Stream(m_Left); }

private:
    const std::uint8_t* m_Data;
    std::size_t m_Left;
};
