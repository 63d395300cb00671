#include "timeline/VXFlintButtonCondAction.h"

VXErrorCodeEnum VXFlintButtonCondAction::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadWord(CondActionSize));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(CondIdleToOverDown));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(CondOutDownToIdle));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(CondOutDownToOverDown));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(CondOverDownToOutDown));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(CondOverDownToOverUp));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(CondOverUpToOverDown));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(CondOverUpToIdle));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(CondIdleToOverUp));
    VX_RETURN_IF_FAILED(in.ReadBits(7, CondKeyPress));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(CondOverDownToIdle));
    in.ByteAlignSBits();
    return Actions.LoadFromStream(in);
}

VXErrorCodeEnum VXFlintButtonCondAction::DumpToStream(VXBitStream& out) const {
    VX_RETURN_IF_FAILED(out.WriteWord(CondActionSize));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(CondIdleToOverDown));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(CondOutDownToIdle));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(CondOutDownToOverDown));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(CondOverDownToOutDown));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(CondOverDownToOverUp));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(CondOverUpToOverDown));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(CondOverUpToIdle));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(CondIdleToOverUp));
    VX_RETURN_IF_FAILED(out.WriteBits(CondKeyPress, 7));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(CondOverDownToIdle));
    return Actions.DumpToStream(out);
}

void VXFlintButtonCondAction::ResetOffset(VXBitStream& out, int position, unsigned short value) {
    out.SetPosition(static_cast<unsigned int>(position));
    VXIgnore(out.WriteWord(value));  // over bytes that are there
}
