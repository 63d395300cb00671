#include "timeline/VXSwfPlaceObject3Tag.h"

#include <cstdint>
#include <utility>

namespace {

constexpr unsigned int kDepthOffset = 2;

}  // namespace

VXSwfPlaceObject3Tag::VXSwfPlaceObject3Tag(enuTagType type) : VXSwfPlaceObject2Tag(type) {}

VXSwfPlaceObject3Tag::~VXSwfPlaceObject3Tag() = default;

VXErrorCodeEnum VXSwfPlaceObject3Tag::LoadDataFromStream(VXBitStream& in) {
    unsigned char flags = 0;
    VX_RETURN_IF_FAILED(in.ReadByte(flags));
    TakeFlags(flags, HasClassName);  // Kept: the bit of the name is lost in the field that is read next.
    unsigned int unused = 0;
    VX_RETURN_IF_FAILED(in.ReadBits(3, unused));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasImage));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasClassName));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasCacheAsBitmap));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasBlendMode));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasFilterList));
    VX_RETURN_IF_FAILED(in.ReadWord(Depth));
    // Kept: two tests on purpose. Load takes the class name of an image too, dump does not write it.
    if (HasClassName != 0 || (HasImage != 0 && HasCharacter != 0)) {
        VX_RETURN_IF_FAILED(in.ReadVXString(ClassName));
    }
    if (HasCharacter != 0) {
        CharacterIdOffset = in.GetPosition();
        VX_RETURN_IF_FAILED(in.ReadWord(CharacterId));
    }
    VX_RETURN_IF_FAILED(LoadAppearance(in));
    if (HasClipDepth != 0) {
        ClipDepthOffset = in.GetPosition();
        VX_RETURN_IF_FAILED(in.ReadWord(ClipDepth));
    }
    // Filters, blend mode and clip actions stay in the body.
    RawBody = GetKeptBody();
    if (RawBody.GetBytes() != in.GetBuffer() || RawBody.GetSize() != in.GetSize()) {
        RawBody = VXByteView(VXByteBlock::CopyOf(in.GetBuffer(), in.GetSize()));
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfPlaceObject3Tag::DumpToStream(VXBitStream& out) {
    SetIsLongTag(1);
    if (RawBody) {
        VXBitStream body;
        body.LoadFromAllocedMem(RawBody.GetBytes(), RawBody.GetSize());
        return DumpBody(out, body);
    }
    DeriveFlags();
    HasFilterList = StaticEffects.Read().current.empty() ? 0 : 1;
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteByte(GetFlags()));
        VX_RETURN_IF_FAILED(body.WriteBits(0, 3));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(HasImage));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(HasClassName));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(HasCacheAsBitmap));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(HasBlendMode));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(HasFilterList));
        VX_RETURN_IF_FAILED(body.WriteWord(Depth));
        if (HasClassName != 0) VX_RETURN_IF_FAILED(body.WriteVXString(ClassName));
        if (HasCharacter != 0) VX_RETURN_IF_FAILED(body.WriteWord(CharacterId));
        VX_RETURN_IF_FAILED(DumpAppearance(body));
        if (HasClipDepth != 0) VX_RETURN_IF_FAILED(body.WriteWord(ClipDepth));
        if (HasFilterList != 0) VX_RETURN_IF_FAILED(DumpFilters(body));
        if (HasBlendMode != 0) VX_RETURN_IF_FAILED(body.WriteByte(0));  // Kept: always the normal mode.
        return DumpClipActions(body);
    });
}

VXErrorCodeEnum VXSwfPlaceObject3Tag::DumpFilters(VXBitStream& body) const {
    const auto& filters = StaticEffects.Read().current;
    VX_RETURN_IF_FAILED(body.WriteByte(static_cast<unsigned char>(filters.size())));
    // Kept: a filter that fails does not stop the dump.
    for (const VXFlintFilter* filter : filters) VXIgnore(filter->DumpToStream(body));
    return kVXSuccess;
}

void VXSwfPlaceObject3Tag::PatchRawBody(unsigned int offset, unsigned short value) {
    if (offset == 0 || std::uint64_t{offset} + 2 > RawBody.GetSize()) return;
    RawBody.Detach();
    RawBody.GetBytes()[offset] = static_cast<unsigned char>(value);
    RawBody.GetBytes()[offset + 1] = static_cast<unsigned char>(value >> 8);
}

void VXSwfPlaceObject3Tag::SetReferencedID(unsigned short id) {
    CharacterId = id;
    if (HasCharacter != 0) PatchRawBody(CharacterIdOffset, id);
}

void VXSwfPlaceObject3Tag::SetDepth(unsigned short depth, short adjustClip) {
    Depth = depth;
    PatchRawBody(kDepthOffset, depth);
    if (HasClipDepth == 0 || adjustClip == 0) return;
    ClipDepth = depth;
    PatchRawBody(ClipDepthOffset, depth);
}

void VXSwfPlaceObject3Tag::SetStaticEffectVector(const std::vector<VXFlintFilter*>& filters) {
    if (filters.empty() && StaticEffects.Read().current.empty()) return;
    Effects& effects = StaticEffects.Edit();
    // All memory first: a filter that has been held once is deleted with its last holder.
    std::vector<VXHeld<VXFlintFilter>> taken;
    taken.reserve(filters.size());
    effects.replaced.reserve(effects.replaced.size() + effects.current.size());
    for (VXFlintFilter* filter : filters) {
        if (filter != nullptr) taken.push_back(filter);
    }
    effects.replaced.insert(effects.replaced.end(), effects.current.begin(), effects.current.end());
    effects.current = std::move(taken);
}

std::vector<VXFlintFilter*> VXSwfPlaceObject3Tag::GetStaticEffectVector() const {
    const auto& filters = StaticEffects.Read().current;
    return {filters.begin(), filters.end()};
}
