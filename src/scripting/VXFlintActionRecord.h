#pragma once

#include "bitstream/VXBitStream.h"
#include "memory/VXByteBlock.h"
#include "memory/VXPool.h"
#include "platform/VXExport.h"
#include "platform/VXString.h"
#include "platform/VXTypes.h"

/// The payload of an action, to be used like the pointer that it converts to: null when there is
/// none. It owns its bytes; copies share them. An array of no bytes is not null.
class VXSWF_API VXFlintActionData {
public:
    VXFlintActionData() = default;

    operator unsigned char*() const { return m_Bytes.GetBytes(); }
    /// Bytes that are there, which can be fewer than the length of the action says.
    unsigned int GetSize() const { return m_Bytes ? m_Bytes.GetSize() - 1 : 0; }

private:
    friend class VXFlintActionRecord;

    /// Bytes that nobody has written yet.
    explicit VXFlintActionData(unsigned short size);
    /// A copy; zeros for null.
    VXFlintActionData(const unsigned char* data, unsigned short size);

    VXByteBlock m_Bytes;  // and one byte more, so that an array of no bytes has an address
};

/// One action of a script, carried without a look into what it does.
///
///     code u8                              below 128
///     code u8, length u16, length bytes    from 128 on
///
/// A payload that the data cuts short keeps its stated length, and zeros stand for the rest wherever the
/// action is written or copied. The payload holds them too while the stated length is at most 64 times what
/// was there of the action, its three bytes of header included; else it holds what was there alone.
///
/// Copy construction and assignment share the payload's bytes; `Copy` and `SetData` give an action bytes of
/// its own.
class VXSWF_API VXFlintActionRecord : public VXPooled {
public:
    VXFlintActionRecord() = default;
    explicit VXFlintActionRecord(unsigned char code) : m_ActionCode(code) {}
    VXFlintActionRecord(const VXFlintActionRecord& other);
    VXFlintActionRecord& operator=(const VXFlintActionRecord& other);

    // The virtual operations stand in slot order.

    virtual ~VXFlintActionRecord();
    /// 1 when code or length are missing; a payload that is cut short is good. A code below 128 sets the
    /// length to 0 and leaves a payload where it is.
    virtual VXErrorCodeEnum LoadFromStream(VXBitStream& in);

    /// Always 0, whatever `out` takes.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;
    /// Copies `length` bytes, which may lie in the present payload; zeros for null. The length is cut to its
    /// low 16 bits, and so many bytes are kept.
    void SetData(const unsigned char* data, unsigned int length);
    /// Reads the length word alone, for a caller that goes on by itself: a code from 128 on gets a payload of
    /// so many zeros, `m_Length` 0, and the stream stands behind the word. The old payload is gone in every
    /// case. Always 1.
    short Parse(VXBitStream* in);
    /// Drops the payload; `m_Length` stays.
    void Clean();
    /// A new action with a payload of its own, which the caller owns.
    ///
    /// Kept: the payload of the copy is never null, even where this one has none.
    VXFlintActionRecord* Copy() const;
    /// Replaces `from` by `to` wherever its bytes lie in the payload, across fields or not, so that scripts
    /// follow when an identifier is renamed. Non-zero when there was a replacement. `delta` becomes the
    /// change of `m_Length`; the lengths of enclosing tags and the offsets of jumps are the caller's.
    ///
    /// Passes follow each other until one of them finds nothing. Where `from` occurs in `to` there is one
    /// pass, which replaces every hit of the old payload once. A replacement that would take the payload
    /// beyond 65535 bytes is not made and ends the call. An empty `from` is nowhere.
    ///
    /// Each replacement moves what lies behind it, and each pass goes through the payload. A pair whose
    /// replacements make room for others, such as "ab" by "bbaa", takes seconds for a payload of 60,000 bytes.
    ///
    /// Kept: as many UTF-8 bytes count as the texts have 16-bit units, and a `from` outside ASCII is found
    /// nowhere. The search is a simple one: a byte that ends a partial match does not begin the next, so
    /// "aab" does not hold "ab". Where passes repeat, the byte behind a replacement does not begin one either,
    /// nor the next byte when that one is 0.
    short ReplaceString(const VXString& from, const VXString& to, int& delta);

    VXFlintActionData m_ActionData;
    unsigned char m_ActionCode = 0;  ///< of `VXActionCodeEnum`; 0 ends a list
    unsigned short m_Length = 0;     ///< of the payload as stated on the wire, in bytes

private:
    friend class VXFlintActionRecords;

    /// Bytes of the payload that are there and count.
    unsigned short GetHeldLength() const;

    unsigned int m_Holders = 0;  // places in lists; the last one deletes the action
};
