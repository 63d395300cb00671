#include "timeline/VXSwfRemoveObjectTag.h"

#include "framework/VXMakeTag_p.h"

#include <string>

VXSwfRemoveObjectTag::VXSwfRemoveObjectTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfRemoveObjectTag::~VXSwfRemoveObjectTag() = default;

VXErrorCodeEnum VXSwfRemoveObjectTag::LoadDataFromStream(VXBitStream& in) {
    if (GetTagType() == VXSwfTagFactory::TAG_REMOVEOBJECT) VX_RETURN_IF_FAILED(in.ReadWord(CharacterId));
    return in.ReadWord(Depth);
}

VXErrorCodeEnum VXSwfRemoveObjectTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        if (GetTagType() == VXSwfTagFactory::TAG_REMOVEOBJECT)
            VX_RETURN_IF_FAILED(body.WriteWord(CharacterId));
        return body.WriteWord(Depth);
    });
}

VXSwfTag* VXSwfRemoveObjectTag::Copy() {
    auto copy = VXMakeTag<VXSwfRemoveObjectTag>(GetTagType());
    if (copy == nullptr) return nullptr;
    copy->CharacterId = CharacterId;
    copy->Depth = Depth;
    return copy.release();
}

void VXSwfRemoveObjectTag::GetTextInfo(VXString& text) {
    VXSwfControlTag::GetTextInfo(text);
    text += " - Depth=";
    text += std::to_string(Depth).c_str();
    text += " - Id(?)=";
    text += std::to_string(CharacterId).c_str();
}
