#include "timeline/VXSwfFileAttributesTag.h"

VXSwfFileAttributesTag::VXSwfFileAttributesTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfFileAttributesTag::~VXSwfFileAttributesTag() = default;

VXErrorCodeEnum VXSwfFileAttributesTag::LoadDataFromStream(VXBitStream& in) {
    unsigned int skipped = 0;
    VX_RETURN_IF_FAILED(in.ReadBits(1, skipped));
    VX_RETURN_IF_FAILED(in.ReadBits(1, skipped));  // HasDirectBlit
    VX_RETURN_IF_FAILED(in.ReadBits(1, skipped));  // UseGPU
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasMetaData));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasAS3));
    VX_RETURN_IF_FAILED(in.ReadBits(2, skipped));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(NetworkAccess));
    return in.ReadBits(24, skipped);
}

VXErrorCodeEnum VXSwfFileAttributesTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteBits(0, 1));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(HasDirectBlit));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(UseGPU));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(HasMetaData));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(HasAS3));
        VX_RETURN_IF_FAILED(body.WriteBits(0, 2));
        VX_RETURN_IF_FAILED(body.WriteVXBool16(NetworkAccess));
        return body.WriteBits(0, 24);
    });
}
