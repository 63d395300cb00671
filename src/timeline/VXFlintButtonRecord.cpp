#include "timeline/VXFlintButtonRecord.h"

namespace {

/// A count or size byte; one that is not there counts as 0.
unsigned int ReadSize(VXBitStream& in) {
    unsigned char size = 0;
    return in.ReadByte(size) == kVXSuccess ? size : 0u;
}

/// Bytes behind the ID of a filter, as far as they are not read here.
unsigned int MeasureFilter(VXBitStream& in, unsigned char id) {
    switch (id) {
        case 0:  // drop shadow
            return 23;
        case 1:  // blur
            return 9;
        case 2:  // glow
            return 15;
        case 3:  // bevel
            return 27;
        case 4:  // gradient glow
        case 7:  // gradient bevel
            return ReadSize(in) * 5 + 19;
        case 5: {  // convolution
            const unsigned int columns = ReadSize(in);
            return columns * ReadSize(in) * 4 + 13;
        }
        case 6:  // colour matrix
            return 80;
        default:
            return 0;  // Kept: an unknown filter is its ID alone
    }
}

}  // namespace

VXErrorCodeEnum VXFlintButtonRecord::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadBits(2, ReservedBits));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasBlendMode));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasFilterList));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(StateHitTest));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(StateDown));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(StateOver));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(StateUp));
    VX_RETURN_IF_FAILED(in.ReadWord(CharacterId));
    VX_RETURN_IF_FAILED(in.ReadWord(PlaceDepth));
    VX_RETURN_IF_FAILED(Matrix.LoadFromStream(in));
    if (HasCxForm != 0) VX_RETURN_IF_FAILED(CxForm.LoadFromStream(in));
    if (HasFilterList != 0) ReadFilterList(in);
    if (HasBlendMode != 0) VX_RETURN_IF_FAILED(in.ReadByte(BlendMode));
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintButtonRecord::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(out.WriteBits(0, 2));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(HasBlendMode));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(HasFilterList));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(StateHitTest));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(StateDown));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(StateOver));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(StateUp));
    VX_RETURN_IF_FAILED(out.WriteWord(CharacterId));
    VX_RETURN_IF_FAILED(out.WriteWord(PlaceDepth));
    VX_RETURN_IF_FAILED(Matrix.DumpToStream(out));
    if (HasCxForm != 0) VX_RETURN_IF_FAILED(CxForm.DumpToStream(out));
    if (HasFilterList != 0) VX_RETURN_IF_FAILED(out.Write(RawFilterList.GetBytes(), RawFilterList.GetSize()));
    if (HasBlendMode != 0) VX_RETURN_IF_FAILED(out.WriteByte(BlendMode));
    return kVXSuccess;
}

void VXFlintButtonRecord::ReadFilterList(VXBitStream& in) {
    in.ByteAlignSBits();
    const unsigned int start = in.GetPosition();
    const unsigned int count = ReadSize(in);
    for (unsigned int i = 0; i < count; ++i) {
        unsigned char id = 0;
        if (in.ReadByte(id) != kVXSuccess) break;
        // A filter that would end behind the data moves nothing, and the next ID is looked for where it began.
        const unsigned int rest = MeasureFilter(in, id);
        if (rest <= in.GetRemaining()) in.SetPosition(in.GetPosition() + rest);
    }
    unsigned int size = in.GetPosition() - start;
    RawFilterList = VXByteBlock::Allocate(size);
    in.SetPosition(start);
    if (size != 0) VXIgnore(in.Read(RawFilterList.GetBytes(), size));  // these bytes were passed just now
}
