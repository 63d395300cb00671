#pragma once

#include <list>

#include "bitstream/VXBitStream.h"
#include "framework/VXSwfTagFactory.h"
#include "memory/VXByteBlock.h"
#include "memory/VXPool.h"
#include "platform/VXExport.h"
#include "platform/VXString.h"
#include "platform/VXTypes.h"

class VXFlintIDMap;
class VXSwfTagSet;

/// The base of every tag and, by itself, a complete tag whose body is carried as it came.
///
///     u16        type << 6 | length; a length of 63 says that the next field follows
///     [u32]      length of the body, where the short field does not hold it or the long form was asked for
///     body
///
/// A body that is loaded from a movie is a view of the movie's bytes, else it has bytes of its own. It gets
/// bytes of its own before an ID in it is set where others may see the change: a sprite's body, which has the
/// bodies of its tags in it, or a host's stream.
///
/// A tag that encodes itself anew writes header and body from a local stream; the body kept from the load
/// stays in force. `SetData` lends a tag another body, which it never frees.
///
/// Made by `VXSwfTagFactory`, owned by the tag set that holds it, else by whoever made it. Copies made with
/// `Copy` are independent; copy construction shares the bytes of the kept body, and not what is lent.
class VXSWF_API VXSwfTag : public VXPooled {
public:
    using enuTagType = VXSwfTagFactory::enuTagType;

    // The virtual operations stand in slot order, which hosts rely on.

    /// Reads header and body, then the fields; once, since a second load replaces the body and the fields on
    /// the wire, but adds to lists of records and tags. 1 when the header ends early or no byte of the body is there;
    /// a body that is cut short otherwise loads as long as it is. A failure of the fields comes back as it
    /// is. A body that was kept or lent before is dropped.
    virtual VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Writes header and body.
    virtual VXErrorCodeEnum DumpToStream(VXBitStream& out);
    /// A new tag that the caller owns, made by a dump and a load, and so of the class that a load gives to
    /// the type. The version is not carried over. Throws std::bad_alloc also when the copy takes more than
    /// 512 MiB and 16 times the bytes of the body.
    virtual VXSwfTag* Copy();
    /// Sets the first two bytes of the body, where there are two.
    virtual void SetCharacterId(unsigned short id);
    /// The first two bytes of the body; 0 without them and for types that define no character.
    virtual unsigned short GetCharacterId() const;
    /// Replaces each character reference for which the map has a new ID other than 0. Every ID referred to
    /// has an entry in the map afterwards. Null does nothing.
    virtual void UpdateReferenceIDs(VXFlintIDMap* map);
    /// ID of the character that the tag refers to, or 0.
    virtual unsigned short GetReferencedID() const;
    virtual void SetReferencedID(unsigned short id);
    virtual ~VXSwfTag();
    /// Collects what the tag needs from `set`, at the front of `list`, so that the list has dependencies
    /// first. The character ID is the identity of the list's members.
    virtual void BuildDependencyList(std::list<VXSwfTag*>& list, VXSwfTagSet* set);
    /// Appends a description for debugging: the type's name and, in parentheses, its number.
    virtual void GetTextInfo(VXString& text);
    /// The player version that the tag is read and written for.
    virtual void SetFLVersion(unsigned char version);
    virtual unsigned char GetFLVersion() const;
    /// The body in force, `GetTagLen()` bytes of it as far as they are there; null without one. The tag owns
    /// it, perhaps together with others, so it is not to be changed there.
    virtual unsigned char* GetData();
    virtual unsigned int GetTagLen();
    /// Reads the fields from a stream over the body; here there are none.
    virtual VXErrorCodeEnum LoadDataFromStream(VXBitStream& in);
    /// True for types whose body begins with a reference to a character: 3, 15, 61, 73, 74, 78 and 88.
    virtual short HasReferencedID() const;

    enuTagType GetTagType() const { return m_TagType; }
    /// Writes the header for a body of the present length. A short header always answers 0; the stream's
    /// `HasFailed` shows when it was lost.
    VXErrorCodeEnum DumpHdrToStream(VXBitStream& out);
    /// Whether the header takes the long form: it was asked for, or the body has 63 bytes or more.
    short IsLongTag() const { return m_IsLongTag != 0 || m_TagLen >= kLongLength ? 1 : 0; }
    void SetIsLongTag(short isLong) { m_IsLongTag = isLong != 0 ? 1 : 0; }
    /// A stream that borrows `GetData()`, cut to what is there. It must not outlive the body.
    VXBitStream GetDataStream();
    /// For type 73 the ID of the font that it belongs to, else the character ID.
    unsigned short GetCharacterIdFromData() const;

    /// Reads the length from the header at the position, and goes back. 1 when the header ends early; the
    /// position then stays where the read ended.
    static VXErrorCodeEnum PeepTagLength(VXBitStream& in, unsigned int& length);
    /// Reads the type from the header at the position, and goes back.
    static VXErrorCodeEnum PeepTagType(VXBitStream& in, enuTagType& type);

protected:
    VXSwfTag(enuTagType type, short parsing);
    VXSwfTag(const VXSwfTag& other);
    VXSwfTag& operator=(const VXSwfTag& other);

    void SetTagType(enuTagType type) { m_TagType = type; }
    /// What is lent has this length too.
    void SetTagLen(unsigned int length) { m_TagLen = length; }
    void SetParsing(short parsing) { m_Parsing = parsing; }
    short IsParsed() const { return m_Parsing; }
    /// Lends a body to the tag, or takes the last loan back with null. With null and no loan left the tag
    /// drops the body that it owns.
    void SetData(unsigned char* data);
    /// Writes a short header for `length`, whatever the body has.
    VXErrorCodeEnum GenerateTagHdr(unsigned char length, VXBitStream& out);
    /// Writes header and body of what is lent or kept, as many bytes as the length says or as there are; the
    /// header states what is written.
    VXErrorCodeEnum DumpHdrAndData(VXBitStream& out);
    /// Fills `copy` by a dump of this tag and a load, and hands it back; null for null. It is deleted when
    /// memory runs out.
    VXSwfTag* CopyThroughWire(VXSwfTag* copy);
    /// The first two bytes of the body in force, or null.
    unsigned char* GetFirstWord() const;
    /// Bytes of the body in force that are really there.
    unsigned int GetBodySize() const;
    /// The body kept from the load, for classes that go on using its bytes. They share it, and detach what
    /// they share before they change it.
    VXByteView GetKeptBody() const { return m_IsLent != 0 ? VXByteView() : m_Body; }
    /// Takes `body` for a new one of the tag: header and bytes. The tag has its length afterwards, and the
    /// body kept from the load stays in force.
    VXErrorCodeEnum DumpHdrAndBody(VXBitStream& out, VXBitStream& body);

private:
    friend class VXSwfTagFactory;
    friend class VXSwfTagSet;
    friend class VXSwfDefinitionTag;
    friend class VXDependencyWalk;
    friend class VXMovieCombiner;

    struct Loan;

    static constexpr unsigned int kLongLength = 63;
    static constexpr unsigned int kLongestHdr = 6;

    unsigned char* GetBody() const;
    /// The body in force, to be changed.
    unsigned char* GetOwnBody();
    unsigned int MakeHdr(unsigned int length, unsigned char* bytes) const;
    VXErrorCodeEnum DumpHdr(unsigned int length, VXBitStream& out);
    VXErrorCodeEnum DumpHdrAndBytes(VXBitStream& out, const unsigned char* body, unsigned int length);
    Loan* GetLoan() const;
    /// Takes back what was lent since `mark` was the loan.
    void DropLoans(const Loan* mark = nullptr);

    enuTagType m_TagType;
    unsigned int m_TagLen = 0;
    VXByteView m_Body;  // as read, or the loan, which keeps it
    // Packed, so that a raw tag takes 40 bytes: movies have hundreds of thousands.
    unsigned int m_Holders : 27 = 0;       // entries of tag sets that have the tag; the last one deletes it
    unsigned int m_IsLent : 1 = 0;         // the body is a `Loan`
    unsigned int m_IsOwnBody : 1 = 0;      // nobody else looks at the body's bytes
    unsigned int m_IsLongTag : 1 = 0;      // only tested for non-zero
    unsigned int m_IsFromFactory : 1 = 0;  // made by the factory, so never a host's class
    unsigned int m_HasFields : 1 = 1;      // clear for what the factory made to be carried as it comes
    short m_Parsing;
    unsigned char m_FLVersion = 0;
};
