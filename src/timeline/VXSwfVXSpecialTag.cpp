#include "timeline/VXSwfVXSpecialTag.h"

VXSwfVXSpecialTag::VXSwfVXSpecialTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfVXSpecialTag::~VXSwfVXSpecialTag() = default;

VXErrorCodeEnum VXSwfVXSpecialTag::DumpToStream(VXBitStream& out) {
    VXBitStream body;
    VX_RETURN_IF_FAILED(body.Write(SpecificData.GetBytes(), SpecificData.GetSize()));
    return DumpBody(out, body);
}

VXSwfTag* VXSwfVXSpecialTag::Copy() {
    VXSwfTag* copy = VXSwfTagFactory::CreateTagOfType(GetTagType(), 0, 0);
    if (auto* special = dynamic_cast<VXSwfVXSpecialTag*>(copy)) {
        special->SpecificData = VXByteBlock::CopyOf(SpecificData.GetBytes(), SpecificData.GetSize());
    }
    return copy;
}

VXErrorCodeEnum VXSwfVXSpecialTag::SetSpecificData(const unsigned char* data, unsigned int size) {
    if (size == 0) return kVXSuccess;
    if (data == nullptr) return kVXFailure;
    SpecificData = VXByteBlock::CopyOf(data, size);
    return kVXSuccess;
}
