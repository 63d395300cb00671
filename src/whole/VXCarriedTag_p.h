#pragma once

#include <memory>
#include <new>
#include <typeinfo>

#include "framework/VXSwfTag.h"

using VXTagOwner = std::unique_ptr<VXSwfTag, void (*)(VXSwfTag*)>;

/// A tag that takes its type from the header that it reads and is carried as bytes, whatever that is.
inline VXTagOwner VXMakeCarriedTag(unsigned char version) {
    VXTagOwner tag(VXSwfTagFactory::CreateTagOfType(VXSwfTagFactory::TAG_END, 1, 1),
                   &VXSwfTagFactory::DeleteTag);
    tag->SetFLVersion(version);
    return tag;
}

inline bool VXIsCarried(const VXSwfTag& tag) { return typeid(tag) == typeid(VXSwfTag); }

inline unsigned int VXWordAt(const unsigned char* bytes) { return bytes[0] | unsigned{bytes[1]} << 8; }

inline unsigned int VXDWordAt(const unsigned char* bytes) {
    return VXWordAt(bytes) | VXWordAt(bytes + 2) << 16;
}

/// The header of a tag, as far as it is there.
struct VXTagHeader {
    unsigned int type = 0;
    unsigned int size = 0;  // 2 or 6; 0 when it is cut
    unsigned int length = 0;

    VXTagHeader(const unsigned char* bytes, unsigned int count) {
        if (count < 2) return;
        type = VXWordAt(bytes) >> 6;
        length = VXWordAt(bytes) & 0x3F;
        if (length != 0x3F) {
            size = 2;
        } else if (count >= 6) {
            length = VXDWordAt(bytes + 2);
            size = 6;
        }
    }
    bool IsWhole(unsigned int count) const { return size != 0 && length <= count - size; }
};

/// The body that a tag has in a movie: its own bytes, or what it writes to `scratch`, which must outlive it.
/// Throws std::bad_alloc.
struct VXTagBody {
    unsigned int type;
    unsigned int length = 0;
    unsigned char* bytes = nullptr;

    VXTagBody(VXSwfTag& tag, VXBitStream& scratch) : type(tag.GetTagType()) {
        if (VXIsCarried(tag)) {
            const VXBitStream body = tag.GetDataStream();
            bytes = tag.GetData();
            length = body.GetRemaining();
            return;
        }
        scratch.Clean();
        scratch.ForgetFailure();
        if (tag.DumpToStream(scratch) != kVXSuccess) return;
        if (scratch.HasFailed()) throw std::bad_alloc();
        const VXTagHeader header(scratch.GetBuffer(), scratch.GetSize());
        if (!header.IsWhole(scratch.GetSize())) return;
        bytes = scratch.GetBuffer() + header.size;
        length = header.length;
    }
};
