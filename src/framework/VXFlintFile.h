#pragma once

#include <list>
#include <map>
#include <memory>

#include "framework/VXSwfTagSet.h"
#include "graphics/VXFlintRectangle.h"

/// One movie: a header and a set of tags.
///
///     u8          'F' for a plain movie, 'C' for one whose rest, from offset 8 on, is a zlib stream
///     u8 u8       'W' 'S'
///     u8          version
///     u32         length of the whole movie before compression, these 8 bytes included
///     Rectangle   frame, in twips on the wire
///     u16         frames per second, 8.8 fixed point
///     u16         number of frames
///     tags, the last of type 0
///
/// Kept: the fraction of the frame rate is dropped by a load, so 12.5 comes back as 12.
///
/// Copying a movie with `=` copies pointers to tags; `Copy` duplicates it.
class VXSWF_API VXFlintFile : public VXSwfTagSet {
public:
    VXFlintFile();
    VXFlintFile(const VXFlintFile& other);
    VXFlintFile& operator=(const VXFlintFile& other);
    ~VXFlintFile() override;

    /// Reads header and tags. 1 for a bad signature, a header that ends early or a body that does not
    /// inflate, and when memory runs out; else the failure of a tag. What was loaded by then stays. A movie is
    /// loaded once: the tags of a second load are appended.
    ///
    /// What is made of the movie may take 512 MiB, the size of the inflated body and 128 bytes for each byte
    /// that came: more than any movie takes that was made to be played.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// The same from the start of a stream; null gives 1.
    VXErrorCodeEnum LoadFromStream(IVXStream* stream);
    using VXSwfTagSet::LoadFromStream;

    VXErrorCodeEnum DumpHdrToStream(VXBitStream& out);
    VXErrorCodeEnum DumpEndTagToStream(VXBitStream& out);
    /// Writes the whole movie from position 0 and sets its length field. With the signature of a compressed
    /// movie the stream must have a compression stream; 44 when that fails. 1 when the output stream did not
    /// take all that was written or did not reach a position, 44 for a compressed movie, and 1 when memory
    /// runs out.
    ///
    /// Kept: a stream in memory takes no compression, so it then holds a plain body under the signature 'C'.
    /// The end tag goes to the end of the stream, behind bytes that it held there before.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);
    /// Writes the whole movie, through a temporary file where it is to be compressed, and cuts the stream
    /// behind it. The stream must be in write mode; for a compressed movie an `IVXReadWriteStream` is switched
    /// to it. Null gives 1, and so does any other stream in read mode, which stays as it was.
    VXErrorCodeEnum DumpToStream(IVXStream* target);
    /// Reads the header alone, into this movie's fields and what the pointers point to; null pointers are
    /// skipped.
    VXErrorCodeEnum GetFrameInfoFromHeader(VXBitStream& in, unsigned int* frameCount,
                                           unsigned int* frameRate);

    void SetCompression(short compressed) { m_Signature[0] = compressed != 0 ? 'C' : 'F'; }
    short GetCompression() const { return m_Signature[0] == 'C' ? 1 : 0; }
    void SetFlintVersion(unsigned char version) { m_Version = version; }
    unsigned char GetFlintVersion() const { return m_Version; }
    /// Pixels, from an edge at 0.
    void SetWidth(unsigned int width);
    void SetHeight(unsigned int height);
    /// Pixels, truncated.
    unsigned int GetWidth() const;
    unsigned int GetHeight() const;
    /// Pixels.
    const VXFlintRectangle& GetFrameRect() const { return m_FrameRect; }
    /// The length that the header states; a dump computes its own.
    void SetFileLength(unsigned int length) { m_FileLength = length; }
    unsigned int GetFileLength() const { return m_FileLength; }
    void SetFrameRate(unsigned short rate) { m_FrameRate = rate; }
    unsigned short GetFrameRate() const { return m_FrameRate; }
    /// Frames as the header states them; ShowFrame tags are not counted for it.
    void SetFrameCount(unsigned short count) { m_FrameCount = count; }
    unsigned short GetFrameCount() const { return m_FrameCount; }

    /// Records a tag in the list of its type, once for every time the type is maintained.
    VXErrorCodeEnum UpdateTagLists(VXSwfTag* tag) override;
    /// The types that get a list of their appended tags; to be called before a load.
    VXErrorCodeEnum SetListsTobeMaintained(std::list<enuTagType>& types);
    /// Stores the list of a type, which the movie owns; null for a type without one. A tag that is erased
    /// stays in its list.
    VXErrorCodeEnum GetTagListOfType(enuTagType type, std::list<VXSwfTag*>** list);

    /// 3 when file attributes say so, else 2.
    unsigned char GetActionScriptVersion() const;
    /// 0 for a movie that already has version 2 scripts in its frames.
    short CanSupportAS3Version() const;

    /// A new movie, the caller's, by a dump and a load, plain and fully parsed. A tag that fails ends it
    /// early. Throws std::bad_alloc rather than leave something out for want of memory; the copy may take
    /// 512 MiB and 16 times the bytes of this movie.
    VXFlintFile* Copy();

private:
    friend class VXSwfTagSet;

    VXErrorCodeEnum LoadHdrFromStream(VXBitStream& in);
    VXErrorCodeEnum DumpWhole(VXBitStream& out);
    /// The same under the plain signature, whatever the movie's own.
    VXErrorCodeEnum DumpPlain(VXBitStream& out);
    /// Takes tags off the ends of the lists, the last one first. They may be gone.
    void Unlist(const std::vector<VXSwfTag*>& tags);

    unsigned char m_Signature[3] = {'F', 'W', 'S'};
    unsigned char m_Version = 0;
    unsigned int m_FileLength = 0;
    VXFlintRectangle m_FrameRect;
    unsigned short m_FrameRate = 0;
    unsigned short m_FrameCount = 0;
    std::shared_ptr<VXSwfTag> m_EndTag;
    std::map<enuTagType, std::shared_ptr<std::list<VXSwfTag*>>> m_TagLists;
    std::list<enuTagType> m_ListsToMaintain;
};
