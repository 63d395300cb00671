#include "media/VXSwfDefineBitsJpegTag.h"

#include "bitstream/VXStreamTransfer_p.h"

VXSwfDefineBitsJpegTag::VXSwfDefineBitsJpegTag(enuTagType type) : VXSwfDefinitionTag(type) {}

VXSwfDefineBitsJpegTag::~VXSwfDefineBitsJpegTag() = default;

short VXSwfDefineBitsJpegTag::IsJpeg3Tag() const {
    return GetTagType() == VXSwfTagFactory::TAG_DEFINEBITSJPEG3 ? 1 : 0;
}

VXErrorCodeEnum VXSwfDefineBitsJpegTag::SetJpegData(IVXStream* stream) {
    if (stream == nullptr) return kVXFailure;
    JpegData = VXReadStream(*stream);
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineBitsJpegTag::SetJpegData(unsigned char* array, unsigned int length) {
    if (array == nullptr) return kVXFailure;
    JpegData = VXByteBlock::Adopt(array, length);
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineBitsJpegTag::SetAlphaData(const unsigned char* alpha, unsigned int size) {
    if (alpha == nullptr && size != 0) return kVXFailure;
    VXBitStream plane;
    plane.LoadFromAllocedMem(alpha, size);
    // What could not be deflated would be no alpha plane, so the tag goes without.
    const bool isDeflated = plane.Compress(0, 0, nullptr, nullptr) != 0;
    AlphaData = isDeflated ? VXByteBlock::CopyOf(plane.GetBuffer(), plane.GetSize()) : VXByteBlock();
    return kVXSuccess;
}

VXErrorCodeEnum VXSwfDefineBitsJpegTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        if (IsJpeg3Tag() != 0) VX_RETURN_IF_FAILED(body.WriteDWord(JpegData.GetSize()));
        VX_RETURN_IF_FAILED(body.Write(JpegData.GetBytes(), JpegData.GetSize()));
        if (IsJpeg3Tag() != 0) VX_RETURN_IF_FAILED(body.Write(AlphaData.GetBytes(), AlphaData.GetSize()));
        return kVXSuccess;
    });
}
