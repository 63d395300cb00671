#include "timeline/VXSwfPlaceObjectTag.h"

#include "framework/VXMakeTag_p.h"

VXSwfPlaceObjectTag::VXSwfPlaceObjectTag(enuTagType type) : VXSwfControlTag(type) { CxForm.HasAlpha = 0; }

VXSwfPlaceObjectTag::~VXSwfPlaceObjectTag() = default;

VXErrorCodeEnum VXSwfPlaceObjectTag::LoadDataFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadWord(CharacterId));
    VX_RETURN_IF_FAILED(in.ReadWord(Depth));
    VX_RETURN_IF_FAILED(Matrix.LoadFromStream(in));
    return in.IsEOF() != 0 ? kVXSuccess : CxForm.LoadFromStream(in);
}

VXErrorCodeEnum VXSwfPlaceObjectTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteWord(CharacterId));
        VX_RETURN_IF_FAILED(body.WriteWord(Depth));
        VX_RETURN_IF_FAILED(Matrix.DumpToStream(body));
        return CxForm.DumpToStream(body);
    });
}

VXSwfTag* VXSwfPlaceObjectTag::Copy() {
    auto copy = VXMakeTag<VXSwfPlaceObjectTag>(VXSwfTagFactory::TAG_PLACEOBJECT);
    if (copy == nullptr) return nullptr;
    *copy = *this;
    return copy.release();
}

void VXSwfPlaceObjectTag::SetCharacterId(unsigned short id) { CharacterId = id; }

unsigned short VXSwfPlaceObjectTag::GetCharacterId() const { return CharacterId; }

void VXSwfPlaceObjectTag::SetCxForm(const VXFlintCxForm* cxForm) {
    if (cxForm != nullptr) CxForm = *cxForm;
}
