#pragma once

#include <array>
#include <string>

#include "framework/VXFlintFile.h"
#include "memory/VXByteBlock.h"

/// A movie whose tags are all carried as bytes, sprites and placements included, so that a dump is the source
/// again, byte for byte; of a compressed one, the inflated bytes. A host that wants the fields of a tag has
/// that one parsed. What was not parsed and not replaced goes out as it came.
///
/// Beside the header of a `VXFlintFile` it knows a third signature:
///
///     u8          'Z'
///     u8 u8       'W' 'S'
///     u8          version
///     u32         length of the whole movie before compression, these 8 bytes included
///     u32         length of the LZMA stream, without the properties
///     u8[5]       properties of the stream: a byte for lc, lp and pb, the size of the dictionary u32
///     rest        a raw LZMA stream, with or without an end mark
///
/// What the fields of the header do not hold is kept beside them and goes out for as long as the field has the
/// value that it came with: the fraction of the frame rate, and the form of the frame rectangle. A length field
/// that lies is kept for as long as the movie is as long as it was.
///
/// Behind the last tag that is whole and no end tag lies the *tail*: as a rule the end tag, else what the
/// movie has there. It goes out behind the tags.
///
/// A reference to a `VXFlintFile` reaches the load and dump of that class, which know nothing of this.
class VXSWF_API VXWholeMovie : public VXFlintFile {
public:
    enum class Packing : unsigned char { kNone, kDeflate, kLzma };

    VXWholeMovie();
    ~VXWholeMovie() override;

    /// Reads header and tags into an empty movie, whatever the parsing mode. 1 for a movie that has tags, a
    /// bad signature, a header that ends early, a body that does not unpack, and when memory runs out. Nothing
    /// is loaded then.
    ///
    /// What a zlib stream holds is loaded whatever length the header states. A movie that is packed with LZMA
    /// may unpack to 64 MiB and 1032 times its bytes, which is what deflate can do. The memory for all that is
    /// made of the movie is limited as for `VXFlintFile`.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// The same from the start of a stream; null gives 1.
    VXErrorCodeEnum LoadFromStream(IVXStream* stream);
    /// Writes the whole movie from position 0, packed as asked, without a temporary file. The target must be
    /// able to go back to its header. 1 for a tag that fails or a target that did not take all bytes, and
    /// when memory runs out; 44 for a packing that fails or that this build does not have.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);
    /// The same, and cuts the stream behind the movie. Null gives 1.
    VXErrorCodeEnum DumpToStream(IVXStream* target);

    /// A load sets it; `SetCompression` turns it off and on.
    Packing GetPacking() const { return GetCompression() == 0 ? Packing::kNone : m_Packing; }
    void SetPacking(Packing packing);
    /// 0 to 9; a new movie has 9. Others are cut to that.
    void SetPackingLevel(int level);
    /// Whether this build has LZMA.
    static bool HasLzma();

    /// Turns a tag that is carried as bytes into the object that a load makes of it, in its place in the list,
    /// so that iterators and lists by type stay good; a pointer to the old tag does not. A tag that is parsed
    /// already stays, and so does one whose type has no class.
    ///
    /// Of a sprite the tags come as bytes, each to be parsed in its turn. From then on it goes out with a long
    /// header, with as many frames as it has ShowFrame tags, and with an end tag and nothing behind it.
    ///
    /// 1, or the failure of the fields, and the tag stays as it is, when the fields cannot be read, when
    /// memory runs out, and for a sprite inside 64 others.
    VXErrorCodeEnum Parse(TagIter place) { return Parse(*this, place); }
    /// The same in the list of a sprite of this movie.
    VXErrorCodeEnum Parse(VXSwfTagSet& set, TagIter place);

    /// Of the last load, unpacked. `GetFileLength` is then what the header states.
    unsigned int GetLoadedLength() const { return m_CameLength; }
    /// Why the last load, dump or parse failed; empty when it did not.
    const std::string& GetErrorText() const { return m_ErrorText; }
    /// What the tail has beside an end tag, or lacks; empty for most movies.
    std::string DescribeTail() const;
    bool IsLastTagCut() const;
    const VXByteView& GetTail() const { return m_Tail; }
    void SetTail(const VXByteView& tail) { m_Tail = tail; }

    /// 3 when file attributes, parsed or not, say so, else 2.
    unsigned char GetActionScriptVersion() const;

private:
    template <typename Step>
    VXErrorCodeEnum Run(const Step& step);
    VXErrorCodeEnum Fail(std::string text, VXErrorCodeEnum code = kVXFailure);
    VXErrorCodeEnum Load(VXBitStream& in);
    VXErrorCodeEnum LoadBody(VXBitStream& body, std::size_t given);
    VXErrorCodeEnum Dump(VXBitStream& out);
    VXErrorCodeEnum DumpPacked(VXBitStream& out, unsigned int& length);
    VXErrorCodeEnum DumpFrameInfo(VXBitStream& out);
    VXErrorCodeEnum ParseTag(VXSwfTagSet& set, TagIter place);

    // The header behind its first 8 bytes as it came, and what its fields were then.
    std::array<unsigned char, 24> m_FrameInfo{};
    unsigned int m_FrameInfoSize = 0;
    VXFlintRectangle m_CameRect;
    unsigned short m_CameRate = 0;
    unsigned int m_StatedLength = 0;
    unsigned int m_CameLength = 0;

    VXByteView m_Tail;
    Packing m_Packing = Packing::kDeflate;
    int m_Level = 9;
    std::string m_ErrorText;
};
