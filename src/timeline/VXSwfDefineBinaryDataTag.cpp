#include "timeline/VXSwfDefineBinaryDataTag.h"

#include <algorithm>

#include "bitstream/VXStreamTransfer_p.h"

namespace {

constexpr unsigned int kReservedSize = 4;

}  // namespace

VXSwfDefineBinaryDataTag::VXSwfDefineBinaryDataTag(enuTagType type) : VXSwfDefinitionTag(type) {}

VXSwfDefineBinaryDataTag::~VXSwfDefineBinaryDataTag() = default;

VXErrorCodeEnum VXSwfDefineBinaryDataTag::LoadDataFromStream(VXBitStream& in) {
    unsigned int reserved = 0;
    VX_RETURN_IF_FAILED(in.ReadDWord(reserved));
    const unsigned int stated = std::max(GetTagLen(), kReservedSize) - kReservedSize;
    unsigned int count = std::min(stated, in.GetRemaining());
    BinaryData = VXByteBlock::Allocate(count);
    return in.Read(BinaryData.GetBytes(), count);
}

VXErrorCodeEnum VXSwfDefineBinaryDataTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteDWord(0));
        return body.Write(BinaryData.GetBytes(), BinaryData.GetSize());
    });
}

VXErrorCodeEnum VXSwfDefineBinaryDataTag::SetBinaryData(IVXStream* stream) {
    if (stream == nullptr) return kVXFailure;
    BinaryData = VXReadStream(*stream);
    return kVXSuccess;
}
