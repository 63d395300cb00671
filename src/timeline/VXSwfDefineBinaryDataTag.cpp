#include "timeline/VXSwfDefineBinaryDataTag.h"

#include "bitstream/VXStreamTransfer_p.h"

VXSwfDefineBinaryDataTag::VXSwfDefineBinaryDataTag(enuTagType type) : VXSwfDefinitionTag(type) {}

VXSwfDefineBinaryDataTag::~VXSwfDefineBinaryDataTag() = default;

VXErrorCodeEnum VXSwfDefineBinaryDataTag::LoadDataFromStream(VXBitStream& in) {
    BinaryData = VXByteBlock();
    unsigned int reserved = 0;
    VX_RETURN_IF_FAILED(in.ReadDWord(reserved));
    unsigned int count = in.GetRemaining();
    VXByteBlock bytes = VXByteBlock::Allocate(count);
    VX_RETURN_IF_FAILED(in.Read(bytes.GetBytes(), count));
    BinaryData = bytes;
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineBinaryDataTag::DumpFields(VXBitStream& body) const {
    VX_RETURN_IF_FAILED(body.WriteDWord(0));
    return body.Write(BinaryData.GetBytes(), BinaryData.GetSize());
}

VXErrorCodeEnum VXSwfDefineBinaryDataTag::DumpToStream(VXBitStream& out) {
    VXBitStream body;
    BeginBody(body);
    VX_RETURN_IF_FAILED(DumpFields(body));
    return DumpBody(out, body);
}

VXErrorCodeEnum VXSwfDefineBinaryDataTag::SetBinaryData(IVXStream* stream) {
    if (stream == nullptr) return kVXFailure;
    BinaryData = VXReadStream(*stream);
    return kVXSuccess;
}
