#include "graphics/VXFlintCxForm.h"

#include <algorithm>

#include "bitstream/VXReadField_p.h"
#include "graphics/VXTwips.h"

VXFlintCxForm::~VXFlintCxForm() = default;

VXErrorCodeEnum VXFlintCxForm::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasAddTerms));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasMultTerms));
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NBits));
    if (HasMultTerms != 0) {
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, RedMultTerm));
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, GreenMultTerm));
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, BlueMultTerm));
        if (HasAlpha != 0) VX_RETURN_IF_FAILED(in.ReadSBits(NBits, AlphaMultTerm));
    }
    if (HasAddTerms != 0) {
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, RedAddTerm));
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, GreenAddTerm));
        VX_RETURN_IF_FAILED(in.ReadSBits(NBits, BlueAddTerm));
        if (HasAlpha != 0) VX_RETURN_IF_FAILED(in.ReadSBits(NBits, AlphaAddTerm));
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintCxForm::DumpToStream(VXBitStream& out) const {
    VX_RETURN_IF_FAILED(out.FlushBits());
    VX_RETURN_IF_FAILED(out.WriteVXBool16(HasAddTerms));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(HasMultTerms));
    unsigned int width = 0;
    if (HasMultTerms != 0) {
        width = VXFieldWidth(RedMultTerm, GreenMultTerm, BlueMultTerm, HasAlpha != 0 ? AlphaMultTerm : 0);
    }
    if (HasAddTerms != 0) {
        width = std::max(
            width, VXFieldWidth(RedAddTerm, GreenAddTerm, BlueAddTerm, HasAlpha != 0 ? AlphaAddTerm : 0));
    }
    VX_RETURN_IF_FAILED(out.WriteBits(width, 4));
    if (HasMultTerms != 0) {
        VX_RETURN_IF_FAILED(out.WriteSBits(RedMultTerm, width));
        VX_RETURN_IF_FAILED(out.WriteSBits(GreenMultTerm, width));
        VX_RETURN_IF_FAILED(out.WriteSBits(BlueMultTerm, width));
        if (HasAlpha != 0) VX_RETURN_IF_FAILED(out.WriteSBits(AlphaMultTerm, width));
    }
    if (HasAddTerms != 0) {
        VX_RETURN_IF_FAILED(out.WriteSBits(RedAddTerm, width));
        VX_RETURN_IF_FAILED(out.WriteSBits(GreenAddTerm, width));
        VX_RETURN_IF_FAILED(out.WriteSBits(BlueAddTerm, width));
        if (HasAlpha != 0) VX_RETURN_IF_FAILED(out.WriteSBits(AlphaAddTerm, width));
    }
    return out.FlushBits();
}
