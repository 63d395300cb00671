#include "timeline/VXSwfVXSpecialTag.h"

#include "framework/VXMakeTag_p.h"

VXSwfVXSpecialTag::VXSwfVXSpecialTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfVXSpecialTag::~VXSwfVXSpecialTag() = default;

VXErrorCodeEnum VXSwfVXSpecialTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        return body.Write(SpecificData.GetBytes(), SpecificData.GetSize());
    });
}

VXSwfTag* VXSwfVXSpecialTag::Copy() {
    auto copy = VXMakeTag<VXSwfVXSpecialTag>(GetTagType());
    if (copy != nullptr)
        copy->SpecificData = VXByteBlock::CopyOf(SpecificData.GetBytes(), SpecificData.GetSize());
    return copy.release();
}

VXErrorCodeEnum VXSwfVXSpecialTag::SetSpecificData(const unsigned char* data, unsigned int size) {
    if (size == 0) return kVXSuccess;
    if (data == nullptr) return kVXFailure;
    SpecificData = VXByteBlock::CopyOf(data, size);
    return kVXSuccess;
}
