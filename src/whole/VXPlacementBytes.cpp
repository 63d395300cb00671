#include "whole/VXPlacementBytes_p.h"

#include <algorithm>
#include <new>

#include "framework/VXSwfTagFactory.h"
#include "graphics/VXFlintCxForm.h"
#include "graphics/VXFlintMatrix.h"
#include "whole/VXCarriedTag_p.h"
#include "whole/VXCharacterIds.h"

namespace {

using View = std::span<const unsigned char>;

// The first byte of flags of a placement.
constexpr unsigned int kHasClipActions = 0x80;
constexpr unsigned int kHasClipDepth = 0x40;
constexpr unsigned int kHasName = 0x20;
constexpr unsigned int kHasRatio = 0x10;
constexpr unsigned int kHasColor = 0x08;
constexpr unsigned int kHasMatrix = 0x04;
constexpr unsigned int kHasCharacter = 0x02;
// The second one, from type 70 on.
constexpr unsigned int kHasClassName = 0x08;
constexpr unsigned int kHasImage = 0x10;

VXBitStream Over(View bytes) {
    VXBitStream stream;
    stream.LoadFromAllocedMem(bytes.data(), static_cast<unsigned int>(bytes.size()));
    return stream;
}

/// False when the text does not end.
bool SkipText(VXBitStream& in) {
    unsigned char unit = 1;
    while (unit != 0) {
        if (in.ReadByte(unit) != kVXSuccess) return false;
    }
    return true;
}

bool SkipMatrix(VXBitStream& in) { return VXFlintMatrix().LoadFromStream(in) == kVXSuccess; }

/// Goes to the clip depth of a placement of type 26 or later, or to where it would stand.
bool SkipToClipDepth(unsigned int type, VXBitStream& in, unsigned char& flags) {
    unsigned char more = 0;
    unsigned short word = 0;
    if (in.ReadByte(flags) != kVXSuccess) return false;
    if (type != VXSwfTagFactory::TAG_PLACEOBJECT2 && in.ReadByte(more) != kVXSuccess) return false;
    if (in.ReadWord(word) != kVXSuccess) return false;
    const bool isImage = (more & kHasImage) != 0 && (flags & kHasCharacter) != 0;
    if (((more & kHasClassName) != 0 || isImage) && !SkipText(in)) return false;
    if ((flags & kHasCharacter) != 0 && in.ReadWord(word) != kVXSuccess) return false;
    if ((flags & kHasMatrix) != 0 && !SkipMatrix(in)) return false;
    if ((flags & kHasColor) != 0) {
        if (VXFlintCxForm().LoadFromStream(in) != kVXSuccess) return false;
        in.ByteAlignSBits();
    }
    if ((flags & kHasRatio) != 0 && in.ReadWord(word) != kVXSuccess) return false;
    return (flags & kHasName) == 0 || SkipText(in);
}

/// Calls `visit(type, header, body)` for each tag inside a sprite, up to its end tag or a tag that is cut.
template <typename Visit>
void ForEachInside(View sprite, const Visit& visit) {
    constexpr std::size_t kIdAndCount = 4;
    View left = sprite.subspan(std::min(sprite.size(), kIdAndCount));
    for (;;) {
        const auto count = static_cast<unsigned int>(left.size());
        const VXTagHeader header(left.data(), count);
        if (!header.IsWhole(count) || header.type == TAG_END) return;
        visit(header.type, left.first(header.size + header.length), left.subspan(header.size, header.length));
        left = left.subspan(header.size + header.length);
    }
}

bool HasOldScripts(unsigned int type, View body, unsigned int level) {
    switch (type) {
        case VXSwfTagFactory::TAG_DOACTION:
        case VXSwfTagFactory::TAG_DOINITACTION:
            return true;
        case VXSwfTagFactory::TAG_PLACEOBJECT2:
        case VXSwfTagFactory::TAG_PLACEOBJECT3:
        case 94:  // PlaceObject4
            return !body.empty() && (body[0] & kHasClipActions) != 0;
        case VXSwfTagFactory::TAG_DEFINEBUTTON2: {
            constexpr std::size_t kActionOffset = 3;
            return body.size() >= kActionOffset + 2 && VXWordAt(&body[kActionOffset]) != 0;
        }
        case VXSwfTagFactory::TAG_DEFINEBUTTON: {
            VXBitStream in = Over(body);
            unsigned short word = 0;
            unsigned char states = 1;
            if (in.ReadWord(word) != kVXSuccess) return false;
            while (in.ReadByte(states) == kVXSuccess && states != 0) {
                if (in.ReadWord(word) != kVXSuccess || in.ReadWord(word) != kVXSuccess || !SkipMatrix(in))
                    break;
            }
            unsigned char action = 0;
            return in.ReadByte(action) == kVXSuccess && action != 0;
        }
        case VXSwfTagFactory::TAG_DEFINESPRITE: {
            bool isFound = false;
            if (level == VXCharacterIds::kDeepest) return false;
            ForEachInside(body, [&](unsigned int inner, View, View innerBody) {
                isFound = isFound || HasOldScripts(inner, innerBody, level + 1);
            });
            return isFound;
        }
        default:
            return false;
    }
}

void Write(VXBitStream& out, View bytes) {
    if (!bytes.empty()) VXIgnore(out.Write(bytes.data(), static_cast<unsigned int>(bytes.size())));
}

bool WidenPlacement(View body, VXBitStream& out) {
    VXBitStream in = Over(body);
    unsigned char flags = 0;
    unsigned short word = 0;
    if (!SkipToClipDepth(VXSwfTagFactory::TAG_PLACEOBJECT2, in, flags)) return false;
    if ((flags & kHasClipActions) == 0) return false;
    if ((flags & kHasClipDepth) != 0 && in.ReadWord(word) != kVXSuccess) return false;
    if (in.ReadWord(word) != kVXSuccess) return false;  // reserved
    Write(out, body.first(in.GetPosition()));
    // The events of all handlers, then those of each with the length and the bytes of its script, then 0.
    for (bool isFirst = true;; isFirst = false) {
        if (in.ReadWord(word) != kVXSuccess) break;
        VXIgnore(out.WriteDWord(word));
        if (isFirst) continue;
        if (word == 0) break;
        unsigned int size = 0;
        if (in.ReadDWord(size) != kVXSuccess) break;
        VXIgnore(out.WriteDWord(size));
        size = std::min(size, in.GetRemaining());
        Write(out, body.subspan(in.GetPosition(), size));
        in.SetPosition(in.GetPosition() + size);
    }
    Write(out, body.subspan(in.GetPosition()));
    return true;
}

bool Widen(unsigned int type, View body, VXBitStream& out, unsigned int level) {
    if (type == VXSwfTagFactory::TAG_PLACEOBJECT2) return WidenPlacement(body, out);
    if (type != VXSwfTagFactory::TAG_DEFINESPRITE || level == VXCharacterIds::kDeepest) return false;
    bool isChanged = false;
    std::size_t end = std::min<std::size_t>(body.size(), 4);
    Write(out, body.first(end));
    ForEachInside(body, [&](unsigned int inner, View tag, View innerBody) {
        end = static_cast<std::size_t>(tag.data() - body.data()) + tag.size();
        VXBitStream widened;
        if (!Widen(inner, innerBody, widened, level + 1)) return Write(out, tag);
        isChanged = true;
        if (widened.HasFailed()) throw std::bad_alloc();
        VXIgnore(out.WriteWord(static_cast<unsigned short>(inner << 6 | 0x3F)));
        VXIgnore(out.WriteDWord(widened.GetSize()));
        Write(out, {widened.GetBuffer(), widened.GetSize()});
    });
    Write(out, body.subspan(end));
    return isChanged;
}

}  // namespace

unsigned int VXTopDepthOf(unsigned int type, View body) {
    const unsigned int offset = VXCharacterIds::GetDepthOffset(type);
    if (offset == VXCharacterIds::kNoDepth || body.size() < offset + 2) return 0;
    const unsigned int depth = VXWordAt(&body[offset]);
    const bool isMask = (body[0] & kHasClipDepth) != 0 && type >= VXSwfTagFactory::TAG_PLACEOBJECT2 &&
                        type != VXSwfTagFactory::TAG_REMOVEOBJECT2;
    if (!isMask) return depth;
    VXBitStream in = Over(body);
    unsigned char flags = 0;
    unsigned short clipDepth = 0;
    if (!SkipToClipDepth(type, in, flags) || in.ReadWord(clipDepth) != kVXSuccess) return depth;
    return std::max<unsigned int>(depth, clipDepth);
}

bool VXHasOldScripts(unsigned int type, View body) { return HasOldScripts(type, body, 0); }

bool VXWidenClipEvents(unsigned int type, View body, VXBitStream& out) {
    if (!Widen(type, body, out, 0)) return false;
    if (out.HasFailed()) throw std::bad_alloc();
    return true;
}
